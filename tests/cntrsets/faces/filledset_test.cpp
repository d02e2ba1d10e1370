// SPDX-License-Identifier: MIT
//
// From rings and a rule to the boundary, and the coordinates in which it is found. What the rules
// of the operations give is in operations/sets_test.cpp.

#include <cntrsets/faces/filledset.h>

#include <cmath>
#include <limits>

#include <cntr/contourdefs.h>
#include <tests/cntrsets/features.h>

namespace {

using cntr::sets::FilledSet;
using cntr::sets::filledSet;
using cntr::sets::largestCoordinate;
using cntr::sets::Piece;
using cntr::sets::Point;
using cntr::sets::scaledPieces;
using cntr::sets::Scaling;
using cntr::sets::Windings;
using features::box;
using features::Feature;
using features::Points;

using Rings = std::vector<std::span<const Point>>;

FilledSet filledOf(const std::vector<Points>& rings, std::size_t atLeast) {
  return filledSet(Rings(rings.begin(), rings.end()),
                   [atLeast](const Windings& windings) { return windings.size() >= atLeast; });
}

double largestOf(const Points& ring) { return largestCoordinate(Rings{ring}); }

TEST(FilledSetTest, IsWhatTheRuleKeeps) {
  const std::vector<Points> squares{box(0, 0, 4, 4), box(2, 2, 6, 6)};
  const FilledSet both = filledOf(squares, 2);
  EXPECT_EQ(both.parts, (Feature{{box(2, 2, 4, 4), {}}}));
  EXPECT_EQ(both.area, 4.0);
  EXPECT_TRUE(both.cut);
  EXPECT_EQ(filledOf(squares, 1).area, 28.0);
  EXPECT_EQ(filledOf(squares, 3).area, 0.0);
  EXPECT_TRUE(filledOf(squares, 3).parts.empty());
}

TEST(FilledSetTest, OfNoRingsIsEmpty) {
  const FilledSet nothing = filledOf({}, 1);
  EXPECT_TRUE(nothing.parts.empty());
  EXPECT_EQ(nothing.area, 0.0);
  EXPECT_FALSE(nothing.cut);
}

TEST(FilledSetTest, OfRingsThatMeetInVerticesIsNotCut) {
  const FilledSet set = filledOf({box(0, 0, 1, 1), box(1, 0, 2, 1)}, 1);
  EXPECT_FALSE(set.cut);
  EXPECT_EQ(set.moved, 0.0);
  EXPECT_EQ(set.grid, 0.0);
  EXPECT_EQ(set.area, 2.0);
}

TEST(FilledSetTest, OfAVertexWithinAnEdgeIsCutButNotMoved) {
  const FilledSet set = filledOf({box(0, 0, 4, 4), {{4, 1}, {6, 1}, {6, 2}}}, 1);
  EXPECT_TRUE(set.cut);
  EXPECT_EQ(set.moved, 0.0);
  EXPECT_EQ(set.area, 17.0);
}

TEST(FilledSetTest, SaysHowFarARoundedCrossingMayHaveMovedEdges) {
  // The largest coordinate, 6, has the unit 2^-50 in its last place; each coordinate of a crossing
  // is rounded by half a unit at most.
  const FilledSet set = filledOf({{{0, 0}, {6, 1}, {5, 6}}, {{1, 5}, {0, 3}, {6, 2}}}, 1);
  EXPECT_TRUE(set.cut);
  EXPECT_GE(set.moved, std::sqrt(0.5) * 0x1p-50);
  EXPECT_LE(set.moved, 4 * std::sqrt(0.5) * 0x1p-50);
  // One round of crossings, and 4 has the same unit.
  const FilledSet bowTie = filledOf({features::bowTie}, 1);
  EXPECT_DOUBLE_EQ(bowTie.moved, std::sqrt(0.5) * 0x1p-50);
  EXPECT_EQ(bowTie.area, 8.0);
}

TEST(FilledSetTest, OnAGridIsCutEvenWithAsManyEdgesAsBefore) {
  const Points ring = shapes::anyFinite(3111, 20).points;
  const std::vector<Piece> pieces = scaledPieces(Rings{ring}, Scaling(largestOf(ring)));
  ASSERT_EQ(cntr::sets::node(pieces).pieces.size(), pieces.size());
  const FilledSet set = filledOf({ring}, 1);
  EXPECT_GT(set.grid, 0.0);
  EXPECT_TRUE(set.cut);
}

TEST(LargestCoordinateTest, IsTheLargestOfAllRings) {
  EXPECT_EQ(largestCoordinate({}), 0.0);
  EXPECT_EQ(largestOf({}), 0.0);
  EXPECT_EQ(largestOf({{1, 2}, {-7, 3}}), 7.0);
  EXPECT_EQ(largestOf({{1, 2}, {5, -8}}), 8.0);
}

TEST(LargestCoordinateTest, RefusesWhatIsNotAFiniteNumber) {
  for (const double bad : {std::nan(""), std::numeric_limits<double>::infinity()}) {
    for (const Point& p : {Point(bad, 0.0), Point(0.0, bad), Point(-bad, 0.0)}) {
      try {
        largestOf({{0, 0}, p});
        FAIL() << "not refused";
      } catch (const qcContourDefs::BadParams& error) {
        EXPECT_EQ(error.message(), L"a coordinate is not a finite number");
      }
    }
  }
}

TEST(ScalingTest, BringsTheLargestJustBelow2ToThe480) {
  for (const double largest : {1.0, 1.5, std::nextafter(2.0, 0.0), 5e-324, 1e-300, 0x1p1023,
                               std::numeric_limits<double>::max()}) {
    const Point p = Scaling(largest).scaled({largest, -largest});
    EXPECT_GE(p.x(), 0x1p479) << largest;
    EXPECT_LT(p.x(), 0x1p480) << largest;
    EXPECT_EQ(p.y(), -p.x()) << largest;
    EXPECT_EQ(Scaling(largest).restored(p), Point(largest, -largest)) << largest;
  }
}

TEST(ScalingTest, MakesWhatIsFarTooSmallZeroOfItsSign) {
  const Scaling scaling(1.0);
  EXPECT_EQ(scaling.scaled({0x1p-944, -0x1p-944}), Point(0x1p-465, -0x1p-465));
  const Point tiny = scaling.scaled({std::nextafter(0x1p-944, 0.0), -0x1p-945});
  EXPECT_EQ(tiny, Point(0, 0));
  EXPECT_FALSE(std::signbit(tiny.x()));
  EXPECT_TRUE(std::signbit(tiny.y()));
}

TEST(ScalingTest, WithoutCoordinatesChangesNothing) {
  EXPECT_EQ(Scaling(0.0).scaled({3, 4}), Point(3, 4));
  EXPECT_EQ(Scaling(0.0).restored(5.0), 5.0);
}

TEST(ScaledPiecesTest, LeaveOutEdgesThatBecomePoints) {
  const Points ring{{0, 0}, {1, 0}, {1, 0x1p-1000}, {0, 1}};
  const std::vector<Piece> pieces = scaledPieces(Rings{ring}, Scaling(1.0));
  ASSERT_EQ(pieces.size(), 3U);
  EXPECT_EQ(pieces[2].from, Point(0x1p479, 0));
  EXPECT_EQ(pieces[2].to, Point(0, 0x1p479));
}

}  // namespace
