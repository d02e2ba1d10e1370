// SPDX-License-Identifier: MIT
//
// Outlines to draw, and the overlays by their names.

#pragma once

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <cntrformats/feature.h>
#include <tools/draw/overlays.h>

/// Corners (x, y), (x + size, y), ... of a square.
inline formats::Points squarePoints(double x, double y, double size) {
  return {{x, y}, {x + size, y}, {x + size, y + size}, {x, y + size}};
}

inline formats::Geometry outlines(std::vector<qcRings> parts) {
  formats::Geometry geometry;
  geometry.parts = std::move(parts);
  return geometry;
}

inline const tool::Overlay& overlay(const std::string& name) {
  for (const tool::Overlay& known : tool::allOverlays()) {
    if (known.name == name) return known;
  }
  throw std::invalid_argument(name);
}
