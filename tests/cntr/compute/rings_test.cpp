// SPDX-License-Identifier: MIT
//
// Rings of linked vertices, and which vertices lie in one place.

#include <cntr/compute/rings.h>

#include <gmock/gmock.h>

#include "subject.h"

namespace {

using cntr::compute::Label;
using cntr::compute::Places;
using cntr::compute::Rings;
using cntr::compute::Vertex;
using subject::Point;
using subject::Points;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

std::vector<Vertex> verticesOf(const Rings& rings, Label ring) {
  std::vector<Vertex> vertices;
  rings.forEachVertex(ring, [&](Vertex v) { vertices.push_back(v); });
  return vertices;
}

std::vector<Vertex> placeOf(const Places& places, Vertex v) {
  std::vector<Vertex> vertices;
  places.forEachAt(v, [&](Vertex other) { vertices.push_back(other); });
  return vertices;
}

/// Vertices 0, 1, ... on a line, far from each other.
Points farApart(int count) {
  Points points;
  for (int i = 0; i < count; ++i) points.emplace_back(10 * i, 1);
  return points;
}

TEST(RingsTest, AreOneOfAllVerticesAtFirst) {
  const Points points = farApart(4);
  const Rings rings(points);
  EXPECT_EQ(rings.vertexCount(), 4U);
  EXPECT_EQ(rings.labelCount(), 1U);
  EXPECT_THAT(verticesOf(rings, 0), ElementsAre(0, 1, 2, 3));
  EXPECT_EQ(rings.after(3), 0U);
  EXPECT_EQ(rings.labelOf(2), 0U);
  EXPECT_EQ(rings.pointsOf(0), points);
}

TEST(RingsTest, OfOneVertexLeadBackToIt) {
  const Points points = farApart(1);
  const Rings rings(points);
  EXPECT_EQ(rings.after(0), 0U);
  EXPECT_THAT(verticesOf(rings, 0), ElementsAre(0));
}

TEST(RingsTest, ACutGivesTheSmallerPieceANewLabel) {
  const Points points = farApart(7);
  Rings rings(points);
  const Rings::Pieces pieces = rings.cut(2, 4);
  EXPECT_EQ(rings.labelCount(), 2U);
  EXPECT_EQ(pieces.first, 1U) << "2, 3 are the smaller one";
  EXPECT_EQ(pieces.second, 0U);
  EXPECT_THAT(verticesOf(rings, pieces.first), ElementsAre(2, 3));
  EXPECT_THAT(verticesOf(rings, pieces.second), ElementsAre(4, 5, 6, 0, 1));
  EXPECT_EQ(rings[pieces.first].size, 2U);
  EXPECT_EQ(rings[pieces.second].size, 5U);
  EXPECT_EQ(rings.labelOf(3), pieces.first);
  EXPECT_EQ(rings.labelOf(6), pieces.second);
}

TEST(RingsTest, ACutBackwardsGivesThePieceRoundTheStart) {
  const Points points = farApart(7);
  Rings rings(points);
  const Rings::Pieces pieces = rings.cut(5, 2);
  EXPECT_THAT(verticesOf(rings, pieces.first), ElementsAre(5, 6, 0, 1));
  EXPECT_THAT(verticesOf(rings, pieces.second), ElementsAre(2, 3, 4));
  EXPECT_EQ(pieces.first, 0U) << "the larger one keeps the label";
  EXPECT_EQ(rings.labelOf(4), pieces.second);
}

TEST(RingsTest, ACutMaySplitOffASingleVertex) {
  const Points points = farApart(3);
  Rings rings(points);
  const Rings::Pieces pieces = rings.cut(0, 1);
  EXPECT_THAT(verticesOf(rings, pieces.first), ElementsAre(0));
  EXPECT_THAT(verticesOf(rings, pieces.second), ElementsAre(1, 2));
  EXPECT_EQ(rings.after(0), 0U);
}

TEST(RingsTest, AJoinedRingRunsThroughTheFirstAndThenThroughTheOther) {
  const Points points = farApart(7);
  Rings rings(points);
  const Rings::Pieces pieces = rings.cut(2, 5);
  rings.join(6, 3);
  EXPECT_THAT(verticesOf(rings, pieces.second), ElementsAre(6, 0, 1, 5, 3, 4, 2));
  EXPECT_EQ(rings[pieces.second].size, 7U);
  for (Vertex v = 0; v < 7; ++v) EXPECT_EQ(rings.labelOf(v), pieces.second) << v;
}

TEST(RingsTest, VerticesOfADroppedRingHaveNone) {
  const Points points = farApart(5);
  Rings rings(points);
  const Rings::Pieces pieces = rings.cut(1, 3);
  rings.drop(pieces.first);
  EXPECT_EQ(rings.labelOf(1), cntr::compute::none);
  EXPECT_EQ(rings.labelOf(2), cntr::compute::none);
  EXPECT_EQ(rings.labelOf(3), pieces.second);
}

TEST(PlacesTest, HoldTheVerticesWithinAMillionth) {
  const Points points = {{5, 5}, {0, 0}, {5, 5 + 0.9e-6}, {5, 5 + 2.2e-6}, {5, 5 - 1.1e-6}};
  const Places places(points);
  EXPECT_THAT(placeOf(places, 0), testing::UnorderedElementsAre(0, 2));
  EXPECT_THAT(placeOf(places, 2), testing::UnorderedElementsAre(0, 2));
  EXPECT_THAT(placeOf(places, 1), ElementsAre(1));
  EXPECT_THAT(placeOf(places, 3), ElementsAre(3));
  EXPECT_THAT(placeOf(places, 4), ElementsAre(4));
}

TEST(PlacesTest, HoldNothingThatIsNotFinite) {
  const Points points = {{notANumber, 0}, {infinity, 0}, {infinity, 0}, {1, 1}};
  const Places places(points);
  EXPECT_THAT(placeOf(places, 0), IsEmpty());
  EXPECT_THAT(placeOf(places, 1), IsEmpty());
  EXPECT_THAT(placeOf(places, 3), ElementsAre(3));
}

TEST(PlacesTest, AreFoundWhereSoManyVerticesShareOneThatTheyAreNotRemembered) {
  const Points points(100, {3, 4});
  const Places places(points);
  std::vector<Vertex> all(100);
  for (Vertex v = 0; v < 100; ++v) all[v] = v;
  for (const Vertex v : {0U, 15U, 16U, 99U}) {
    EXPECT_THAT(placeOf(places, v), ElementsAreArray(all)) << v;
  }
}

TEST(PlacesTest, CellsOrderVerticesByColumnsAndThenByRows) {
  const Points points = {{0, 0}, {0, 3e-6}, {2e-6, 0}};
  const Places places(points);
  EXPECT_LT(places.cellOf(0), places.cellOf(1));
  EXPECT_LT(places.cellOf(1), places.cellOf(2));
}

}  // namespace
