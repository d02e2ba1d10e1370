// SPDX-License-Identifier: MIT
//
// Four doubles side by side, on which the same is done at once: in each lane the same bits as with
// a double.

#pragma once

namespace cntr::plane {

inline constexpr int lanes = 4;
using Lanes = double __attribute__((vector_size(lanes * sizeof(double))));

}  // namespace cntr::plane
