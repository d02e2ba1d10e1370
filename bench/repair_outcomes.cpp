// SPDX-License-Identifier: MIT
//
// What becomes of outlines that cross themselves: how often repair succeeds, why it fails where it
// does, and whether the result still crosses itself. Prints the table of docs/repair.md:
//
//   repair_outcomes [SHAPES_PER_FAMILY]

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <cntr/compute/length.h>
#include <cntr/compute/repair.h>
#include <cntr/inertia.h>
#include <cntr/region.h>
#include <testing/shapes/shapes.h>

namespace {

using shapes::Points;
using shapes::Random;

constexpr double pi = 3.141592653589793;

struct Family {
  std::string name;
  std::function<Points(Random&)> draw;
};

/// How the shapes of a family ended.
struct Tally {
  std::size_t shapes = 0;
  std::size_t simple = 0;
  std::size_t noStart = 0;
  std::size_t noReturn = 0;
  std::size_t regularized = 0;
  std::size_t regularizedCrosses = 0;
  std::size_t noLoop = 0;
  std::size_t hulled = 0;
  std::size_t hullCrosses = 0;
  /// Outer hulls of fewer than 3 vertices.
  std::size_t hullIsFlat = 0;
  /// The sum, over the outer hulls, of their fractions of the convex hull's area.
  double hullShares = 0.0;
};

Tally& operator+=(Tally& sum, const Tally& more) {
  static constexpr std::array fields = {
      &Tally::shapes,      &Tally::simple, &Tally::noStart,
      &Tally::noReturn,    &Tally::noLoop, &Tally::regularized,
      &Tally::hullCrosses, &Tally::hulled, &Tally::regularizedCrosses,
      &Tally::hullIsFlat};
  for (std::size_t Tally::*field : fields) sum.*field += more.*field;
  sum.hullShares += more.hullShares;
  return sum;
}

/// The repaired region, or nothing when repair throws.
std::optional<qcRegion> repaired(const qcRegion& region,
                                 void (qcRegion::*repair)(qcRegion&) const) {
  qcRegion result;
  try {
    (region.*repair)(result);
  } catch (const qcContourDefs::BadParams&) {
    return {};
  }
  return result;
}

/// True when there is an edge from which the walk along the boundary can start.
bool canStart(const Points& points) {
  const double probe = 0.01 * cntr::compute::medianEdgeLength({points, true});
  return cntr::compute::startingEdge(cntr::compute::Outline(points), probe).has_value();
}

double shareOfConvexHull(const qcRegion& region, const qcRegion& hull) {
  qcRegion convex;
  region.convexHull(convex);
  return qf_Area(hull.points()) / qf_Area(convex.points());
}

void countHull(Tally& tally, const qcRegion& region) {
  const std::optional<qcRegion> hull = repaired(region, &qcRegion::outerHull);
  ++(hull ? tally.hulled : tally.noLoop);
  if (!hull) return;
  if (hull->isSelfIntersecting()) ++tally.hullCrosses;
  if (hull->points().size() < 3) ++tally.hullIsFlat;
  tally.hullShares += shareOfConvexHull(region, *hull);
}

void count(Tally& tally, const Points& points) {
  const qcRegion region(points, qcContourDefs::eNoIntersectionRepair);
  ++tally.shapes;
  if (!region.isSelfIntersecting()) {
    ++tally.simple;
    return;
  }
  const std::optional<qcRegion> regular = repaired(region, &qcRegion::regularize);
  if (!regular) {
    ++(canStart(points) ? tally.noReturn : tally.noStart);
    return;
  }
  ++tally.regularized;
  if (regular->isSelfIntersecting()) ++tally.regularizedCrosses;
  countHull(tally, region);
}

std::size_t between(Random& random, std::size_t low, std::size_t high) {
  return low + random.below(high - low + 1);
}

Family closedWalks(std::size_t low, std::size_t high) {
  return {"random closed walk, " + std::to_string(low) + " to " + std::to_string(high),
          [=](Random& random) { return shapes::closedWalk(random, between(random, low, high)); }};
}

/// An outline with one vertex pulled out of its place, across its neighbours or not.
Points displaced(Random& random) {
  Points points = shapes::smoothStar(between(random, 20, 200), random.next());
  const double radius = random.uniform(0.0, 120.0);
  qcVector<2>& vertex = points[random.below(points.size())];
  vertex = vertex + qcVector<2>(radius, qcRadian(random.uniform(0.0, 2.0 * pi)));
  return points;
}

/// A spiral whose end is joined to its start across all its turns.
Points spiralAcrossItself(Random& random) {
  const std::size_t n = between(random, 10, 200);
  const double turns = random.uniform(1.2, 5.0);
  Points points;
  for (std::size_t i = 0; i < n; ++i) {
    const double t = static_cast<double>(i) / static_cast<double>(n);
    points.push_back({10.0 + 100.0 * t, qcRadian(2.0 * pi * turns * t)});
  }
  return points;
}

/// A curve that winds around its middle twice and loops inwards.
Points limacon(Random& random) {
  const std::size_t n = between(random, 10, 200);
  const double loop = random.uniform(1.1, 4.0);
  const double phase = random.uniform(0.0, 2.0 * pi);
  Points points;
  for (std::size_t i = 0; i < n; ++i) {
    const double t = 2.0 * pi * static_cast<double>(i) / static_cast<double>(n) + phase;
    points.push_back({50.0 * (1.0 + loop * std::cos(t)), qcRadian(t)});
  }
  return points;
}

/// A simple outline with vertices that touch other edges within a millionth.
Points touching(Random& random) {
  Points points = shapes::smoothStar(between(random, 5, 100), random.next());
  shapes::addVerticesOnEdges(random, points, 200);
  return points;
}

Points figureEight(Random& random) {
  const auto q = static_cast<unsigned>(between(random, 2, 4));
  return shapes::lissajous(between(random, 10, 200), 1, q, random.uniform(0.1, 1.4));
}

std::vector<Family> families() {
  return {
      {"four random points (bow ties)", [](Random& r) { return shapes::cloud(r, 4); }},
      {"random points, 5 to 200", [](Random& r) { return shapes::cloud(r, between(r, 5, 200)); }},
      closedWalks(5, 10),
      closedWalks(11, 20),
      closedWalks(21, 50),
      closedWalks(51, 200),
      {"figure eight and chains of lobes", &figureEight},
      {"loop within a loop", &limacon},
      {"spiral across itself", &spiralAcrossItself},
      {"star in one stroke (pentagrams)",
       [](Random& r) {
         const std::size_t n = between(r, 5, 60);
         return shapes::starPolygon(n, between(r, 2, n / 2), 100.0);
       }},
      {"outline with neighbours exchanged",
       [](Random& r) { return shapes::crossingStar(between(r, 20, 200), r.next()); }},
      {"outline with one vertex displaced", &displaced},
      {"outline that touches its own edges", &touching},
      {"walk on a grid", [](Random& r) { return shapes::gridWalk(r, between(r, 5, 200)); }},
      {"points of a grid", [](Random& r) { return shapes::gridPoints(r, between(r, 5, 30), 10); }},
  };
}

double percent(std::size_t part, std::size_t whole) {
  return whole == 0 ? 0.0 : 100.0 * static_cast<double>(part) / static_cast<double>(whole);
}

void print(const std::string& name, const Tally& t) {
  std::printf("| %s | %zu | %.1f | %.1f | %.1f | %.1f | %zu | %.2f | %.2f | %zu | %.0f |\n",
              name.c_str(), t.shapes, percent(t.simple, t.shapes), percent(t.regularized, t.shapes),
              percent(t.noStart, t.shapes), percent(t.noReturn, t.shapes), t.noLoop,
              percent(t.regularizedCrosses, t.regularized), percent(t.hullCrosses, t.hulled),
              t.hullIsFlat,
              t.hulled == 0 ? 0.0 : 100.0 * t.hullShares / static_cast<double>(t.hulled));
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  const auto shapesEach = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 20000;
  std::puts(
      "| outlines | shapes | simple % | repaired % | no start % | no return % | no loop | "
      "regularized crosses itself % | hull crosses itself % | hulls of 2 vertices | hull area, % "
      "of convex hull |\n"
      "|---|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|");
  Tally all;
  std::uint64_t seed = 0;
  for (const Family& family : families()) {
    Random random(++seed);
    Tally tally;
    while (tally.shapes < shapesEach) count(tally, family.draw(random));
    print(family.name, tally);
    all += tally;
  }
  print("all", all);
}
