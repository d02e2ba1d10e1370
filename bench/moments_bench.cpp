// SPDX-License-Identifier: MIT
//
// Area and centre of mass of a polygon, compared with plain loops over the same vertices as bare
// doubles. README.md explains how to read the ratios.

#include <cmath>
#include <cstddef>
#include <vector>

#include <benchmark/benchmark.h>
#include <cntr/inertia.h>
#include <testing/shapes/shapes.h>

namespace {

/// The shape as x, y, x, y, ...
std::vector<double> numbersOf(const shapes::Points& points) {
  std::vector<double> numbers;
  for (const auto& p : points) {
    numbers.push_back(p.x());
    numbers.push_back(p.y());
  }
  return numbers;
}

[[gnu::noinline]] double plainArea(const double* xy, std::size_t n) {
  double sum = 0.0;
  double x = xy[2 * n - 2];
  double y = xy[2 * n - 1];
  for (std::size_t i = 0; i < n; ++i) {
    sum += xy[2 * i + 1] * x - y * xy[2 * i];
    x = xy[2 * i];
    y = xy[2 * i + 1];
  }
  return std::fabs(sum * 0.5);
}

struct Centroid {
  double x;
  double y;
};

/// The usual formula, without medians.
[[gnu::noinline]] Centroid plainCentroid(const double* xy, std::size_t n) {
  double sum = 0.0;
  double gx = 0.0;
  double gy = 0.0;
  double x = xy[2 * n - 2];
  double y = xy[2 * n - 1];
  for (std::size_t i = 0; i < n; ++i) {
    const double w = xy[2 * i + 1] * x - y * xy[2 * i];
    sum += w;
    gx += (x + xy[2 * i]) * w;
    gy += (y + xy[2 * i + 1]) * w;
    x = xy[2 * i];
    y = xy[2 * i + 1];
  }
  const double r = 1.0 / (3.0 * sum);
  return {gx * r, gy * r};
}

/// Times `measure(shape)`, where `prepare` makes the shape from a smooth star of range(0) vertices.
template <class Prepare, class Measure>
void run(benchmark::State& state, Prepare prepare, Measure measure) {
  const auto n = static_cast<std::size_t>(state.range(0));
  auto shape = prepare(shapes::smoothStar(n));
  for (auto _ : state) {
    benchmark::DoNotOptimize(shape.data());
    benchmark::DoNotOptimize(measure(shape));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

shapes::Points asTheyAre(shapes::Points points) { return points; }

void area(benchmark::State& state) {
  run(state, asTheyAre, [](const auto& points) { return qf_Area(points); });
}

void areaPlain(benchmark::State& state) {
  run(state, numbersOf, [](const auto& xy) { return plainArea(xy.data(), xy.size() / 2); });
}

void centerOfMass(benchmark::State& state) {
  run(state, asTheyAre, [](const auto& points) { return qnContour::centerOfMass(points); });
}

void centerOfMassPlain(benchmark::State& state) {
  run(state, numbersOf, [](const auto& xy) { return plainCentroid(xy.data(), xy.size() / 2); });
}

void inertia(benchmark::State& state) {
  run(state, asTheyAre, [](const auto& points) { return qf_InertiaDataPolygon(points); });
}

BENCHMARK(area)->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(areaPlain)->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(centerOfMass)->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(centerOfMassPlain)->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(inertia)->Arg(10)->Arg(1000)->Arg(100000);

}  // namespace
