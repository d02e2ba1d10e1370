// SPDX-License-Identifier: MIT

#include <tools/boundaries.h>

namespace tool {

namespace {

qcPtrHandle_const<qcContour> contour(const Points& points, bool closed) {
  return qcPtrHandle_const<qcContour>(new qcContour(points, closed, 0));
}

}  // namespace

std::vector<Boundary> boundariesOf(const Geometry& geometry, bool withHoles) {
  const auto& parts = geometry.parts;
  std::vector<Boundary> boundaries;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    Place place;
    if (parts.size() > 1) place.part = i + 1;
    boundaries.push_back({place, contour(parts[i].outline, geometry.closed)});
    for (std::size_t k = 0; withHoles && k < parts[i].holes.size(); ++k) {
      place.hole = k + 1;
      boundaries.push_back({place, contour(parts[i].holes[k], true)});
    }
  }
  return boundaries;
}

}  // namespace tool
