// SPDX-License-Identifier: MIT
//
// The boxes of marks, one in each square of a grid, and what lists of marks leave out.

#include <tools/draw/marks.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

using testing::ElementsAre;
using tool::Box;
using tool::boxOf;
using tool::Circle;
using tool::Cross;
using tool::Ellipse;
using tool::Mark;
using tool::MarkList;
using tool::Ring;
using tool::Segment;
using tool::Spot;
using tool::Squares;
using tool::Tint;

namespace {

using P = qcVector<2>;

void expectBoxOf(const Mark& mark, const Box& expected) {
  const Box box = boxOf(mark);
  EXPECT_NEAR(box.low.x(), expected.low.x(), 1e-12);
  EXPECT_NEAR(box.low.y(), expected.low.y(), 1e-12);
  EXPECT_NEAR(box.high.x(), expected.high.x(), 1e-12);
  EXPECT_NEAR(box.high.y(), expected.high.y(), 1e-12);
}

std::size_t countOf(double pixel, std::vector<Mark> marks) {
  MarkList list(pixel);
  list.add(std::move(marks));
  return list.marks().size();
}

}  // namespace

TEST(Squares, TakeOneThingEach) {
  Squares squares(2.0);
  EXPECT_EQ(squares.size(), 2.0);
  // From -0.763932 to 1.236068.
  EXPECT_TRUE(squares.take({0.5, 0.5}));
  EXPECT_FALSE(squares.take({1.2, -0.7}));
  EXPECT_FALSE(squares.take({-0.7, 1.2}));
  EXPECT_TRUE(squares.take({1.3, 0.5}));
  EXPECT_TRUE(squares.take({0.5, 1.3}));
  EXPECT_TRUE(squares.take({-0.8, 0.5}));
  EXPECT_TRUE(squares.take({0.5, -0.8}));
  EXPECT_FALSE(squares.take({-0.8, 0.4}));
}

TEST(Squares, HaveNoBorderAtRoundCoordinates) {
  for (const double place : {0.0, 1.6, 2.0, 4.0, 100.0, -3.0}) {
    Squares squares(0.01);
    EXPECT_TRUE(squares.take({place, place}));
    EXPECT_FALSE(squares.take({std::nextafter(place, 1e3), std::nextafter(place, -1e3)}));
  }
}

TEST(Squares, OfSizeZeroTakeEachPlaceOnce) {
  Squares squares(0.0);
  EXPECT_TRUE(squares.take({1, 2}));
  EXPECT_TRUE(squares.take({1, 2.5}));
  EXPECT_FALSE(squares.take({1, 2}));
}

TEST(BoxOfAMark, IsAroundAllOfIt) {
  expectBoxOf(Box{{1, 2}, {3, 4}}, {{1, 2}, {3, 4}});
  expectBoxOf(Circle{{1, 2}, 5}, {{-4, -3}, {6, 7}});
  expectBoxOf(Ellipse{{1, 2}, 5, 3, 0.0}, {{-4, -1}, {6, 5}});
  expectBoxOf(Ellipse{{1, 2}, 5, 3, std::numbers::pi / 2.0}, {{-2, -3}, {4, 7}});
  const double reach = std::sqrt((25.0 + 9.0) / 2.0);
  expectBoxOf(Ellipse{{0, 0}, 5, 3, std::numbers::pi / 4.0}, {{-reach, -reach}, {reach, reach}});
  expectBoxOf(Ring{{{0, 1}, {4, 2}, {3, 5}}}, {{0, 1}, {4, 5}});
  expectBoxOf(Segment{{4, 1}, {2, 3}}, {{2, 1}, {4, 3}});
  expectBoxOf(Tint{{4, 1}, {2, 3}, 7.0}, {{2, 1}, {4, 3}});
  expectBoxOf(Cross{{4, 1}}, {{4, 1}, {4, 1}});
  expectBoxOf(Spot{{4, 1}}, {{4, 1}, {4, 1}});
}

TEST(MarkList, KeepsOneSpotInEachSquareOfThreePixels) {
  // Squares of 6 from -2.29 to 3.71, and of 3 from -1.15 to 1.85.
  const std::vector<Mark> marks{Spot{{0, 0}}, Spot{{-2.2, 3.6}}, Spot{{3.8, 0}}};
  EXPECT_EQ(countOf(2.0, marks), 2);
  EXPECT_EQ(countOf(1.0, marks), 3);
}

TEST(MarkList, KeepsOneShortSegmentInEachSquareOfHalfAPixel) {
  // A square from -0.40 to 0.65.
  const std::vector<Mark> marks{Segment{{0, 0}, {1, 0}}, Segment{{0.6, -0.3}, {0.6, 0.7}},
                                Segment{{0.7, 0}, {0.7, 1}}, Segment{{0.5, 0}, {9, 0}}};
  EXPECT_EQ(countOf(2.1, marks), 3);
  EXPECT_EQ(countOf(1.9, marks), 4);
}

TEST(MarkList, KeepsOneTintInEachSquareAndRemembersTheLargestValue) {
  MarkList list(2.1);
  EXPECT_EQ(list.range(), 0.0);
  list.add({Tint{{0, 0}, {1, 0}, 0.5}, Tint{{0.6, -0.3}, {9, 0.7}, -3.0},
            Tint{{0.7, 0}, {0.7, 1}, 2.0}});
  EXPECT_EQ(list.marks().size(), 2U);
  EXPECT_EQ(list.range(), 3.0);
  list.thin(100.0);
  EXPECT_EQ(list.marks().size(), 1U);
  EXPECT_EQ(list.range(), 3.0);
}

TEST(MarkList, TintsTakeNoSquaresOfSegments) {
  EXPECT_EQ(countOf(2.1, {Tint{{0, 0}, {1, 0}, 0.5}, Segment{{0, 0}, {1, 0}}}), 2U);
}

TEST(MarkList, ThinsRingsByATwentiethOfAPixel) {
  MarkList list(2.0);
  list.add(
      {Ring{{{0, 0}, {5, 0.08}, {10, 0}, {10, 10}}}, Ring{{{0, 0}, {5, 0.12}, {10, 0}, {9, 9}}}});
  EXPECT_THAT(std::get<Ring>(list.marks().at(0)).points, ElementsAre(P(0, 0), P(10, 0), P(10, 10)));
  EXPECT_EQ(std::get<Ring>(list.marks().at(1)).points.size(), 4);
}

TEST(MarkList, KeepsAllOtherMarks) {
  const Box box{{0, 0}, {1, 1}};
  EXPECT_EQ(countOf(100.0, {box, box, Circle{{0, 0}, 1}, Circle{{0, 0}, 1}, Cross{{0, 0}},
                            Cross{{0, 0}}, Ellipse{{0, 0}, 1, 1, 0}, Ellipse{{0, 0}, 1, 1, 0}}),
            8);
}

TEST(MarkList, IsThinnedAgainWhenPixelsGrow) {
  MarkList list(0.0);
  list.add({Spot{{0.1, 0}}, Spot{{0.2, 0}}, Spot{{0.2, 0}}, Spot{{40, 0}}});
  EXPECT_EQ(list.marks().size(), 3);
  list.thin(1.0);
  EXPECT_EQ(list.marks().size(), 2);
  EXPECT_EQ(std::get<Spot>(list.marks().at(0)).at, P(0.1, 0));
  // Squares from 37.85 to 40.85 to 43.85.
  list.add({Spot{{40.8, 0}}, Spot{{40.9, 0}}});
  EXPECT_EQ(list.marks().size(), 3);
}
