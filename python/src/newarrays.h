// SPDX-License-Identifier: MIT
//
// Arrays that functions return: numpy arrays that own what was computed, or views of what another
// object owns.

#pragma once

#include <nanobind/nanobind.h>
#include <nanobind/ndarray.h>

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include <platform/core/vector.h>

namespace python {

/// The elements as a writable array of the given shape, which has as many elements.
template <class Element>
nanobind::object newArray(std::vector<Element> elements, std::initializer_list<std::size_t> shape) {
  auto owned = std::make_unique<std::vector<Element>>(std::move(elements));
  const nanobind::capsule owner(
      owned.get(), [](void* list) noexcept { delete static_cast<std::vector<Element>*>(list); });
  Element* const data = owned.release()->data();
  return nanobind::cast(nanobind::ndarray<nanobind::numpy, Element>(data, shape, owner));
}

/// The elements as a writable array of one dimension.
template <class Element>
nanobind::object newArray(std::vector<Element> elements) {
  const std::size_t size = elements.size();
  return newArray(std::move(elements), {size});
}

/// The same for types that std::vector does not hold as such.
template <class Element>
nanobind::object newArray(std::unique_ptr<Element[]> elements, std::size_t size) {
  const nanobind::capsule owner(elements.get(),
                                [](void* list) noexcept { delete[] static_cast<Element*>(list); });
  Element* const data = elements.release();
  return nanobind::cast(nanobind::ndarray<nanobind::numpy, Element>(data, {size}, owner));
}

/// Points as an array of shape (n, 2).
nanobind::object newArrayOfPoints(const std::vector<qcVector<2>>& points);

/// A read-only view of the elements in place, which keeps `owner` alive.
template <class Element>
nanobind::object viewOf(std::span<const Element> elements, nanobind::handle owner) {
  using View = nanobind::ndarray<nanobind::numpy, const Element>;
  return nanobind::cast(View(elements.data(), {elements.size()}, owner));
}

/// The same for points, as an array of shape (n, 2).
nanobind::object viewOfPoints(std::span<const qcVector<2>> points, nanobind::handle owner);

}  // namespace python
