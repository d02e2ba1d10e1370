// SPDX-License-Identifier: MIT
//
// Features as columns: from ragged arrays and shapes, and back.

#include <cntrtable/outlines.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <testing/shapes/numbers.h>

#include <limits>

#include "refused.h"
#include "rings.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using Offsets = std::vector<std::int64_t>;

/// A square with a repeated last vertex, its hole without one, and a triangle.
struct Example {
  std::vector<double> coordinates{0, 0, 10, 0, 10, 10, 0, 10, 0, 0,  1,
                                  1, 1, 2,  2, 2,  20, 0, 30, 0, 20, 5};
  Offsets rings{0, 5, 8, 11};
  Offsets parts{0, 2, 3};
  Offsets features{0, 1, 2};

  qcRaggedOutlines arrays() const {
    qcRaggedOutlines ragged;
    ragged.coordinates = coordinates;
    ragged.rings = rings;
    ragged.parts = parts;
    ragged.features = features;
    return ragged;
  }
  std::string refusal() const {
    return refusalOf([this] { qcOutlines::fromRagged(arrays()); });
  }
};

TEST(Outlines, OfNothingAreNone) {
  const qcOutlines none;
  EXPECT_EQ(none.size(), 0U);
  EXPECT_THAT(none.toRagged().features, ElementsAre(0));
  EXPECT_EQ(none.slice(0, 0).size(), 0U);
}

TEST(Outlines, OfRaggedArraysLeaveOutTheRepeatedLastVertex) {
  const qcOutlines outlines = qcOutlines::fromRagged(Example().arrays());
  ASSERT_EQ(outlines.size(), 2U);
  EXPECT_EQ(outlines.kind(0), qcOutlineKind::eAreas);
  EXPECT_EQ(outlines.problem(0), "");
  EXPECT_EQ(outlines.label(0), std::nullopt);
  EXPECT_EQ(outlines.parts(0), 1U);
  EXPECT_EQ(outlines.rings(0, 0), 2U);
  EXPECT_THAT(outlines.ring(0, 0, 1), ElementsAre(1, 1, 1, 2, 2, 2));
  EXPECT_EQ(outlines.feature(0), (std::vector<qcRings>{{square, {hole}}}));
  EXPECT_EQ(outlines.feature(1), (std::vector<qcRings>{{triangle, {}}}));
}

TEST(Outlines, TakeANanForARepeatedOne) {
  Example example;
  example.coordinates = {notANumber, 0, 1, 1, notANumber, 2, notANumber, 0};
  example.rings = {0, 4};
  example.parts.clear();
  example.features.clear();
  EXPECT_EQ(qcOutlines::fromRagged(example.arrays()).ring(0, 0, 0).size(), 6U);
  example.rings = {0, 3};
  EXPECT_EQ(qcOutlines::fromRagged(example.arrays()).ring(0, 0, 0).size(), 6U);
}

TEST(Outlines, OfRaggedLinesKeepTheRepeatedLastVertex) {
  Example example;
  example.parts.clear();
  example.features = {0, 1, 3};
  qcRaggedOutlines arrays = example.arrays();
  arrays.kind = qcOutlineKind::eLines;
  const qcOutlines outlines = qcOutlines::fromRagged(arrays);
  ASSERT_EQ(outlines.size(), 2U);
  EXPECT_EQ(outlines.kind(1), qcOutlineKind::eLines);
  EXPECT_EQ(outlines.ring(0, 0, 0).size(), 10U);
  EXPECT_EQ(outlines.feature(1), (std::vector<qcRings>{{hole, {}}, {triangle, {}}}));
}

TEST(Outlines, OfRaggedArraysWithoutPartsAreOnePartEach) {
  Example example;
  example.parts.clear();
  example.features = {0, 2, 3};
  const qcOutlines outlines = qcOutlines::fromRagged(example.arrays());
  ASSERT_EQ(outlines.size(), 2U);
  EXPECT_EQ(outlines.parts(0), 1U);
  EXPECT_EQ(outlines.feature(0), (std::vector<qcRings>{{square, {hole}}}));
}

TEST(Outlines, OfRingsAloneAreAFeatureEach) {
  Example example;
  example.parts.clear();
  example.features.clear();
  const qcOutlines outlines = qcOutlines::fromRagged(example.arrays());
  ASSERT_EQ(outlines.size(), 3U);
  EXPECT_EQ(outlines.feature(1), (std::vector<qcRings>{{hole, {}}}));
}

TEST(Outlines, OfPartsAloneAreAFeatureEach) {
  Example example;
  example.features.clear();
  const qcOutlines outlines = qcOutlines::fromRagged(example.arrays());
  ASSERT_EQ(outlines.size(), 2U);
  EXPECT_EQ(outlines.feature(0), (std::vector<qcRings>{{square, {hole}}}));
}

TEST(Outlines, MayBeginAnywhereInRaggedArrays) {
  Example example;
  example.parts.clear();
  example.features = {2, 3};
  const qcOutlines outlines = qcOutlines::fromRagged(example.arrays());
  ASSERT_EQ(outlines.size(), 1U);
  EXPECT_EQ(outlines.feature(0), (std::vector<qcRings>{{triangle, {}}}));
}

TEST(Outlines, WithoutVerticesAreNothing) {
  Example example;
  example.rings = {0, 0, 5};
  example.parts = {0, 0, 1, 2};
  example.features = {0, 0, 1, 2, 3};
  const qcOutlines outlines = qcOutlines::fromRagged(example.arrays());
  ASSERT_EQ(outlines.size(), 4U);
  for (const std::size_t i : {0U, 1U, 2U}) {
    EXPECT_EQ(outlines.kind(i), qcOutlineKind::eNothing);
    EXPECT_EQ(outlines.problem(i), "empty");
    EXPECT_EQ(outlines.parts(i), 0U);
    EXPECT_THAT(outlines.feature(i), IsEmpty());
  }
  EXPECT_EQ(outlines.kind(3), qcOutlineKind::eAreas);
}

TEST(Outlines, ShareCoordinatesWithTheirOwner) {
  const auto owner = std::make_shared<const Example>();
  qcOutlines outlines = qcOutlines::fromRagged(owner->arrays(), owner);
  EXPECT_EQ(outlines.ring(0, 0, 0).data(), owner->coordinates.data());
  EXPECT_EQ(owner.use_count(), 2);
  {
    const qcOutlines slice = outlines.slice(1, 1);
    outlines = qcOutlines();
    EXPECT_EQ(slice.ring(0, 0, 0).data(), owner->coordinates.data() + 16);
    EXPECT_EQ(owner.use_count(), 2);
  }
  EXPECT_EQ(owner.use_count(), 1);
}

TEST(Outlines, CopyCoordinatesWithoutAnOwner) {
  Example example;
  const qcOutlines outlines = qcOutlines::fromRagged(example.arrays());
  example.coordinates.assign(22, 7.0);
  EXPECT_EQ(outlines.feature(1), (std::vector<qcRings>{{triangle, {}}}));
}

TEST(Outlines, RefuseOffsetsThatGoBackwards) {
  Example example;
  example.rings = {0, 8, 5, 11};
  EXPECT_EQ(example.refusal(), "ring offset 2 is 5, less than 8 before it");
  example = Example();
  example.parts = {0, 2, 1};
  EXPECT_EQ(example.refusal(), "part offset 2 is 1, less than 2 before it");
  example = Example();
  example.features = {1, 0, 2};
  EXPECT_EQ(example.refusal(), "feature offset 1 is 0, less than 1 before it");
}

TEST(Outlines, RefuseOffsetsBeyondTheEnd) {
  Example example;
  example.rings = {0, 5, 12, 12};
  EXPECT_EQ(example.refusal(), "ring offset 2 is 12, but there are 11 vertices");
  example.rings = {0, std::numeric_limits<std::int64_t>::max()};
  EXPECT_EQ(example.refusal(), "ring offset 1 is 9223372036854775807, but there are 11 vertices");
  example = Example();
  example.parts = {0, 4};
  EXPECT_EQ(example.refusal(), "part offset 1 is 4, but there are 3 rings");
  example = Example();
  example.features = {3};
  EXPECT_EQ(example.refusal(), "feature offset 0 is 3, but there are 2 parts");
  example.parts.clear();
  example.features = {0, 4};
  EXPECT_EQ(example.refusal(), "feature offset 1 is 4, but there are 3 rings");
}

TEST(Outlines, RefuseNegativeOffsets) {
  Example example;
  example.rings = {-1, 5};
  EXPECT_EQ(example.refusal(), "ring offset 0 is -1, which is negative");
  example = Example();
  example.features = {std::numeric_limits<std::int64_t>::min(), 0};
  EXPECT_EQ(example.refusal(), "feature offset 0 is -9223372036854775808, which is negative");
}

TEST(Outlines, RefuseArraysThatContradictEachOther) {
  Example example;
  example.rings.clear();
  EXPECT_EQ(example.refusal(), "there are no ring offsets");
  example = Example();
  example.coordinates.push_back(1.0);
  EXPECT_EQ(example.refusal(), "23 coordinates are no pairs of x and y");
  example = Example();
  qcRaggedOutlines arrays = example.arrays();
  const std::vector<qcEdgelet> edgelets(10);
  arrays.edgelets = edgelets;
  EXPECT_EQ(refusalOf([&] { qcOutlines::fromRagged(arrays); }),
            "there are 10 edge elements for 11 vertices");
  arrays = example.arrays();
  arrays.kind = qcOutlineKind::eLines;
  EXPECT_EQ(refusalOf([&] { qcOutlines::fromRagged(arrays); }),
            "lines have no part offsets: each ring is a part");
  arrays.kind = qcOutlineKind::eNothing;
  EXPECT_EQ(refusalOf([&] { qcOutlines::fromRagged(arrays); }),
            "the features are to be areas or lines");
}

TEST(Outlines, HaveEdgeElementsForEachVertex) {
  const Example example;
  std::vector<qcEdgelet> edgelets;
  for (unsigned short i = 0; i < 11; ++i) edgelets.emplace_back(qcVector<2>(i, i), i, qcAngle8());
  qcRaggedOutlines arrays = example.arrays();
  arrays.edgelets = edgelets;
  const qcOutlines outlines = qcOutlines::fromRagged(arrays);
  EXPECT_THAT(outlines.edgelets(0, 0, 0),
              ElementsAreArray(std::vector(edgelets.begin(), edgelets.begin() + 4)));
  EXPECT_THAT(outlines.edgelets(1, 0, 0),
              ElementsAreArray(std::vector(edgelets.begin() + 8, edgelets.end())));
  const qcRaggedArrays back = outlines.slice(1, 1).toRagged();
  EXPECT_THAT(back.edgelets, ElementsAre(edgelets[8], edgelets[9], edgelets[10], edgelets[8]));
  EXPECT_THAT(qcOutlines::fromRagged(example.arrays()).edgelets(0, 0, 0), IsEmpty());
}

TEST(Outlines, BecomeRaggedArraysThatRepeatTheFirstVertex) {
  const qcRaggedArrays back = qcOutlines::fromRagged(Example().arrays()).toRagged();
  EXPECT_THAT(back.coordinates, ElementsAre(0, 0, 10, 0, 10, 10, 0, 10, 0, 0, 1, 1, 1, 2, 2, 2, 1,
                                            1, 20, 0, 30, 0, 20, 5, 20, 0));
  EXPECT_THAT(back.rings, ElementsAre(0, 5, 9, 13));
  EXPECT_THAT(back.parts, ElementsAre(0, 2, 3));
  EXPECT_THAT(back.features, ElementsAre(0, 1, 2));
  EXPECT_THAT(back.edgelets, IsEmpty());
}

TEST(Outlines, AreSlicedWithinTheirSize) {
  const qcOutlines outlines = qcOutlines::fromRagged(Example().arrays());
  EXPECT_EQ(outlines.slice(2, 0).size(), 0U);
  EXPECT_EQ(outlines.slice(1, 1).slice(0, 1).feature(0), outlines.feature(1));
  EXPECT_EQ(refusalOf([&] { outlines.slice(1, 2); }),
            "there are no 2 features from number 1 on, but 2 in all");
  EXPECT_EQ(refusalOf([&] { outlines.slice(3, 0); }),
            "there are no 0 features from number 3 on, but 2 in all");
  EXPECT_EQ(refusalOf([&] { outlines.slice(1, std::numeric_limits<std::size_t>::max()); }),
            "there are no 18446744073709551615 features from number 1 on, but 2 in all");
}

TEST(Outlines, AreSelectedInAnyOrder) {
  qcOutlinesBuilder builder;
  builder.addAreas({{square, {hole}}, {triangle, {}}}, 7);
  builder.failFeature("no reason");
  builder.addLines({hole, triangle});
  builder.addAreas({{triangle, {}}});
  const qcOutlines outlines = builder.finish().slice(1, 3);
  const std::vector<std::size_t> order{2, 0, 1, 2};
  const qcOutlines selected = outlines.selected(order);
  ASSERT_EQ(selected.size(), 4U);
  for (std::size_t i = 0; i < order.size(); ++i) {
    EXPECT_EQ(selected.kind(i), outlines.kind(order[i])) << i;
    EXPECT_EQ(selected.label(i), outlines.label(order[i])) << i;
    EXPECT_EQ(selected.problem(i), outlines.problem(order[i])) << i;
    EXPECT_EQ(selected.parts(i), outlines.parts(order[i])) << i;
    EXPECT_EQ(selected.feature(i), outlines.feature(order[i])) << i;
  }
  EXPECT_EQ(selected.ring(2, 1, 0).data(), outlines.ring(1, 1, 0).data());
}

TEST(Outlines, SelectedHaveTheirPartsHolesAndEdgeElements) {
  const Example example;
  std::vector<qcEdgelet> edgelets;
  for (unsigned short i = 0; i < 11; ++i) edgelets.emplace_back(qcVector<2>(), i, qcAngle8());
  qcRaggedOutlines ragged = example.arrays();
  ragged.features = {};
  ragged.edgelets = edgelets;
  const qcOutlines outlines = qcOutlines::fromRagged(ragged);
  const qcOutlines selected = outlines.selected(std::vector<std::size_t>{1, 0});
  EXPECT_THAT(selected.edgelets(0, 0, 0), ElementsAreArray(outlines.edgelets(1, 0, 0)));
  EXPECT_THAT(selected.edgelets(1, 0, 1), ElementsAreArray(outlines.edgelets(0, 0, 1)));
  EXPECT_EQ(selected.rings(1, 0), 2U);
}

TEST(Outlines, AreSelectedWithinTheirNumber) {
  const qcOutlines outlines = qcOutlines::fromRagged(Example().arrays()).slice(0, 1);
  EXPECT_EQ(outlines.selected({}).size(), 0U);
  EXPECT_EQ(qcOutlines().selected({}).size(), 0U);
  EXPECT_EQ(refusalOf([&] {
              outlines.selected(std::vector<std::size_t>{0, 1});
            }),
            "there is no feature 1, but 1 in all");
}

TEST(OutlinesBuilder, KeepsEdgeElementsOfTheRingsThatHaveThem) {
  const std::vector<qcEdgelet> edgelets{
      {{0, 0}, 1, qcAngle8()}, {{0, 0}, 2, qcAngle8()}, {{0, 0}, 3, qcAngle8()}};
  qcOutlinesBuilder builder;
  builder.addAreas({{square, {}}});
  builder.addRing(3);
  builder.setEdgelets(edgelets);
  builder.failFeature("no reason");
  builder.addRing(4);
  builder.addRing(3)[0] = 5;
  builder.setEdgelets(edgelets);
  builder.endFeature(qcOutlineKind::eAreas);
  builder.addLines({triangle});
  const qcOutlines outlines = builder.finish();
  const auto expectEdgelets = [&](const qcOutlines& all, std::size_t holed) {
    EXPECT_THAT(all.edgelets(holed, 0, 0), IsEmpty());
    EXPECT_THAT(all.edgelets(holed, 0, 1), ElementsAreArray(edgelets));
    EXPECT_THAT(all.edgelets(holed + 1, 0, 0), IsEmpty());
  };
  EXPECT_THAT(outlines.edgelets(0, 0, 0), IsEmpty());
  expectEdgelets(outlines, 2);
  expectEdgelets(outlines.selected(std::vector<std::size_t>{2, 3}), 0);
  builder.add(outlines, 2);
  builder.add(outlines, 3);
  expectEdgelets(builder.finish(), 0);
  const qcRaggedArrays ragged = outlines.slice(2, 2).toRagged();
  ASSERT_EQ(ragged.edgelets.size(), ragged.coordinates.size() / 2);
  EXPECT_EQ(ragged.edgelets[4], qcEdgelet());
  EXPECT_EQ(ragged.edgelets[5], edgelets[0]);
  EXPECT_EQ(ragged.edgelets[8], edgelets[0]);
  EXPECT_EQ(ragged.edgelets[9], qcEdgelet());
  // Those of a feature that failed are gone.
  builder.addLines({hole});
  builder.addRing(3);
  builder.setEdgelets(edgelets);
  builder.failFeature("no reason");
  builder.addLines({triangle});
  EXPECT_THAT(builder.finish().toRagged().edgelets, IsEmpty());
}

TEST(OutlinesBuilder, KeepsFeaturesAsTheyAre) {
  const std::vector<qcRings> twoParts{{square, {hole}}, {triangle, {}}};
  qcOutlinesBuilder builder;
  builder.addAreas(twoParts, 7);
  builder.addLines({hole, {{0, 0}, {1, 0}, {0, 0}}});
  builder.failFeature("no reason");
  builder.addAreas({});
  builder.addAreas({{triangle, {}}}, 4294967295);
  const qcOutlines outlines = builder.finish();
  ASSERT_EQ(outlines.size(), 5U);
  EXPECT_EQ(outlines.feature(0), twoParts);
  EXPECT_EQ(outlines.label(0), 7U);
  EXPECT_EQ(outlines.kind(1), qcOutlineKind::eLines);
  EXPECT_EQ(outlines.feature(1),
            (std::vector<qcRings>{{hole, {}}, {{{0, 0}, {1, 0}, {0, 0}}, {}}}));
  EXPECT_EQ(outlines.label(1), std::nullopt);
  EXPECT_EQ(outlines.problem(1), "");
  EXPECT_EQ(outlines.problem(2), "no reason");
  EXPECT_EQ(outlines.problem(3), "empty");
  EXPECT_EQ(outlines.slice(2, 2).problem(1), "empty");
  EXPECT_EQ(outlines.label(4), 4294967295U);
  EXPECT_EQ(builder.finish().size(), 0U);
}

TEST(OutlinesBuilder, DropsWhatAFailedFeatureHadBegun) {
  qcOutlinesBuilder builder;
  builder.addAreas({{square, {}}});
  builder.addRing(3)[0] = 1.0;
  builder.endPart();
  builder.addRing(5)[0] = 1.0;
  builder.failFeature("failed");
  builder.addAreas({{triangle, {}}});
  const qcOutlines outlines = builder.finish();
  ASSERT_EQ(outlines.size(), 3U);
  EXPECT_EQ(outlines.feature(0), (std::vector<qcRings>{{square, {}}}));
  EXPECT_EQ(outlines.kind(1), qcOutlineKind::eNothing);
  EXPECT_EQ(outlines.feature(2), (std::vector<qcRings>{{triangle, {}}}));
}

TEST(OutlinesBuilder, LeavesOutRepeatedVerticesWhenAsked) {
  qcOutlinesBuilder builder;
  const auto addRing = [&builder](const std::vector<double>& coordinates) {
    const std::span<double> place = builder.addRing(coordinates.size() / 2);
    std::copy(coordinates.begin(), coordinates.end(), place.begin());
    builder.leaveOutRepeated();
  };
  addRing({1, 2, 3, 4, 1, 2});
  addRing({1, 2, 3, 4, 1, 3});
  addRing({1, 2, 3, 4, 2, 2});
  addRing({1, 2});
  builder.endFeature(qcOutlineKind::eAreas);
  const qcOutlines outlines = builder.finish();
  EXPECT_THAT(outlines.ring(0, 0, 0), ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(outlines.ring(0, 0, 1), ElementsAre(1, 2, 3, 4, 1, 3));
  EXPECT_THAT(outlines.ring(0, 0, 2), ElementsAre(1, 2, 3, 4, 2, 2));
  EXPECT_THAT(outlines.ring(0, 0, 3), ElementsAre(1, 2));
}

TEST(OutlinesBuilder, TakesTheLibrarysShapes) {
  constexpr auto asGiven = qcContourDefs::eNoIntersectionRepair;
  const qcPtrHandle<qcRegion> inner(new qcRegion(Points{{2, 2}, {8, 2}, {8, 8}, {2, 8}}, asGiven));
  const qcPtrHandle<qcRegion> island(new qcRegion(Points{{4, 4}, {6, 4}, {6, 6}}, asGiven));
  inner->holes({island});
  qcRegion region(square, asGiven);
  region.holes({inner});
  region.label(3);
  qcOutlinesBuilder builder;
  builder.add(region);
  builder.add(qcContour(triangle, true, 4));
  builder.add(qcContour(triangle, false, 5));
  const qcPtrHandle<qcRegion> other(new qcRegion(triangle, asGiven));
  builder.add(qcRegionSet({other, inner}, asGiven));
  const qcOutlines outlines = builder.finish();
  ASSERT_EQ(outlines.size(), 4U);
  EXPECT_EQ(outlines.feature(0),
            (std::vector<qcRings>{{square, {inner->points()}}, {island->points(), {}}}));
  EXPECT_EQ(outlines.label(0), 3U);
  EXPECT_EQ(outlines.kind(1), qcOutlineKind::eAreas);
  EXPECT_EQ(outlines.kind(2), qcOutlineKind::eLines);
  EXPECT_EQ(outlines.label(2), 5U);
  EXPECT_EQ(outlines.feature(3),
            (std::vector<qcRings>{{triangle, {}}, {inner->points(), {island->points()}}}));
  EXPECT_EQ(outlines.label(3), std::nullopt);
}

TEST(OutlinesBuilder, TakesFeaturesOfOthers) {
  qcOutlinesBuilder builder;
  builder.addAreas({{square, {hole}}, {triangle, {}}}, 9);
  builder.failFeature("failed");
  const qcOutlines first = builder.finish();
  builder.add(first, 1);
  builder.add(first, 0);
  const qcOutlines second = builder.finish();
  ASSERT_EQ(second.size(), 2U);
  EXPECT_EQ(second.problem(0), "failed");
  EXPECT_EQ(second.feature(1), first.feature(0));
  EXPECT_EQ(second.label(1), 9U);
}

}  // namespace
