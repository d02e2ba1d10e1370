// SPDX-License-Identifier: MIT
//
// Joins those of many boundaries that cross.

#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include <cntr/compute/crossings.h>
#include <cntr/index/regionindex.h>

namespace cntr::compute {

/// A boundary that remains: the number of an original one and, if others have been joined to it,
/// the vertices of the result.
struct Remaining {
  std::size_t number;
  std::vector<qcVector<2>> joined;
};

/// One pass over the pairs i < j of a list of all boundaries. Where the second crosses the first,
/// their splice() takes place i and the last of the list takes place j, which is not compared with
/// place i any more. Returns nothing when two that cross cannot be spliced.
///
/// O(m log m) for m edges in all, as long as boundaries lie near few edges that they do not cross.
/// REQUIRES: `index` holds boxes around the boundaries; these have finite coordinates.
std::optional<std::vector<Remaining>> mergeCrossing(const std::vector<CrossingTarget>& boundaries,
                                                    const index::RegionIndex& index);

}  // namespace cntr::compute
