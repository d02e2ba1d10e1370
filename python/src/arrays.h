// SPDX-License-Identifier: MIT
//
// Arguments that are arrays, or become one: numpy arrays of 64-bit numbers in C order. What is
// wrong with an argument is said with its name, what was expected and what was given.

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

/// Whatever numpy makes an array of. Raises TypeError for lists of different lengths.
nanobind::object arrayOf(nanobind::handle given, const std::string& argument);

/// The items of an argument, `items` in messages, to be gone through once. Raises TypeError.
nanobind::object iteratorOver(nanobind::handle given, const std::string& argument,
                              const std::string& items);

/// The number of threads to work with, 0 for as many as there are processors. Raises ValueError.
unsigned threadsIn(std::int64_t threads);

/// Points, and the array that holds them.
class PointArray {
 public:
  /// Of whatever numpy makes an array of shape (n, 2) of; an empty list is one too. Copies unless
  /// `given` is an array of float64 in C order. Raises TypeError where there are no real numbers,
  /// and ValueError for another shape.
  PointArray(nanobind::handle given, const char* argument);

  std::span<const qcVector<2>> points() const;
  /// x and y in turn.
  std::span<const double> coordinates() const { return {array_.data(), array_.size()}; }

 private:
  nanobind::ndarray<nanobind::numpy, const double, nanobind::c_contig> array_;
};

/// The elements, row by row, of whatever numpy makes an array of shape (rows, columns) of. Raises
/// as PointArray does.
std::vector<double> matrixOf(nanobind::handle given, const char* argument, std::size_t rows,
                             std::size_t columns);

}  // namespace python
