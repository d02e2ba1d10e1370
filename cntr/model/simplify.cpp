// SPDX-License-Identifier: MIT

#include <cntr/simplify.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

#include <cntr/compute/resample.h>
#include <cntr/compute/simplify.h>

namespace {

using cntr::plane::Path;
using Points = std::vector<qcVector<2>>;

void checkTolerance(double tolerance) {
  if (!(tolerance >= 0.0) || std::isinf(tolerance))
    throw qcContourDefs::BadParams(L"tolerance is negative or not finite");
}

Points picked(std::span<const qcVector<2>> points, const std::vector<std::size_t>& numbers) {
  Points kept;
  kept.reserve(numbers.size());
  for (const std::size_t i : numbers) kept.push_back(points[i]);
  return kept;
}

}  // namespace

qcContour qf_Simplify(const qcContour& contour, double tolerance) {
  checkTolerance(tolerance);
  const Path path{contour.points(), contour.isClosed()};
  const auto kept = cntr::compute::keptVertices({&path, 1}, tolerance);
  return {picked(path.points, kept.front()), path.closed, contour.label()};
}

std::vector<std::vector<qcVector<2>>> qf_Simplify(
    const std::vector<std::vector<qcVector<2>>>& rings, double tolerance) {
  checkTolerance(tolerance);
  std::vector<Path> paths;
  paths.reserve(rings.size());
  for (const Points& ring : rings) paths.push_back({ring, true});
  const auto kept = cntr::compute::keptVertices(paths, tolerance);
  std::vector<Points> simplified;
  for (std::size_t i = 0; i < rings.size(); ++i) simplified.push_back(picked(rings[i], kept[i]));
  return simplified;
}

std::vector<std::vector<std::size_t>> qf_KeptVertices(const std::vector<qcContour>& contours,
                                                      double tolerance) {
  checkTolerance(tolerance);
  std::vector<Path> paths;
  paths.reserve(contours.size());
  for (const qcContour& contour : contours) paths.push_back({contour.points(), contour.isClosed()});
  return cntr::compute::keptVertices(paths, tolerance);
}

qcContour qf_Resample(const qcContour& contour, double spacing) {
  if (!(spacing > 0.0)) throw qcContourDefs::BadParams(L"spacing is not positive");
  const Path path{contour.points(), contour.isClosed()};
  const double length = cntr::compute::lengthFromStart(path);
  if (!std::isfinite(length)) throw qcContourDefs::BadParams(L"contour has no finite length");
  if (length == 0.0) {
    const std::size_t kept = std::min<std::size_t>(path.points.size(), 1);
    return {Points(path.points.begin(), path.points.begin() + static_cast<std::ptrdiff_t>(kept)),
            path.closed, contour.label()};
  }
  const double steps = std::max(std::ceil(length / spacing), path.closed ? 3.0 : 1.0);
  if (steps > 0x1p31) throw qcContourDefs::BadParams(L"spacing is too small for the contour");
  return {cntr::compute::pointsAtSteps(path, length, static_cast<std::size_t>(steps)), path.closed,
          contour.label()};
}
