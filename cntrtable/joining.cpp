// SPDX-License-Identifier: MIT
//
// Each block of outlines has its own list of pairs; the lists are joined in order in the result,
// whichever thread made them.

#include <cntrtable/joining.h>

#include <algorithm>
#include <cmath>

#include <cntr/plane/box.h>
#include <cntrsets/inside.h>
#include <cntrtable/blocks.h>
#include <cntrtable/pointstrips.h>
#include <cntrtable/refusal.h>

namespace {

using cntr::plane::Box;
using table::featuresInBlock;
using table::NumberedPoint;
using table::PointStrips;

/// The box of the outlines of a feature; an empty one where no point can be inside.
Box boxOfArea(const qcOutlines& outlines, std::size_t feature) {
  Box box;
  if (outlines.kind(feature) != qcOutlineKind::eAreas) return box;
  for (std::size_t part = 0; part < outlines.parts(feature); ++part) {
    for (std::size_t ring = 0; ring < outlines.rings(feature, part); ++ring) {
      const std::span<const double> numbers = outlines.ring(feature, part, ring);
      for (std::size_t i = 0; i < numbers.size(); i += 2) {
        if (!std::isfinite(numbers[i]) || !std::isfinite(numbers[i + 1])) return {};
        if (ring == 0) box.add(qcVector<2>(numbers[i], numbers[i + 1]));
      }
    }
  }
  return box;
}

/// Adds the pairs of one outline.
void join(const qcOutlines& outlines, std::size_t outline, const PointStrips& strips,
          qcInsidePairs& pairs) {
  std::vector<NumberedPoint> candidates;
  strips.forEachIn(boxOfArea(outlines, outline),
                   [&candidates](const NumberedPoint& point) { candidates.push_back(point); });
  if (candidates.empty()) return;
  const qcInside inside(outlines.feature(outline));
  const std::size_t before = pairs.points.size();
  for (const NumberedPoint& point : candidates)
    if (inside.contains(point.position)) pairs.points.push_back(point.number);
  std::sort(pairs.points.begin() + static_cast<std::ptrdiff_t>(before), pairs.points.end());
  pairs.outlines.resize(pairs.points.size(), static_cast<std::int64_t>(outline));
}

void append(std::vector<std::int64_t>& all, const std::vector<std::int64_t>& more) {
  all.insert(all.end(), more.begin(), more.end());
}

}  // namespace

qcInsidePairs qf_InsideJoin(const qcOutlines& outlines, std::span<const double> points,
                            unsigned threads) {
  if (points.size() % 2 != 0)
    table::refuse(std::to_string(points.size()) + " coordinates are no pairs of x and y");
  const PointStrips strips(points);
  std::vector<qcInsidePairs> blocks((outlines.size() + featuresInBlock - 1) / featuresInBlock);
  table::forBlocks(outlines.size(), threads, [&](std::size_t begin, std::size_t end) {
    for (std::size_t outline = begin; outline < end; ++outline)
      join(outlines, outline, strips, blocks[begin / featuresInBlock]);
  });
  qcInsidePairs all;
  for (const qcInsidePairs& block : blocks) {
    append(all.outlines, block.outlines);
    append(all.points, block.points);
  }
  return all;
}
