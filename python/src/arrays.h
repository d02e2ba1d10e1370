// SPDX-License-Identifier: MIT
//
// Arguments that are arrays or become arrays: numpy arrays of 64-bit numbers in C order. Messages
// about bad arguments give the name, what was expected and what was given.

#pragma once

#include <nanobind/nanobind.h>
#include <nanobind/ndarray.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include <platform/core/vector.h>

namespace python {

/// An object as messages show it.
std::string textOf(nanobind::handle object);

/// An array of whatever numpy accepts. Raises TypeError for lists of different lengths.
nanobind::object arrayOf(nanobind::handle given, const std::string& argument);

/// An iterator over the items of an argument, called `items` in messages. Raises TypeError.
nanobind::object iteratorOver(nanobind::handle given, const std::string& argument,
                              const std::string& items);

/// The number of threads to use, 0 for as many as there are processors. Raises ValueError.
unsigned threadsIn(std::int64_t threads);

/// Points and the array that holds them.
class PointArray {
 public:
  /// Takes whatever numpy can convert to an array of shape (n, 2), including an empty list. Copies
  /// unless `given` is an array of float64 in C order. Raises TypeError for elements that are not
  /// real numbers, and ValueError for other shapes.
  PointArray(nanobind::handle given, const char* argument);

  std::span<const qcVector<2>> points() const;
  /// x and y in turn.
  std::span<const double> coordinates() const { return {array_.data(), array_.size()}; }

 private:
  nanobind::ndarray<nanobind::numpy, const double, nanobind::c_contig> array_;
};

/// The elements, row by row, of whatever numpy can convert to an array of shape (rows, columns).
/// Raises the same errors as PointArray.
std::vector<double> matrixOf(nanobind::handle given, const char* argument, std::size_t rows,
                             std::size_t columns);

}  // namespace python
