// SPDX-License-Identifier: MIT

#include <python/src/arrays.h>

#include <nanobind/stl/string.h>

#include <string>
#include <type_traits>

namespace nb = nanobind;

namespace python {

namespace {

static_assert(sizeof(qcVector<2>) == 2 * sizeof(double) && std::is_standard_layout_v<qcVector<2>>,
              "a point is its two coordinates");

/// Booleans and complex numbers are no coordinates.
bool isOfRealNumbers(nb::handle array) {
  const auto kind = nb::cast<std::string>(array.attr("dtype").attr("kind"));
  return kind == "f" || kind == "i" || kind == "u";
}

/// An array of no elements may be of any type: numpy makes numbers of an empty list.
nb::object numbersOf(nb::handle given, const char* argument) {
  const nb::module_ numpy = nb::module_::import_("numpy");
  nb::object array;
  try {
    array = numpy.attr("asarray")(given);
  } catch (nb::python_error& error) {
    const std::string message =
        std::string(argument) + " must be an array of numbers: " + textOf(error.value());
    throw nb::type_error(message.c_str());
  }
  if (!isOfRealNumbers(array)) {
    const std::string message = std::string(argument) + " must be an array of numbers, not of " +
                                textOf(array.attr("dtype"));
    throw nb::type_error(message.c_str());
  }
  return numpy.attr("ascontiguousarray")(array, numpy.attr("float64"));
}

[[noreturn]] void raiseWrongShape(const char* argument, const std::string& expected,
                                  nb::handle array) {
  const std::string message = std::string(argument) + " must have the shape " + expected +
                              ", not " + textOf(array.attr("shape"));
  throw nb::value_error(message.c_str());
}

}  // namespace

std::string textOf(nb::handle object) { return nb::cast<std::string>(nb::str(object)); }

PointArray::PointArray(nb::handle given, const char* argument) {
  nb::object array = numbersOf(given, argument);
  if (nb::cast<std::size_t>(array.attr("size")) == 0 &&
      nb::cast<std::size_t>(array.attr("ndim")) == 1)
    array = array.attr("reshape")(0, 2);
  array_ = nb::cast<decltype(array_)>(array);
  if (array_.ndim() != 2 || array_.shape(1) != 2) raiseWrongShape(argument, "(n, 2)", array);
}

std::span<const qcVector<2>> PointArray::points() const {
  return {reinterpret_cast<const qcVector<2>*>(array_.data()), array_.shape(0)};
}

std::vector<double> matrixOf(nb::handle given, const char* argument, std::size_t rows,
                             std::size_t columns) {
  const nb::object array = numbersOf(given, argument);
  const auto matrix = nb::cast<nb::ndarray<nb::numpy, const double, nb::c_contig>>(array);
  if (matrix.ndim() != 2 || matrix.shape(0) != rows || matrix.shape(1) != columns) {
    raiseWrongShape(argument, textOf(nb::make_tuple(rows, columns)), array);
  }
  return {matrix.data(), matrix.data() + matrix.size()};
}

}  // namespace python
