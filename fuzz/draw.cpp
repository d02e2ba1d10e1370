// SPDX-License-Identifier: MIT

#include "draw.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <numbers>

#include <testing/shapes/shapes.h>

namespace fuzz {

namespace {

constexpr std::array<double, 16> offsets = {0.0,   1e-15,  -1e-15, 1e-7,  -1e-7,  5e-7, 9e-7,  1e-6,
                                            -1e-6, 1.1e-6, 2e-6,   -2e-6, 3.3e-6, 1e-5, -1e-5, 0.5};
constexpr std::array<double, 16> scales = {1.0, 1e-9, 1e-6, 1e-5, 1e-3,  0.1,   7.0,   1e3,
                                           1e6, 1e9,  1e12, 1e15, 1e100, 1e153, 1e300, 1e-160};

double drawOffset(Input& input) { return offsets[input.below(offsets.size())]; }

enum class Style : unsigned char { eBits, eGrid, eNearGrid, eFine, eScaled, eShape };

Style drawStyle(Input& input) { return static_cast<Style>(input.below(6)); }

plain::Point onGrid(Input& input) {
  const unsigned cell = input.byte();
  return {static_cast<double>(cell % 16), static_cast<double>(cell / 16)};
}

plain::Point drawFree(Input& input, Style style) {
  switch (style) {
    case Style::eBits: {
      const double x = input.anyDouble();
      return {x, input.anyDouble()};
    }
    case Style::eNearGrid: {
      const plain::Point p = onGrid(input);
      const double dx = drawOffset(input);
      return plain::plus(p, {dx, drawOffset(input)});
    }
    case Style::eFine: {
      const double x = input.small() / 64.0;
      return {x, input.small() / 64.0};
    }
    default:
      return onGrid(input);
  }
}

/// `count` copies of the pattern, each shifted further.
plain::Points repeated(const plain::Points& pattern, std::size_t count, const plain::Point& shift) {
  plain::Points points;
  for (std::size_t i = 0; i < count; ++i) {
    for (const plain::Point& p : pattern) {
      points.push_back(plain::plus(p, plain::times(shift, static_cast<double>(i))));
    }
  }
  return points;
}

const plain::Point& oneOf(Input& input, const plain::Points& points) {
  return points[input.bits(2) % points.size()];
}

}  // namespace

plain::Points drawVertices(Input& input, std::size_t most) {
  const Style style = drawStyle(input);
  if (style == Style::eShape) return shapes::any(input.bits(4), most).points;
  const double scale = style == Style::eScaled ? scales[input.below(scales.size())] : 1.0;
  const std::size_t count = input.below(std::min<std::size_t>(most + 1, 256));
  const std::size_t repetitions = 1 + input.byte() % 32;
  plain::Points points;
  while (points.size() < count && !input.isEmpty()) {
    points.push_back(plain::times(drawFree(input, style), scale));
  }
  if (repetitions > 1) points = repeated(points, repetitions, drawFree(input, Style::eNearGrid));
  if (points.size() > most) points.resize(most);
  return points;
}

plain::Point drawPoint(Input& input, const plain::Points& near) {
  const std::size_t kind = input.below(6);
  if (near.empty() || kind < 2) return drawFree(input, drawStyle(input));
  const plain::Point& vertex = oneOf(input, near);
  if (kind == 2) return vertex;
  if (kind == 3) {
    const double dx = drawOffset(input);
    return plain::plus(vertex, {dx, drawOffset(input)});
  }
  const plain::Point& other = oneOf(input, near);
  const double share = input.byte() / 128.0;
  const plain::Point between =
      plain::plus(vertex, plain::times(plain::minus(other, vertex), share));
  return kind == 4 ? between : plain::plus(between, {0.0, drawOffset(input)});
}

plain::Segment drawSegment(Input& input, const plain::Points& near) {
  const plain::Point a = drawPoint(input, near);
  return {a, drawPoint(input, near)};
}

double drawAngle(Input& input, const plain::Points& near) {
  const std::size_t kind = input.below(3);
  if (kind == 0) return static_cast<double>(input.below(64)) * (std::numbers::pi / 8.0);
  if (kind == 1) return input.anyDouble();
  const plain::Segment segment = drawSegment(input, near);
  const plain::Point d = plain::minus(segment.b, segment.a);
  return std::atan2(-d.x(), d.y());
}

qcXform<2> drawXform(Input& input) {
  const std::size_t kind = input.below(3);
  if (kind == 0) return qcXform<2>::I;
  std::array<double, 6> numbers{};
  for (double& number : numbers) number = kind == 1 ? input.small() / 256.0 : input.anyDouble();
  return {qcMatrix<2>(numbers[0], numbers[1], numbers[2], numbers[3]), {numbers[4], numbers[5]}};
}

double drawTolerance(Input& input) {
  constexpr std::array<double, 7> usual = {1e-6, 0.0, 1.0, 0.1, 1e-15, 1e3, -1.0};
  const std::size_t kind = input.below(usual.size() + 1);
  return kind < usual.size() ? usual[kind] : input.anyDouble();
}

plain::Region drawRegion(Input& input, std::size_t mostVertices, int depth) {
  plain::Region region{drawVertices(input, mostVertices), {}};
  if (depth == 0) return region;
  for (std::size_t k = input.below(4); k > 0 && !input.isEmpty(); --k) {
    region.holes.push_back(drawRegion(input, mostVertices / 2, depth - 1));
  }
  return region;
}

plain::Regions drawRegions(Input& input, std::size_t most, std::size_t mostVertices) {
  plain::Regions regions;
  for (std::size_t k = input.below(most + 1); k > 0 && !input.isEmpty(); --k) {
    if (regions.empty() || input.flag()) {
      regions.push_back(drawRegion(input, mostVertices, 1));
      continue;
    }
    plain::Region moved = regions[input.below(regions.size())];
    const plain::Point shift = drawFree(input, drawStyle(input));
    for (plain::Point& p : moved.points) p = plain::plus(p, shift);
    regions.push_back(moved);
  }
  return regions;
}

}  // namespace fuzz
