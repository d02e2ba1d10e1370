// SPDX-License-Identifier: MIT
//
// The order in which an exchange sort leaves a list, without the sort's quadratic time.

#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace cntr::compute {

/// The indices of the keys in the order in which an exchange sort leaves them: one that compares
/// each position with every later one, and exchanges the two when the later key is smaller. Equal
/// keys do not keep their order; NaN keys keep their places. O(n log n).
std::vector<std::size_t> exchangeSortedOrder(std::span<const double> keys);

}  // namespace cntr::compute
