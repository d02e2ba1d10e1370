// SPDX-License-Identifier: MIT
//
// Paths to ask the computing functions about, as testing/shapes draws them: each is asked by a
// plain scan and by its index.

#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <cntr/compute/crossings.h>
#include <cntr/compute/extents.h>
#include <gtest/gtest.h>
#include <testing/plain/contour.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>

namespace subject {

using Point = qcVector<2>;
using Points = std::vector<Point>;

/// A path of at least one vertex, with its box and its index.
class Subject {
 public:
  Subject(Points points, bool closed)
      : contour_{std::move(points), closed},
        path_{contour_.points, closed},
        bounds_(cntr::compute::boundingBox(contour_.points)),
        index_(path_) {}
  Subject(const Subject&) = delete;
  Subject& operator=(const Subject&) = delete;

  const Points& points() const { return contour_.points; }
  const cntr::plane::Path& path() const { return path_; }
  const cntr::index::EdgeIndex& index() const { return index_; }
  const plain::Contour& plain() const { return contour_; }

  cntr::compute::CrossingTarget scanned() const { return {path_, bounds_, nullptr}; }
  cntr::compute::CrossingTarget indexed() const { return {path_, bounds_, &index_}; }

 private:
  plain::Contour contour_;
  cntr::plane::Path path_;
  cntr::plane::Box bounds_;
  cntr::index::EdgeIndex index_;
};

/// Calls ask(subject, random) for shapes of `fewest` to `most` vertices that `draw(seed, most)`,
/// one of the functions of testing/shapes, gives for the first `count` seeds, until an expectation
/// fails.
template <class Draw, class Ask>
void forEachShape(std::size_t count, Draw draw, std::size_t fewest, std::size_t most, Ask ask) {
  for (std::uint64_t seed = 1; seed <= count && !testing::Test::HasFailure(); ++seed) {
    const shapes::Shape shape = draw(seed, most);
    if (shape.points.size() < fewest) continue;
    SCOPED_TRACE("seed " + std::to_string(seed) + ": " + shape.name);
    shapes::Random random(seed);
    ask(Subject(shape.points, shape.closed), random);
  }
}

}  // namespace subject
