// SPDX-License-Identifier: MIT
//
// What features have besides their geometry, as columns: labels, problems and edge elements. Arrow,
// files and pickles keep them beside well-known binary and lists of coordinates, which cannot hold
// them.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <cntrtable/outlines.h>

namespace table {

/// Why a feature is qcOutlineKind::eNothing.
struct Problem {
  std::size_t feature;
  std::string why;
};

/// The edge elements of all features, with a place for each vertex, ring by ring, without repeated
/// last vertices. No places and no counts if no feature has any.
struct EdgeElements {
  /// -1 for a vertex that has none.
  std::vector<std::int32_t> magnitudes;
  std::vector<std::uint8_t> angles;
  /// The number of places of each feature: of its vertices, or 0.
  std::vector<std::int64_t> counts;
};

struct Attributes {
  /// One for each feature, -1 for none.
  std::vector<std::int64_t> labels;
  /// In the order of the features.
  std::vector<Problem> problems;
  EdgeElements edges;
};

EdgeElements edgeElementsOf(const qcOutlines& outlines);
Attributes attributesOf(const qcOutlines& outlines);

/// The same features, which share their vertices, with other attributes: those that have a geometry
/// get the label and the edge elements, the others get the problem if there is one for them. A ring
/// in which a vertex has no edge element gets none. Throws qcContourDefs::BadParams, naming the
/// first feature that has edge elements but not one for each vertex. REQUIRES: `outlines` is not a
/// slice; as many labels as features; as many counts, or none at all; as many places as the counts
/// add up to.
qcOutlines withAttributes(const qcOutlines& outlines, Attributes&& attributes);

}  // namespace table
