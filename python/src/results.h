// SPDX-License-Identifier: MIT
//
// The classes of cntr/_results.py, in which answers are returned.

#pragma once

#include <nanobind/nanobind.h>

#include <utility>

namespace python {

/// An object of the class of that name, made from its fields in order.
template <class... Fields>
nanobind::object newResult(const char* name, Fields&&... fields) {
  return nanobind::module_::import_("cntr._results").attr(name)(std::forward<Fields>(fields)...);
}

}  // namespace python
