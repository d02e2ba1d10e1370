// SPDX-License-Identifier: MIT
//
// Arrow columns from and to other Python packages: the structures of Arrow's C interfaces, handed
// over in capsules.

#pragma once

#include <nanobind/nanobind.h>

#include <memory>

#include <cntrtable/arrow.h>
#include <cntrtable/outlines.h>

namespace python {

/// Whether the object has the methods below.
bool isArrow(nanobind::handle object);

/// The features of an object with __arrow_c_array__(), which is preferred, or __arrow_c_stream__().
/// Raises TypeError for other objects.
qcOutlines outlinesFromArrow(nanobind::handle column);

/// A column, or a record batch, that never changes: it can be handed over any number of times, and
/// lives until the last of the loans is released.
class ArrowColumn {
 public:
  explicit ArrowColumn(qcArrowColumn&& column);

  const ArrowSchema& schema() const { return *column_->schema; }
  const ArrowArray& array() const { return *column_->array; }
  /// Keeps the buffers alive.
  std::shared_ptr<const void> owner() const { return column_; }

  nanobind::object schemaCapsule() const;
  /// The capsules of the schema and of the array.
  nanobind::tuple arrayCapsules() const;
  /// The capsule of a stream with only this column.
  nanobind::object streamCapsule() const;

 private:
  std::shared_ptr<const qcArrowColumn> column_;
};

/// Defines the methods by which other packages take `columnOf(self)`.
template <class T, class ColumnOf>
void defineArrowMethods(nanobind::class_<T>& type, ColumnOf columnOf) {
  namespace nb = nanobind;
  type.def(
      "__arrow_c_schema__", [columnOf](const T& self) { return columnOf(self).schemaCapsule(); },
      nb::sig("def __arrow_c_schema__(self) -> object"), "The schema of the values, as a capsule.");
  type.def(
      "__arrow_c_array__",
      [columnOf](const T& self, nb::handle) { return columnOf(self).arrayCapsules(); },
      nb::arg("requested_schema") = nb::none(),
      nb::sig("def __arrow_c_array__(self, requested_schema: object = None) -> tuple[object, "
              "object]"),
      "The schema and the values, as capsules; `requested_schema` is ignored.");
  type.def(
      "__arrow_c_stream__",
      [columnOf](const T& self, nb::handle) { return columnOf(self).streamCapsule(); },
      nb::arg("requested_schema") = nb::none(),
      nb::sig("def __arrow_c_stream__(self, requested_schema: object = None) -> object"),
      "The values as a stream of one array, as a capsule; `requested_schema` is ignored.");
}

/// Defines cntr.ArrowColumn.
void bindArrowColumn(nanobind::module_& module);

}  // namespace python
