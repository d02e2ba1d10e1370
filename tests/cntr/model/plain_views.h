// SPDX-License-Identifier: MIT
//
// Transforms as testing/plain takes them, and polygons as their vertices.

#pragma once

#include <vector>

#include <platform/core/shapes.h>
#include <platform/core/xform.h>
#include <testing/plain/extents.h>

namespace fixtures {

inline plain::Transform plainTransform(const qcXform<2>& xform) {
  const qcMatrix<2>& m = xform.matrix();
  return {{m.element(0, 0), m.element(0, 1), m.element(1, 0), m.element(1, 1), m.det()},
          xform.trans()};
}

inline std::vector<qcVector<2>> verticesOf(const qcPolygon& polygon) {
  std::vector<qcVector<2>> vertices;
  for (int i = 0; i < polygon.size(); ++i) vertices.push_back(polygon[i]);
  return vertices;
}

}  // namespace fixtures
