// SPDX-License-Identifier: MIT
//
// Pieces after noding: they meet only at their ends and still form the rings that were given.

#include <cntrsets/faces/noding.h>

#include <algorithm>
#include <cmath>
#include <string>

#include <cntr/contourdefs.h>
#include <cntrsets/faces/filledset.h>
#include <gtest/gtest.h>
#include <testing/shapes/shapes.h>
#include <testing/twin/repetitions.h>

namespace {

using cntr::sets::node;
using cntr::sets::nodeOnGrid;
using cntr::sets::nodeUnlessCrossed;
using cntr::sets::Noding;
using cntr::sets::orientation;
using cntr::sets::Piece;
using cntr::sets::Point;

/// In the range of coordinates that noding works in.
std::vector<Piece> scaledPieces(const shapes::Points& ring) {
  double largest = 1.0;
  for (const Point& p : ring) largest = std::max({largest, std::abs(p.x()), std::abs(p.y())});
  shapes::Points scaled;
  for (const Point& p : ring) scaled.push_back(p * std::ldexp(1.0, 479 - std::ilogb(largest)));
  const std::vector<std::span<const Point>> rings{scaled};
  return cntr::sets::piecesOf(rings);
}

bool liesWithin(const Piece& piece, const Point& p) {
  if (p == piece.from || p == piece.to || orientation(piece.from, piece.to, p) != 0) return false;
  return std::min(piece.from.x(), piece.to.x()) <= p.x() &&
         p.x() <= std::max(piece.from.x(), piece.to.x()) &&
         std::min(piece.from.y(), piece.to.y()) <= p.y() &&
         p.y() <= std::max(piece.from.y(), piece.to.y());
}

bool meetElsewhere(const Piece& a, const Piece& b) {
  if (orientation(a.from, a.to, b.from) * orientation(a.from, a.to, b.to) < 0 &&
      orientation(b.from, b.to, a.from) * orientation(b.from, b.to, a.to) < 0)
    return true;
  return liesWithin(a, b.from) || liesWithin(a, b.to) || liesWithin(b, a.from) ||
         liesWithin(b, a.to);
}

void expectNoded(const std::vector<Piece>& pieces, std::uint64_t seed) {
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    EXPECT_EQ(pieces[i].to, pieces[(i + 1) % pieces.size()].from) << "seed " << seed;
    for (std::size_t j = 0; j < i; ++j)
      ASSERT_FALSE(meetElsewhere(pieces[i], pieces[j])) << "seed " << seed;
  }
}

TEST(PiecesOf, LeavesOutEdgesOfNoLength) {
  const shapes::Points ring{{0, 0}, {0, 0}, {1, 0}, {1, 1}, {0, 0}};
  const shapes::Points point{{3, 3}, {3, 3}};
  const std::vector<std::span<const Point>> rings{point, ring, {}};
  const std::vector<Piece> pieces = cntr::sets::piecesOf(rings);
  ASSERT_EQ(pieces.size(), 3U);
  EXPECT_EQ(pieces[0].from, Point(0, 0));
  EXPECT_EQ(pieces[0].to, Point(1, 0));
  EXPECT_EQ(pieces[2].to, Point(0, 0));
  EXPECT_EQ(pieces[1].ring, 1U);
}

TEST(Node, LeavesPiecesThatMeetAtTheirEndsAlone) {
  for (std::uint64_t seed = 0; seed < repetitions(400); ++seed) {
    const Noding noding = node(scaledPieces(shapes::anyFinite(seed, 40).points));
    expectNoded(noding.pieces, seed);
    if (testing::Test::HasFatalFailure()) return;
  }
}

TEST(Node, NeedsAGridForFewOutlinesAndNoneWithoutNearlyParallelEdges) {
  int onGrid = 0;
  for (std::uint64_t seed = 0; seed < 1000; ++seed) {
    const shapes::Shape shape = shapes::anyFinite(seed, 40);
    onGrid += node(scaledPieces(shape.points)).grid > 0.0;
    shapes::Random random(seed);
    EXPECT_EQ(node(scaledPieces(shapes::cloud(random, 40))).grid, 0.0) << "seed " << seed;
  }
  EXPECT_GT(onGrid, 0);
  EXPECT_LT(onGrid, 40);
}

TEST(Node, SettlesWhereCrossingsAreFinerThanTheCoordinates) {
  for (std::uint64_t seed = 0; seed < 40; ++seed) {
    shapes::Random random(seed);
    shapes::Points ring;
    for (int i = 0; i < 30; ++i)
      ring.push_back({0x1p52 + static_cast<double>(random.below(200)),
                      0x1p52 + static_cast<double>(random.below(200))});
    expectNoded(node(scaledPieces(ring)).pieces, seed);
    if (testing::Test::HasFatalFailure()) return;
  }
}

/// Scaled as for a filled set.
std::vector<Piece> fullyScaled(const shapes::Points& ring) {
  const std::vector<std::span<const Point>> rings{ring};
  const cntr::sets::Scaling scaling(cntr::sets::largestCoordinate(rings));
  return cntr::sets::scaledPieces(rings, scaling);
}

/// A ring of points on both sides of a line, a few units in the last place from it.
std::vector<Piece> besideALine(std::uint64_t seed) {
  shapes::Random random(seed);
  const std::size_t count = 4 + random.below(12);
  const double x = random.uniform();
  const double y = random.uniform();
  shapes::Points points;
  for (std::size_t i = 0; i < count; ++i) {
    const double along = random.uniform(-1.0, 1.0);
    const double dx = random.uniform(-1.0, 1.0) * 1e-15;
    const double dy = random.uniform(-1.0, 1.0) * 1e-15;
    points.emplace_back(along * x + dx, along * y + dy);
  }
  return fullyScaled(points);
}

TEST(Node, NeedsNoGridWhereItsCutsMultiplyOnlyAtFirst) {
  for (const std::uint64_t seed : {26U, 386U, 646U, 706U, 1250U}) {
    const Noding noding = node(besideALine(seed));
    EXPECT_EQ(noding.grid, 0.0) << seed;
    EXPECT_GE(noding.roundings, 4) << seed;
  }
  for (const std::uint64_t seed : {932U, 1184U, 1480U, 2860U}) {
    shapes::Random random(seed);
    shapes::Points ring = shapes::collinear(random, 4 + random.below(12));
    shapes::rotate(ring, 0.3);
    const Noding noding = node(fullyScaled(ring));
    EXPECT_EQ(noding.grid, 0.0) << seed;
    EXPECT_GE(noding.roundings, 4) << seed;
  }
}

/// Otherwise it takes all memory.
TEST(Node, GivesUpRoundingBeforeItsCutsMultiply) {
  shapes::Random random(0);
  shapes::Points ring = shapes::collinear(random, 240);
  shapes::rotate(ring, 0.3);
  const Noding noding = node(scaledPieces(ring));
  EXPECT_GT(noding.grid, 0.0);
}

TEST(NodeOnGrid, LeavesPiecesOnTheGridThatMeetAtTheirEndsAlone) {
  for (std::uint64_t seed = 0; seed < 200; ++seed) {
    const double grid = std::ldexp(1.0, seed % 2 == 0 ? 470 : 440);
    const Noding noding = nodeOnGrid(scaledPieces(shapes::anyFinite(seed, 30).points), grid);
    ASSERT_GT(noding.roundings, 0) << "seed " << seed;
    EXPECT_EQ(noding.grid, grid);
    for (const Piece& piece : noding.pieces) {
      EXPECT_EQ(std::fmod(piece.from.x(), grid), 0.0);
      EXPECT_EQ(std::fmod(piece.from.y(), grid), 0.0);
    }
    expectNoded(noding.pieces, seed);
    if (testing::Test::HasFatalFailure()) return;
  }
}

/// Triangles in units of the grid.
Noding nodeTriangles(const std::vector<shapes::Points>& triangles, double grid) {
  std::vector<shapes::Points> scaled = triangles;
  for (shapes::Points& triangle : scaled)
    for (Point& p : triangle) p = p * grid;
  const std::vector<std::span<const Point>> rings(scaled.begin(), scaled.end());
  return nodeOnGrid(cntr::sets::piecesOf(rings), grid);
}

/// How many pieces of the first ring begin at the point, in units of the grid.
std::ptrdiff_t passages(const Noding& noding, const Point& p) {
  return std::count_if(noding.pieces.begin(), noding.pieces.end(), [&](const Piece& piece) {
    return piece.ring == 0 && piece.from == p * noding.grid;
  });
}

TEST(NodeOnGrid, MovesEndsToTheNearestPoint) {
  const Noding noding = nodeTriangles({{{0.4, -0.4}, {500.6, 0.4}, {-9.6, 20.6}}}, 0x1p470);
  ASSERT_EQ(noding.pieces.size(), 3U);
  EXPECT_EQ(noding.pieces[0].from, Point(-10, 21) * 0x1p470);
  EXPECT_EQ(noding.pieces[1].from, Point(0, 0) * 0x1p470);
  EXPECT_EQ(noding.pieces[2].from, Point(501, 0) * 0x1p470);
}

TEST(NodeOnGrid, SaysWhenItDoesNotSettle) {
  // On a grid of one unit in the last place, crossings are not exact enough.
  int settled = 0;
  int unsettled = 0;
  for (std::uint64_t seed = 0; seed < 200; ++seed) {
    const Noding noding = nodeOnGrid(besideALine(seed), 0x1p427);
    bool meet = false;
    for (std::size_t i = 0; i < noding.pieces.size(); ++i)
      for (std::size_t j = 0; j < i; ++j)
        meet = meet || meetElsewhere(noding.pieces[i], noding.pieces[j]);
    EXPECT_EQ(noding.roundings, meet ? 0 : 1) << seed;
    ++(meet ? unsettled : settled);
  }
  EXPECT_GT(settled, 0);
  EXPECT_GT(unsettled, 0);
}

shapes::Points turnedByQuarters(shapes::Points points, int quarters) {
  for (; quarters > 0; --quarters)
    for (Point& p : points) p = Point(-p.y(), p.x());
  return points;
}

TEST(NodeOnGrid, LeadsPiecesThroughTheCellsOfWhichTheyCutOffACorner) {
  const shapes::Points above{{-2, -1}, {2, 2}, {-9, 9}};
  const shapes::Points below{{0, 0}, {5, -9}, {9, -5}};
  for (int quarters = 0; quarters < 4; ++quarters) {
    const Noding noding = nodeTriangles(
        {turnedByQuarters(above, quarters), turnedByQuarters(below, quarters)}, 0x1p470);
    EXPECT_EQ(noding.pieces.size(), 7U) << quarters;
    EXPECT_EQ(passages(noding, {0, 0}), 1) << quarters;
  }
}

TEST(NodeOnGrid, LeadsPiecesThroughTheCellWhoseLowerLeftCornerTheyPass) {
  const shapes::Points falling{{-1, 2}, {2, -1}, {-9, -9}};
  EXPECT_EQ(passages(nodeTriangles({falling, {{1, 1}, {9, 1}, {1, 9}}}, 0x1p470), {1, 1}), 1);
  EXPECT_EQ(passages(nodeTriangles({falling, {{0, 0}, {-1, 0}, {0, -1}}}, 0x1p470), {0, 0}), 0);
  const shapes::Points rising{{-2, -1}, {1, 2}, {-9, 9}};
  EXPECT_EQ(passages(nodeTriangles({rising, {{0, 0}, {1, 0}, {1, -1}}}, 0x1p470), {0, 0}), 0);
  const shapes::Points risingBelow{{-1, -2}, {2, 1}, {9, -9}};
  EXPECT_EQ(passages(nodeTriangles({risingBelow, {{0, 0}, {-1, 0}, {-1, 1}}}, 0x1p470), {0, 0}), 0);
}

TEST(Node, TellsWhetherAndHowOftenCrossingsWereRounded) {
  const Noding touching = node(scaledPieces({{0, 0}, {8, 0}, {8, 8}, {4, 0}, {0, 8}}));
  EXPECT_FALSE(touching.crossed);
  EXPECT_EQ(touching.roundings, 0);
  const Noding crossing = node(scaledPieces({{0, 0}, {8, 8}, {8, 0}, {0, 8}}));
  EXPECT_TRUE(crossing.crossed);
  EXPECT_EQ(crossing.roundings, 1);
  EXPECT_EQ(crossing.grid, 0.0);
}

TEST(NodeUnlessCrossed, CutsAtVerticesAndTellsOfCrossings) {
  const shapes::Points touching{{0, 0}, {8, 0}, {8, 8}, {4, 0}, {0, 8}};
  const Noding touches = nodeUnlessCrossed(scaledPieces(touching));
  EXPECT_FALSE(touches.crossed);
  EXPECT_EQ(touches.pieces.size(), 6U);
  EXPECT_EQ(touches.roundings, 0);
  EXPECT_TRUE(nodeUnlessCrossed(scaledPieces({{0, 0}, {8, 8}, {8, 0}, {0, 8}})).crossed);
}

}  // namespace
