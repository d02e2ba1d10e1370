// SPDX-License-Identifier: MIT

#include <cntrformats/archive/vertices.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include <cntrformats/errors.h>
#include <cntrformats/rings.h>

namespace formats {

namespace {

bool isFinite(const qcVector<2>& point) {
  return std::isfinite(point.x()) && std::isfinite(point.y());
}

/// The highest bit is set if the number is not finite: only then are all bits of the exponent set,
/// so that adding one overflows it.
std::uint64_t overflow(double number) {
  constexpr std::uint64_t exponent = 0x7FF0000000000000;
  constexpr std::uint64_t one = 0x0010000000000000;
  return (std::bit_cast<std::uint64_t>(number) & exponent) + one;
}

bool areFinite(const Points& points) {
  std::uint64_t any = 0;
  for (const qcVector<2>& point : points) any |= overflow(point.x()) | overflow(point.y());
  return (any >> 63U) == 0;
}

void requireFinite(const Points& points, const std::string& place) {
  if (areFinite(points)) return;
  const auto first = std::find_if_not(points.begin(), points.end(), isFinite);
  throw FeatureError(place + ", vertex " + std::to_string(first - points.begin()) + ": not finite");
}

}  // namespace

Points archivedRing(Points points, const std::string& place) {
  requireRing(points, place);
  requireFinite(points, place);
  return points;
}

Points archivedLine(Points points) {
  requireFinite(points, "line");
  return asLine(std::move(points), "line");
}

std::optional<Label> labelOf(unsigned long label) {
  return label == 0 ? std::nullopt : std::optional<Label>(label);
}

}  // namespace formats
