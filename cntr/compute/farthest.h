// SPDX-License-Identifier: MIT
//
// The two vertices of a path that lie farthest apart. Closedness does not matter.

#pragma once

#include <cstddef>
#include <optional>

#include <cntr/index/edgeindex.h>
#include <cntr/plane/path.h>

namespace cntr::compute {

/// Two vertices, first < second, and their distance.
struct VertexPair {
  std::size_t first;
  std::size_t second;
  double distance;
};

/// The pair of vertices with the largest computed distance, the first one in the order (first,
/// second) on ties; nothing when no distance is above 0. `index`, if not null, is that of the path.
std::optional<VertexPair> farthestPair(const plane::Path& path, const index::EdgeIndex* index);

}  // namespace cntr::compute
