// SPDX-License-Identifier: MIT

#include <nanobind/ndarray.h>
#include <python/src/arrays.h>
#include <python/src/hierarchy.h>

#include <cstdint>
#include <string>

namespace nb = nanobind;

namespace python {

namespace {

using Parents = std::vector<std::int64_t>;
constexpr std::int64_t noParent = -1;

Parents parentsIn(nb::handle hierarchy, std::size_t contours) {
  if (hierarchy.is_none()) return Parents(contours, noParent);
  const nb::object array = arrayOf(hierarchy, "hierarchy");
  const auto dtype = textOf(array.attr("dtype"));
  if (textOf(array.attr("dtype").attr("kind")) != "i") {
    const std::string message = "hierarchy must be an array of whole numbers, not of " + dtype;
    throw nb::type_error(message.c_str());
  }
  const auto shape = textOf(array.attr("shape"));
  const std::string rows = std::to_string(contours) + ", 4)";
  const std::string flat = std::string("(").append(rows);
  const std::string nested = std::string("(1, ").append(rows);
  if (shape != flat && shape != nested) {
    const std::string message = "hierarchy must have the shape " + nested + " or " + flat +
                                " for " + std::to_string(contours) + " contours, not " + shape;
    throw nb::value_error(message.c_str());
  }
  using Rows = nb::ndarray<nb::numpy, const std::int64_t, nb::ndim<2>>;
  const auto numbers = nb::cast<Rows>(array.attr("reshape")(-1, 4).attr("astype")("int64"));
  Parents parents;
  for (std::size_t i = 0; i < contours; ++i) parents.push_back(numbers(i, 3));
  return parents;
}

[[noreturn]] void refuseParent(std::size_t contour, const std::string& why) {
  const std::string message = "hierarchy: contour " + std::to_string(contour) + " " + why;
  throw nb::value_error(message.c_str());
}

/// The number of ancestors of each contour.
std::vector<std::size_t> depthsOf(const Parents& parents) {
  constexpr std::size_t unknown = ~std::size_t{0};
  std::vector<std::size_t> depths(parents.size(), unknown);
  std::vector<std::size_t> path;
  for (std::size_t i = 0; i < parents.size(); ++i) {
    // Go up to an ancestor whose depth is known, and back.
    std::int64_t ancestor = static_cast<std::int64_t>(i);
    while (ancestor != noParent && depths[static_cast<std::size_t>(ancestor)] == unknown) {
      const auto contour = static_cast<std::size_t>(ancestor);
      path.push_back(contour);
      if (path.size() > parents.size()) refuseParent(i, "is inside itself");
      ancestor = parents[contour];
      if (ancestor < noParent || ancestor >= static_cast<std::int64_t>(parents.size()))
        refuseParent(contour, "has the parent " + std::to_string(ancestor));
    }
    std::size_t depth = ancestor == noParent ? 0 : depths[static_cast<std::size_t>(ancestor)] + 1;
    for (; !path.empty(); path.pop_back()) depths[path.back()] = depth++;
  }
  return depths;
}

}  // namespace

std::vector<OutlineWithHoles> outlinesOf(nb::handle hierarchy, std::size_t contours) {
  const Parents parents = parentsIn(hierarchy, contours);
  const std::vector<std::size_t> depths = depthsOf(parents);
  std::vector<OutlineWithHoles> outlines;
  std::vector<std::size_t> places(contours);
  for (std::size_t i = 0; i < contours; ++i) {
    if (depths[i] % 2 != 0) continue;
    places[i] = outlines.size();
    outlines.push_back({i, {}});
  }
  for (std::size_t i = 0; i < contours; ++i)
    if (depths[i] % 2 != 0)
      outlines[places[static_cast<std::size_t>(parents[i])]].holes.push_back(i);
  return outlines;
}

}  // namespace python
