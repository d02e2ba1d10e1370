// SPDX-License-Identifier: MIT
//
// The columns that qcOutlines is made of, and the check of offsets that come from outside.

#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include <cntrtable/outlines.h>

namespace table {

/// Why a feature is qcOutlineKind::eNothing.
struct Problem {
  std::size_t feature;
  std::string why;
};

struct OutlineColumns {
  /// x and y in turn; `owner` keeps them.
  std::span<const double> coordinates;
  std::shared_ptr<const void> owner;
  /// Of each ring, in vertices; a repeated last vertex is left out.
  std::vector<std::int64_t> ringStarts;
  std::vector<std::int64_t> ringCounts;
  /// Where each part begins in the list of rings, and where the last one ends.
  std::vector<std::int64_t> partRings;
  /// Where each feature begins in the list of parts, and where the last one ends.
  std::vector<std::int64_t> featureParts;
  std::vector<qcOutlineKind> kinds;
  /// One for each feature, -1 for none.
  std::vector<std::int64_t> labels;
  /// One for each vertex of `coordinates`, or none at all.
  std::vector<qcEdgelet> edgelets;
  /// Which rings have edge elements; empty where all have them, or none.
  std::vector<bool> ringsWithEdgelets;
  /// In the order of the features.
  std::vector<Problem> problems;

  static qcOutlines asOutlines(OutlineColumns&& columns);
};

/// See qcOutlines::fromRagged(). `nulls` tells which features are null; it has no elements where
/// none are.
OutlineColumns columnsOf(const qcRaggedOutlines& arrays, std::shared_ptr<const void> owner,
                         const std::vector<bool>& nulls);

/// Whether the last vertex of a ring, x and y in turn, is its first one again. NaN is like NaN.
bool repeatsFirstVertex(std::span<const double> ring);

/// Throws qcContourDefs::BadParams, naming the first one, for offsets that are negative, less than
/// one before them, or beyond the number `available` of `counted` ("vertices"); `name` is what they
/// are offsets of ("ring").
void requireOffsets(std::span<const std::int64_t> offsets, const std::string& name,
                    std::int64_t available, const std::string& counted);

}  // namespace table
