// SPDX-License-Identifier: MIT
//
// The shapes that these tests work on.

#pragma once

#include <platform/core/xform.h>

#include "probe.h"

/// (0, 0), (4, 0), (4, 4), (0, 4) moved by `offset`.
inline Points squarePoints(const qcVector<2>& offset = {}, double side = 4.0) {
  Points points = {{0.0, 0.0}, {side, 0.0}, {side, side}, {0.0, side}};
  for (qcVector<2>& p : points) p = p + offset;
  return points;
}

/// An edge element for each point, with magnitudes 200, 201, ... and angles 10, 20, ...
inline Edgelets edgeletsAt(const Points& points) {
  Edgelets edgelets;
  for (const qcVector<2>& p : points) {
    const auto i = static_cast<unsigned>(edgelets.size());
    edgelets.emplace_back(p, static_cast<unsigned short>(200 + i),
                          qcAngle8(static_cast<unsigned char>(10 * (i + 1))));
  }
  return edgelets;
}

/// An edge element for each point, with nothing but its position.
inline Edgelets bareEdgeletsAt(const Points& points) {
  Edgelets edgelets;
  for (const qcVector<2>& p : points) edgelets.emplace_back(p, 0, qcAngle8(0));
  return edgelets;
}

inline Points movedBy(const Points& points, const qcVector<2>& offset) {
  Points moved;
  for (const qcVector<2>& p : points) moved.push_back(p + offset);
  return moved;
}

/// A transform object that has no inverse.
inline XformHandle singularXform() {
  return XformHandle(new qc2XformLinear({qcMatrix<2>(1.0, 2.0, 2.0, 4.0), qcVector<2>()}));
}
