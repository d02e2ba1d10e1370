// SPDX-License-Identifier: MIT
//
// Two or four doubles side by side, on which the same is done at once: in each lane the same bits
// as with a double. Every processor of the platform does two at once.

#pragma once

#include <cstddef>

namespace cntr::plane {

inline constexpr std::size_t lanes = 4;
using Lanes = double __attribute__((vector_size(lanes * sizeof(double))));
using Pair = double __attribute__((vector_size(2 * sizeof(double))));

}  // namespace cntr::plane
