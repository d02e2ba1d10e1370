// SPDX-License-Identifier: MIT
//
// Four doubles side by side, on which the same is done at once: in each lane the same bits as with
// a double.

#pragma once

#include <cstddef>

namespace cntr::plane {

inline constexpr std::size_t lanes = 4;
using Lanes = double __attribute__((vector_size(lanes * sizeof(double))));

}  // namespace cntr::plane
