// SPDX-License-Identifier: MIT
//
// Measures of many features on one thread, compared with a plain loop over bare doubles that finds
// the area, length and centre of the same rings. README.md explains how to read the ratios.

#include <cmath>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <cntrtable/measuring.h>
#include <testing/shapes/shapes.h>

namespace {

constexpr std::size_t features = 1000;

/// Stars with different waves, sizes of about 100 and places anywhere in an image.
qcOutlines stars(std::size_t vertices) {
  shapes::Random random(1);
  qcOutlinesBuilder builder;
  for (std::size_t i = 0; i < features; ++i) {
    const double factor = random.uniform(0.05, 0.2);
    const double x = random.uniform(0.0, 4000.0);
    const double y = random.uniform(0.0, 4000.0);
    shapes::Points ring = shapes::smoothStar(vertices, i + 1);
    for (qcVector<2>& p : ring) p = p * factor + qcVector<2>(x, y);
    builder.addAreas({{ring, {}}});
  }
  return builder.finish();
}

void measure(benchmark::State& state, const std::vector<std::string>& columns) {
  const qcOutlines outlines = stars(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(qf_Measure(outlines, columns, 1));
  state.SetItemsProcessed(static_cast<std::int64_t>(features) * state.iterations());
}

void areaLengthCentre(benchmark::State& state) {
  measure(state, {"area", "perimeter", "centre_x", "centre_y"});
}

void tenMeasures(benchmark::State& state) {
  measure(state, {"area", "perimeter", "centre_x", "centre_y", "length", "roundness",
                  "equivalent_diameter", "axis_ratio", "left", "width"});
}

struct PlainMeasures {
  double area = 0.0;
  double length = 0.0;
  double x = 0.0;
  double y = 0.0;
};

[[gnu::noinline]] PlainMeasures plainMeasures(std::span<const double> xy) {
  PlainMeasures sums;
  double x = xy[xy.size() - 2];
  double y = xy[xy.size() - 1];
  for (std::size_t i = 0; i < xy.size(); i += 2) {
    const double w = x * xy[i + 1] - xy[i] * y;
    sums.area += w;
    sums.x += (x + xy[i]) * w;
    sums.y += (y + xy[i + 1]) * w;
    sums.length += std::sqrt((x - xy[i]) * (x - xy[i]) + (y - xy[i + 1]) * (y - xy[i + 1]));
    x = xy[i];
    y = xy[i + 1];
  }
  return {sums.area * 0.5, sums.length, sums.x / (3.0 * sums.area), sums.y / (3.0 * sums.area)};
}

void areaLengthCentrePlain(benchmark::State& state) {
  const qcOutlines outlines = stars(static_cast<std::size_t>(state.range(0)));
  std::vector<PlainMeasures> answers(features);
  for (auto _ : state) {
    for (std::size_t i = 0; i < features; ++i) answers[i] = plainMeasures(outlines.ring(i, 0, 0));
    benchmark::DoNotOptimize(answers.data());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(features) * state.iterations());
}

BENCHMARK(areaLengthCentre)->Arg(8)->Arg(64)->Arg(512);
BENCHMARK(tenMeasures)->Arg(8)->Arg(64)->Arg(512);
BENCHMARK(areaLengthCentrePlain)->Arg(8)->Arg(64)->Arg(512);

}  // namespace
