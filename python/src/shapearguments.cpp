// SPDX-License-Identifier: MIT

#include <python/src/shapearguments.h>

#include <nanobind/stl/string.h>

#include <limits>
#include <string>
#include <utility>

#include <python/src/arrays.h>

namespace nb = nanobind;

namespace python {

namespace {

std::string typeNameOf(nb::handle object) {
  return nb::cast<std::string>(object.type().attr("__name__"));
}

[[noreturn]] void raiseTypeError(const std::string& message) {
  throw nb::type_error(message.c_str());
}

[[noreturn]] void raiseValueError(const std::string& message) {
  throw nb::value_error(message.c_str());
}

unsigned long labelOf(nb::handle label) {
  constexpr unsigned long largest = std::numeric_limits<std::uint32_t>::max();
  if (PyIndex_Check(label.ptr()) == 0)
    raiseTypeError("label must be a whole number, not " + typeNameOf(label));
  const nb::object number = nb::steal(PyNumber_Index(label.ptr()));
  if (number < nb::int_(0) || number > nb::int_(largest)) {
    raiseValueError("label must be from 0 to " + std::to_string(largest) + ", not " +
                    textOf(number));
  }
  return nb::cast<unsigned long>(number);
}

/// `count` whole numbers, as many as there are vertices, each within the range of Element.
template <class Element>
std::vector<Element> wholeNumbers(nb::handle given, const std::string& argument,
                                  std::size_t count) {
  const nb::module_ numpy = nb::module_::import_("numpy");
  const nb::object array = arrayOf(given, argument);
  const auto kind = nb::cast<std::string>(array.attr("dtype").attr("kind"));
  const bool isEmpty = nb::cast<std::size_t>(array.attr("size")) == 0;
  if (!isEmpty && kind != "i" && kind != "u") {
    raiseTypeError(argument + " must be an array of whole numbers, not of " +
                   textOf(array.attr("dtype")));
  }
  if (nb::cast<std::size_t>(array.attr("ndim")) != 1 ||
      nb::cast<std::size_t>(array.attr("size")) != count) {
    raiseValueError(argument + " must have the shape (" + std::to_string(count) + ",), not " +
                    textOf(array.attr("shape")));
  }
  if (isEmpty) return {};
  const nb::int_ largest(std::numeric_limits<Element>::max());
  for (const char* const extreme : {"min", "max"}) {
    const nb::object number = nb::int_(array.attr(extreme)());
    if (number < nb::int_(0) || number > largest) {
      raiseValueError(argument + " must be numbers from 0 to " + textOf(largest) + ", not " +
                      textOf(number));
    }
  }
  const auto elements = nb::cast<nb::ndarray<nb::numpy, const Element, nb::c_contig>>(
      numpy.attr("ascontiguousarray")(array, nb::dtype<Element>().bits == 8 ? "uint8" : "uint16"));
  return {elements.data(), elements.data() + elements.size()};
}

EdgeElements edgeElementsOf(nb::handle edges, std::size_t count) {
  if (edges.is_none()) return {};
  if (PySequence_Check(edges.ptr()) == 0 || nb::len(edges) != 2)
    raiseTypeError("edges must be a pair of arrays, (magnitude, angle)");
  return {wholeNumbers<std::uint16_t>(edges[0], "edges[0], the magnitudes,", count),
          wholeNumbers<std::uint8_t>(edges[1], "edges[1], the angles,", count)};
}

Curve curveOf(nb::handle points, const char* argument, bool closed, unsigned long label,
              nb::handle edges) {
  const PointArray array(points, argument);
  const std::span<const qcVector<2>> list = array.points();
  return Curve(qcContour({list.begin(), list.end()}, closed, label),
               edgeElementsOf(edges, list.size()));
}

Curve holeOf(nb::handle hole, std::size_t number) {
  const std::string argument = "holes[" + std::to_string(number) + "]";
  if (!nb::isinstance<Contour>(hole)) return curveOf(hole, argument.c_str(), true, 0, nb::none());
  const Curve& curve = nb::cast<const Contour&>(hole).curve();
  if (!curve.isClosed()) raiseValueError(argument + " must be a closed contour");
  return curve;
}

}  // namespace

Curve curveOf(nb::handle points, bool closed, nb::handle label, nb::handle edges) {
  return curveOf(points, "points", closed, labelOf(label), edges);
}

std::vector<Curve> holesOf(nb::handle holes) {
  std::vector<Curve> curves;
  const nb::object iterator = iteratorOver(holes, "holes", "closed contours or points");
  for (const nb::handle hole : nb::iter(iterator)) curves.push_back(holeOf(hole, curves.size()));
  return curves;
}

std::vector<Part> partsOf(nb::handle regions) {
  std::vector<Part> parts;
  const nb::object iterator = iteratorOver(regions, "regions", "regions");
  for (const nb::handle region : nb::iter(iterator)) {
    if (!nb::isinstance<Region>(region)) {
      raiseTypeError("regions[" + std::to_string(parts.size()) + "] must be a Region, not " +
                     typeNameOf(region));
    }
    parts.push_back(nb::cast<const Region&>(region).part());
  }
  return parts;
}

}  // namespace python
