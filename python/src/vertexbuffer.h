// SPDX-License-Identifier: MIT
//
// The vertices of one contour in an array of another package, read in place.

#pragma once

#include <nanobind/nanobind.h>

#include <cstddef>
#include <span>

namespace python {

/// Holds the array's memory while it is read.
class VertexBuffer {
 public:
  /// An array of shape (n, 2) or (n, 1, 2), of 32-bit or 64-bit integers or floating-point numbers,
  /// in any memory order. It is item `number` of the argument `list`, which messages name. Raises
  /// TypeError and ValueError.
  VertexBuffer(nanobind::handle array, const char* list, std::size_t number);
  VertexBuffer(const VertexBuffer&) = delete;
  VertexBuffer& operator=(const VertexBuffer&) = delete;
  ~VertexBuffer() { PyBuffer_Release(&view_); }

  std::size_t size() const { return static_cast<std::size_t>(view_.shape[0]); }
  /// Writes x and y in turn; with `isSwapped` the second number is x.
  void copyTo(std::span<double> place, bool isSwapped) const;

 private:
  void requireVertices(nanobind::handle array, const char* list, std::size_t number) const;
  template <class Number>
  void copyNumbers(std::span<double> place, bool isSwapped) const;

  Py_buffer view_{};
};

}  // namespace python
