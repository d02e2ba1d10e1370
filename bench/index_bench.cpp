// SPDX-License-Identifier: MIT
//
// The measurements behind the thresholds of cntr/index/policy.h: each question answered with and
// without an index, and the cost of making the index. A threshold is well chosen where the two
// times cross, or where the time saved so far pays for the index.

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>
#include <cntr/compute/containment.h>
#include <cntr/compute/evenodd.h>
#include <cntr/compute/extents.h>
#include <cntr/compute/extremal.h>
#include <cntr/compute/nearest.h>
#include <cntr/compute/probe.h>
#include <cntr/index/boxtree.h>
#include <cntr/index/containmentgrid.h>
#include <cntr/index/parallels.h>
#include <cntr/index/strips.h>
#include <cntr/index/vertexgrid.h>
#include <cntr/region.h>
#include <testing/shapes/shapes.h>

namespace {

namespace compute = cntr::compute;
namespace index = cntr::index;
namespace plane = cntr::plane;

constexpr std::size_t questionCount = 1024;

/// A smooth star of n vertices, its index, and questions about it.
struct Subject {
  explicit Subject(std::size_t n)
      : points(shapes::smoothStar(n)),
        path{points, true},
        bounds(compute::boundingBox(points)),
        edges(path),
        extents(compute::extentsOf(points)) {
    shapes::Random random(3);
    for (std::size_t i = 0; i < questionCount; ++i) {
      places.emplace_back(random.uniform(bounds.minX, bounds.maxX),
                          random.uniform(bounds.minY, bounds.maxY));
      ends.push_back(places.back() +
                     qcVector<2>(random.uniform(-10.0, 10.0), random.uniform(-10.0, 10.0)));
      angles.emplace_back(random.uniform(0.0, 6.28));
    }
  }

  shapes::Points points;
  plane::Path path;
  plane::Box bounds;
  index::EdgeIndex edges;
  compute::Extents extents;
  shapes::Points places;
  shapes::Points ends;
  std::vector<qcRadian> angles;
};

const Subject& subjectOf(std::size_t n) {
  static std::vector<std::unique_ptr<Subject>> known;
  for (const auto& subject : known) {
    if (subject->points.size() == n) return *subject;
  }
  known.push_back(std::make_unique<Subject>(n));
  return *known.back();
}

/// Calls `ask(subject, edge index or null, number of the question)` over and over.
template <class Ask>
void time(const std::string& question, std::initializer_list<std::size_t> sizes, Ask ask) {
  for (const std::size_t n : sizes) {
    for (const bool withIndex : {false, true}) {
      const std::string name =
          question + '/' + std::to_string(n) + (withIndex ? "/index" : "/scan");
      benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        const Subject& subject = subjectOf(n);
        const index::EdgeIndex* const edges = withIndex ? &subject.edges : nullptr;
        std::size_t i = 0;
        for (auto _ : state) {
          benchmark::DoNotOptimize(ask(subject, edges, i));
          i = (i + 1) % questionCount;
        }
      });
    }
  }
}

template <class Make>
void timeMaking(const std::string& what, std::initializer_list<std::size_t> sizes, Make make) {
  for (const std::size_t n : sizes) {
    benchmark::RegisterBenchmark((what + '/' + std::to_string(n)).c_str(),
                                 [=](benchmark::State& state) {
                                   const Subject& subject = subjectOf(n);
                                   for (auto _ : state) benchmark::DoNotOptimize(make(subject));
                                 });
  }
}

void timeEdges() {
  time("segment", {16, 32, 64}, [](const Subject& s, const index::EdgeIndex* edges, std::size_t i) {
    return compute::countCrossings({s.path, s.bounds, edges}, s.places[i], s.ends[i], true);
  });
  time("nearest point", {16, 32, 64},
       [](const Subject& s, const index::EdgeIndex* edges, std::size_t i) {
         return compute::closestPoint(s.path, edges, s.places[i]);
       });
  time("nearest vertex", {16, 32, 64},
       [](const Subject& s, const index::EdgeIndex* edges, std::size_t i) {
         return compute::closestVertex(s.path, edges, s.places[i]);
       });
  timeMaking("make edge index", {16, 32, 64, 1000, 100000},
             [](const Subject& s) { return index::EdgeIndex(s.path); });
  time("extremal vertex", {100, 1000, 100000},
       [](const Subject& s, const index::EdgeIndex* edges, std::size_t i) {
         return compute::extremalVertex(s.path, edges, s.angles[i]);
       });
}

void timeContainment() {
  time("ray", {16, 100, 1000, 10000, 100000},
       [](const Subject& s, const index::EdgeIndex* edges, std::size_t i) {
         return compute::rayCrossings({s.path, s.bounds, edges}, 3000.0, s.places[i], false);
       });
  time("even-odd", {4, 16, 100, 128, 1000, 10000, 100000},
       [](const Subject& s, const index::EdgeIndex* edges, std::size_t i) {
         return edges == nullptr
                    ? compute::evenOdd(s.points, s.extents, s.places[i]).answer
                    : compute::evenOdd(s.points, *edges, s.extents, s.places[i]).answer;
       });
  timeMaking("take extents", {16, 100, 1000, 10000, 100000},
             [](const Subject& s) { return compute::extentsOf(s.points); });
  time("grid", {100, 1000, 10000, 100000},
       [](const Subject& s, const index::EdgeIndex*, std::size_t i) {
         static const Subject* of = nullptr;
         static std::unique_ptr<index::ContainmentGrid> grid;
         if (of != &s) {
           grid = std::make_unique<index::ContainmentGrid>(s.points, s.bounds, s.extents.radius);
           of = &s;
         }
         return grid->locate(s.points, s.places[i]);
       });
  timeMaking("make containment grid", {16, 100, 1000, 10000, 100000}, [](const Subject& s) {
    return index::ContainmentGrid(s.points, s.bounds, compute::radiusFromFirst(s.points));
  });
}

void timeSelfCrossing() {
  timeMaking("make strips and parallels", {1000, 100000}, [](const Subject& s) {
    return std::pair(index::Parallels(s.path, s.edges), index::Strips(s.path, s.edges));
  });
  benchmark::RegisterBenchmark("compare edges", [](benchmark::State& state) {
    const Subject& s = subjectOf(1000);
    std::size_t i = 0;
    for (auto _ : state) {
      const plane::Edge one = s.path.edge(i);
      const plane::Edge other = s.path.edge((i + 2) % s.points.size());
      benchmark::DoNotOptimize(
          compute::Probe(one.from, one.to, false, s.bounds).crossingWith(other));
      benchmark::DoNotOptimize(
          compute::Probe(other.from, other.to, false, s.bounds).crossingWith(one));
      i = (i + 1) % s.points.size();
    }
  });
}

void timeVertices() {
  timeMaking("make vertex grid", {1000},
             [](const Subject& s) { return index::VertexGrid(s.points, 1.0); });
  benchmark::RegisterBenchmark("near vertices/1000/scan", [](benchmark::State& state) {
    const Subject& s = subjectOf(1000);
    std::size_t i = 0;
    for (auto _ : state) {
      std::vector<int> near;
      for (std::size_t v = 0; v < s.points.size(); ++v) {
        if (s.points[v].distance(s.places[i]) < 1.0) near.push_back(static_cast<int>(v));
      }
      benchmark::DoNotOptimize(near);
      i = (i + 1) % questionCount;
    }
  });
  benchmark::RegisterBenchmark("near vertices/1000/grid", [](benchmark::State& state) {
    const Subject& s = subjectOf(1000);
    const index::VertexGrid grid(s.points, 1.0);
    std::size_t i = 0;
    for (auto _ : state) {
      benchmark::DoNotOptimize(grid.near(s.points, s.places[i]));
      i = (i + 1) % questionCount;
    }
  });
}

/// k regions of 16 vertices in a row, with gaps, all asked often enough to have built their
/// indexes.
struct Row {
  explicit Row(std::size_t k) {
    const shapes::Points star = shapes::smoothStar(16);
    for (std::size_t i = 0; i < k; ++i) {
      shapes::Points outline;
      const qcVector<2> shift(1200.0 * static_cast<double>(i), 0.0);
      for (const qcVector<2>& p : star) outline.push_back(p + shift);
      regions.emplace_back(outline, qcContourDefs::eNoIntersectionRepair);
      boxes.push_back(compute::boundingBox(outline));
    }
    shapes::Random random(3);
    for (std::size_t i = 0; i < questionCount; ++i) {
      places.emplace_back(random.uniform(0.0, 1200.0 * static_cast<double>(k)),
                          random.uniform(0.0, 960.0));
      for (const qcRegion& region : regions) region.inside(places.back(), false);
    }
  }

  std::vector<qcRegion> regions;
  std::vector<plane::Box> boxes;
  shapes::Points places;
};

bool isInside(const Row& row, const qcVector<2>& p) {
  return std::any_of(row.regions.begin(), row.regions.end(),
                     [&](const qcRegion& region) { return region.inside(p, false); });
}

bool isInside(const Row& row, const index::BoxTree& tree, const qcVector<2>& p) {
  return !tree.forEachTouching(plane::edgeBox(p, p),
                               [&](std::size_t i) { return !row.regions[i].inside(p, false); });
}

void timeSets() {
  for (const std::size_t k : std::initializer_list<std::size_t>{4, 8, 16, 32}) {
    const std::string size = '/' + std::to_string(k);
    benchmark::RegisterBenchmark(("make box tree" + size).c_str(), [k](benchmark::State& state) {
      const Row row(k);
      for (auto _ : state) benchmark::DoNotOptimize(index::BoxTree(row.boxes));
    });
    for (const bool withTree : {false, true}) {
      const std::string name = "inside set" + size + (withTree ? "/index" : "/scan");
      benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        const Row row(k);
        const index::BoxTree tree(row.boxes);
        std::size_t i = 0;
        for (auto _ : state) {
          benchmark::DoNotOptimize(withTree ? isInside(row, tree, row.places[i])
                                            : isInside(row, row.places[i]));
          i = (i + 1) % questionCount;
        }
      });
    }
  }
}

const bool isRegistered = [] {
  timeEdges();
  timeContainment();
  timeSelfCrossing();
  timeVertices();
  timeSets();
  return true;
}();

}  // namespace
