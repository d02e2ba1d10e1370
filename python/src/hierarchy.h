// SPDX-License-Identifier: MIT
//
// Which contours are outlines, and which are their holes, by OpenCV's hierarchy.

#pragma once

#include <nanobind/nanobind.h>

#include <cstddef>
#include <vector>

namespace python {

/// An outline and its holes, by their numbers in a list of contours.
struct OutlineWithHoles {
  std::size_t outline;
  std::vector<std::size_t> holes;
};

/// Contours without a parent are outlines, their children holes, the children of these outlines
/// again, and so on. The hierarchy is an array of shape (1, n, 4) or (n, 4) for n contours, whose
/// last column gives the parents; with None all contours are outlines. Outlines and holes are in
/// the order of the contours. Raises TypeError and ValueError.
std::vector<OutlineWithHoles> outlinesOf(nanobind::handle hierarchy, std::size_t contours);

}  // namespace python
