// SPDX-License-Identifier: MIT
//
// Alignment: known motions are recovered from any rotation, the residual is that of the literal
// definition, and neither a small motion nor a literal search of all motions reduces it.

#include <cmath>

#include <cntr/deviation.h>
#include <gtest/gtest.h>
#include <testing/plain/align.h>
#include <testing/plain/deviation.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>
#include <testing/twin/repetitions.h>

#include "labelled_contours.h"

namespace {

using labelled::closed;
using labelled::Contours;
using shapes::Point;
using shapes::Points;

/// A shape without symmetry.
const Points bracket = {{0, 0}, {60, 0}, {60, 12}, {22, 12}, {22, 37}, {0, 37}};

qcXform<2> motion(double degrees, const Point& by) {
  const qcRadian angle = qcDegree(degrees);
  return {qcMatrix<2>(angle, angle, 1.0, 1.0), by};
}

Points moved(const Points& points, const qcXform<2>& by) {
  Points result;
  for (const Point& p : points) result.push_back(by * p);
  return result;
}

/// The root mean square distance by the definition.
double residual(const Points& measured, const Points& nominal) {
  const double spacing = closed(measured).length() / 512.0;
  return plain::deviation({{measured, true}}, {{nominal, true}, {{nominal.front()}, false}},
                          spacing)
      .rms;
}

TEST(AlignContours, SettlesFromAnyRotation) {
  for (int degrees = -180; degrees < 180; degrees += 7) {
    const qcXform<2> by = motion(degrees, Point(13.0, -400.0));
    const qcAlignment found = qf_Align({closed(moved(bracket, by))}, {closed(bracket)});
    SCOPED_TRACE(degrees);
    EXPECT_TRUE(found.settled);
    EXPECT_LE(found.steps, 50);
    EXPECT_LE(found.residual, 1e-8);
    EXPECT_NEAR(std::remainder(found.angle.toDouble() + degrees, 360.0), 0.0, 1e-7);
    for (const Point& p : bracket) {
      EXPECT_TRUE(qfRealEq(found.transform * (by * p), p, 1e-7));
    }
  }
}

TEST(AlignContours, FindsStarsAgain) {
  for (std::uint64_t seed = 0; seed < 12; ++seed) {
    const Points star = shapes::spikyStar(23, seed);
    shapes::Random random(seed);
    const qcXform<2> by = motion(random.uniform(-180.0, 180.0), Point(1e3, 5.0));
    const qcAlignment found = qf_Align({closed(moved(star, by))}, {closed(star)});
    EXPECT_TRUE(found.settled) << seed;
    EXPECT_LE(found.residual, 1e-6) << seed;
  }
}

TEST(AlignContours, LeavesTheResidualOfTheDefinitionAtItsLeast) {
  for (std::uint64_t seed = 0; seed < 10; ++seed) {
    shapes::Random random(seed);
    Points measured = bracket;
    for (Point& p : measured) {
      const double dx = random.uniform(-0.5, 0.5);
      p = p + Point(dx, random.uniform(-0.5, 0.5));
    }
    measured = moved(measured, motion(random.uniform(-180.0, 180.0), Point(3, 4)));
    const qcAlignment found = qf_Align({closed(measured)}, {closed(bracket)});
    EXPECT_TRUE(found.settled) << seed;
    const Points there = moved(measured, found.transform);
    EXPECT_NEAR(residual(there, bracket), found.residual, 1e-9) << seed;
    EXPECT_GT(found.residual, 0.01) << seed;
    for (const double angle : {-0.02, 0.0, 0.02}) {
      for (const Point& by : {Point(0.02, 0), Point(-0.02, 0), Point(0, 0.02), Point(0, -0.02)}) {
        const double other = residual(moved(there, motion(angle, by)), bracket);
        EXPECT_GE(other, found.residual - 1e-6) << seed;
      }
    }
  }
}

/// The points, each moved by up to `size` either way.
Points shaken(Points points, double size, shapes::Random& random) {
  for (Point& p : points) {
    const double dx = random.uniform(-size, size);
    const double dy = random.uniform(-size, size);
    p = p + Point(dx, dy);
  }
  return points;
}

/// The shape shaken, turned and shifted, aligned with the shape itself: the residual is at most
/// that of the literal search, up to this share of the extent.
void expectNoWorseThanLiteral(const Points& nominal, double size, std::uint64_t seed,
                              double share) {
  shapes::Random random(seed);
  const double degrees = random.uniform(-180.0, 180.0);
  const Points measured = moved(shaken(nominal, size, random), motion(degrees, Point(20, -50)));
  const qcAlignment found = qf_Align({closed(measured)}, {closed(nominal)});
  const plain::Aligned literal = plain::align({{measured, true}}, {{nominal, true}});
  SCOPED_TRACE(seed);
  EXPECT_TRUE(found.settled);
  EXPECT_LE(found.residual, literal.residual + share * closed(nominal).length());
  // The literal search works: shaking moves no point by more than this.
  EXPECT_LE(literal.residual, 1.5 * size + 1e-3);
}

TEST(AlignContours, IsNeverWorseThanALiteralSearch) {
  // A step of less than 1e-10 of the extent is the last one.
  for (std::uint64_t seed = 0; seed < repetitions(4); ++seed) {
    expectNoWorseThanLiteral(bracket, 1.5, seed, 1e-9);
    expectNoWorseThanLiteral(shapes::spikyStar(7, seed), 2.0, seed, 1e-9);
  }
  expectNoWorseThanLiteral(bracket, 0.0, 100, 1e-9);
}

TEST(AlignContours, EndsInOneOfSeveralPlacesThatAreAboutAsGood) {
  // Points of narrow spikes belong to one side or the other: each choice has a minimum of its own.
  for (std::uint64_t seed = 0; seed < repetitions(4); ++seed)
    expectNoWorseThanLiteral(shapes::spikyStar(11, seed), 20.0, seed, 1e-6);
}

TEST(AlignContours, SettlesFromThousandsOfRotations) {
  const Points star = shapes::spikyStar(13, 5);
  const std::size_t rotations = repetitions(1000);
  for (std::size_t k = 0; k < rotations; ++k) {
    const double degrees = 360.0 * static_cast<double>(k) / static_cast<double>(rotations) - 180.0;
    for (const Points& shape : {bracket, star}) {
      const Points turned = moved(shape, motion(degrees, Point(7.0, 3.0)));
      const qcAlignment found = qf_Align({closed(turned)}, {closed(shape)});
      ASSERT_TRUE(found.settled) << degrees;
      ASSERT_LE(found.steps, 50) << degrees;
      ASSERT_LE(found.residual, 1e-6) << degrees;
    }
  }
}

TEST(AlignContours, WeighsPointsAlikeWhereNoContourHasALength) {
  const qcAlignment one = qf_Align({closed({{3, 400}})}, {closed(bracket)});
  EXPECT_TRUE(one.settled);
  EXPECT_LE(one.residual, 1e-8);
  const qcAlignment two =
      qf_Align({closed({{3, 0}}), closed({{3, 10}})}, {closed({{100, 0}}), closed({{110, 0}})});
  EXPECT_TRUE(two.settled);
  EXPECT_LE(two.residual, 1e-6);
  EXPECT_TRUE(qfRealEq(two.transform * Point(3, 5), Point(105, 0), 1e-5));
}

TEST(AlignContours, DoesNotMirror) {
  Points mirrored = bracket;
  for (Point& p : mirrored) p = Point(-p.x(), p.y());
  EXPECT_GT(qf_Align({closed(mirrored)}, {closed(bracket)}).residual, 1.0);
}

TEST(AlignContours, TakesSeveralContours) {
  const Points hole = {{5, 20}, {5, 30}, {15, 30}};
  const qcXform<2> by = motion(140.0, Point(-70.0, 8.0));
  const qcAlignment found = qf_Align({closed(moved(bracket, by)), closed(moved(hole, by))},
                                     {closed(bracket), closed(hole)});
  EXPECT_LE(found.residual, 1e-8);
  EXPECT_NEAR(found.angle.toDouble(), -140.0, 1e-7);
}

TEST(AlignContours, RefusesWhatHasNoAnswer) {
  EXPECT_THROW(qf_Align({}, {closed(bracket)}), qcContourDefs::EmptyContour);
  EXPECT_THROW(qf_Align({closed(bracket)}, {closed({})}), qcContourDefs::EmptyContour);
  EXPECT_THROW(qf_Align({closed({{infinity, 0}})}, {closed(bracket)}), qcContourDefs::BadParams);
}

}  // namespace
