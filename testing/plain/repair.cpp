// SPDX-License-Identifier: MIT
#include <testing/plain/repair.h>

#include <cstdint>
#include <cstring>
#include <set>
#include <tuple>

#include <testing/plain/error.h>
#include <testing/plain/measures.h>

namespace plain {

namespace {

constexpr double sameVertex = 1e-6;

using Loops = std::vector<Region>;

std::uint64_t bitsOf(double value) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

// Whether a probe across the middle of edge i meets only that edge and has one end outside.
bool isStartingEdge(const Region& region, std::size_t i, double tolerance) {
  const Point& a = region.points[i];
  const Point& b = region.points[i + 1];
  const Point m = times(plus(a, b), 0.5);
  const Point u = unit(minus(a, b));
  const Point left(m.x() - u.y() * tolerance, m.y() + u.x() * tolerance);
  const Point right(m.x() + u.y() * tolerance, m.y() - u.x() * tolerance);
  return intersections(region, {left, right}, true, false).size() == 1 &&
         intersections(region, {a, b}, true, false).size() == 2 &&
         (insideCount(region, left, true) == 0 || insideCount(region, right, true) == 0);
}

// `count` vertices from index `first` on, around the boundary.
Points run(const Points& points, std::size_t first, std::size_t count) {
  Points result;
  for (std::size_t i = 0; i < count; ++i) result.push_back(points[(first + i) % points.size()]);
  return result;
}

void removeByLast(Loops& loops, std::size_t i) {
  loops[i] = Region(loops.back());
  loops.pop_back();
}

// Cuts loop `l` between its vertices a and b; a side of a single vertex bounds nothing.
void cut(Loops& loops, std::size_t l, std::size_t a, std::size_t b) {
  const Points q = loops[l].points;
  const std::size_t m = q.size();
  const std::size_t count = b < a ? b + m - a : b - a;
  const Points kept = run(q, a, count);
  const Points split = run(q, b, m - count);
  if (kept.size() > 1) {
    loops[l].points = kept;
    if (split.size() > 1) loops.push_back({split, {}});
  } else if (split.size() > 1) {
    loops[l].points = split;
  } else {
    loops.erase(loops.begin() + static_cast<std::ptrdiff_t>(l));
  }
}

bool cutOnce(Loops& loops) {
  for (std::size_t l = 0; l < loops.size(); ++l) {
    const Points& q = loops[l].points;
    for (std::size_t a = 0; a < q.size(); ++a) {
      for (const int listed : vertexIndex(boundary(loops[l]), q[a], sameVertex)) {
        const std::size_t b = static_cast<std::size_t>(listed);
        if (b == a) continue;
        cut(loops, l, a, b);
        return true;
      }
    }
  }
  return false;
}

bool dropNestedOnce(Loops& loops) {
  for (std::size_t i = 0; i < loops.size(); ++i) {
    for (std::size_t j = 0; j < loops.size(); ++j) {
      const Point middle = times(plus(loops[i].points[0], loops[i].points[1]), 0.5);
      if (j != i && inside(loops[j], middle, true)) {
        removeByLast(loops, i);
        return true;
      }
    }
  }
  return false;
}

bool joinOnce(Loops& loops) {
  for (std::size_t i = 0; i + 1 < loops.size(); ++i) {
    for (std::size_t j = i + 1; j < loops.size(); ++j) {
      const Points first = loops[i].points;
      const Points second = loops[j].points;
      for (std::size_t a = 0; a < first.size(); ++a) {
        const std::vector<int> shared = vertexIndex(boundary(loops[j]), first[a], sameVertex);
        if (shared.empty()) continue;
        Points joined = run(first, a, first.size());
        const std::size_t b = static_cast<std::size_t>(shared.front());
        for (const Point& p : run(second, b, second.size())) joined.push_back(p);
        loops[i] = {joined, {}};
        removeByLast(loops, j);
        return true;
      }
    }
  }
  return false;
}

}  // namespace

std::size_t startingEdge(const Region& region) {
  const double tolerance = 0.01 * medianFeatureSize(boundary(region));
  for (std::size_t i = 0; i + 1 < region.points.size(); ++i) {
    if (isStartingEdge(region, i, tolerance)) return i;
  }
  throw Error{Error::badParams, "invalid contour"};
}

Points tracedBoundary(const Region& region) {
  const Contour contour = boundary(region);
  const Points& p = region.points;
  const std::size_t n = p.size();
  const std::size_t start = startingEdge(region);
  Point current = p[start];
  std::size_t k = start + 1;
  bool forward = true;
  Points traced;
  std::set<std::tuple<std::uint64_t, std::uint64_t, std::size_t, bool>> met;
  while (traced.empty() || !same(current, p[start])) {
    if (!met.insert({bitsOf(current.x()), bitsOf(current.y()), k, forward}).second) {
      throw Error{Error::badParams, "invalid contour"};
    }
    const Point target = forward ? p[k] : p[(k + n - 1) % n];
    const std::vector<Crossing> crossings = intersections(contour, {current, target}, false);
    if (crossings.empty()) {
      current = target;
      k = (forward ? k + 1 : k + n - 1) % n;
    } else {
      current = crossings.front().point;
      k = static_cast<std::size_t>(crossings.front().edge);
      forward = !forward;
    }
    traced.push_back(current);
  }
  return traced;
}

Region cleanedHull(const Points& traced) {
  Loops loops{{traced, {}}};
  while (cutOnce(loops)) {
  }
  if (loops.empty()) throw Error{Error::badParams, "invalid contour"};
  while (dropNestedOnce(loops)) {
  }
  while (joinOnce(loops)) {
  }
  return loops.front();
}

Region regularize(const Region& region) {
  if (!isSelfIntersecting(boundary(region))) return region;
  checkEmptyContour(region);
  return {tracedBoundary(region), {}};
}

Region outerHull(const Region& region) {
  if (!isSelfIntersecting(boundary(region))) return region;
  checkEmptyContour(region);
  return cleanedHull(tracedBoundary(region));
}

Region splice(const Region& region, const Region& other) {
  const std::vector<Edge> edges = crossableEdges(boundary(region));
  const std::vector<Edge> otherEdges = crossableEdges(boundary(other));
  for (std::size_t i = 0; i < edges.size(); ++i) {
    if (!edges[i].valid) continue;
    const std::vector<Crossing> crossings = intersections(boundary(other), edges[i].segment, true);
    if (crossings.empty()) continue;
    const Point x = crossings.front().point;
    const std::size_t j = static_cast<std::size_t>(crossings.front().edge);
    Points joined{x};
    for (std::size_t k = 0; k < edges.size(); ++k) {
      joined.push_back(edges[(i + k) % edges.size()].segment.b);
    }
    joined.push_back(x);
    for (std::size_t k = 0; k < otherEdges.size(); ++k) {
      joined.push_back(otherEdges[(j + k) % otherEdges.size()].segment.b);
    }
    return {joined, {}};
  }
  throw Error{Error::badParams, "spliced regions do not intersect"};
}

}  // namespace plain
