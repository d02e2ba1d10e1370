// SPDX-License-Identifier: MIT
//
// The coordinates in which curves are fitted. The library keeps them to itself: this program has a
// copy of their source.

#include <platform/core/internal/fit_frame.h>

#include <cmath>
#include <string>

#include <gtest/gtest.h>
#include <platform/core/fit.h>
#include <testing/shapes/numbers.h>

namespace {

using qnFit::Frame;
using qnFit::Point;
using qnFit::Points;
using qnFit::PowerOfTwo;
using qnFit::Spread;

/// What is said when `make` is refused.
template <class Make>
std::wstring refusal(Make make) {
  try {
    make();
  } catch (const qcFitError& error) {
    return error.message();
  }
  return L"nothing was refused";
}

TEST(PowerOfTwoTest, RoundsOnceAsLdexpDoes) {
  for (const double value : {1.0, 1.0 / 3.0, -7e300, 5e-324, 3e-310, 1.5, infinity, 0.0}) {
    for (int exponent = -1074; exponent <= 1074; ++exponent) {
      ASSERT_EQ(value * PowerOfTwo(exponent), std::ldexp(value, exponent)) << value << exponent;
    }
  }
  EXPECT_EQ(Point(1, 3) * PowerOfTwo(-1), Point(0.5, 1.5));
}

TEST(FrameTest, ScalesByAPowerOfTwoAndShiftsTheMeanToTheOrigin) {
  const Points points = {{6, 0}, {-2, 4}, {2, 2}};
  const Frame frame(points, 3);
  EXPECT_EQ(frame.enter({6, 0}), Point(6.0 / 8 - 0.25, -0.25));
  EXPECT_EQ(frame.enter(points)[1], Point(-0.5, 0.25));
  EXPECT_EQ(frame.leave(Point(0, 0)), Point(2, 2));
  EXPECT_EQ(frame.leave(1.0), 8.0);
}

TEST(FrameTest, BringsBackWhatEntered) {
  const Points points = {{1e300, -1e299}, {2e300, 3e299}, {1.5e300, 0}};
  const Frame frame(points, 3);
  for (const Point& p : points) {
    const Point back = frame.leave(frame.enter(p));
    EXPECT_NEAR(back.x() / p.x(), 1.0, 1e-15);
    EXPECT_NEAR(back.y(), p.y(), 1e285);
  }
}

TEST(FrameTest, RefusesTooFewPointsAndOnesThatAreNotFinite) {
  EXPECT_EQ(refusal([] { Frame({{0, 0}, {1, 1}}, 3); }), L"too few points");
  EXPECT_EQ(refusal([] { Frame({{0, 0}, {1, 1}}, 2); }), L"nothing was refused");
  EXPECT_EQ(refusal([] { Frame({{0, 0}, {1, infinity}}, 2); }), L"a point is not finite");
  EXPECT_EQ(refusal([] { Frame({{0, 0}, {std::nan(""), 1}}, 2); }), L"a point is not finite");
}

TEST(FrameTest, RefusesToLeaveWithWhatOverflows) {
  const Frame frame({{1.5e308, 0}, {0, 1.5e308}}, 2);
  const wchar_t* const tooLarge = L"the curve is too large for double precision";
  EXPECT_EQ(refusal([&] { static_cast<void>(frame.leave(4.0)); }), tooLarge);
  EXPECT_EQ(refusal([&] { static_cast<void>(frame.leave(Point(4, 0))); }), tooLarge);
  EXPECT_EQ(refusal([&] { static_cast<void>(frame.leave(Point(0, 4))); }), tooLarge);
  EXPECT_EQ(refusal([&] { static_cast<void>(frame.leave(0.5)); }), L"nothing was refused");
}

TEST(SpreadTest, LeavesUnitVarianceAndNoCorrelation) {
  const Points framed = {{0.5, 0.2}, {-0.5, -0.3}, {0.25, -0.1}, {-0.25, 0.2}};
  const Spread spread(framed);
  double xx = 0.0;
  double xy = 0.0;
  double yy = 0.0;
  for (const Point& p : framed) {
    const Point q = spread.fromFrame(p);
    xx += q.x() * q.x() / 4;
    xy += q.x() * q.y() / 4;
    yy += q.y() * q.y() / 4;
    EXPECT_NEAR(spread.toFrame(q).x(), p.x(), 1e-15);
    EXPECT_NEAR(spread.toFrame(q).y(), p.y(), 1e-15);
  }
  EXPECT_NEAR(xx, 1.0, 1e-14);
  EXPECT_NEAR(xy, 0.0, 1e-14);
  EXPECT_NEAR(yy, 1.0, 1e-14);
}

TEST(SpreadTest, IsNarrowAcrossAFlatOne) {
  EXPECT_NEAR(Spread({{0.5, 0}, {-0.5, 0}, {0, 0.01}, {0, -0.01}}).across, 0.01 / std::sqrt(2.0),
              1e-5);
}

TEST(SpreadTest, RefusesPointsOnALineOrInOnePlace) {
  EXPECT_EQ(refusal([] {
              Spread({{-0.5, -0.25}, {0, 0}, {0.5, 0.25}});
            }),
            L"the points lie on a line");
  EXPECT_EQ(refusal([] { Spread({{0, -0.25}, {0, 0}, {0, 0.25}}); }), L"the points lie on a line");
  EXPECT_EQ(refusal([] { Spread({{0, 0}, {0, 0}}); }), L"the points coincide");
}

}  // namespace
