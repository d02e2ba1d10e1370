// SPDX-License-Identifier: MIT
//
// The farthest point of a curve from another: within an edge, where there is no vertex, and never
// nearer than what is known already.

#include <cntr/compute/hausdorff.h>

#include <gtest/gtest.h>

namespace {

using cntr::compute::Curves;
using cntr::compute::farthestFrom;
using cntr::plane::Path;
using Points = std::vector<qcVector<2>>;

Curves curveOf(const Points& points) {
  const Path path{points, false};
  return Curves({&path, 1});
}

TEST(FarthestFrom, LiesWithinAnEdgeBetweenTwoOthers) {
  // The middle of the line is as far from both ends of the gap, and nearer to everything else.
  const Points line = {{0, 1}, {10, 1}};
  const Points left = {{0, 0}, {0, 2}};
  const Points right = {{10, 0}, {10, 2}};
  const Path paths[] = {{left, false}, {right, false}};
  const double found = farthestFrom(curveOf(line), Curves(paths), 0.0, 1e-9);
  EXPECT_LE(found, 5.0);
  EXPECT_GE(found, 5.0 - 1e-9);
  // No point of the line can be farther than 5.
  EXPECT_EQ(farthestFrom(curveOf(line), Curves(paths), 0.0, 5.0), 0.0);
  EXPECT_EQ(farthestFrom(curveOf(line), Curves(paths), 0.0, 4.9), 5.0);
}

TEST(FarthestFrom, LiesInEitherHalfOfAnEdge) {
  const Points post = {{0, 0}, {0, 2}};
  const Points rail = {{4, 1}, {10, 1}};
  const Path paths[] = {{post, false}, {rail, false}};
  for (const Points& line : {Points{{0, 1}, {10, 1}}, Points{{10, 1}, {0, 1}}}) {
    const double found = farthestFrom(curveOf(line), Curves(paths), 0.0, 1e-9);
    EXPECT_LE(found, 2.0);
    EXPECT_GE(found, 2.0 - 1e-9);
  }
}

TEST(FarthestFrom, IsTheDistanceOfAVertexWhereThatIsFarthest) {
  EXPECT_EQ(farthestFrom(curveOf({{0, 0}, {4, 3}}), curveOf({{0, 0}, {4, 0}}), 0.0, 1e-3), 3.0);
  EXPECT_EQ(farthestFrom(curveOf({{7, 8}}), curveOf({{4, 4}}), 0.0, 1e-3), 5.0);
}

TEST(FarthestFrom, IsAtLeastWhatIsKnown) {
  EXPECT_EQ(farthestFrom(curveOf({{0, 0}, {4, 3}}), curveOf({{0, 0}, {4, 0}}), 9.0, 1e-3), 9.0);
}

}  // namespace
