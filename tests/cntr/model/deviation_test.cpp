// SPDX-License-Identifier: MIT
//
// Deviations and Hausdorff distances: hand-written cases, the literal definitions, and what is
// refused.

#include <cntr/deviation.h>

#include <cmath>
#include <functional>
#include <string>

#include <gtest/gtest.h>
#include <testing/plain/deviation.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>
#include <tests/cntr/figures.h>

#include "labelled_contours.h"

namespace {

using figures::square;
using labelled::closed;
using labelled::Contours;
using labelled::open;
using shapes::Point;
using shapes::Points;

std::vector<plain::Contour> plainly(const Contours& contours) {
  std::vector<plain::Contour> result;
  for (const qcContour& each : contours) result.push_back({each.points(), each.isClosed()});
  return result;
}

std::wstring refusal(const std::function<void()>& ask) {
  try {
    ask();
  } catch (const qcContourDefs::BadParams& error) {
    return error.message();
  } catch (const qcContourDefs::EmptyContour&) {
    return L"empty";
  }
  return L"nothing";
}

TEST(Deviation, IsPositiveOutsideAndNegativeInside) {
  const qcDeviation wide =
      qf_Deviation({closed({{-1, -1}, {5, -1}, {5, 5}, {-1, 5}})}, {closed(square(4))}, 1.0);
  EXPECT_EQ(wide.least, 1.0);
  EXPECT_EQ(wide.greatest, std::sqrt(2.0));
  EXPECT_TRUE(wide.isSigned);
  const qcDeviation narrow =
      qf_Deviation({closed({{1, 1}, {3, 1}, {3, 3}, {1, 3}})}, {closed(square(4))}, infinity);
  EXPECT_EQ(narrow, (qcDeviation{-1.0, {1, 3}, -1.0, {1, 3}, -1.0, 1.0, true}));
}

TEST(Deviation, WeighsPointsWithTheLengthThatTheyStandFor) {
  // A line of length 4 with a vertex near its end, from the x axis: 0, 3 and 4 high.
  const qcDeviation found =
      qf_Deviation({open({{0, 0}, {0, 3}, {0, 4}})}, {open({{-9, 0}, {9, 0}})}, infinity);
  EXPECT_EQ(found.mean, (0.0 * 1.5 + 3.0 * 2.0 + 4.0 * 0.5) / 4.0);
  EXPECT_EQ(found.rms, std::sqrt((9.0 * 2.0 + 16.0 * 0.5) / 4.0));
  EXPECT_EQ(found.leastAt, Point(0, 0));
  EXPECT_EQ(found.greatestAt, Point(0, 4));
  EXPECT_FALSE(found.isSigned);
}

TEST(Deviation, CountsPointsBetweenVertices) {
  const Contours measured = {open({{0, 0}, {4, 0}})};
  const Contours nominal = {open({{0, 0}, {0, 9}}), open({{4, 0}, {4, 9}})};
  EXPECT_EQ(qf_Deviation(measured, nominal, infinity).greatest, 0.0);
  EXPECT_EQ(qf_Deviation(measured, nominal, 2.0).greatest, 2.0);
  EXPECT_EQ(qf_Deviation(measured, nominal, 2.0).greatestAt, Point(2, 0));
  EXPECT_EQ(qf_Deviation(measured, nominal, 2.0).mean, 1.0);
  EXPECT_DOUBLE_EQ(qf_Deviation(measured, nominal, 1.9).greatest, 4.0 / 3.0);
}

TEST(Deviation, MeasuresHolesToo) {
  const Points hole = {{1, 1}, {1, 3}, {3, 3}, {3, 1}};
  const Contours nominal = {closed(square(4)), closed(hole)};
  EXPECT_EQ(qf_Deviation({closed({{2, 2}})}, nominal, 1.0).greatest, 1.0);
  EXPECT_EQ(qf_Deviation({closed({{0.5, 2}})}, nominal, 1.0).greatest, -0.5);
  EXPECT_EQ(qf_Deviation({closed({{2, 2}})}, {closed(square(4))}, 1.0).greatest, -2.0);
}

TEST(Deviation, OfPointsWeighsThemAlike) {
  const qcDeviation found =
      qf_Deviation({open({{0, 1}}), open({{0, 4}}), open({})}, {open({{-9, 0}, {9, 0}})}, 1.0);
  EXPECT_EQ(found.mean, 2.5);
  EXPECT_EQ(found.rms, std::sqrt(8.5));
}

TEST(Deviation, IsThatOfTheDefinition) {
  for (std::uint64_t seed = 0; seed < 400; ++seed) {
    shapes::Random random(seed);
    const shapes::Shape first = shapes::anyFinite(seed, 30);
    if (first.points.empty()) continue;
    Points moved = shapes::smoothStar(3 + random.below(60), seed);
    if (random.chance(0.5)) moved = first.points;
    const double by = random.uniform(-3.0, 3.0);
    shapes::scaleAndShift(moved, 1.0 + 0.01 * by, Point(by, 0.5));
    const Contours measured = {closed(moved), open({{3, 4}})};
    const Contours nominal = {{first.points, first.closed, 0}};
    const double spacing = random.chance(0.3) ? infinity : measured[0].length() / 40.0;
    if (!(spacing > 0.0)) continue;
    const qcDeviation found = qf_Deviation(measured, nominal, spacing);
    const plain::Deviation expected =
        plain::deviation(plainly(measured), plainly(nominal), spacing);
    SCOPED_TRACE(seed);
    EXPECT_EQ(found.least, expected.least);
    EXPECT_EQ(found.leastAt, expected.leastAt);
    EXPECT_EQ(found.greatest, expected.greatest);
    EXPECT_EQ(found.greatestAt, expected.greatestAt);
    EXPECT_EQ(found.mean, expected.mean);
    EXPECT_EQ(found.rms, expected.rms);
    EXPECT_EQ(found.isSigned, expected.isSigned);
  }
}

TEST(Hausdorff, TypedCases) {
  EXPECT_EQ(qf_Hausdorff({closed(square(4))}, {closed(square(4))}, 1e-9), 0.0);
  EXPECT_EQ(qf_Hausdorff({open({{1, 1}})}, {open({{4, 5}})}, 1e-9), 5.0);
  EXPECT_EQ(qf_Hausdorff({closed(square(4))}, {closed({{0, 0}, {4, 0}, {4, 7}, {0, 7}})}, 1e-9),
            3.0);
  // The middle of the square's side is the farthest from the open curve around it.
  const double found =
      qf_Hausdorff({closed(square(4))}, {open({{4, 0}, {0, 0}, {0, 4}, {4, 4}})}, 1e-9);
  EXPECT_LE(found, 2.0);
  EXPECT_GE(found, 2.0 - 1e-9);
}

TEST(Hausdorff, LiesBetweenSampledDistances) {
  for (std::uint64_t seed = 0; seed < 120; ++seed) {
    shapes::Random random(seed);
    Points first = shapes::spikyStar(3 + random.below(8), seed);
    Points second = seed % 2 == 0 ? shapes::cloud(random, 2 + random.below(6)) : first;
    const double by = random.uniform(-30.0, 30.0);
    shapes::scaleAndShift(first, 0.01, Point());
    shapes::scaleAndShift(second, 0.01 + 1e-5 * by, Point(0.1 * by, 1.0));
    const Contours a = {closed(first)};
    const Contours b = {{second, random.chance(0.5), 0}};
    const double tolerance = 1e-3;
    const double found = qf_Hausdorff(a, b, tolerance);
    const double sampled = plain::sampledHausdorff(plainly(a), plainly(b), 0.05);
    EXPECT_GE(found, sampled - tolerance) << seed;
    EXPECT_LE(found, sampled + 0.025 + 1e-12) << seed;
    EXPECT_EQ(qf_Hausdorff(b, a, 1e-7) > found - 1e-12, true) << seed;
    EXPECT_NEAR(qf_Hausdorff(b, a, 1e-7), qf_Hausdorff(a, b, 1e-7), 1e-7) << seed;
  }
}

TEST(Hausdorff, IsCloserWithASmallerTolerance) {
  const Contours line = {open({{0, 1}, {10, 1}})};
  const Contours gap = {open({{0, 0}, {0, 2}}), open({{10, 0}, {10, 2}}), open({{3, 9}, {3.1, 9}})};
  const double rough = qf_Hausdorff(line, {gap[0], gap[1]}, 3.0);
  const double close = qf_Hausdorff(line, {gap[0], gap[1]}, 1e-6);
  EXPECT_NEAR(close, 5.0, 1e-6);
  EXPECT_GE(rough, 2.0);
  EXPECT_LE(rough, 5.0);
  // No double comes that close: halving ends all the same.
  EXPECT_NEAR(qf_Hausdorff(line, {gap[0], gap[1]}, 1e-300), 5.0, 1e-15);
}

TEST(Deviation, RefusesWhatHasNoAnswer) {
  const Contours good = {closed(square(4))};
  const Contours bad = {closed(square(4)), closed({{0, 0}, {infinity, 0}})};
  const Contours none = {closed({}), open({})};
  for (const double spacing : {0.0, -1.0, std::nan("")}) {
    EXPECT_EQ(refusal([&] { qf_Deviation(good, good, spacing); }), L"spacing is not positive");
    EXPECT_EQ(refusal([&] { qf_Hausdorff(good, good, spacing); }), L"tolerance is not positive");
  }
  EXPECT_EQ(refusal([&] { qf_Deviation(good, good, 1e-300); }),
            L"spacing is too small for the contour");
  EXPECT_EQ(refusal([&] { qf_Deviation(good, bad, 1.0); }), L"a coordinate is not finite");
  EXPECT_EQ(refusal([&] { qf_Deviation(bad, good, 1.0); }), L"a coordinate is not finite");
  EXPECT_EQ(refusal([&] { qf_Hausdorff(good, bad, 1.0); }), L"a coordinate is not finite");
  EXPECT_EQ(refusal([&] { qf_Deviation(good, none, 1.0); }), L"empty");
  EXPECT_EQ(refusal([&] { qf_Deviation({}, good, 1.0); }), L"empty");
  EXPECT_EQ(refusal([&] { qf_Hausdorff(none, good, 1.0); }), L"empty");
}

}  // namespace
