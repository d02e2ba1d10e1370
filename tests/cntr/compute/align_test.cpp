// SPDX-License-Identifier: MIT
//
// Poses of a few points against a few edges, where the best one is obvious.

#include <cntr/compute/align.h>

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace {

using cntr::compute::align;
using cntr::compute::Alignment;
using cntr::compute::Curves;
using cntr::compute::WeighedPoint;
using cntr::plane::Path;
using Points = std::vector<qcVector<2>>;

std::vector<WeighedPoint> alike(const Points& points) {
  std::vector<WeighedPoint> result;
  for (const auto& p : points) result.push_back({p, 1.0});
  return result;
}

TEST(Align, BringsAPointToAPoint) {
  const Points target = {{7, 8}};
  const Path path{target, false};
  const Alignment found = align(alike({{1, 2}}), alike(target), Curves({&path, 1}));
  EXPECT_EQ(found.pose.place, (qcVector<2>(7, 8)));
  EXPECT_EQ(found.residual, 0.0);
  EXPECT_TRUE(found.settled);
}

TEST(Align, WeighsItsPoints) {
  // Three points cannot all lie on the line: the heavy ones decide where they settle.
  const Points line = {{-100, 0}, {100, 0}};
  const Path path{line, false};
  const std::vector<WeighedPoint> heavy = {{{-1, 5}, 1.0}, {{1, 5}, 1.0}, {{0, 6}, 2.0}};
  const Alignment found = align(heavy, alike(line), Curves({&path, 1}));
  // The least-squares line: the mean height is 5.5, and all are half a unit from it.
  EXPECT_NEAR(found.residual, 0.5, 1e-9);
  EXPECT_TRUE(found.settled);
}

}  // namespace
