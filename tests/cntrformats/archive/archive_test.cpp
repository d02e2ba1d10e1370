// SPDX-License-Identifier: MIT
//
// Archives: which shapes features become, and what is read from shapes.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <testing/shapes/numbers.h>
#include <testing/twin/repetitions.h>

#include <algorithm>
#include <array>
#include <limits>
#include <random>
#include <sstream>

#include <cntr/regionst.h>
#include <cntrformats/archive/objects.h>
#include <cntrformats/archive/storedshapes.h>
#include <cntrformats/errors.h>
#include <cntrtmpl/contourt.h>
#include <platform/core/archive.h>
#include <platform/core/shapes.h>
#include <platform/core/xform.h>

#include "../texts.h"

using namespace formats;
using testing::ElementsAre;

namespace {

using EdgeContour = qcContourT<qcEdgelet>;
using Objects = std::vector<std::shared_ptr<qcPersistent>>;

std::string archived(const Objects& objects) {
  std::ostringstream out;
  qcStreamArchive archive(out);
  qf_TransferListHead(archive, objects.size());
  for (const auto& object : objects) archive.transferShared(object.get());
  return out.str();
}

std::shared_ptr<qcContour> contour(const Points& points, bool closed, unsigned long label = 0) {
  auto shape = std::make_shared<qcContour>(points, closed, 0);
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

Points polygon(double x, double y, std::size_t count) {
  Points points;
  for (std::size_t i = 0; i < count; ++i) {
    const auto step = static_cast<double>(i);
    points.emplace_back(x + step, y + (i == 0 ? 0.0 : 1.0 + step * step / 64.0));
  }
  return points;
}

std::shared_ptr<qcRegion> region(const Points& outline, const std::vector<Points>& holes,
                                 unsigned long label) {
  auto made = std::make_shared<qcRegion>(outline, qcContourDefs::eNoIntersectionRepair);
  std::vector<qcPtrHandle_const<qcRegion>> handles;
  for (const Points& hole : holes)
    handles.emplace_back(new qcRegion(hole, qcContourDefs::eNoIntersectionRepair));
  made->holes(handles);
  made->label(label);
  return made;
}

std::shared_ptr<qcRegionSet> regionSet(const std::vector<std::shared_ptr<qcRegion>>& regions) {
  std::vector<qcPtrHandle<qcRegion>> handles;
  for (const auto& one : regions) handles.emplace_back(new qcRegion(*one));
  return std::make_shared<qcRegionSet>(handles, qcContourDefs::eNoIntersectionRepair);
}

/// Shapes of the usual classes: good ones, and others that are not features.
Objects usualShapes() {
  const double largest = std::numeric_limits<double>::max();
  const Points square{{-9, -9}, {9e3, -9}, {9e3, 9e3}, {-9, 9e3}};
  const std::vector<Points> holes{polygon(1, 1, 4), polygon(100, 1, 3)};
  return {region(square, {}, 7),
          region(square, holes, 0),
          std::make_shared<qcContour>(polygon(0, 0, 5), true, 0),
          std::make_shared<qcContour>(polygon(0, 0, 2), false, 0),
          std::make_shared<qcContour>(polygon(0, 0, 1), false, 0),
          std::make_shared<qcContour>(Points{{0, 0}, {1, largest}, {5e-324, 0}}, true, 0),
          std::make_shared<qcContour>(Points{{0, 0}, {1, 0}, {infinity, 0}}, true, 0),
          std::make_shared<qcContour>(Points{{0, 0}, {1, -infinity}}, false, 0),
          regionSet({}),
          regionSet({region(square, holes, 5), region(polygon(1e4, 0, 3), {}, 5)}),
          regionSet({region(square, {}, 5), region(polygon(1e4, 0, 3), {}, 6),
                     region(polygon(2e4, 0, 3), {}, 0)}),
          regionSet({region(square, {polygon(1, 1, 2)}, 5)}),
          region({}, {}, 4294967295)};
}

/// An archive of one shape that lists nothing, with `listed` added to its list. `behind` is the
/// number of bytes behind the list.
std::string withListed(const std::shared_ptr<qcPersistent>& shape, const std::string& listed,
                       std::size_t behind) {
  std::string bytes = archived({shape});
  const std::size_t end = bytes.size() - behind;
  bytes.at(end - 4) = 1;
  bytes.insert(end, listed);
  return bytes;
}

/// A stored block of a gzip file; another one must follow.
std::string storedBlock(const std::string& bytes) {
  const auto low = static_cast<unsigned char>(bytes.size() & 0xFFU);
  const auto high = static_cast<unsigned char>(bytes.size() >> 8U);
  std::string block(1, '\0');
  for (const int byte : {+low, +high, low ^ 0xFF, high ^ 0xFF}) block += static_cast<char>(byte);
  return block + bytes;
}

/// What a file gives: its features, including those that cannot be read, and its flaw.
struct Outcome {
  std::vector<Feature> features;
  std::string flaw;
};

/// What the library gives when it loads one object after the other.
Outcome loaded(const std::string& bytes) {
  Outcome outcome;
  std::istringstream in(bytes);
  try {
    qcStreamArchive archive(in);
    const std::size_t count = qf_TransferListHead(archive, 0);
    for (std::size_t number = 1; number <= count; ++number) {
      const qcPersistent* object = archive.transferShared(nullptr);
      outcome.features.push_back(
          decoded(number, [object](Feature& feature) { readObject(object, feature); }));
    }
    if (in.peek() != std::char_traits<char>::eof())
      outcome.flaw = "goes on behind its list of shapes";
  } catch (const qcException& error) {
    outcome.flaw = std::string("not an archive of shapes: ") + error.what();
  }
  return outcome;
}

class FeatureKeeper : public Sink {
 public:
  explicit FeatureKeeper(std::vector<Feature>& features) : features_(features) {}
  void take(Record record) override { features_.push_back(record.decode()); }

 private:
  std::vector<Feature>& features_;
};

/// What the reader gives.
Outcome found(Source& source) {
  Outcome outcome;
  FeatureKeeper keeper(outcome.features);
  try {
    formatNamed("archive")->read(source, Keep::eFeature, keeper);
  } catch (const FileError& error) {
    outcome.flaw = error.what();
  }
  return outcome;
}

void expectSame(const Feature& a, const Feature& b) {
  EXPECT_EQ(a.number, b.number);
  EXPECT_EQ(a.problem, b.problem);
  EXPECT_EQ(a.label, b.label);
  EXPECT_EQ(a.geometry.closed, b.geometry.closed);
  EXPECT_EQ(a.geometry.multiple, b.geometry.multiple);
  EXPECT_TRUE(a.geometry.parts == b.geometry.parts);
  EXPECT_TRUE(a.geometry.edgelets == b.geometry.edgelets);
}

/// The same for bytes that can be read only once.
Outcome found(const std::string& bytes) {
  Source source(Text{bytes});
  return found(source);
}

void expectSame(const Outcome& outcome, const Outcome& expected) {
  EXPECT_EQ(outcome.flaw, expected.flaw);
  ASSERT_EQ(outcome.features.size(), expected.features.size());
  for (std::size_t i = 0; i < expected.features.size(); ++i) {
    expectSame(outcome.features[i], expected.features[i]);
  }
}

void expectTheLibrarysAnswer(const std::string& bytes) {
  const Outcome expected = loaded(bytes);
  expectSame(found(bytes), expected);
  const texts::TemporaryFile file(bytes);
  Source source(file.path());
  expectSame(found(source), expected);
}

/// The ends of the shapes, as far as they can be found from the bytes.
std::vector<std::size_t> endsOf(std::string_view bytes) {
  std::vector<std::size_t> ends;
  ShapeEnds shapes;
  std::size_t at = archiveHeadSize;
  while (at < bytes.size() && shapes.find(bytes.substr(at)) == Found::eWhole) {
    at += shapes.size();
    ends.push_back(at);
  }
  return ends;
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
  EXPECT_TRUE(becomes<EdgeContour>(feature));
}

TEST(ArchiveWriter, MakesASetOfSeveralOutlines) {
  Feature feature = texts::outline(texts::square(2));
  feature.geometry.parts.push_back({{{5, 5}, {6, 5}, {6, 6}}, {}});
  EXPECT_TRUE(becomes<qcRegionSet>(feature));
  const auto found = texts::read("archive", texts::written("archive", {feature}));
  ASSERT_EQ(found.features.size(), 1);
  EXPECT_TRUE(found.features[0].geometry.parts == feature.geometry.parts);
}

TEST(ArchiveWriter, KeepsLinesWithEdgeElementsAndOthersApart) {
  Feature feature;
  feature.label = 3UL;
  feature.geometry = {false, true, {{{{0, 0}, {1, 1}}, {}}, {{{2, 2}, {3, 3}, {4, 2}}, {}}}};
  feature.geometry.edgelets = {{{{0, 0}, 1, qcAngle8(2)}, {{1, 1}, 3, qcAngle8(4)}}, {}};
  const auto found = texts::read("archive", texts::written("archive", {feature}));
  EXPECT_THAT(found.complaints, testing::IsEmpty());
  ASSERT_EQ(found.features.size(), 2);
  for (std::size_t k = 0; k < 2; ++k) {
    EXPECT_FALSE(found.features[k].geometry.closed);
    EXPECT_EQ(found.features[k].label, Label(3UL));
    EXPECT_TRUE(found.features[k].geometry.parts.at(0) == feature.geometry.parts[k]);
  }
  EXPECT_EQ(found.features[0].geometry.edgelets,
            (std::vector<std::vector<qcEdgelet>>{feature.geometry.edgelets[0]}));
  EXPECT_TRUE(found.features[1].geometry.edgelets.empty());
}

TEST(ArchiveWriter, LeavesAStreamBadThatTakesNothing) {
  std::ostringstream out;
  out.setstate(std::ios::failbit);
  const auto writer = formatNamed("archive")->makeWriter(out, Rings::eAsTheyWere);
  writer->finish();
  EXPECT_TRUE(out.bad());
  EXPECT_EQ(out.str(), "");
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
  const auto found = texts::read("archive", archived({contour({{0, 0}, {1, 0}}, true),
                                                      contour({{0, 0}, {1, notANumber}}, false),
                                                      nullptr, contour(texts::square(1), true)}));
  EXPECT_THAT(found.complaints, ElementsAre("1: outline has 2 points, but needs 3",
                                            "2: line, vertex 1: not finite", "3: no object"));
  EXPECT_EQ(found.features.size(), 1);
}

TEST(ArchiveReader, NamesTheFirstFlawOfAVertex) {
  const auto found = texts::read(
      "archive", archived({contour({{0, 0}, {notANumber, 0}, {infinity, 1}, {1, 1}}, true),
                           contour({{notANumber, 0}}, true), contour({{1, notANumber}}, false),
                           std::make_shared<qcPoint>(qcVector<2>(1, 2))}));
  EXPECT_THAT(found.complaints,
              ElementsAre("1: outline, vertex 1: not finite", "2: outline has 1 point, but needs 3",
                          "3: line, vertex 0: not finite", "4: an object without an outline"));
}

TEST(ArchiveReader, ReadsALabelThatAllRegionsOfASetShare) {
  const auto labelOf = [](const std::vector<unsigned long>& labels) {
    std::vector<std::shared_ptr<qcRegion>> regions;
    for (const unsigned long label : labels) regions.push_back(region(polygon(0, 0, 3), {}, label));
    const std::string bytes = archived({regionSet(regions)});
    expectTheLibrarysAnswer(bytes);
    return found(bytes).features.at(0).label;
  };
  EXPECT_EQ(labelOf({5, 5, 5}), Label(5UL));
  EXPECT_EQ(labelOf({5, 6, 7}), std::nullopt);
  EXPECT_EQ(labelOf({0, 5}), std::nullopt);
}

TEST(ArchiveReader, NamesWhatIsMissingInAList) {
  const auto plate = region(texts::square(9), {}, 0);
  const std::string none(4, '\0');
  EXPECT_THAT(texts::read("archive", withListed(plate, none, 0)).complaints,
              ElementsAre("1: hole 1 is missing"));
  EXPECT_THAT(texts::read("archive", withListed(regionSet({}), none, 4)).complaints,
              ElementsAre("1: part 1, no region"));
}

TEST(ArchiveReader, TakesAContourInAListForMissing) {
  std::string second = archived({contour(polygon(1, 1, 3), true)}).substr(archiveHeadSize);
  second[0] = 2;
  const std::string withHole = withListed(region(texts::square(9), {}, 0), second, 0);
  expectTheLibrarysAnswer(withHole);
  EXPECT_EQ(found(withHole).features.at(0).problem, "hole 1 is missing");
  const std::string withPart = withListed(regionSet({}), second, 4);
  expectTheLibrarysAnswer(withPart);
  EXPECT_EQ(found(withPart).features.at(0).problem, "part 1, no region");
}

TEST(ArchiveReader, PlacesEdgeElementsAtTheVertices) {
  const std::vector<qcEdgelet> data{
      {{0, 0}, 1, qcAngle8(2)}, {{4, 0}, 3, qcAngle8(4)}, {{0, 4}, 5, qcAngle8(6)}};
  const qcPtrHandle_const<qc2XformBase> shift(
      new qc2XformLinear(qcXform<2>(qcMatrix<2>(), {10, 20})));
  const auto shifted = std::make_shared<EdgeContour>(data, shift);
  const Geometry geometry = found(archived({shifted})).features.at(0).geometry;
  EXPECT_EQ(geometry.parts.at(0).outline, (Points{{-10, -20}, {-6, -20}, {-10, -16}}));
  EXPECT_EQ(geometry.edgelets,
            (std::vector<std::vector<qcEdgelet>>{{{{-10, -20}, 1, qcAngle8(2)},
                                                  {{-6, -20}, 3, qcAngle8(4)},
                                                  {{-10, -16}, 5, qcAngle8(6)}}}));
}

TEST(ArchiveReader, ReadsEdgeElementsForAllVerticesOrNone) {
  const std::vector<qcEdgelet> data{
      {{0, 0}, 1, qcAngle8(2)}, {{4, 0}, 3, qcAngle8(4)}, {{0, 4}, 5, qcAngle8(6)}};
  const auto with = [](const std::vector<qcEdgelet>& edgelets, bool closed) {
    auto shape = std::make_shared<EdgeContour>(edgelets);
    static_cast<qcContour&>(*shape) = qcContour(texts::square(9), closed, 0);
    return shape;
  };
  const auto features =
      found(archived({with(data, true), with({}, true), with({}, false)})).features;
  ASSERT_EQ(features.size(), 3);
  EXPECT_EQ(features[0].problem, "3 edge elements for 4 vertices");
  for (const std::size_t k : {1U, 2U}) {
    EXPECT_EQ(features[k].problem, "");
    EXPECT_EQ(features[k].geometry.parts.at(0).outline, texts::square(9));
    EXPECT_EQ(features[k].geometry.closed, k == 1);
    EXPECT_TRUE(features[k].geometry.edgelets.empty());
  }
}

TEST(ArchiveReader, RefusesWhatIsNotOneListOfShapes) {
  EXPECT_EQ(texts::flawOf("archive", archived({})), "") << "an empty list is no flaw";
  EXPECT_EQ(texts::flawOf("archive", archived({contour(texts::square(1), true)}) + "x"),
            "goes on behind its list of shapes");
  EXPECT_THAT(texts::flawOf("archive", "QCAR"), testing::StartsWith("not an archive of shapes: "));
}

TEST(ShapeEnds, AreFoundWithoutTheLibraryForAllUsualShapes) {
  const std::string bytes = archived(usualShapes());
  const std::vector<std::size_t> ends = endsOf(bytes);
  EXPECT_EQ(ends.size(), usualShapes().size());
  EXPECT_EQ(ends.back(), bytes.size());
}

TEST(ShapeEnds, AreFoundForAnEmptySetAtTheEnd) {
  const std::string bytes = archived({regionSet({})});
  EXPECT_THAT(endsOf(bytes), ElementsAre(bytes.size()));
}

TEST(ShapeEnds, AreTheSameForShapesThatArriveByteByByte) {
  const std::string bytes = archived(usualShapes());
  std::vector<std::size_t> ends;
  ShapeEnds shapes;
  std::size_t begin = archiveHeadSize;
  for (std::size_t end = begin; end <= bytes.size(); ++end) {
    const Found found = shapes.find(std::string_view(bytes).substr(begin, end - begin));
    ASSERT_NE(found, Found::eOther) << end;
    if (found == Found::eBeginning) continue;
    begin += shapes.size();
    ends.push_back(begin);
  }
  EXPECT_EQ(ends, endsOf(bytes));
}

TEST(ShapeEnds, LeaveSharedAndNestedShapesToTheLibrary) {
  const auto plain = region(texts::square(9), {}, 1);
  EXPECT_EQ(endsOf(archived({plain, plain})).size(), 1U);
  EXPECT_EQ(endsOf(archived({plain, nullptr, plain})).size(), 1U);
  const auto hole = region({{10, 10}, {20, 10}, {20, 20}, {10, 20}}, {polygon(11, 11, 3)}, 0);
  const auto nested =
      std::make_shared<qcRegion>(texts::square(90), qcContourDefs::eNoIntersectionRepair);
  nested->holes({qcPtrHandle_const<qcRegion>(new qcRegion(*hole))});
  EXPECT_EQ(endsOf(archived({hole, nested})).size(), 1U);
}

TEST(ArchiveReader, FindsWhatTheLibraryLoads) {
  const Objects usual = usualShapes();
  expectTheLibrarysAnswer(archived(usual));
  expectTheLibrarysAnswer(archived({usual[0], nullptr, usual[1]}));
  expectTheLibrarysAnswer(archived({usual[1], usual[2], usual[1], usual[9], usual[2]}));
  const auto withData = std::make_shared<EdgeContour>(std::vector<qcEdgelet>{
      {{0, 0}, 1, qcAngle8(2)}, {{1, 0}, 3, qcAngle8(4)}, {{0, 1}, 5, qcAngle8(6)}});
  const std::string mixed = archived({usual[0], usual[9], withData, usual[1], usual[0]});
  expectTheLibrarysAnswer(mixed);
  EXPECT_FALSE(found(mixed).features[2].geometry.edgelets.empty());
  expectTheLibrarysAnswer(mixed + "x");
}

TEST(ArchiveReader, TellsTheSizesOfShapes) {
  class SizeKeeper : public Sink {
   public:
    void take(Record record) override { sizes.push_back(record.size); }
    std::vector<std::size_t> sizes;
  };
  const Objects usual = usualShapes();
  const auto sizesOf = [](const std::string& bytes) {
    SizeKeeper keeper;
    Source source(Text{bytes});
    formatNamed("archive")->read(source, Keep::eFeature, keeper);
    return keeper.sizes;
  };
  const std::size_t first = archived({usual[1]}).size() - archiveHeadSize;
  const std::size_t last = archived({usual[2]}).size() - archiveHeadSize;
  const std::vector<std::size_t> ofNull{first, 4, last, 4};
  EXPECT_EQ(sizesOf(archived({usual[1], nullptr, usual[2], usual[1]})), ofNull);
}

TEST(ArchiveReader, FindsTheEndWhateverIsReadAtOnce) {
  // Three contours of 33 bytes besides their vertices fill exactly what is read at once.
  const std::string bytes =
      archived({contour(polygon(0, 0, 32755), true), contour(polygon(0, 0, 3), true),
                contour(polygon(0, 0, 3), true)});
  ASSERT_EQ(bytes.size(), std::size_t{1} << 19U);
  expectTheLibrarysAnswer(bytes);
  expectTheLibrarysAnswer(bytes + "x");
}

TEST(ArchiveReader, HandsOverWhatHasArrivedBeforeItWaits) {
  const std::string bytes = archived({usualShapes()[1], usualShapes()[9]});
  const std::size_t arrived = endsOf(bytes).front() + 5;
  texts::Pipe pipe;
  pipe.write(std::string_view(bytes).substr(0, arrived));
  class Sender : public Sink {
   public:
    Sender(texts::Pipe& pipe, std::string_view rest) : pipe_(pipe), rest_(rest) {}
    void take(Record record) override { events.push_back(record.decode().geometry.parts.size()); }
    void pause() override {
      events.push_back(0);
      pipe_.write(rest_);
      pipe_.close();
    }
    std::vector<std::size_t> events;

   private:
    texts::Pipe& pipe_;
    std::string_view rest_;
  } sender(pipe, std::string_view(bytes).substr(arrived));
  Source source(pipe.path());
  formatNamed("archive")->read(source, Keep::eFeature, sender);
  EXPECT_THAT(sender.events, ElementsAre(1, 0, 2));
}

TEST(ArchiveReader, FindsWhatTheLibraryLoadsOfDamagedArchives) {
  const std::string bytes = archived(usualShapes());
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    SCOPED_TRACE(testing::Message() << "cut off at " << size);
    expectTheLibrarysAnswer(bytes.substr(0, size));
    if (HasFailure()) return;
  }
  constexpr std::array<unsigned, 3> bits{0x01U, 0x02U, 0x80U};
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    for (std::size_t i = 0; i < std::min(repetitions(bits.size()), bits.size()); ++i) {
      const unsigned flipped = bits[(at + i) % bits.size()];
      std::string damaged = bytes;
      damaged[at] = static_cast<char>(static_cast<unsigned char>(damaged[at]) ^ flipped);
      SCOPED_TRACE(testing::Message() << "byte " << at << " with " << flipped << " flipped");
      expectTheLibrarysAnswer(damaged);
      if (HasFailure()) return;
    }
  }
}

TEST(ArchiveReader, FindsWhatTheLibraryLoadsOfLongArchives) {
  std::mt19937 random(1);
  const auto upTo = [&random](std::size_t most) { return random() % most; };
  Objects shapes;
  for (int i = 0; i < 3000; ++i) {
    const std::size_t count = i % 500 == 7 ? 20000 : 3 + upTo(40);
    const auto one = region(polygon(i, 0, count), {}, upTo(3));
    if (upTo(5) > 0) {
      shapes.push_back(one);
    } else {
      const std::size_t regions = upTo(i == 1000 ? 3000 : 4);
      shapes.push_back(regionSet(std::vector(regions, one)));
    }
  }
  const std::string bytes = archived(shapes);
  EXPECT_EQ(endsOf(bytes).size(), shapes.size());
  expectTheLibrarysAnswer(bytes);
  expectTheLibrarysAnswer(bytes.substr(0, bytes.size() - 1));
  shapes.insert(shapes.begin() + 2500, nullptr);
  expectTheLibrarysAnswer(archived(shapes));
}

TEST(ArchiveReader, TellsWhyAFileCannotBeRead) {
  const std::string beginning("\x1f\x8b\x08\0\0\0\0\0\0\x03", 10);
  EXPECT_EQ(texts::flawOf("archive", beginning),
            "cannot be unpacked: the gzip file ends too early");
  // A stored block with a null handle and part of a shape.
  const auto shape = contour(texts::square(1), true);
  const std::string bytes = archived({nullptr, shape}).substr(0, 60);
  EXPECT_EQ(texts::flawOf("archive", beginning + storedBlock(bytes)),
            "cannot be unpacked: the gzip file ends too early");
}

TEST(ArchiveReader, HandsOverWhatPrecedesAFailure) {
  const std::string beginning("\x1f\x8b\x08\0\0\0\0\0\0\x03", 10);
  const std::string bytes = archived({contour(texts::square(1), true), nullptr});
  const Outcome outcome = found(beginning + storedBlock(bytes.substr(0, bytes.size() - 2)));
  EXPECT_EQ(outcome.flaw, "cannot be unpacked: the gzip file ends too early");
  ASSERT_EQ(outcome.features.size(), 1);
  EXPECT_EQ(outcome.features[0].geometry.parts.at(0).outline, texts::square(1));
}
