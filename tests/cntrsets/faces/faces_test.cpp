// SPDX-License-Identifier: MIT
//
// The faces between pieces: known ones, and the windings beside every edge counted cell by cell.

#include <cntrsets/faces/faces.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <utility>

#include <cntr/contourdefs.h>
#include <gtest/gtest.h>
#include <tests/cntrsets/faces/unitwalks.h>
#include <tests/cntrsets/features.h>

namespace {

using cntr::sets::Edge;
using cntr::sets::Faces;
using cntr::sets::facesOf;
using cntr::sets::noEdge;
using cntr::sets::Point;
using cntr::sets::Windings;
using features::box;
using features::Points;
using features::reversed;

/// Rings that meet only in vertices.
Faces facesOfRings(const std::vector<Points>& rings) { return facesOf(unitwalks::piecesOf(rings)); }

/// The edge with these ends, the left one first.
const Edge& edgeBetween(const Faces& faces, const Point& left, const Point& right) {
  return *std::find_if(faces.edges.begin(), faces.edges.end(), [&](const Edge& edge) {
    return faces.vertices[edge.left] == left && faces.vertices[edge.right] == right;
  });
}

TEST(FacesTest, OfNothingAreTheOutside) {
  const Faces faces = facesOf({});
  EXPECT_TRUE(faces.vertices.empty());
  EXPECT_TRUE(faces.edges.empty());
  EXPECT_EQ(faces.windings, (std::vector<Windings>{{}}));
}

TEST(FacesTest, OfASquareAreItsInsideAndTheOutside) {
  const Faces faces = facesOfRings({box(0, 0, 2, 2)});
  EXPECT_EQ(faces.windings, (std::vector<Windings>{{}, {{0, 1}}}));
  EXPECT_EQ(faces.vertices, (std::vector<Point>{{0, 0}, {0, 2}, {2, 0}, {2, 2}}));
  ASSERT_EQ(faces.edges.size(), 4U);
  const Edge& bottom = edgeBetween(faces, {0, 0}, {2, 0});
  EXPECT_EQ(bottom.below, 0U);
  EXPECT_EQ(bottom.above, 1U);
  EXPECT_EQ(bottom.under, noEdge);
  const Edge& top = edgeBetween(faces, {0, 2}, {2, 2});
  EXPECT_EQ(top.below, 1U);
  EXPECT_EQ(top.above, 0U);
  EXPECT_EQ(&faces.edges[top.under], &bottom);
}

TEST(FacesTest, AboveAnUprightEdgeIsItsLeft) {
  const Faces faces = facesOfRings({box(0, 0, 2, 2)});
  EXPECT_EQ(edgeBetween(faces, {0, 0}, {0, 2}).above, 0U);
  EXPECT_EQ(edgeBetween(faces, {0, 0}, {0, 2}).below, 1U);
  EXPECT_EQ(edgeBetween(faces, {2, 0}, {2, 2}).above, 1U);
  EXPECT_EQ(edgeBetween(faces, {2, 0}, {2, 2}).below, 0U);
}

TEST(FacesTest, OfARingWalkedClockwiseAreWoundAroundNegatively) {
  EXPECT_EQ(facesOfRings({reversed(box(0, 0, 2, 2))}).windings,
            (std::vector<Windings>{{}, {{0, -1}}}));
}

TEST(FacesTest, WindingsCountRoundsAndNameTheirRings) {
  Points twice = box(1, 1, 2, 2);
  const Points again = twice;
  twice.insert(twice.end(), again.begin(), again.end());
  const Faces faces = facesOfRings({box(0, 0, 3, 3), twice});
  EXPECT_EQ(std::set<Windings>(faces.windings.begin(), faces.windings.end()),
            (std::set<Windings>{{}, {{0, 1}}, {{0, 1}, {1, 2}}}));
}

TEST(FacesTest, EdgesWalkedThereAndBackAreLeftOut) {
  // A square with a spike within.
  const Faces faces = facesOfRings({{{0, 0}, {2, 0}, {1, 1}, {2, 0}, {2, 2}, {0, 2}}});
  EXPECT_EQ(faces.edges.size(), 4U);
  EXPECT_EQ(facesOfRings({{{0, 0}, {5, 1}}}).edges.size(), 0U);
}

TEST(FacesTest, EdgesWalkedThereByOneRingAndBackByAnotherStay) {
  const Faces faces = facesOfRings({box(0, 0, 1, 1), box(1, 0, 2, 1)});
  const Edge& shared = edgeBetween(faces, {1, 0}, {1, 1});
  EXPECT_EQ(faces.windings[shared.above], (Windings{{0, 1}}));
  EXPECT_EQ(faces.windings[shared.below], (Windings{{1, 1}}));
}

TEST(FacesTest, UnderAnEdgeIsTheNextLessSteepOneOfItsEndOrElseTheNearestBelow) {
  const Faces faces = facesOfRings({box(0, 0, 9, 9), {{2, 2}, {5, 1}, {5, 4}, {4, 8}}});
  const auto under = [&](const Point& left, const Point& right) {
    const std::size_t edge = edgeBetween(faces, left, right).under;
    return std::pair(faces.vertices[faces.edges[edge].left],
                     faces.vertices[faces.edges[edge].right]);
  };
  EXPECT_EQ(under({2, 2}, {5, 1}), std::pair(Point(0, 0), Point(9, 0)));
  EXPECT_EQ(under({2, 2}, {4, 8}), std::pair(Point(2, 2), Point(5, 1)));
  EXPECT_EQ(under({4, 8}, {5, 4}), std::pair(Point(2, 2), Point(5, 1)));
  EXPECT_EQ(under({0, 9}, {9, 9}), std::pair(Point(0, 0), Point(9, 0)));
}

TEST(FacesTest, TheFirstOfEqualVerticesIsTaken) {
  // Both zeros are equal.
  const Points minus{{-0.0, 0}, {4, 1}, {4, 4}};
  const Points plus{{0.0, 0}, {-4, -1}, {-4, -4}};
  for (const bool isMinusFirst : {true, false}) {
    const std::vector<std::span<const Point>> rings =
        isMinusFirst ? std::vector<std::span<const Point>>{minus, plus}
                     : std::vector<std::span<const Point>>{plus, minus};
    const Faces faces = facesOf(cntr::sets::piecesOf(rings));
    ASSERT_EQ(faces.vertices.size(), 5U);
    EXPECT_EQ(faces.vertices[2], Point(0, 0));
    EXPECT_EQ(std::signbit(faces.vertices[2].x()), isMinusFirst);
  }
}

TEST(FacesTest, EdgesThatLieAlongEachOtherAreRefused) {
  const Points shorter{{0, 0}, {4, 0}, {0, 4}};
  const Points longer{{0, 0}, {8, 0}, {0, -8}};
  const std::vector<std::span<const Point>> rings{shorter, longer};
  try {
    facesOf(cntr::sets::piecesOf(rings));
    FAIL() << "not refused";
  } catch (const qcContourDefs::BadParams& error) {
    EXPECT_EQ(error.message(), L"the result is not valid: edges are not cut");
  }
}

TEST(FacesTest, BesideEveryEdgeOfAnyWalkAreTheWindingsOfItsCells) {
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    const std::vector<Points> rings = unitwalks::walks(seed);
    const Faces faces = facesOfRings(rings);
    const std::string what = "seed " + std::to_string(seed);
    for (const Edge& edge : faces.edges) {
      const Point left = faces.vertices[edge.left];
      const Point along = faces.vertices[edge.right] - left;
      const Point middle = left + along * 0.5;
      const Point toLeft(-0.5 * along.y(), 0.5 * along.x());
      EXPECT_EQ(faces.windings[edge.above], unitwalks::windingsAround(rings, middle + toLeft))
          << what;
      EXPECT_EQ(faces.windings[edge.below], unitwalks::windingsAround(rings, middle - toLeft))
          << what;
      EXPECT_NE(edge.above, edge.below) << what;
    }
    EXPECT_TRUE(std::is_sorted(faces.vertices.begin(), faces.vertices.end(), features::isBefore))
        << what;
    EXPECT_TRUE(faces.windings.front().empty()) << what;
    EXPECT_EQ(std::set<Windings>(faces.windings.begin(), faces.windings.end()).size(),
              faces.windings.size())
        << what;
  }
}

}  // namespace
