// SPDX-License-Identifier: MIT
//
// Hu's invariants: shapes whose moments are known, exact moments of others, and what must not
// change them.

#include <cntr/descriptors.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include <gtest/gtest.h>
#include <testing/plain/descriptors.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>
#include <testing/twin/repetitions.h>

namespace {

using shapes::Point;
using shapes::Points;
using Invariants = std::array<double, 7>;

/// The sizes of the products of moments that make up each invariant: its rounding errors grow with
/// them, or with the size of the second moments.
Invariants sizesOf(const Invariants& hu) {
  const double second = hu[0];
  const double third = hu[2] + hu[3];
  return {second, second * second, third, third, third * third, second * third, third * third};
}

void expectNear(const Invariants& answer, const Invariants& exact, double tolerance) {
  const Invariants sizes = sizesOf(exact);
  for (std::size_t i = 0; i < 7; ++i) {
    // Third moments about the centre are differences: errors as large as the second ones' remain.
    const double lost = i >= 2 ? tolerance * std::pow(sizes[0], i == 2 || i == 3 ? 3.0 : 4.0) : 0.0;
    EXPECT_NEAR(answer[i], exact[i], tolerance * sizes[i] + lost) << "invariant " << i + 1;
  }
}

TEST(HuMoments, AreThoseOfKnownShapes) {
  const Invariants square = qf_HuMoments(Points{{0, 0}, {2, 0}, {2, 2}, {0, 2}});
  expectNear(square, {1.0 / 6.0, 0, 0, 0, 0, 0, 0}, 1e-15);
  // Second moments a^2 / 12 and b^2 / 12 over the area a b.
  const Invariants rectangle = qf_HuMoments(Points{{0, 0}, {4, 0}, {4, 1}, {0, 1}});
  expectNear(rectangle, {17.0 / 48.0, 225.0 / 2304.0, 0, 0, 0, 0, 0}, 1e-15);
  const Invariants disc = qf_HuMoments(shapes::regularPolygon(100000, 3.0, Point(7, 8)));
  EXPECT_NEAR(disc[0], 0.5 / std::numbers::pi, 1e-9);
  // By hand, with the legs on the axes: eta20 = eta02 = 1/9, eta11 = -1/18, eta30 = eta03 =
  // sqrt(8) / 135 and eta21 = eta12 = -sqrt(8) / 270.
  const Invariants triangle = qf_HuMoments(Points{{0, 0}, {1, 0}, {0, 1}});
  const double unit = 8.0 / (270.0 * 270.0);
  expectNear(
      triangle,
      {2.0 / 9.0, 1.0 / 81.0, 50 * unit, 2 * unit, -20 * unit * unit, -unit * 2.0 / 9.0, 0.0},
      1e-14);
}

TEST(HuMoments, AreThoseOfExactMoments) {
  for (std::uint64_t seed = 0; seed < repetitions(150); ++seed) {
    shapes::Random random(seed);
    const std::size_t n = 5 + random.below(60);
    Points points = seed % 3 == 0   ? shapes::spikyStar(n, seed)
                    : seed % 3 == 1 ? shapes::smoothStar(n, seed)
                                    : shapes::skyline(random, n + 5);
    static constexpr double sizes[] = {1.0, 1e-9, 1e9, 1e-3};
    shapes::scaleAndShift(points, sizes[seed % 4], Point());
    SCOPED_TRACE(seed);
    expectNear(qf_HuMoments(points), plain::huMoments({points}), 1e-13);
  }
}

TEST(HuMoments, KeepTheirDigitsFarFromTheOrigin) {
  Points far = shapes::spikyStar(40);
  for (Point& p : far) p = Point(std::round(p.x()), std::round(p.y()));
  const Invariants near = qf_HuMoments(far);
  shapes::scaleAndShift(far, 1.0, Point(1e9, -1e9));
  expectNear(qf_HuMoments(far), near, 1e-13);
  expectNear(qf_HuMoments(far), plain::huMoments({far}), 1e-13);
}

TEST(HuMoments, StayWhenTheShapeIsTurnedScaledAndReversed) {
  for (std::uint64_t seed = 0; seed < 50; ++seed) {
    const Points points = shapes::spikyStar(11, seed);
    const Invariants hu = qf_HuMoments(points);
    Points turned = points;
    shapes::rotate(turned, 0.1 * static_cast<double>(seed));
    shapes::scaleAndShift(turned, 1e-3, Point(4, 5));
    expectNear(qf_HuMoments(turned), hu, 1e-12);
    std::reverse(turned.begin(), turned.end());
    expectNear(qf_HuMoments(turned), hu, 1e-12);
    for (Point& p : turned) p = Point(-p.x(), p.y());
    Invariants mirrored = hu;
    mirrored[6] = -mirrored[6];
    expectNear(qf_HuMoments(turned), mirrored, 1e-12);
    EXPECT_NE(hu[6], 0.0);
  }
}

TEST(HuMoments, AddRingsWithTheirSigns) {
  const Points outline = {{0, 0}, {4, 0}, {4, 4}, {0, 4}};
  const Points hole = {{1, 1}, {1, 3}, {3, 3}, {3, 1}};
  const std::vector<Points> frame = {outline, hole, {{9, 9}, {8, 8}}};
  // (256 - 16) / 12 in each direction, over the squared area of 12.
  expectNear(qf_HuMoments(frame), {2.0 * 20.0 / 144.0, 0, 0, 0, 0, 0, 0}, 1e-15);
  const std::vector<Points> both = {shapes::spikyStar(20), {{700, 480}, {640, 500}, {620, 470}}};
  expectNear(qf_HuMoments(both), plain::huMoments(both), 1e-13);
  EXPECT_EQ(qf_HuMoments(std::vector<Points>{outline}), qf_HuMoments(outline));
}

TEST(HuMoments, TakeNothingFromRingsOfFewerThanThreeVertices) {
  for (std::uint64_t seed = 0; seed < 50; ++seed) {
    const Points star = shapes::spikyStar(11, seed);
    const Invariants hu = qf_HuMoments(star);
    EXPECT_EQ(qf_HuMoments(std::vector<Points>{star, {{0.3, 0.7}, {-0.9, 1.1}}}), hu) << seed;
    EXPECT_EQ(qf_HuMoments(std::vector<Points>{{}, {{1e9, 1e9}}, {{-1e9, 0}, {0, 1e9}}, star}), hu)
        << seed;
  }
}

TEST(HuMoments, AreNoNumbersWhenAnyCoordinateIsNone) {
  const Points square = {{0, 0}, {2, 0}, {2, 2}, {0, 2}};
  for (const double bad : {std::nan(""), std::numeric_limits<double>::infinity()}) {
    for (const Points& other :
         {Points{{bad, 1}}, Points{{1, bad}}, Points{{1, 0}, {bad, 0}, {1, 1}},
          Points{{1, 0}, {0, bad}, {1, 1}}}) {
      for (const double number : qf_HuMoments(std::vector<Points>{square, other})) {
        EXPECT_TRUE(std::isnan(number));
      }
    }
  }
}

TEST(HuMoments, AreNoNumbersWithoutArea) {
  for (const Points& points :
       {Points{}, Points{{1, 2}}, Points{{1, 2}, {3, 4}}, Points{{1, 1}, {1, 1}, {1, 1}},
        Points{{0, 0}, {0.1, 0.3}, {0.2, 0.6}, {0.7, 2.1}}, Points{{0, 0}, {2, 2}, {2, 0}, {0, 2}},
        Points{{0, 0}, {infinity, 0}, {1, 1}}, Points{{0, 0}, {std::nan(""), 0}, {1, 1}}}) {
    for (const double number : qf_HuMoments(points)) EXPECT_TRUE(std::isnan(number));
  }
  for (const double number : qf_HuMoments(std::vector<Points>{})) EXPECT_TRUE(std::isnan(number));
}

}  // namespace
