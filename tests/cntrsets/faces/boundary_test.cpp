// SPDX-License-Identifier: MIT
//
// The rings around the faces that are kept: known ones, and any choice of faces cell by cell.

#include <cntrsets/faces/boundary.h>

#include <algorithm>
#include <string>

#include <cntr/contourdefs.h>
#include <gtest/gtest.h>
#include <tests/cntrsets/faces/unitwalks.h>
#include <tests/cntrsets/features.h>

namespace {

using cntr::sets::boundaryOf;
using cntr::sets::Edge;
using cntr::sets::Faces;
using cntr::sets::facesOf;
using cntr::sets::noEdge;
using cntr::sets::Point;
using cntr::sets::Windings;
using features::box;
using features::Feature;
using features::Points;
using features::reversed;

/// The boundary of the faces around which anything winds, of rings that meet only in vertices.
Feature filled(const std::vector<Points>& rings) {
  const Faces faces = facesOf(unitwalks::piecesOf(rings));
  std::vector<bool> kept(faces.windings.size(), true);
  kept[0] = false;
  return boundaryOf(faces, kept);
}

TEST(BoundaryTest, OfNothingIsNothing) {
  const Faces faces = facesOf(unitwalks::piecesOf({box(0, 0, 1, 1)}));
  EXPECT_EQ(boundaryOf(faces, {false, false}), Feature());
}

TEST(BoundaryTest, RunsAroundASquareFromItsLowestLeftmostVertex) {
  EXPECT_EQ(filled({{{2, 2}, {2, 0}, {0, 0}, {0, 2}}}), (Feature{{box(0, 0, 2, 2), {}}}));
}

TEST(BoundaryTest, LeavesOutEdgesBetweenFacesThatAreKept) {
  EXPECT_EQ(filled({box(0, 0, 1, 1), box(1, 0, 2, 1)}),
            (Feature{{{{0, 0}, {1, 0}, {2, 0}, {2, 1}, {1, 1}, {0, 1}}, {}}}));
}

TEST(BoundaryTest, RunsAroundAHoleClockwise) {
  const Faces faces = facesOf(unitwalks::piecesOf({box(0, 0, 3, 3), reversed(box(1, 1, 2, 2))}));
  std::vector<bool> kept;
  for (const Windings& windings : faces.windings) kept.push_back(windings == Windings{{0, 1}});
  EXPECT_EQ(boundaryOf(faces, kept),
            (Feature{{box(0, 0, 3, 3), {{{1, 1}, {1, 2}, {2, 2}, {2, 1}}}}}));
}

TEST(BoundaryTest, MakesTwoPartsOfCellsThatMeetInACorner) {
  EXPECT_EQ(filled({box(0, 0, 1, 1), box(1, 1, 2, 2)}),
            (Feature{{box(0, 0, 1, 1), {}}, {box(1, 1, 2, 2), {}}}));
}

TEST(BoundaryTest, MakesAHoleOfALoopThatHangsOnAVertex) {
  EXPECT_EQ(filled({{{0, 0}, {3, 0}, {3, 3}, {0, 3}, {0, 0}, {1, 2}, {2, 1}}}),
            (Feature{{box(0, 0, 3, 3), {{{0, 0}, {1, 2}, {2, 1}}}}}));
}

/// The ring from its lowest-leftmost vertex in the other direction.
Points hole(const Points& outline) {
  Points ring = reversed(outline);
  std::rotate(ring.begin(), ring.end() - 1, ring.end());
  return ring;
}

/// The boundary of the faces around which an odd number of rings winds.
Feature filledByParity(const std::vector<Points>& rings) {
  const std::vector<std::span<const Point>> spans(rings.begin(), rings.end());
  const Faces faces = facesOf(cntr::sets::piecesOf(spans));
  std::vector<bool> kept;
  for (const Windings& windings : faces.windings) kept.push_back(windings.size() % 2 == 1);
  return boundaryOf(faces, kept);
}

TEST(BoundaryTest, GivesHolesAboveEachOtherToTheOutlineAroundThem) {
  const Points other = box(0, 0, 1, 1);
  const Points outline = box(10, 0, 30, 30);
  const Points low = box(12, 2, 28, 5);
  const Points middle = box(14, 8, 26, 10);
  const Points high = box(16, 20, 18, 22);
  EXPECT_EQ(filledByParity({high, other, low, outline, middle}),
            (Feature{{other, {}}, {outline, {hole(low), hole(middle), hole(high)}}}));
}

TEST(BoundaryTest, GivesTheHoleOfAPartInAHoleToThatPart) {
  const Points outline = box(0, 0, 20, 20);
  const Points around = box(2, 2, 18, 18);
  const Points part = box(4, 4, 16, 16);
  const Points innermost = box(6, 6, 8, 8);
  EXPECT_EQ(filledByParity({outline, around, reversed(part), innermost}),
            (Feature{{outline, {hole(around)}}, {part, {hole(innermost)}}}));
}

/// What is said about a boundary that consists of edges whose face above or below is kept.
std::wstring refusalOf(const Points& vertices, const std::vector<Edge>& edges) {
  const Faces faces{vertices, edges, {{}, {{0, 1}}}};
  try {
    boundaryOf(faces, {false, true});
  } catch (const qcContourDefs::BadParams& error) {
    return error.message();
  }
  return L"not refused";
}

TEST(BoundaryTest, RefusesWhatIsNotClosed) {
  const std::wstring refusal = L"the result is not valid: a boundary is not closed";
  EXPECT_EQ(refusalOf({{0, 0}, {1, 0}}, {{0, 1, noEdge, 0, 1}}), refusal);
  // It leads into a ring, but not back to its first vertex.
  EXPECT_EQ(refusalOf({{0, 0}, {1, 0}, {2, 0}},
                      {{0, 1, noEdge, 0, 1}, {1, 2, noEdge, 0, 1}, {1, 2, noEdge, 1, 0}}),
            refusal);
}

TEST(BoundaryTest, OfAnyFacesOfAnyWalksHoldsTheirCellsAlone) {
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    const std::vector<Points> rings = unitwalks::walks(seed);
    const Faces faces = facesOf(unitwalks::piecesOf(rings));
    shapes::Random random(seed + 5000);
    std::vector<bool> kept(faces.windings.size());
    for (std::size_t i = 1; i < kept.size(); ++i) kept[i] = random.chance(0.5);
    const Feature feature = boundaryOf(faces, kept);
    const std::string what = "seed " + std::to_string(seed);
    const std::vector<Points> boundary = features::ringsOf(feature);
    for (const Point& cell : unitwalks::cells()) {
      int times = 0;
      for (const Points& ring : boundary) times += plain::windingNumber(ring, cell);
      const auto face = std::find(faces.windings.begin(), faces.windings.end(),
                                  unitwalks::windingsAround(rings, cell));
      ASSERT_NE(face, faces.windings.end()) << what;
      EXPECT_EQ(times, kept[static_cast<std::size_t>(face - faces.windings.begin())] ? 1 : 0)
          << what;
    }
    for (Points ring : boundary) {
      std::sort(ring.begin(), ring.end(), features::isBefore);
      EXPECT_EQ(std::adjacent_find(ring.begin(), ring.end()), ring.end())
          << what << ": a vertex is passed twice";
    }
    features::expectNormalForm(feature);
  }
}

}  // namespace
