// SPDX-License-Identifier: MIT
//
// Cells with an answer against the literal definitions, point by point.

#include <cntrsets/operations/insidegrid.h>

#include <testing/plain/measures.h>
#include <tests/cntrsets/operations/libraryholds.h>

namespace {

using cntr::plane::Box;
using cntr::sets::InsideGrid;
using features::Feature;
using features::libraryHolds;
using features::Points;
using features::square;
using Answer = InsideGrid::Answer;

Box boxOf(const Feature& feature) {
  Box box;
  for (const qcRings& part : feature)
    for (const qcVector<2>& p : part.outline) box.add(p);
  return box;
}

InsideGrid gridOf(const Feature& feature) {
  return {feature, boxOf(feature), [&feature](const qcVector<2>& p) {
            return plain::fills(features::plainOf(feature), plain::Rule::nonZero, p);
          }};
}

/// A star with a hole that is a smaller one, and another star beside it.
Feature ringAndDisc(std::size_t vertices, std::uint64_t seed) {
  const Points star = shapes::smoothStar(vertices, seed);
  Points hole = star;
  Points beside = star;
  for (qcVector<2>& p : hole) p = qcVector<2>(640, 480) + (p - qcVector<2>(640, 480)) * 0.5;
  for (qcVector<2>& p : beside) p = p + qcVector<2>(1000, 0);
  return {{star, {hole}}, {beside, {}}};
}

Points pointsIn(const Box& box, std::size_t count) {
  return shapes::pointsInBox({{box.minX, box.minY}, {box.maxX, box.maxY}}, count);
}

}  // namespace

TEST(InsideGrid, SaysWhatTheDefinitionSaysWhereItHasAnAnswer) {
  for (const std::size_t vertices : {3U, 20U, 300U}) {
    const Feature feature = ringAndDisc(vertices, vertices);
    const InsideGrid grid = gridOf(feature);
    const Points points = pointsIn(boxOf(feature), 2000);
    std::size_t answered = 0;
    for (const qcVector<2>& p : points) {
      const Answer answer = grid.at(p);
      if (answer == Answer::eUnknown) continue;
      ++answered;
      ASSERT_EQ(answer == Answer::eInside, libraryHolds(feature, p)) << p.x() << ", " << p.y();
    }
    EXPECT_GT(answered, 1400U) << vertices;
    EXPECT_LT(answered, 2000U) << vertices;
  }
}

TEST(InsideGrid, HasNoAnswerBesideEdgesAndVertices) {
  for (const std::size_t vertices : {3U, 50U, 1000U}) {
    const Feature feature = ringAndDisc(vertices, vertices);
    const InsideGrid grid = gridOf(feature);
    const Box box = boxOf(feature);
    for (const Points& ring : features::ringsOf(feature)) {
      for (std::size_t i = 0; i < ring.size(); ++i) {
        const qcVector<2> middle = (ring[i] + ring[(i + 1) % ring.size()]) * 0.5;
        for (const qcVector<2>& p : {ring[i], middle, middle + qcVector<2>(2e-6, -2e-6)}) {
          if (!contains(box, p)) continue;
          EXPECT_EQ(grid.at(p), Answer::eUnknown);
        }
      }
    }
  }
}

TEST(InsideGrid, HasNoAnswerOnEitherSideOfAnEdgeBetweenCells) {
  const Feature feature{{square, {features::box(2, 2, 5, 5)}}};
  const InsideGrid grid = gridOf(feature);
  for (const double offset : {-2e-6, 0.0, 2e-6}) {
    EXPECT_EQ(grid.at({3.4, 5.0 + offset}), Answer::eUnknown) << offset;
    EXPECT_EQ(grid.at({5.0 + offset, 3.4}), Answer::eUnknown) << offset;
  }
  EXPECT_EQ(grid.at({3.4, 4.2}), Answer::eOutside);
  EXPECT_EQ(grid.at({3.4, 5.8}), Answer::eInside);
}

TEST(InsideGrid, HasNoAnswerInTheNextCellWithinReachOfAnEdge) {
  const Feature before{{square, {features::box(2, 2, 5 - 1e-7, 5 - 1e-7)}}};
  EXPECT_EQ(gridOf(before).at({5 + 1e-7, 3.4}), Answer::eUnknown);
  EXPECT_EQ(gridOf(before).at({3.4, 5 + 1e-7}), Answer::eUnknown);
  const Feature after{{square, {features::box(5 + 1e-7, 5 + 1e-7, 8, 8)}}};
  EXPECT_EQ(gridOf(after).at({5 - 1e-7, 6.4}), Answer::eUnknown);
  EXPECT_EQ(gridOf(after).at({6.4, 5 - 1e-7}), Answer::eUnknown);
}

TEST(InsideGrid, HasNoAnswerWhereTheRayByWhichAHoleDecidesIsTooShort) {
  // Cut open from a corner to the centre, where its list begins: from next to a corner of its box
  // the ray ends within it.
  const Points hole{{0, 0},   {49, 1},    {24.5, 25.5}, {0, 50},       {-25, 25},
                    {-50, 0}, {-25, -25}, {0, -50},     {24.5, -25.5}, {49, -1}};
  const Feature feature{{features::box(-60, -60, 60, 60), {hole}}};
  const InsideGrid grid = gridOf(feature);
  const qcVector<2> p(-49.75, -49.5);
  ASSERT_FALSE(libraryHolds(feature, p));
  EXPECT_EQ(grid.at(p), Answer::eUnknown);
  EXPECT_EQ(grid.at({55, 55}), Answer::eInside) << "outside the box of the hole";
  EXPECT_EQ(grid.at({-10, 3}), Answer::eOutside) << "in the hole";
}

TEST(InsideGrid, IsTheFilledSetOfRingsThatCross) {
  const Feature bowTie{{features::bowTie, {}}};
  const InsideGrid grid = gridOf(bowTie);
  EXPECT_EQ(grid.at({1, 2}), Answer::eInside);
  EXPECT_EQ(grid.at({3, 2}), Answer::eInside);
  EXPECT_EQ(grid.at({2, 1}), Answer::eOutside);
  EXPECT_EQ(grid.at({2, 3}), Answer::eOutside);
}

TEST(InsideGrid, TakesHolesThatReachFarOutOfTheBox) {
  const Feature feature{{square, {features::box(5, -90, 200, 90)}}};
  const InsideGrid grid = gridOf(feature);
  EXPECT_EQ(grid.at({2, 5}), Answer::eInside);
  EXPECT_EQ(grid.at({8, 5}), Answer::eOutside);
  EXPECT_EQ(grid.at({10, 10}), Answer::eUnknown);
  const Feature wide{{square, {features::box(5, -9e5, 9e5, 9e5)}}};
  EXPECT_EQ(gridOf(wide).at({2, 5}), Answer::eUnknown) << "one cell";
}

TEST(InsideGrid, AsksWhatIsFilledOnceForEachPlaceThatEdgesEnclose) {
  const Feature feature = ringAndDisc(100, 1);
  std::size_t asked = 0;
  const InsideGrid grid(feature, boxOf(feature), [&](const qcVector<2>& p) {
    ++asked;
    return plain::fills(features::plainOf(feature), plain::Rule::nonZero, p);
  });
  EXPECT_GT(asked, 3U);
  EXPECT_LT(asked, 60U) << "runs above others share their answer";
}

TEST(InsideGrid, IsNotPossibleForThinFeaturesAndLargeCoordinates) {
  const auto isPossible = [](const Points& outline) {
    const Feature feature{{outline, {}}};
    return InsideGrid::isPossible(feature, boxOf(feature));
  };
  EXPECT_TRUE(isPossible(square));
  EXPECT_FALSE(isPossible({{0, 0}, {10, 0}, {10, 2e-5}}));
  EXPECT_FALSE(isPossible({{0, 0}, {5, 0}, {10, 0}}));
  EXPECT_FALSE(isPossible({{2e6, 0}, {2e6 + 10, 0}, {2e6, 10}}));
  EXPECT_FALSE(isPossible({{0, -1e6}, {10, 0}, {0, 10}}));
  const Feature farHole{{square, {features::box(1, 1, 2e6, 2)}}};
  EXPECT_FALSE(InsideGrid::isPossible(farHole, boxOf(farHole)));
}
