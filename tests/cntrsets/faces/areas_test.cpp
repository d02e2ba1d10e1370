// SPDX-License-Identifier: MIT
//
// The areas by which set operations check themselves: they agree for rings that were cut well, and
// not for faces that are wrong by one winding, one edge or one ring.

#include <cntrsets/faces/areas.h>

#include <cmath>
#include <vector>

#include <cntrsets/faces/filledset.h>
#include <testing/twin/repetitions.h>
#include <tests/cntrsets/features.h>

namespace {

using cntr::sets::areaOf;
using cntr::sets::areasAgree;
using cntr::sets::areasOf;
using cntr::sets::Faces;
using cntr::sets::facesOf;
using cntr::sets::Noding;
using cntr::sets::Piece;
using cntr::sets::Scaling;
using features::Points;

struct Cut {
  std::vector<Piece> edges;
  Noding noding;
  Faces faces;
  double unit;
};

Cut cut(const std::vector<Points>& rings) {
  const std::vector<std::span<const qcVector<2>>> spans(rings.begin(), rings.end());
  const double largest = cntr::sets::largestCoordinate(spans);
  const Scaling scaling(largest);
  const auto edges = cntr::sets::scaledPieces(spans, scaling);
  const Noding noding = cntr::sets::node(edges);
  const double unit = std::ldexp(1.0, 480 - 53);
  return {edges, noding, facesOf(noding.pieces), unit};
}

bool agrees(const Cut& cut) {
  return areasAgree(cut.edges, cut.faces, areasOf(cut.faces), cut.unit * cut.noding.roundings);
}

TEST(AreasOfFaces, AreThoseOfTheWindings) {
  const Cut squares = cut({features::box(0, 0, 4, 4), features::box(2, 2, 6, 6)});
  // Scaled so that 6 lies between 2^479 and 2^480.
  const double unit = std::ldexp(1.0, 2 * (479 - 2));
  double total = 0.0;
  for (std::size_t i = 0; i < squares.faces.windings.size(); ++i) {
    const double area = areasOf(squares.faces)[i].high / unit;
    EXPECT_EQ(area, squares.faces.windings[i].empty()       ? 0.0
                    : squares.faces.windings[i].size() == 2 ? 4.0
                                                            : 12.0);
    total += area;
  }
  EXPECT_EQ(total, 28.0);
}

TEST(AreasOfFaces, OfRingsAreSigned) {
  EXPECT_EQ(areaOf({{features::square, {features::reversed(features::box(1, 1, 3, 4))}}}).high,
            94.0);
  EXPECT_EQ(areaOf({{features::reversed(features::square), {}}}).high, -100.0);
  EXPECT_EQ(areaOf({}).high, 0.0);
}

TEST(AreasOfFaces, AgreeWithTheRingsOfAnyFeature) {
  for (std::uint64_t seed = 0; seed < repetitions(1500); ++seed)
    EXPECT_TRUE(agrees(cut(features::ringsOf(features::anyFeature(seed))))) << "seed " << seed;
}

TEST(AreasOfFaces, DoNotAgreeWhenAWindingIsWrong) {
  Cut wrong = cut({features::bowTie});
  ASSERT_TRUE(agrees(wrong));
  for (auto& windings : wrong.faces.windings) {
    if (windings.empty()) continue;
    windings[0].times = -windings[0].times;
    EXPECT_FALSE(agrees(wrong));
    windings[0].times = -windings[0].times;
  }
}

TEST(AreasOfFaces, DoNotAgreeWhenAnEdgeThatIsNotUprightIsMissing) {
  Cut wrong = cut({features::bowTie});
  std::erase_if(wrong.faces.edges, [&](const auto& edge) {
    return edge.left == 0 &&
           wrong.faces.vertices[edge.left].x() < wrong.faces.vertices[edge.right].x();
  });
  EXPECT_FALSE(agrees(wrong));
}

/// Whether the faces agree with a square when all its edges have moved outwards.
bool agreesWhenGrown(double side, double by, double moved) {
  const Points square = features::box(0, 0, side, side);
  const Points grown = features::box(-by, -by, side + by, side + by);
  const std::vector<std::span<const qcVector<2>>> before{square};
  const std::vector<std::span<const qcVector<2>>> after{grown};
  const Faces faces = facesOf(cntr::sets::piecesOf(after));
  return areasAgree(cntr::sets::piecesOf(before), faces, areasOf(faces), moved);
}

TEST(AreasOfFaces, AgreeWhenAllEdgesHaveMovedAsFarAsAllowed) {
  // Some squares are longer than they have grown, some shorter.
  for (const double side : {0x1p479, 0x1p440, 0x1p438, 0x1p430}) {
    EXPECT_TRUE(agreesWhenGrown(side, 0x1p438, 0x1p438)) << side;
    EXPECT_FALSE(agreesWhenGrown(side, 0x3p438, 0x1p438)) << side;
  }
}

TEST(AreasOfFaces, DoNotAgreeWhenMoreThanRoundingIsMissing) {
  EXPECT_EQ(cntr::sets::roundingOfAreas(3), 1.5 * cntr::sets::roundingOfAreas(2));
  Cut wrong = cut({features::square});
  ASSERT_EQ(wrong.faces.vertices[0], qcVector<2>(0, 0));
  wrong.faces.vertices[0] = {0x1p389, 0};
  EXPECT_FALSE(areasAgree(wrong.edges, wrong.faces, areasOf(wrong.faces), 0.0));
  wrong.faces.vertices[0] = {0x1p386, 0};
  EXPECT_TRUE(areasAgree(wrong.edges, wrong.faces, areasOf(wrong.faces), 0.0));
}

TEST(AreasOfFaces, DoNotAgreeWhenAVertexHasMovedMoreThanAllowed) {
  Cut wrong = cut({features::square});
  const double far = wrong.unit * 8.0;
  wrong.faces.vertices[0] = wrong.faces.vertices[0] + qcVector<2>(far, 0.0);
  EXPECT_FALSE(areasAgree(wrong.edges, wrong.faces, areasOf(wrong.faces), 0.0));
  EXPECT_TRUE(areasAgree(wrong.edges, wrong.faces, areasOf(wrong.faces), far));
}

}  // namespace
