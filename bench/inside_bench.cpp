// SPDX-License-Identifier: MIT
//
// The measurements behind the thresholds of cntrsets/operations/policy.h: what slabs and a grid
// take to make, and what a point takes with and without them.

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <cntrsets/inside.h>
#include <cntrsets/operations/featurewinding.h>
#include <cntrsets/operations/insidegrid.h>
#include <testing/shapes/shapes.h>

namespace {

using cntr::sets::FeatureWinding;
using cntr::sets::InsideGrid;

constexpr std::size_t questionCount = 1024;
constexpr double largestCoordinate = 2048.0;

/// A smooth star of n vertices and points in its box.
struct Subject {
  explicit Subject(std::size_t n)
      : feature{{shapes::smoothStar(n), {}}},
        places(shapes::pointsInBox(feature[0].outline, questionCount)),
        winding(feature, cntr::sets::Scaling(largestCoordinate)),
        inSlabs(winding) {
    for (const qcVector<2>& p : feature[0].outline) box.add(p);
    inSlabs.sortIntoSlabs();
  }

  InsideGrid grid() const {
    return {feature, box,
            [this](const qcVector<2>& p) { return inSlabs.partAround(p).has_value(); }};
  }

  std::vector<qcRings> feature;
  shapes::Points places;
  cntr::plane::Box box;
  FeatureWinding winding;
  FeatureWinding inSlabs;
};

template <class Act>
void time(const std::string& what, Act act) {
  for (const std::size_t n : {16U, 100U, 1000U, 10000U}) {
    benchmark::RegisterBenchmark((what + '/' + std::to_string(n)).c_str(),
                                 [=](benchmark::State& state) { act(state, Subject(n)); });
  }
}

void timePoints(benchmark::State& state, const FeatureWinding& winding, const Subject& subject) {
  std::size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(winding.partAround(subject.places[i]));
    i = (i + 1) % questionCount;
  }
}

const bool isRegistered = [] {
  time("winding, all edges", [](benchmark::State& state, const Subject& subject) {
    timePoints(state, subject.winding, subject);
  });
  time("winding, slabs", [](benchmark::State& state, const Subject& subject) {
    timePoints(state, subject.inSlabs, subject);
  });
  time("copy", [](benchmark::State& state, const Subject& subject) {
    for (auto _ : state) benchmark::DoNotOptimize(FeatureWinding(subject.winding));
  });
  time("copy and sort into slabs", [](benchmark::State& state, const Subject& subject) {
    for (auto _ : state) {
      FeatureWinding winding = subject.winding;
      winding.sortIntoSlabs();
      benchmark::DoNotOptimize(winding);
    }
  });
  time("make grid", [](benchmark::State& state, const Subject& subject) {
    for (auto _ : state) benchmark::DoNotOptimize(subject.grid());
  });
  // n + 32 points, half as many as the grid waits for, of a new qcInside.
  time("points before the grid", [](benchmark::State& state, const Subject& subject) {
    const std::size_t count = subject.feature[0].outline.size() + 32;
    for (auto _ : state) {
      const qcInside inside(subject.feature);
      for (std::size_t i = 0; i < count; ++i)
        benchmark::DoNotOptimize(inside.contains(subject.places[i % questionCount]));
    }
  });
  time("grid", [](benchmark::State& state, const Subject& subject) {
    const InsideGrid grid = subject.grid();
    std::size_t i = 0;
    for (auto _ : state) {
      benchmark::DoNotOptimize(grid.at(subject.places[i]));
      i = (i + 1) % questionCount;
    }
  });
  return true;
}();

}  // namespace
