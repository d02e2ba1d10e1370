// SPDX-License-Identifier: MIT

#include <python/src/arrays.h>
#include <python/src/vertexbuffer.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace nb = nanobind;

namespace python {

namespace {

std::string placeIn(const char* list, std::size_t number) {
  return std::string(list) + "[" + std::to_string(number) + "]";
}

/// 'l' and 'q' are both 64 bits wide here.
bool isReadable(std::string_view format) {
  return format == "i" || format == "l" || format == "q" || format == "f" || format == "d";
}

std::string shapeText(const Py_buffer& view) {
  std::string text = "(";
  for (int i = 0; i < view.ndim; ++i) text += (i > 0 ? ", " : "") + std::to_string(view.shape[i]);
  return text + (view.ndim == 1 ? ",)" : ")");
}

static_assert(sizeof(long) == sizeof(std::int64_t) && sizeof(int) == sizeof(std::int32_t));

}  // namespace

VertexBuffer::VertexBuffer(nb::handle array, const char* list, std::size_t number) {
  if (PyObject_GetBuffer(array.ptr(), &view_, PyBUF_RECORDS_RO) != 0) {
    PyErr_Clear();
    const std::string message = placeIn(list, number) +
                                " must be an array of shape (n, 2) or (n, 1, 2), not of type " +
                                Py_TYPE(array.ptr())->tp_name;
    throw nb::type_error(message.c_str());
  }
  try {
    requireVertices(array, list, number);
  } catch (...) {
    PyBuffer_Release(&view_);
    throw;
  }
}

void VertexBuffer::requireVertices(nb::handle array, const char* list, std::size_t number) const {
  const bool isFlat = view_.ndim == 2 && view_.shape[1] == 2;
  const bool isNested = view_.ndim == 3 && view_.shape[1] == 1 && view_.shape[2] == 2;
  if (!isFlat && !isNested) {
    const std::string message =
        placeIn(list, number) + " must have the shape (n, 2) or (n, 1, 2), not " + shapeText(view_);
    throw nb::value_error(message.c_str());
  }
  if (!isReadable(view_.format)) {
    const std::string message = placeIn(list, number) +
                                " must be of int32, int64, float32 or float64, not of " +
                                textOf(nb::getattr(array, "dtype", nb::str(view_.format)));
    throw nb::type_error(message.c_str());
  }
}

template <class Number>
void VertexBuffer::copyNumbers(std::span<double> place, bool isSwapped) const {
  const auto* const bytes = static_cast<const std::byte*>(view_.buf);
  const Py_ssize_t step = view_.strides[view_.ndim - 1];
  for (std::size_t i = 0; i < size(); ++i) {
    const std::byte* const vertex = bytes + static_cast<Py_ssize_t>(i) * view_.strides[0];
    Number first{};
    Number second{};
    std::memcpy(&first, vertex, sizeof first);
    std::memcpy(&second, vertex + step, sizeof second);
    place[2 * i] = static_cast<double>(isSwapped ? second : first);
    place[2 * i + 1] = static_cast<double>(isSwapped ? first : second);
  }
}

void VertexBuffer::copyTo(std::span<double> place, bool isSwapped) const {
  switch (view_.format[0]) {
    case 'i':
      return copyNumbers<std::int32_t>(place, isSwapped);
    case 'f':
      return copyNumbers<float>(place, isSwapped);
    case 'd':
      return copyNumbers<double>(place, isSwapped);
    default:
      return copyNumbers<std::int64_t>(place, isSwapped);
  }
}

}  // namespace python
