// SPDX-License-Identifier: MIT
//
// Storing a contour to memory and loading it again, compared with copying the same bytes. README.md
// explains how to read the ratios.

#include <cstddef>
#include <cstring>
#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <cntr/contour.h>
#include <platform/core/archive.h>
#include <testing/shapes/shapes.h>

namespace {

/// Memory as a stream buffer: written from the start, or read from the start.
class MemoryBuffer : public std::streambuf {
 public:
  explicit MemoryBuffer(std::vector<char>& memory) {
    char* const begin = memory.data();
    setp(begin, begin + memory.size());
    setg(begin, begin, begin + memory.size());
  }
};

qcContour contourOf(const benchmark::State& state) {
  return {shapes::smoothStar(static_cast<std::size_t>(state.range(0))), true, 1};
}

std::vector<char> storedBytesOf(qcContour& contour) {
  std::ostringstream stream;
  qcStreamArchive archive(stream);
  archive || contour;
  const std::string bytes = stream.str();
  return {bytes.begin(), bytes.end()};
}

void reportSpeed(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

void copyBytes(benchmark::State& state) {
  qcContour contour = contourOf(state);
  const std::vector<char> bytes = storedBytesOf(contour);
  std::vector<char> target(bytes.size());
  for (auto _ : state) {
    std::memcpy(target.data(), bytes.data(), bytes.size());
    benchmark::DoNotOptimize(target.data());
    benchmark::ClobberMemory();
  }
  reportSpeed(state, bytes.size());
}

void store(benchmark::State& state) {
  qcContour contour = contourOf(state);
  std::vector<char> target(storedBytesOf(contour).size());
  for (auto _ : state) {
    MemoryBuffer buffer(target);
    std::ostream stream(&buffer);
    qcStreamArchive archive(stream);
    archive || contour;
    benchmark::ClobberMemory();
  }
  reportSpeed(state, target.size());
}

void load(benchmark::State& state) {
  qcContour contour = contourOf(state);
  std::vector<char> bytes = storedBytesOf(contour);
  for (auto _ : state) {
    MemoryBuffer buffer(bytes);
    std::istream stream(&buffer);
    qcStreamArchive archive(stream);
    archive || contour;
    benchmark::DoNotOptimize(contour.points().data());
  }
  reportSpeed(state, bytes.size());
}

BENCHMARK(copyBytes)->Arg(10)->Arg(1000)->Arg(100000)->Arg(1000000);
BENCHMARK(store)->Arg(10)->Arg(1000)->Arg(100000)->Arg(1000000);
BENCHMARK(load)->Arg(10)->Arg(1000)->Arg(100000)->Arg(1000000);

}  // namespace
