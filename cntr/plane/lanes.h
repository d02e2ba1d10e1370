// SPDX-License-Identifier: MIT
//
// Two or four doubles computed side by side: each lane gets the same bits as a single double. Every
// processor of the platform computes two at once.

#pragma once

#include <cstddef>

namespace cntr::plane {

inline constexpr std::size_t lanes = 4;
using Lanes = double __attribute__((vector_size(lanes * sizeof(double))));
using Pair = double __attribute__((vector_size(2 * sizeof(double))));

}  // namespace cntr::plane
