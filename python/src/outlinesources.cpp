// SPDX-License-Identifier: MIT
//
// Where Outlines come from: Arrow and well-known binary.

#include <nanobind/stl/string.h>
#include <python/src/arrowcapsules.h>
#include <python/src/features.h>
#include <python/src/outlines.h>

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include <cntrtable/wkb.h>

namespace nb = nanobind;

namespace python {

namespace {

using Bytes = std::span<const std::byte>;

/// A list of bytes objects, kept while the bytes are looked at.
class WkbList {
 public:
  explicit WkbList(nb::handle values) : items_(nb::steal(PySequence_Tuple(values.ptr()))) {
    if (!items_.is_valid()) throw nb::python_error();
    const auto count = static_cast<std::size_t>(PyTuple_GET_SIZE(items_.ptr()));
    values_.reserve(count);
    for (std::size_t i = 0; i < count; ++i) values_.push_back(bytesAt(i));
  }

  qcOutlines outlines() const {
    qcOutlinesBuilder builder;
    for (const Bytes& value : values_) {
      if (value.data() == nullptr) {
        builder.failFeature("null");
      } else if (value.empty()) {
        builder.failFeature("empty");
      } else {
        table::addWkb(value, builder);
      }
    }
    return builder.finish();
  }

 private:
  /// Null for None.
  Bytes bytesAt(std::size_t number) const {
    PyObject* const item = PyTuple_GET_ITEM(items_.ptr(), static_cast<Py_ssize_t>(number));
    if (item == Py_None) return {};
    if (PyBytes_Check(item) == 0) {
      const std::string message = "values[" + std::to_string(number) +
                                  "] must be bytes or None, not " + Py_TYPE(item)->tp_name;
      throw nb::type_error(message.c_str());
    }
    const void* const bytes = PyBytes_AS_STRING(item);
    return {static_cast<const std::byte*>(bytes), static_cast<std::size_t>(PyBytes_GET_SIZE(item))};
  }

  nb::object items_;
  std::vector<Bytes> values_;
};

qcOutlines fromWkb(nb::handle values) {
  if (isArrow(values)) return outlinesFromArrow(values);
  const WkbList list(values);
  const nb::gil_scoped_release others;
  return list.outlines();
}

qcOutlines fromRegions(const nb::iterable& shapes) {
  qcOutlinesBuilder builder;
  for (const nb::handle shape : shapes) addShape(builder, shape);
  return builder.finish();
}

}  // namespace

void bindOutlineSources(OutlinesClass& type) {
  type.def_static(
          "from_arrow", outlinesFromArrow, nb::arg("column"),
          nb::sig("def from_arrow(column: object) -> Outlines"),
          "The features of a column of any package that speaks Arrow: GeoArrow's lines and\n"
          "polygons, lists of the same depth, and well-known binary. Interleaved float64\n"
          "coordinates are taken without a copy. A null becomes a feature without geometry; a\n"
          "column that contradicts itself raises BadParamsError.")
      .def_static(
          "from_wkb", fromWkb, nb::arg("values"),
          nb::sig(
              "def from_wkb(values: collections.abc.Iterable[bytes | None] | object) -> Outlines"),
          "The features of well-known binary: a list or array of bytes and None, or an Arrow\n"
          "column of binary. A value that cannot be read becomes a feature without geometry.")
      .def_static(
          "from_regions", fromRegions, nb::arg("regions"),
          nb::sig("def from_regions(regions: collections.abc.Iterable[Shape]) -> Outlines"),
          "A feature of each shape, with its label: of a RegionSet, which has no label, one\n"
          "of several parts.");
}

}  // namespace python
