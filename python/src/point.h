// SPDX-License-Identifier: MIT
//
// A point as an argument: two numbers in a tuple, a list or an array. An array of points is not a
// point, so that a method may take either.

#pragma once

#include <nanobind/nanobind.h>

#include <platform/core/vector.h>

namespace nanobind::detail {

/// Converts point arguments, and returned points to tuples.
template <>
struct type_caster<qcVector<2>> {
  NB_TYPE_CASTER(qcVector<2>, const_name("tuple[float, float]"))

  bool from_python(handle given, std::uint8_t, cleanup_list*) noexcept {
    if (PyTuple_CheckExact(given.ptr()) && PyTuple_GET_SIZE(given.ptr()) == 2)
      return take(PyTuple_GET_ITEM(given.ptr(), 0), PyTuple_GET_ITEM(given.ptr(), 1));
    if (!PySequence_Check(given.ptr()) || PySequence_Size(given.ptr()) != 2) return isRefused();
    const object x = steal(PySequence_GetItem(given.ptr(), 0));
    const object y = steal(PySequence_GetItem(given.ptr(), 1));
    return x.is_valid() && y.is_valid() ? take(x.ptr(), y.ptr()) : isRefused();
  }

  static handle from_cpp(const qcVector<2>& p, rv_policy, cleanup_list*) noexcept {
    return Py_BuildValue("(dd)", p.x(), p.y());
  }

 private:
  bool take(PyObject* x, PyObject* y) noexcept {
    double coordinates[2];
    if (!isNumber(x, coordinates[0]) || !isNumber(y, coordinates[1])) return isRefused();
    value = {coordinates[0], coordinates[1]};
    return true;
  }

  /// Texts, arrays and booleans are not numbers here, although some can be converted.
  static bool isNumber(PyObject* object, double& number) noexcept {
    if (PyFloat_CheckExact(object) != 0) {
      number = PyFloat_AS_DOUBLE(object);
      return true;
    }
    if (PyBool_Check(object) != 0 || PySequence_Check(object) != 0) return false;
    number = PyFloat_AsDouble(object);
    return PyErr_Occurred() == nullptr;
  }

  static bool isRefused() noexcept {
    PyErr_Clear();
    return false;
  }
};

}  // namespace nanobind::detail
