// SPDX-License-Identifier: MIT

#include <tools/draw/frame.h>

#include <cmath>

namespace tool {

using namespace formats;

namespace {

constexpr double fewestUnits = 1.0;
constexpr double farthestCorner = 1e6;

bool isLikeAnImage(const Box& box) {
  return box.extent() >= fewestUnits && box.low.x() >= -farthestCorner &&
         box.low.y() >= -farthestCorner && box.high.x() <= farthestCorner &&
         box.high.y() <= farthestCorner;
}

Points moved(const Frame& frame, const Points& points) {
  Points result;
  result.reserve(points.size());
  for (const qcVector<2>& p : points) result.push_back(frame.into(p));
  return result;
}

}  // namespace

Frame::Frame(const Box& box) {
  if (isLikeAnImage(box)) return;
  origin_ = box.middle();
  // The extent becomes 512 to 1024.
  if (box.extent() > 0.0) scale_ = std::ldexp(1.0, 9 - std::ilogb(box.extent()));
}

Geometry Frame::into(const Geometry& geometry) const {
  Geometry result;
  result.closed = geometry.closed;
  result.multiple = geometry.multiple;
  for (const qcRings& part : geometry.parts) {
    qcRings other;
    other.outline = moved(*this, part.outline);
    for (const Points& hole : part.holes) other.holes.push_back(moved(*this, hole));
    result.parts.push_back(std::move(other));
  }
  return result;
}

}  // namespace tool
