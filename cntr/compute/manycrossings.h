// SPDX-License-Identifier: MIT
//
// Whether any of many paths crosses another.

#pragma once

#include <vector>

#include <cntr/plane/path.h>

namespace cntr::compute {

/// True when an edge of one path crosses an earlier path, end touches counted: crosses() of some
/// pair. O(m log m) for m edges few of whose boxes overlap. REQUIRES: coordinates are finite.
bool anyCrossesAnother(const std::vector<plane::Path>& paths);

}  // namespace cntr::compute
