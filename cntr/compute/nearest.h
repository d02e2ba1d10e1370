// SPDX-License-Identifier: MIT
//
// The vertex and the edge of a path nearest to a point, by the index if there is one, else by a
// plain scan. Of equally near ones the first counts; "equally near" means equal distances after
// rounding.

#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include <cntr/index/edgeindex.h>
#include <cntr/plane/path.h>

namespace cntr::compute {

/// The lowest index among the vertices nearest to p; 0 when no distance is finite.
/// `index`, if not null, is that of the path.
/// REQUIRES: the path has an edge.
std::size_t closestVertex(const plane::Path& path, const index::EdgeIndex* index,
                          const qcVector<2>& p);

/// The nearest point of the first nearest edge; (0, 0) when no distance is finite.
qcVector<2> closestPoint(const plane::Path& path, const index::EdgeIndex* index,
                         const qcVector<2>& p);

/// The same for many points, four at a time and without an index: for paths with few edges.
/// REQUIRES: as many answers as points.
void closestPoints(const plane::Path& path, std::span<const qcVector<2>> points,
                   std::span<qcVector<2>> answers);

/// The same for many points with an index: each search begins with the previous answer, which rules
/// out most of the path when it was for a point nearby (see visitingOrder() in visitingorder.h).
class NearestSearch {
 public:
  /// REQUIRES: `path`, which has an edge, and `index` outlive the search.
  NearestSearch(const plane::Path& path, const index::EdgeIndex* index)
      : path_(path), index_(index) {}

  std::size_t closestVertex(const qcVector<2>& p);
  qcVector<2> closestPoint(const qcVector<2>& p);

 private:
  plane::Path path_;
  const index::EdgeIndex* index_;
  std::optional<std::size_t> lastVertex_;
  std::optional<std::size_t> lastEdge_;
};

}  // namespace cntr::compute
