// SPDX-License-Identifier: MIT

#include <cntrformats/rings.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include <cntrformats/errors.h>

namespace formats {

namespace {

constexpr std::size_t fewestInRing = 3;
constexpr std::size_t fewestInLine = 2;

void require(const Points& points, std::size_t fewest, const std::string& place) {
  if (points.size() >= fewest) return;
  const std::string count = std::to_string(points.size());
  const char* unit = points.size() == 1 ? " point" : " points";
  throw FeatureError(place + " has " + count + unit + ", but needs " + std::to_string(fewest));
}

}  // namespace

Points asRing(Points points, const std::string& place) {
  if (points.size() > 1 && points.front() == points.back()) points.pop_back();
  requireRing(points, place);
  return points;
}

void requireRing(const Points& points, const std::string& place) {
  require(points, fewestInRing, place);
}

Points asLine(Points points, const std::string& place) {
  require(points, fewestInLine, place);
  return points;
}

void addParts(Geometry& collection, Geometry&& member) {
  if (!collection.parts.empty() && collection.closed != member.closed) {
    throw FeatureError("outlines and lines together are no single shape");
  }
  collection.closed = member.closed;
  std::move(member.parts.begin(), member.parts.end(), std::back_inserter(collection.parts));
}

// Relative to the first vertex, which keeps digits far from the origin.
double signedArea(const Points& ring) {
  double sum = 0.0;
  for (std::size_t i = 2; i < ring.size(); ++i) {
    const qcVector<2> a = ring[i - 1] - ring[0];
    const qcVector<2> b = ring[i] - ring[0];
    sum += a.x() * b.y() - a.y() * b.x();
  }
  return sum / 2.0;
}

}  // namespace formats
