// SPDX-License-Identifier: MIT
//
// Archives: which shapes features become, and what is read from shapes.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <sstream>

#include <cntr/regionst.h>
#include <cntrtmpl/contourt.h>
#include <platform/core/archive.h>

#include "../texts.h"

using namespace formats;
using testing::ElementsAre;

namespace {

using StoredContour = qcPtrHandle<qcContour>;

std::string archived(std::vector<StoredContour> shapes) {
  std::ostringstream out;
  qcStreamArchive archive(out);
  qf_TransferListHead(archive, shapes.size());
  for (StoredContour& shape : shapes) archive || shape;
  return out.str();
}

StoredContour contour(const Points& points, bool closed, unsigned long label = 0) {
  StoredContour shape(new qcContour(points, closed, 0));
  shape->label(label);
  return shape;
}

/// The class of the only shape that the feature becomes.
template <class Class>
bool becomes(const Feature& feature) {
  std::istringstream in(texts::written("archive", {feature}));
  qcStreamArchive archive(in);
  EXPECT_EQ(qf_TransferListHead(archive, 0), 1);
  const qcPersistent* shape = archive.transferShared(nullptr);
  return shape != nullptr && typeid(*shape) == typeid(Class);
}

}  // namespace

TEST(ArchiveWriter, ChoosesTheShapeByWhatAFeatureHas) {
  Feature feature = texts::outline(texts::square(2));
  EXPECT_TRUE(becomes<qcRegion>(feature));
  feature.geometry.multiple = true;
  EXPECT_TRUE(becomes<qcRegionSet>(feature));
  feature.geometry = {false, false, {{{{0, 0}, {1, 1}}, {}}}};
  EXPECT_TRUE(becomes<qcContour>(feature));
  feature = texts::outline(texts::square(2));
  feature.geometry.edgelets.emplace_back();
  for (const auto& p : texts::square(2)) {
    feature.geometry.edgelets[0].emplace_back(p, 1, qcAngle8(2));
  }
  EXPECT_TRUE(becomes<qcContourT<qcEdgelet>>(feature));
}

TEST(ArchiveReader, ReadsLabelsOtherThanZero) {
  const auto found = texts::read(
      "archive", archived({contour(texts::square(1), true, 9), contour({{0, 0}, {1, 1}}, false)}));
  ASSERT_EQ(found.features.size(), 2);
  EXPECT_EQ(found.features[0].label, Label(9UL));
  EXPECT_TRUE(found.features[0].geometry.closed);
  EXPECT_FALSE(found.features[1].label);
  EXPECT_FALSE(found.features[1].geometry.closed);
  EXPECT_EQ(found.features[1].number, 2);
}

TEST(ArchiveReader, NamesShapesThatAreNoFeatures) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const auto found = texts::read(
      "archive", archived({contour({{0, 0}, {1, 0}}, true), contour({{0, 0}, {1, nan}}, false),
                           StoredContour(), contour(texts::square(1), true)}));
  EXPECT_THAT(found.complaints, ElementsAre("1: outline has 2 points, but needs 3",
                                            "2: line, vertex 1: not finite", "3: no object"));
  EXPECT_EQ(found.features.size(), 1);
}

TEST(ArchiveReader, RefusesWhatIsNotOneListOfShapes) {
  EXPECT_EQ(texts::flawOf("archive", archived({})), "") << "an empty list is no flaw";
  EXPECT_EQ(texts::flawOf("archive", archived({contour(texts::square(1), true)}) + "x"),
            "goes on behind its list of shapes");
  EXPECT_THAT(texts::flawOf("archive", "QCAR"), testing::StartsWith("not an archive of shapes: "));
}
