// SPDX-License-Identifier: MIT
//
// What must hold for all outlines, wherever they come from.

#pragma once

#include <algorithm>
#include <cstring>
#include <limits>

#include <cntr/contourdefs.h>
#include <cntrsets/inside.h>
#include <cntrtable/joining.h>
#include <cntrtable/measuring.h>
#include <cntrtable/outlines.h>

#include "check.h"

namespace fuzz {

inline bool isSameRing(std::span<const double> a, std::span<const double> b) {
  return a.size() == b.size() &&
         (a.empty() || std::memcmp(a.data(), b.data(), a.size_bytes()) == 0);
}

/// The parts that have rings.
inline std::vector<std::size_t> partsWithRings(const qcOutlines& outlines, std::size_t feature) {
  std::vector<std::size_t> parts;
  for (std::size_t part = 0; part < outlines.parts(feature); ++part)
    if (outlines.rings(feature, part) > 0) parts.push_back(part);
  return parts;
}

/// Kinds, parts and rings, bit by bit. Problems are not compared.
inline void requireSame(const qcOutlines& a, const qcOutlines& b, const char* what) {
  require(a.size() == b.size(), what);
  for (std::size_t i = 0; i < a.size(); ++i) {
    const std::vector<std::size_t> parts = partsWithRings(a, i);
    const std::vector<std::size_t> others = partsWithRings(b, i);
    require(a.kind(i) == b.kind(i) && parts.size() == others.size(), what);
    for (std::size_t part = 0; part < parts.size(); ++part) {
      require(a.rings(i, parts[part]) == b.rings(i, others[part]), what);
      for (std::size_t ring = 0; ring < a.rings(i, parts[part]); ++ring)
        require(isSameRing(a.ring(i, parts[part], ring), b.ring(i, others[part], ring)), what);
    }
  }
}

/// The first few vertices of areas, whatever their coordinates, the origin, and points with NaN or
/// infinite coordinates.
inline std::vector<double> pointsAmong(const qcOutlines& outlines) {
  constexpr std::size_t mostVertices = 3;
  constexpr std::size_t mostNumbers = 24;
  constexpr double infinity = std::numeric_limits<double>::infinity();
  std::vector<double> points{
      std::numeric_limits<double>::quiet_NaN(), 0.0, 0.0, -infinity, 0.0, 0.0};
  for (std::size_t i = 0; i < outlines.size() && points.size() < mostNumbers; ++i) {
    if (outlines.kind(i) != qcOutlineKind::eAreas || outlines.rings(i, 0) == 0) continue;
    const std::span<const double> ring = outlines.ring(i, 0, 0);
    const std::span<const double> first = ring.first(std::min(ring.size(), 2 * mostVertices));
    points.insert(points.end(), first.begin(), first.end());
  }
  return points;
}

/// Which of the points lie in a feature; none if it does not consist of areas or is not finite.
inline std::vector<bool> plainlyInside(const qcOutlines& outlines, std::size_t feature,
                                       const std::vector<double>& points) {
  std::vector<bool> answers(points.size() / 2);
  if (outlines.kind(feature) != qcOutlineKind::eAreas) return answers;
  try {
    const qcInside inside(outlines.feature(feature));
    for (std::size_t i = 0; i < answers.size(); ++i)
      answers[i] = inside.contains({points[2 * i], points[2 * i + 1]});
  } catch (const qcContourDefs::BadParams&) {
  }
  return answers;
}

/// Requires that the pairs of a join are those found by asking each feature about each point.
inline void requireJoin(const qcOutlines& outlines) {
  const std::vector<double> points = pointsAmong(outlines);
  const qcInsidePairs pairs = qf_InsideJoin(outlines, points, 1);
  std::size_t place = 0;
  for (std::size_t i = 0; i < outlines.size(); ++i) {
    const std::vector<bool> answers = plainlyInside(outlines, i, points);
    for (std::size_t k = 0; k < answers.size(); ++k) {
      if (!answers[k]) continue;
      require(place < pairs.points.size() &&
                  pairs.outlines[place] == static_cast<std::int64_t>(i) &&
                  pairs.points[place] == static_cast<std::int64_t>(k),
              "a pair is missing");
      ++place;
    }
  }
  require(place == pairs.points.size(), "there is a pair too many");
}

/// Reads everything there is, measures it, and looks for points in it.
inline void examine(const qcOutlines& outlines) {
  qcOutlinesBuilder builder;
  for (std::size_t i = 0; i < outlines.size(); ++i) {
    const bool isNothing = outlines.kind(i) == qcOutlineKind::eNothing;
    require(isNothing == !outlines.problem(i).empty(), "there is a problem where nothing is");
    builder.add(outlines, i);
  }
  requireSame(builder.finish(), outlines, "a copy");
  const std::vector<std::string> columns{"vertices", "length"};
  const qcArrowColumn batch = qf_Measure(outlines, columns, 1);
  require(batch.array->length == static_cast<std::int64_t>(outlines.size()), "a row for each");
  requireJoin(outlines);
}

}  // namespace fuzz
