// SPDX-License-Identifier: MIT
//
// The random choice of the entry that a full list of results drops. No geometric answer depends on
// it.

#pragma once

#include <cstddef>

namespace cntr::model {

/// A random index below `count`, from this thread's generator: every thread draws the same
/// sequence, made on first use with seed 1 and deleted when the thread ends. REQUIRES: 0 < count <
/// 2^31.
std::size_t randomIndexBelow(std::size_t count);

}  // namespace cntr::model
