// SPDX-License-Identifier: MIT
//
// Where features cross themselves, and which of the places are kept.

#include <tools/draw/crossings.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "samples.h"

using formats::Geometry;
using formats::Points;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using tool::crossingsOf;

namespace {

using P = qcVector<2>;

Geometry line(Points points) {
  Geometry geometry = outlines({{std::move(points), {}}});
  geometry.closed = false;
  return geometry;
}

}  // namespace

TEST(Crossings, OfAnOutlineWithItself) {
  EXPECT_THAT(crossingsOf(outlines({{{{0, 0}, {4, 3}, {4, 0}, {0, 3}}, {}}}), 0.01),
              ElementsAre(P(2, 1.5)));
  EXPECT_THAT(crossingsOf(outlines({{squarePoints(0, 0, 10), {squarePoints(2, 2, 3)}}}), 0.01),
              IsEmpty());
}

TEST(Crossings, OfAnOutlineWithItsLastEdge) {
  EXPECT_THAT(crossingsOf(outlines({{{{0, 0}, {4, 0}, {1, 3}, {3, 3}}, {}}}), 0.01), SizeIs(1));
  EXPECT_THAT(crossingsOf(line({{0, 0}, {4, 0}, {1, 3}, {3, 3}}), 0.01), IsEmpty());
}

TEST(Crossings, OfHolesWithOutlinesAndOfPartsWithEachOther) {
  EXPECT_THAT(crossingsOf(outlines({{squarePoints(0, 0, 10), {squarePoints(5, 4, 10)}}}), 0.01),
              ElementsAre(P(5, 10), P(10, 4)));
  EXPECT_THAT(crossingsOf(outlines({{squarePoints(0, 0, 10), {}},
                                    {squarePoints(50, 5, 10), {}},
                                    {squarePoints(5, 5, 10), {}}}),
                          0.01),
              ElementsAre(P(5, 10), P(10, 5)));
}

TEST(Crossings, WhereOutlinesOnlyTouchTheyCountToo) {
  EXPECT_THAT(
      crossingsOf(outlines({{squarePoints(0, 0, 10), {}}, {{{10, 5}, {20, 0}, {20, 10}}, {}}}),
                  0.01),
      ElementsAre(P(10, 5)));
}

TEST(Crossings, OfLines) {
  EXPECT_THAT(crossingsOf(line({{0, 0}, {4, 0}, {4, 4}, {2, 4}, {2, -2}}), 0.01),
              ElementsAre(P(2, 0)));
  EXPECT_THAT(crossingsOf(line({{0, 0}, {4, 4}, {4, 0}, {1, 2}}), 0.01), SizeIs(1));
}

TEST(Crossings, ThoseThatShareASquareAreOne) {
  const Geometry comb = line({{0, 0}, {10, 0}, {9, 1}, {9, -1}, {8, -1}, {8, 1}, {3, 1}, {3, -1}});
  EXPECT_THAT(crossingsOf(comb, 0.5), ElementsAre(P(3, 0), P(8, 0), P(9, 0)));
  EXPECT_THAT(crossingsOf(comb, 7.0), SizeIs(2));
}
