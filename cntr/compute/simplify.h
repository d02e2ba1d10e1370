// SPDX-License-Identifier: MIT
//
// Which vertices of paths are needed to stay within a tolerance of them.

#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include <cntr/plane/path.h>

namespace cntr::compute {

/// For each path the vertices that qf_Simplify() (cntr/simplify.h) keeps, ascending.
/// REQUIRES: the tolerance is not negative.
std::vector<std::vector<std::size_t>> keptVertices(std::span<const plane::Path> paths,
                                                   double tolerance);

}  // namespace cntr::compute
