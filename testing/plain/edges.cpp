// SPDX-License-Identifier: MIT
#include <testing/plain/edges.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include <testing/plain/extents.h>

namespace plain {

namespace {

constexpr double touch = 1e-6;

bool touchesAnEnd(const Edge& edge, const Segment& segment) {
  return distToPoint(edge.segment, segment.a) <= touch ||
         distToPoint(edge.segment, segment.b) <= touch;
}

// Sorts crossings along the segment by exchange: equal ones keep their order.
void exchangeSort(std::vector<Crossing>& crossings, const Segment& segment) {
  const auto key = [&segment](const Crossing& crossing) {
    return dot(minus(crossing.point, segment.a), minus(segment.b, segment.a));
  };
  for (std::size_t i = 0; i < crossings.size(); ++i) {
    for (std::size_t j = i + 1; j < crossings.size(); ++j) {
      if (key(crossings[i]) > key(crossings[j])) std::swap(crossings[i], crossings[j]);
    }
  }
}

std::vector<Crossing> crossingsOf(const std::vector<Edge>& edges, const Segment& segment,
                                  bool countEndpointTouches) {
  const Box box = boxOf(segment);
  const Line line = lineOf(segment);
  std::vector<Crossing> crossings;
  for (std::size_t k = 0; k < edges.size(); ++k) {
    const Edge& edge = edges[k];
    if (!edge.valid || !overlap(edge.box, box) || isParallel(edge.line, line)) continue;
    if (!countEndpointTouches && touchesAnEnd(edge, segment)) continue;
    const Point p = intersect(edge.line, line);
    if (distToPoint(edge.segment, p) < touch && distToPoint(segment, p) < touch) {
      crossings.push_back({p, static_cast<int>(k)});
    }
  }
  exchangeSort(crossings, segment);
  return crossings;
}

// A coordinate in units of the grid, rounded half away from zero and held within 64 bits.
std::int64_t cell(double coordinate, double unitsPerLength) {
  constexpr double limit = 9223372036854775808.0;
  const double scaled = coordinate * unitsPerLength;
  const double rounded = std::trunc(scaled >= 0.0 ? scaled + 0.5 : scaled - 0.5);
  if (std::isnan(rounded)) return 0;
  if (rounded >= limit) return std::numeric_limits<std::int64_t>::max();
  if (rounded < -limit) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(rounded);
}

// Whether `value` is `base + offset`, where a sum outside 64 bits equals nothing.
bool isOffset(std::int64_t value, std::int64_t base, int offset) {
  if (offset > 0 && base == std::numeric_limits<std::int64_t>::max()) return false;
  if (offset < 0 && base == std::numeric_limits<std::int64_t>::min()) return false;
  return value == base + offset;
}

}  // namespace

std::vector<Edge> crossableEdges(const Contour& contour) {
  std::vector<Edge> edges;
  for (const Segment& s : edgesOf(contour)) {
    edges.push_back(realEq(s.a, s.b, 1e-15) ? Edge() : Edge{s, lineOf(s), boxOf(s), true});
  }
  return edges;
}

std::vector<Crossing> intersections(const Contour& contour, const Segment& segment,
                                    bool countEndpointTouches) {
  checkEmptyContour(contour);
  if (!overlap(encloseRect(contour, identity()), boxOf(segment))) return {};
  return crossingsOf(crossableEdges(contour), segment, countEndpointTouches);
}

Points intersections(const Contour& contour, const Contour& other) {
  checkEmptyContour(contour);
  Points points;
  for (const Segment& segment : edgesOf(other)) {
    for (const Crossing& crossing : intersections(contour, segment, true)) {
      points.push_back(crossing.point);
    }
  }
  return points;
}

bool isSelfIntersecting(const Contour& contour) {
  if (contour.points.size() < 2) return false;
  for (const Edge& edge : crossableEdges(contour)) {
    if (edge.valid && !intersections(contour, edge.segment, false).empty()) return true;
  }
  return false;
}

std::vector<int> vertexIndex(const Contour& contour, const Point& p, double tolerance) {
  checkEmptyContour(contour);
  const double scale = 1.0 / tolerance;
  const std::int64_t x = cell(p.x(), scale);
  const std::int64_t y = cell(p.y(), scale);
  std::vector<int> result;
  for (int dx = -1; dx <= 1; ++dx) {
    for (int dy = -1; dy <= 1; ++dy) {
      for (std::size_t j = 0; j < contour.points.size(); ++j) {
        const Point& v = contour.points[j];
        if (distance(v, p) < tolerance && isOffset(cell(v.x(), scale), x, dx) &&
            isOffset(cell(v.y(), scale), y, dy)) {
          result.push_back(static_cast<int>(j));
        }
      }
    }
  }
  return result;
}

}  // namespace plain
