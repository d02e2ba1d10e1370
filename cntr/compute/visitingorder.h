// SPDX-License-Identifier: MIT
//
// An order for visiting many points in which neighbours follow each other.

#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include <platform/core/vector.h>

namespace cntr::compute {

/// The numbers of all points by the rows of a grid with about two points per cell, one row from
/// left to right and the next one back. Points that are not finite may come anywhere. O(m).
std::vector<std::size_t> visitingOrder(std::span<const qcVector<2>> points);

}  // namespace cntr::compute
