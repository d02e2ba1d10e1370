// SPDX-License-Identifier: MIT
//
// What must hold for all outlines, wherever they come from.

#pragma once

#include <cstring>

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

/// Reads everything there is, and measures it.
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
}

}  // namespace fuzz
