// SPDX-License-Identifier: MIT

#include <python/src/arrays.h>

#include <nanobind/stl/string.h>

#include <limits>
#include <string>
#include <type_traits>

namespace nb = nanobind;

namespace python {

namespace {

static_assert(sizeof(qcVector<2>) == 2 * sizeof(double) && std::is_standard_layout_v<qcVector<2>>,
              "a point is its two coordinates");

/// Booleans and complex numbers are not accepted as coordinates.
bool isOfRealNumbers(nb::handle array) {
  const auto kind = nb::cast<std::string>(array.attr("dtype").attr("kind"));
  return kind == "f" || kind == "i" || kind == "u";
}

/// An array without elements may be of any type: numpy makes numbers from an empty list.
nb::object numbersOf(nb::handle given, const char* argument) {
  const nb::module_ numpy = nb::module_::import_("numpy");
  const nb::object array = arrayOf(given, argument);
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

nb::object arrayOf(nb::handle given, const std::string& argument) {
  try {
    return nb::module_::import_("numpy").attr("asarray")(given);
  } catch (nb::python_error& error) {
    const std::string message = argument + " must be an array of numbers: " + textOf(error.value());
    throw nb::type_error(message.c_str());
  }
}

nb::object iteratorOver(nb::handle given, const std::string& argument, const std::string& items) {
  nb::object iterator = nb::steal(PyObject_GetIter(given.ptr()));
  if (iterator.is_valid()) return iterator;
  if (PyErr_ExceptionMatches(PyExc_TypeError) == 0) throw nb::python_error();
  PyErr_Clear();
  const std::string message =
      argument + " must be an iterable of " + items + ", not " + Py_TYPE(given.ptr())->tp_name;
  throw nb::type_error(message.c_str());
}

unsigned threadsIn(std::int64_t threads) {
  if (threads >= 0 && threads <= std::numeric_limits<int>::max())
    return static_cast<unsigned>(threads);
  const std::string message = "threads must be 0 or more, not " + std::to_string(threads);
  throw nb::value_error(message.c_str());
}

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
