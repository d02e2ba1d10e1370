// SPDX-License-Identifier: MIT
//
// The containment grid by itself: where it answers, the answer is that of the ray, and it leaves
// few points to the ray.

#include <cntr/index/containmentgrid.h>

#include <cmath>
#include <string>

#include <cntr/compute/containment.h>
#include <cntr/compute/extents.h>
#include <gtest/gtest.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>
#include <testing/twin/repetitions.h>
#include <tests/cntr/compute/cut_square.h>
#include <tests/cntr/figures.h>

namespace {

using cntr::index::ContainmentGrid;
using figures::square;
using Answer = ContainmentGrid::Answer;
using Point = qcVector<2>;
using Points = std::vector<Point>;

/// An outline, its grid, and the ray that defines the answers.
class Gridded {
 public:
  explicit Gridded(Points points)
      : points_(std::move(points)),
        bounds_(cntr::compute::boundingBox(points_)),
        radius_(cntr::compute::radiusFromFirst(points_)),
        grid_(points_, bounds_, radius_) {}

  const Points& points() const { return points_; }
  Answer locate(const Point& p) const { return grid_.locate(points_, p); }
  Answer byRay(const Point& p) const {
    const std::size_t count =
        cntr::compute::rayCrossings({{points_, true}, bounds_}, 2.0 * radius_, p, false);
    return count % 2 == 1 ? Answer::eInside : Answer::eOutside;
  }
  /// True when the grid answers; an answer must be that of the ray.
  bool answers(const Point& p) const {
    const Answer answer = locate(p);
    if (answer == Answer::eUnknown) return false;
    EXPECT_EQ(answer, byRay(p)) << p.x() << ", " << p.y();
    return true;
  }

 private:
  Points points_;
  cntr::plane::Box bounds_;
  double radius_;
  ContainmentGrid grid_;
};

TEST(ContainmentGridTest, KnowsTheInsideAndTheOutside) {
  // An L: the upper right quarter is outside.
  const Gridded grid({{0, 0}, {100, 0}, {100, 50}, {50, 50}, {50, 100}, {0, 100}});
  EXPECT_EQ(grid.locate({25, 25}), Answer::eInside);
  EXPECT_EQ(grid.locate({80, 20}), Answer::eInside);
  EXPECT_EQ(grid.locate({70, 60}), Answer::eOutside);
}

TEST(ContainmentGridTest, HoldsNothingOutsideTheBox) {
  const Gridded grid(square(100));
  for (const Point& p : {Point(-1, 50), Point(101, 50), Point(50, -1), Point(50, 1e9)}) {
    EXPECT_EQ(grid.locate(p), Answer::eOutside);
  }
  EXPECT_EQ(grid.locate({notANumber, 50}), Answer::eOutside);
  EXPECT_EQ(grid.locate({50, notANumber}), Answer::eOutside);
}

TEST(ContainmentGridTest, DoesNotKnowWhatIsNextToAnEdgeOrAVertex) {
  const Gridded grid(square(100));
  EXPECT_EQ(grid.locate({40, 0.5e-6}), Answer::eUnknown);
  EXPECT_EQ(grid.locate({40, 0}), Answer::eUnknown);
  EXPECT_EQ(grid.locate({100, 100}), Answer::eUnknown);
  EXPECT_EQ(grid.locate({1e-6, 1e-6}), Answer::eUnknown);
  EXPECT_EQ(grid.locate({40, 2e-5}), Answer::eInside);
}

TEST(ContainmentGridTest, DoesNotKnowWhereTheRayFallsShort) {
  // A first vertex in the middle: the ray is as long as the sides, less than the way from corner to
  // corner.
  const Gridded grid({{50, 50}, {100, 0}, {100, 100}, {0, 100}, {0, 0}});
  EXPECT_TRUE(grid.answers({60, 55}));
  for (const Point& p : {Point(99, 1), Point(99, 99), Point(1, 99), Point(1, 1), Point(50, 1)}) {
    grid.answers(p);
  }
}

TEST(ContainmentGridTest, DoesNotKnowWhereTheRayEndsInsideTheOutline) {
  const Gridded grid(cutSquare());
  for (const Point& p : {Point(98.97, 98.93), Point(90, 95), Point(95, 90)}) {
    EXPECT_FALSE(grid.answers(p));
  }
  for (const Point& p : shapes::pointsInBox(grid.points(), 500)) grid.answers(p);
}

void expectAnswersOfTheRay(const std::string& name, Points points, double fewest) {
  SCOPED_TRACE(name);
  const Gridded grid(std::move(points));
  const std::size_t count = repetitions(1000);
  std::size_t answered = 0;
  for (const Point& p : shapes::pointsInBox(grid.points(), count)) answered += grid.answers(p);
  EXPECT_GE(static_cast<double>(answered), fewest * static_cast<double>(count));
  // Next to edges and vertices.
  shapes::Random random(1);
  for (std::size_t i = 0; i < count; ++i) grid.answers(shapes::queryPoint(random, grid.points()));
}

TEST(ContainmentGridTest, AnswersMostPointsAsTheRayDoes) {
  expectAnswersOfTheRay("smooth star", shapes::smoothStar(300), 0.99);
  expectAnswersOfTheRay("spiky star", shapes::spikyStar(300), 0.99);
  expectAnswersOfTheRay("comb", shapes::comb(300), 0.99);
  expectAnswersOfTheRay("crossing star", shapes::crossingStar(300), 0.99);
  expectAnswersOfTheRay("small star", shapes::smoothStar(20), 0.99);
  expectAnswersOfTheRay("triangle", {{0, 0}, {100, 10}, {30, 90}}, 0.9);
}

TEST(ContainmentGridTest, AnswersOnTheLinesBetweenItsCellsAndInTheHeightOfVertices) {
  const Gridded grid(shapes::comb(60));
  const auto& points = grid.points();
  const auto box = cntr::compute::boundingBox(points);
  for (int i = 0; i <= 64; ++i) {
    const double x = box.minX + (box.maxX - box.minX) * i / 64;
    for (const Point& vertex : points) grid.answers({x, vertex.y()});
  }
}

/// A coordinate of the corners and middles of a grid of 16 by 16 cells of width 1.
double halfStep(shapes::Random& random) { return 0.5 * static_cast<double>(random.below(33)); }

/// A ring over such a grid whose edges pass through corners and middles of sides of cells, or
/// nearly so.
Points latticeRing(shapes::Random& random) {
  Points ring{{0, 0}};
  const double noise = random.chance(0.5) ? 0.0 : std::pow(10.0, random.uniform(-13.0, -5.0));
  double y = 0.0;
  for (std::size_t n = 2 + random.below(10); n > 0; --n) {
    const double x = halfStep(random) + noise * random.uniform(-1.0, 1.0);
    if (random.chance(0.6)) y = halfStep(random);  // else almost horizontal
    ring.emplace_back(x, y + noise * random.uniform(-1.0, 1.0));
  }
  ring.emplace_back(16, 16);
  return ring;
}

/// A point on or next to the lines through such places, or to the left of a vertex.
Point latticePoint(shapes::Random& random, const Points& ring) {
  if (random.chance(0.3)) {
    const Point& vertex = ring[random.below(ring.size())];
    const Point& other = ring[random.below(ring.size())];
    const double x = vertex.x() - random.uniform(0.0, 1.0);
    return {x, vertex.y() + random.uniform(-1.0, 1.0) * (other.y() - vertex.y())};
  }
  const auto coordinate = [&random] {
    const double at = random.chance(0.7) ? halfStep(random) : random.uniform(0.0, 16.0);
    const double off = random.chance(0.3) ? 0.0 : std::pow(10.0, random.uniform(-15.0, -3.0));
    return random.chance(0.5) ? at + off : at - off;
  };
  const double x = coordinate();
  return {x, coordinate()};
}

TEST(ContainmentGridTest, AnswersAsTheRayWhereEdgesPassThroughCornersAndMiddlesOfCells) {
  shapes::Random random(71);
  constexpr std::size_t questions = 40;
  const std::size_t rings = repetitions(1000);
  std::size_t answered = 0;
  for (std::size_t round = 0; round < rings; ++round) {
    const Points ring = latticeRing(random);
    const double scale = random.chance(0.5) ? 1.0 : random.uniform(0.5, 30.0);
    const double shiftX = random.chance(0.5) ? 0.0 : random.uniform(-3e4, 3e4);
    const double shiftY = random.chance(0.5) ? 0.0 : random.uniform(-3e4, 3e4);
    Points placed = ring;
    shapes::scaleAndShift(placed, scale, Point(shiftX, shiftY));
    const Gridded grid(placed);
    for (std::size_t i = 0; i < questions; ++i) {
      Points asked{latticePoint(random, ring)};
      shapes::scaleAndShift(asked, scale, Point(shiftX, shiftY));
      if (grid.answers(asked.front())) ++answered;
    }
    ASSERT_FALSE(HasFailure()) << "round " << round;
  }
  EXPECT_GT(answered, rings * questions / 2);
}

TEST(ContainmentGridTest, AnswersAsTheRayInTheHeightAtWhichAFlatEdgeLeavesACell) {
  // Where the edge leaves the cell, it is rounded to the height of the point, although it may pass
  // it farther left or right.
  constexpr double low = 999000.0;
  constexpr double width = 64.0;
  constexpr int columns = 22;
  shapes::Random random(5);
  std::size_t answered = 0;
  for (std::size_t round = 0; round < repetitions(300); ++round) {
    const double start = random.uniform(1.0, width - 1.0);
    const double slope = random.uniform(-1e-4, 1e-4);
    const Gridded grid({{low, low},
                        {low + width, low},
                        {low + width, low + start + slope * width},
                        {low, low + start}});
    for (int column = 1; column < columns; ++column) {
      const double side = width * column / columns;
      const Point p(low + side - random.uniform(0.1, 2.0), low + start + slope * side);
      if (grid.answers(p)) ++answered;
    }
  }
  EXPECT_GT(answered, repetitions(300) * columns / 2);
}

}  // namespace
