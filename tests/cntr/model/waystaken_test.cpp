// SPDX-License-Identifier: MIT
//
// That the fast ways are taken: which questions are answered by a grid, an index, a ray or a scan,
// starting with which one, and that copies and forgetting treat indexes as answers. That all ways
// give the same answers is tested elsewhere.

#include <cntr/model/waystaken.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <cntr/index/policy.h>
#include <cntr/regionst.h>
#include <gtest/gtest.h>
#include <testing/heap/fail_each.h>
#include <testing/shapes/shapes.h>
#include <tests/cntr/figures.h>

#include "contour_probe.h"
#include "remembered.h"

namespace {

using figures::shapesCenter;

qcRegion starRegion(std::size_t n) {
  return {shapes::smoothStar(n), qcContourDefs::eNoIntersectionRepair};
}

const qc_WaysTaken& waysOf(const qcContour& contour) {
  return qc_RememberedBy::contour(contour).waysTaken;
}

void ask(const qcRegion& region, std::size_t times) {
  for (std::size_t i = 0; i < times; ++i) EXPECT_TRUE(region.inside(shapesCenter, false));
}

// Containment.

std::size_t workOf(const qcRegion& region) { return qc_RememberedBy::containmentWork(region); }

/// Asks until the next question is to make the grid.
void askUntilAGridPays(const qcRegion& region) {
  while (!cntr::index::wantsContainmentGrid(region.points().size(), workOf(region))) {
    EXPECT_EQ(qc_RememberedBy::contour(region).containmentGrid, nullptr);
    region.inside(shapesCenter, false);
  }
}

TEST(WaysTakenTest, AnswerTheFirstPointByParityWithoutRememberingAnything) {
  for (const std::size_t n : {4U, 100U, 1000U}) {
    const qcRegion region = starRegion(n);
    ask(region, 1);
    EXPECT_FALSE(qc_RememberedBy::anything(region)) << n;
    EXPECT_EQ(workOf(region), 2 * n + 1) << "the extents and the edges";
    ask(region, 1);
    EXPECT_TRUE(qc_RememberedBy::anything(region)) << n;
    EXPECT_EQ(workOf(region), 3 * n + 2) << "the edges";
    EXPECT_EQ(waysOf(region).parity, 1U);
  }
}

TEST(WaysTakenTest, AnswerByParityThroughTheIndexAfterAFewScans) {
  const qcRegion region = starRegion(100);
  ask(region, 3);
  EXPECT_EQ(waysOf(region).index, 0U);
  ask(region, 1);
  EXPECT_EQ(waysOf(region).index, 1U);
  EXPECT_EQ(waysOf(region).parity, 3U) << "the first was not counted";
  EXPECT_EQ(waysOf(region).ray, 0U);
}

TEST(WaysTakenTest, AnswerByParityThroughAnIndexThatIsThere) {
  const qcRegion region = starRegion(100);
  region.closestVertexIndex(shapesCenter);
  ask(region, 2);
  EXPECT_EQ(waysOf(region).index, 2U);
  EXPECT_EQ(waysOf(region).parity, 2U);
  EXPECT_LT(workOf(region), 300U);
}

TEST(WaysTakenTest, AskTheGridOnceTheWorkWouldHaveMadeIt) {
  for (const std::size_t n : {4U, 20U, 640U}) {
    const qcRegion region = starRegion(n);
    askUntilAGridPays(region);
    const std::size_t before = waysOf(region).parity;
    EXPECT_GT(before, 100U);
    ask(region, 15);
    EXPECT_EQ(waysOf(region).grid, 15U) << n;
    EXPECT_EQ(waysOf(region).parity, before) << n;
    EXPECT_EQ(waysOf(region).ray, 0U) << n;
  }
}

TEST(WaysTakenTest, AskTheGridForManyPointsAtOnceAsForOneByOne) {
  const qcRegion region = starRegion(100);
  const Points points(5000, shapesCenter);
  const auto answers = std::make_unique<bool[]>(points.size());
  region.inside(points, false, {answers.get(), points.size()});
  EXPECT_TRUE(std::all_of(answers.get(), answers.get() + points.size(), [](bool a) { return a; }));
  const qcRegion oneByOne = starRegion(100);
  ask(oneByOne, points.size());
  EXPECT_EQ(waysOf(region).grid, waysOf(oneByOne).grid);
  EXPECT_EQ(waysOf(region).parity, waysOf(oneByOne).parity);
  EXPECT_GT(waysOf(region).grid, 1000U);
}

TEST(WaysTakenTest, AskTheGridForNearlyAllPointsOfTheBoundingBox) {
  for (const auto& outline :
       {shapes::smoothStar(1000), shapes::spikyStar(1000), shapes::comb(1000)}) {
    const qcRegion region(outline, qcContourDefs::eNoIntersectionRepair);
    askUntilAGridPays(region);
    const std::size_t before = waysOf(region).grid;
    const qcRect box = region.encloseRect(qcXform<2>::I);
    shapes::Random random(1);
    for (int i = 0; i < 1000; ++i) {
      const double x = random.uniform(box.ul().x(), box.lr().x());
      const double y = random.uniform(box.ul().y(), box.lr().y());
      region.inside({x, y}, false);
    }
    EXPECT_GT(waysOf(region).grid - before, 980U);
  }
}

TEST(WaysTakenTest, CastARayWhereNeitherParityNorTheGridKnows) {
  const qcRegion region = starRegion(640);
  EXPECT_TRUE(region.inside(region.points().front(), false)) << "a vertex counts as inside";
  EXPECT_EQ(waysOf(region).ray, 1U);
  EXPECT_EQ(waysOf(region).parity, 0U);
  askUntilAGridPays(region);
  EXPECT_TRUE(region.inside(region.points().front(), false));
  EXPECT_EQ(waysOf(region).ray, 2U);
  EXPECT_EQ(waysOf(region).grid, 0U);
  ask(region, 1);
  EXPECT_EQ(waysOf(region).grid, 1U);
}

TEST(WaysTakenTest, LookOnceWhetherThereCanBeAGrid) {
  Points outline = shapes::smoothStar(10);
  for (Point& p : outline) p = p + Point(2e6, 0);
  const qcRegion region(outline, qcContourDefs::eNoIntersectionRepair);
  std::size_t asked = 0;
  for (; !qc_RememberedBy::contour(region).hasNoContainmentGrid; ++asked) {
    ASSERT_TRUE(region.inside(shapesCenter + Point(2e6, 0), false));
    ASSERT_LT(asked, 3000U);
  }
  EXPECT_EQ(waysOf(region).ray, asked);
  EXPECT_GT(asked, 2600U) << "parity gives up at once";
  EXPECT_EQ(waysOf(region).parity, 0U);
  EXPECT_TRUE(region.inside(shapesCenter + Point(2e6, 0), false));
  EXPECT_EQ(qc_RememberedBy::contour(region).containmentGrid, nullptr);
}

TEST(WaysTakenTest, TryAgainWhenMemoryRanOutForTheGrid) {
  if (!heap::counts) GTEST_SKIP() << "the heap of the libraries cannot be replaced here";
  std::size_t failures = 0;
  for (bool failed = true; failed; ++failures) {
    const qcRegion region = starRegion(100);
    askUntilAGridPays(region);
    failed = heap::runsOutOfMemory(failures + 1, heap::Failing::eOne,
                                   [&] { region.inside(shapesCenter, false); });
    const std::size_t before = waysOf(region).grid;
    ask(region, 1);
    EXPECT_EQ(waysOf(region).grid, before + 1) << "after the failure of allocation " << failures;
  }
  EXPECT_GT(failures, 3U);
}

TEST(WaysTakenTest, SearchTheEdgesOfARayByTheIndex) {
  const qcRegion small = starRegion(31);
  const qcRegion large = starRegion(640);
  small.inside(small.points().front(), false);
  large.inside(large.points().front(), false);
  EXPECT_EQ(waysOf(small).scan, 1U);
  EXPECT_EQ(waysOf(small).index, 0U);
  EXPECT_EQ(waysOf(large).scan, 0U);
  EXPECT_EQ(waysOf(large).index, 1U);
}

// Edges.

struct EdgeQuestion {
  std::string name;
  void (*ask)(const ContourProbe& contour);
};

void PrintTo(const EdgeQuestion& question, std::ostream* out) { *out << question.name; }

const EdgeQuestion edgeQuestions[] = {
    {"Segment",
     [](const ContourProbe& c) {
       c.intersections(qcLineSeg({0, 0}, {900, 700}), true);
     }},
    {"Contour",
     [](const ContourProbe& c) {
       c.intersections(openContour({{0, 0}, {900, 700}, {0, 1}}));
     }},
    {"ClosestPoint", [](const ContourProbe& c) { c.closestPoint(shapesCenter, false); }},
    {"ClosestVertexAsAPoint", [](const ContourProbe& c) { c.closestPoint(shapesCenter, true); }},
    {"ClosestVertex", [](const ContourProbe& c) { c.closestVertexIndex(shapesCenter); }},
    {"FarthestPair",
     [](const ContourProbe& c) { c.encloseCircle(qcContourDefs::eFarthestVertexPair); }},
};

class EdgeWaysTest : public testing::TestWithParam<EdgeQuestion> {};

INSTANTIATE_TEST_SUITE_P(Each, EdgeWaysTest, testing::ValuesIn(edgeQuestions),
                         [](const auto& instance) { return instance.param.name; });

TEST_P(EdgeWaysTest, LeadThroughTheIndexFrom32EdgesOn) {
  const ContourProbe contour = closedContour(shapes::smoothStar(32));
  GetParam().ask(contour);
  EXPECT_EQ(waysOf(contour).index, 1U);
  EXPECT_EQ(waysOf(contour).scan, 0U);
}

TEST_P(EdgeWaysTest, LeadThroughAScanBelow32Edges) {
  const ContourProbe contour = openContour(shapes::smoothStar(32));
  contour.length();
  GetParam().ask(contour);
  EXPECT_EQ(waysOf(contour).index, 0U);
  EXPECT_EQ(waysOf(contour).scan, 1U);
}

TEST(WaysTakenTest, SearchForCrossingsByTheIndexFrom32EdgesOn) {
  const ContourProbe large = closedContour(shapes::comb(32));
  large.isSelfIntersecting();
  EXPECT_EQ(waysOf(large).index, 1U);
  EXPECT_EQ(waysOf(large).scan, 0U);
  const ContourProbe small = openContour(shapes::comb(32));
  small.isSelfIntersecting();
  EXPECT_EQ(waysOf(small).index, 0U);
  EXPECT_EQ(waysOf(small).scan, 1U);
}

TEST(WaysTakenTest, SearchNothingForCrossingsOfAStar) {
  const ContourProbe contour = closedContour(shapes::smoothStar(1000));
  contour.isSelfIntersecting();
  EXPECT_EQ(waysOf(contour).index, 0U);
  EXPECT_EQ(waysOf(contour).scan, 0U);
  EXPECT_EQ(qc_RememberedBy::contour(contour).edgeIndex, nullptr);
}

TEST(WaysTakenTest, MakeNoRoomForCountingTheScansOfASmallContour) {
  if (!heap::counts) GTEST_SKIP() << "the heap is not counted here";
  const ContourProbe contour = openContour(shapes::smoothStar(32));
  const long before = heap::blocksMade();
  contour.closestPoint(shapesCenter, false);
  contour.closestVertexIndex(shapesCenter);
  EXPECT_EQ(heap::blocksMade(), before);
}

TEST_P(EdgeWaysTest, ShareOneIndexWithAllOthersAndWithCopies) {
  const ContourProbe contour = closedContour(shapes::smoothStar(100));
  contour.closestVertexIndex(shapesCenter);
  const auto* const index = qc_RememberedBy::contour(contour).edgeIndex.get();
  GetParam().ask(contour);
  EXPECT_EQ(qc_RememberedBy::contour(contour).edgeIndex.get(), index);
  const ContourProbe copy = contour;
  GetParam().ask(copy);
  EXPECT_EQ(qc_RememberedBy::contour(copy).edgeIndex.get(), index);
}

TEST(WaysTakenTest, ScanForTheFirstFourDirectionsAndSearchTheIndexForTheFifth) {
  const ContourProbe contour = closedContour(shapes::smoothStar(100));
  for (int i = 0; i < 4; ++i) contour.extremalVertexIndex(qcRadian(0.1 * i));
  EXPECT_EQ(waysOf(contour).scan, 4U);
  EXPECT_EQ(waysOf(contour).index, 0U);
  contour.extremalVertexIndex(qcRadian(1));
  EXPECT_EQ(waysOf(contour).scan, 4U);
  EXPECT_EQ(waysOf(contour).index, 1U);
}

TEST(WaysTakenTest, SearchTheIndexForADirectionOnceItIsThere) {
  const ContourProbe contour = closedContour(shapes::smoothStar(100));
  contour.closestVertexIndex(shapesCenter);
  contour.extremalVertexIndex(qcRadian(1));
  EXPECT_EQ(waysOf(contour).index, 2U);
  EXPECT_EQ(waysOf(contour).scan, 0U);
}

TEST(WaysTakenTest, MakeOneVertexGridForEachTolerance) {
  const ContourProbe contour = closedContour(shapes::smoothStar(100));
  const auto grids = [&] { return qc_RememberedBy::contour(contour).vertexGrids.size(); };
  contour.vertexIndex(shapesCenter, 1.0);
  EXPECT_EQ(waysOf(contour).vertexGrid, 0U);
  EXPECT_EQ(grids(), 1U);
  contour.vertexIndex(shapesCenter, 1.0);
  EXPECT_EQ(waysOf(contour).vertexGrid, 1U);
  EXPECT_EQ(grids(), 1U);
  contour.vertexIndex(shapesCenter, 2.0);
  EXPECT_EQ(waysOf(contour).vertexGrid, 1U);
  EXPECT_EQ(grids(), 2U);
  contour.vertexIndex(shapesCenter, 1.0);
  contour.vertexIndex(shapesCenter, 2.0);
  EXPECT_EQ(waysOf(contour).vertexGrid, 3U);
}

TEST(WaysTakenTest, AreCountedAnewWhenTheAnswersAreForgotten) {
  qcRegion region = starRegion(100);
  askUntilAGridPays(region);
  ask(region, 5);
  EXPECT_EQ(waysOf(region).grid, 5U);
  region.points(region.points());
  EXPECT_EQ(workOf(region), 0U);
  ask(region, 5);
  EXPECT_EQ(waysOf(region).grid, 0U);
  EXPECT_EQ(waysOf(region).parity, 4U);
}

TEST(WaysTakenTest, OfACopyGoOnWithTheSameGrid) {
  const qcRegion region = starRegion(640);
  askUntilAGridPays(region);
  ask(region, 1);
  const qcRegion copy = region;
  qcRegion assigned;
  assigned = region;
  for (const qcRegion& other : {std::cref(copy), std::cref(std::as_const(assigned))}) {
    EXPECT_EQ(workOf(other), workOf(region));
    ask(other, 1);
    EXPECT_EQ(waysOf(other).ray, 0U);
    EXPECT_EQ(waysOf(other).grid, 2U);
  }
  EXPECT_EQ(waysOf(region).grid, 1U);
}

// Sets.

/// k overlapping stars, one to the right of the other.
qcRegionSet rowOfStars(std::size_t k) {
  std::vector<qcPtrHandle_const<qcRegion>> regions;
  for (std::size_t i = 0; i < k; ++i) {
    Points outline = shapes::smoothStar(16);
    for (Point& p : outline) p = p + Point(700.0 * static_cast<double>(i), 0.0);
    regions.emplace_back(new qcRegion(outline, qcContourDefs::eNoIntersectionRepair));
  }
  return {regions, qcContourDefs::eNoIntersectionRepair};
}

struct SetQuestion {
  std::string name;
  void (*ask)(const qcRegionSet& set);
  /// How often the regions are searched.
  std::size_t searches = 1;
};

void PrintTo(const SetQuestion& question, std::ostream* out) { *out << question.name; }

const SetQuestion setQuestions[] = {
    {"Inside", [](const qcRegionSet& s) { EXPECT_TRUE(s.inside(shapesCenter, false)); }},
    {"Distance", [](const qcRegionSet& s) { s.distToPoint(shapesCenter, false, false, false); }},
    {"SelfIntersection", [](const qcRegionSet& s) { EXPECT_TRUE(s.isSelfIntersecting()); }},
    {"Repair",
     [](const qcRegionSet& s) {
       qcRegionSet repaired = s;
       s.regularize(repaired);
       EXPECT_LT(repaired.regions().size(), s.regions().size());
     },
     2},
};

class SetWaysTest : public testing::TestWithParam<SetQuestion> {};

INSTANTIATE_TEST_SUITE_P(Each, SetWaysTest, testing::ValuesIn(setQuestions),
                         [](const auto& instance) { return instance.param.name; });

TEST_P(SetWaysTest, LeadThroughTheIndexFrom8RegionsOn) {
  const qcRegionSet set = rowOfStars(8);
  GetParam().ask(set);
  EXPECT_EQ(qc_RememberedBy::set(set).waysTaken.index, GetParam().searches);
  EXPECT_EQ(qc_RememberedBy::set(set).waysTaken.scan, 0U);
}

TEST_P(SetWaysTest, LeadThroughAScanBelow8Regions) {
  const qcRegionSet set = rowOfStars(7);
  GetParam().ask(set);
  EXPECT_EQ(qc_RememberedBy::set(set).waysTaken.index, 0U);
  EXPECT_EQ(qc_RememberedBy::set(set).waysTaken.scan, GetParam().searches);
}

TEST(WaysTakenTest, LookUpPointsInAGridUnlessManyRegionsLieInOnePlace) {
  const qcRegionSet row = rowOfStars(100);
  EXPECT_TRUE(row.inside(shapesCenter, false));
  EXPECT_TRUE(qc_RememberedBy::set(row).index->grid.has_value());
  const std::vector<qcPtrHandle_const<qcRegion>> same(40, row.regions().front());
  const qcRegionSet pile(same, qcContourDefs::eNoIntersectionRepair);
  EXPECT_TRUE(pile.inside(shapesCenter, false));
  EXPECT_FALSE(qc_RememberedBy::set(pile).index->grid.has_value());
}

TEST(WaysTakenTest, LookOnceWhetherASetCanHaveAnIndex) {
  std::vector<qcPtrHandle_const<qcRegion>> regions = rowOfStars(8).regions();
  regions.emplace_back();
  const qcRegionSet set(regions, qcContourDefs::eNoIntersectionRepair);
  EXPECT_TRUE(set.inside(shapesCenter, false));
  EXPECT_TRUE(set.inside(shapesCenter, false));
  EXPECT_EQ(qc_RememberedBy::set(set).waysTaken.scan, 2U);
  EXPECT_TRUE(qc_RememberedBy::set(set).indexIsKnown);
  EXPECT_EQ(qc_RememberedBy::set(set).index, nullptr);
}

}  // namespace
