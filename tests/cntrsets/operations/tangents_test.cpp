// SPDX-License-Identifier: MIT
//
// The linear program of tangents: known solutions, every corner of the program tried in turn, and
// what the weights promise.

#include <cntrsets/operations/tangents.h>

#include <cmath>
#include <string>

#include <gtest/gtest.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>

namespace {

using cntr::sets::TangentProgram;
using Point = qcVector<2>;
using Known = TangentProgram::Known;
using Solution = TangentProgram::Solution;

/// The tangent that is `value` at the origin and grows with slope 1 towards `direction`, of unit
/// length, as it is known at `at`.
Known tangent(std::size_t side, double value, const Point& direction, const Point& at = {0, 0}) {
  const double distance = value + direction.x() * at.x() + direction.y() * at.y();
  return {side, at, direction * distance, distance};
}

Solution solve(const std::vector<Known>& known, const Point& half) {
  TangentProgram program;
  for (const Known& one : known) program.add(one);
  return program.solve(half);
}

double valueAt(const Known& known, const Point& p) {
  if (known.distance == 0.0) return 0.0;
  const Point growth = known.offset * (1.0 / known.distance);
  const Point way = p - known.at;
  return known.distance + growth.x() * way.x() + growth.y() * way.y();
}

double smallestAt(const std::vector<Known>& known, const Point& p) {
  double least = infinity;
  for (const Known& one : known) least = std::min(least, valueAt(one, p));
  return least;
}

/// The largest of the smallest values: at a corner of the rectangle, where two tangents are equal
/// on one of its sides, or where three are equal.
double largestByDefinition(const std::vector<Known>& known, const Point& half) {
  double best = -infinity;
  const auto consider = [&](const Point& p) {
    if (std::abs(p.x()) <= half.x() * (1 + 1e-12) && std::abs(p.y()) <= half.y() * (1 + 1e-12))
      best = std::max(best, smallestAt(known, p));
  };
  /// Where the difference of two tangents is 0: a line, as (a, b, c) with a x + b y + c = 0.
  struct Line {
    double a, b, c;
  };
  std::vector<Line> lines{{1, 0, half.x()}, {1, 0, -half.x()}, {0, 1, half.y()}, {0, 1, -half.y()}};
  for (std::size_t i = 0; i < known.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      const double c = valueAt(known[i], {0, 0}) - valueAt(known[j], {0, 0});
      lines.push_back({valueAt(known[i], {1, 0}) - valueAt(known[j], {1, 0}) - c,
                       valueAt(known[i], {0, 1}) - valueAt(known[j], {0, 1}) - c, c});
    }
  }
  for (const Line& l : lines) {
    for (const Line& m : lines) {
      const double det = l.a * m.b - l.b * m.a;
      if (std::abs(det) > 1e-9)
        consider({(l.b * m.c - m.b * l.c) / det, (m.a * l.c - l.a * m.c) / det});
    }
  }
  return best;
}

TEST(TangentProgramTest, OneTangentLeadsToTheCornerTowardsWhichItGrows) {
  const Solution solution = solve({tangent(7, 1.0, {0.6, -0.8})}, {2, 3});
  EXPECT_EQ(solution.at, Point(2, -3));
  EXPECT_NEAR(solution.value, 1.0 + 1.2 + 2.4, 1e-15);
  EXPECT_EQ(solution.shares[0].side, 7U);
  EXPECT_EQ(solution.shares[0].weight, 1.0);
  EXPECT_EQ(solution.shares[1].weight, 0.0);
  EXPECT_EQ(solution.shares[2].weight, 0.0);
}

TEST(TangentProgramTest, ADistanceOfZeroGrowsNowhere) {
  const Solution solution = solve({{3, {0.5, 0.5}, {0, 0}, 0.0}}, {1, 1});
  EXPECT_EQ(solution.value, 0.0);
  EXPECT_EQ(solution.shares[0].side, 3U);
}

TEST(TangentProgramTest, BetweenTwoOppositeSidesIsTheMiddle) {
  const Solution solution = solve({tangent(0, 1.0, {1, 0}), tangent(1, 4.0, {-1, 0})}, {10, 1});
  EXPECT_NEAR(solution.at.x(), 1.5, 1e-14);
  EXPECT_NEAR(solution.value, 2.5, 1e-14);
}

TEST(TangentProgramTest, InATriangleIsTheCentreOfItsIncircle) {
  // The triangle (0, 0), (4, 0), (0, 3) with its incircle around (1, 1), seen from (0.5, 0.75).
  const Solution solution = solve({tangent(0, 0.75, {0, 1}), tangent(1, 0.5, {1, 0}),
                                   tangent(2, (12 - 1.5 - 3.0) / 5, {-0.6, -0.8})},
                                  {2, 2});
  EXPECT_NEAR(solution.at.x(), 0.5, 1e-14);
  EXPECT_NEAR(solution.at.y(), 0.25, 1e-14);
  EXPECT_NEAR(solution.value, 1.0, 1e-14);
  // The lengths of the sides over the perimeter.
  double weights[3] = {};
  for (const TangentProgram::Share& share : solution.shares) weights[share.side] += share.weight;
  EXPECT_NEAR(weights[0], 4.0 / 12.0, 1e-14);
  EXPECT_NEAR(weights[1], 3.0 / 12.0, 1e-14);
  EXPECT_NEAR(weights[2], 5.0 / 12.0, 1e-14);
}

TEST(TangentProgramTest, WhereATangentIsKnownDoesNotMatter) {
  const Point half(3, 3);
  const Solution here = solve({tangent(0, 1.0, {0, 1}), tangent(1, 2.0, {0.6, -0.8})}, half);
  const Solution there =
      solve({tangent(0, 1.0, {0, 1}, {2, 1}), tangent(1, 2.0, {0.6, -0.8}, {3, -1})}, half);
  EXPECT_NEAR(here.at.x(), there.at.x(), 1e-14);
  EXPECT_NEAR(here.at.y(), there.at.y(), 1e-14);
  EXPECT_NEAR(here.value, there.value, 1e-14);
}

TEST(TangentProgramTest, ForgetsWhatWasCleared) {
  TangentProgram program;
  program.add(tangent(0, 0.0, {-1, 0}));
  program.clear();
  program.add(tangent(5, 1.0, {1, 0}));
  const Solution solution = program.solve({1, 1});
  EXPECT_EQ(solution.at.x(), 1.0);
  EXPECT_EQ(solution.value, 2.0);
  EXPECT_EQ(solution.shares[0].side, 5U);
}

/// Up to 8 tangents of distances from points, as a search has them: known where the distance is.
std::vector<Known> anyTangents(shapes::Random& random) {
  std::vector<Known> known(1 + random.below(8));
  for (std::size_t i = 0; i < known.size(); ++i) {
    const Point at(random.uniform(-1.0, 1.0), random.uniform(-1.0, 1.0));
    const Point offset = random.chance(0.2)
                             ? Point(random.chance(0.5) ? 0.5 : -0.5, 0.0)
                             : Point(random.uniform(-1.0, 1.0), random.uniform(-1.0, 1.0));
    known[i] = {i, at, offset, offset.len()};
  }
  return known;
}

TEST(TangentProgramTest, FindsWhatTryingEveryCornerFinds) {
  for (std::uint64_t seed = 0; seed < 2000; ++seed) {
    shapes::Random random(seed);
    const std::vector<Known> known = anyTangents(random);
    const Point half(random.uniform(0.01, 1.0), random.uniform(0.01, 1.0));
    const Solution solution = solve(known, half);
    const std::string what = "seed " + std::to_string(seed);
    EXPECT_NEAR(solution.value, largestByDefinition(known, half), 1e-9) << what;
    EXPECT_NEAR(smallestAt(known, solution.at), solution.value, 1e-9) << what;
    EXPECT_LE(std::abs(solution.at.x()), half.x()) << what;
    EXPECT_LE(std::abs(solution.at.y()), half.y()) << what;
  }
}

TEST(TangentProgramTest, TheWeightedMeanOfItsSharesNeverExceedsTheValue) {
  for (std::uint64_t seed = 0; seed < 2000; ++seed) {
    shapes::Random random(seed);
    const std::vector<Known> known = anyTangents(random);
    const Point half(random.uniform(0.01, 1.0), random.uniform(0.01, 1.0));
    const Solution solution = solve(known, half);
    const std::string what = "seed " + std::to_string(seed);
    double sum = 0.0;
    for (const TangentProgram::Share& share : solution.shares) {
      EXPECT_GE(share.weight, 0.0) << what;
      sum += share.weight;
    }
    EXPECT_NEAR(sum, 1.0, 1e-14) << what;
    for (const Point& corner : {Point(half.x(), half.y()), Point(half.x(), -half.y()),
                                Point(-half.x(), half.y()), Point(-half.x(), -half.y())}) {
      double mean = 0.0;
      for (const TangentProgram::Share& share : solution.shares)
        mean += share.weight * valueAt(known[share.side], corner);
      EXPECT_LE(mean, solution.value + 1e-9) << what;
    }
  }
}

}  // namespace
