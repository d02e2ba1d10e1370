// SPDX-License-Identifier: MIT
//
// The columns of which qcOutlines consists, and the check of offsets that come from outside.

#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include <cntrtable/attributes.h>
#include <cntrtable/outlines.h>

namespace table {

struct OutlineColumns {
  /// What keeps the vertices alive.
  std::vector<std::shared_ptr<const void>> owners;
  /// Where the vertices of each ring lie, x and y in turn.
  std::vector<const double*> ringPlaces;
  /// How many vertices each ring has; a repeated last one is left out.
  std::vector<std::int64_t> ringCounts;
  /// Where each part begins in the list of rings, and where the last one ends.
  std::vector<std::int64_t> partRings;
  /// Where each feature begins in the list of parts, and where the last one ends.
  std::vector<std::int64_t> featureParts;
  std::vector<qcOutlineKind> kinds;
  /// One for each feature, -1 for none.
  std::vector<std::int64_t> labels;
  std::vector<qcEdgelet> edgelets;
  /// Where the edge elements of each ring begin, one for each vertex; -1 for none. Empty if no ring
  /// has any.
  std::vector<std::int64_t> ringEdgelets;
  /// In the order of the features.
  std::vector<Problem> problems;

  static qcOutlines asOutlines(OutlineColumns&& columns);
  /// The columns of all lists, one list after the other, without their edge elements; vertices are
  /// shared. REQUIRES: no list is a slice, and the offsets of each begin at 0.
  static OutlineColumns joined(std::span<const qcOutlines> lists);
};

/// See qcOutlines::fromRagged(). `nulls` tells which features are null; it is empty if none are.
OutlineColumns columnsOf(const qcRaggedOutlines& arrays, std::shared_ptr<const void> owner,
                         const std::vector<bool>& nulls);

/// Whether the last vertex of a ring, x and y in turn, repeats the first one. NaN equals NaN.
bool repeatsFirstVertex(std::span<const double> ring);

/// Throws qcContourDefs::BadParams for offsets that are negative, less than the one before, or
/// beyond the number `available` of `counted` ("vertices"), naming the first such offset; `name`
/// says what the offsets belong to ("ring").
void requireOffsets(std::span<const std::int64_t> offsets, const std::string& name,
                    std::int64_t available, const std::string& counted);

}  // namespace table
