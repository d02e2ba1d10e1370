// SPDX-License-Identifier: MIT
//
// Makes Outlines from Arrow, well-known binary, ragged arrays and other shapes.

#include <nanobind/stl/string.h>
#include <python/src/arrays.h>
#include <python/src/arrowcapsules.h>
#include <python/src/features.h>
#include <python/src/outlines.h>
#include <python/src/shape.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include <cntrtable/wkb.h>

namespace nb = nanobind;

namespace python {

namespace {

bool isBytesLike(PyObject* object) {
  return PyBytes_Check(object) != 0 || PyByteArray_Check(object) != 0 ||
         PyMemoryView_Check(object) != 0;
}

/// A list of bytes objects, kept alive while the bytes are read.
class WkbList {
 public:
  explicit WkbList(nb::handle values)
      : items_(nb::tuple(iteratorOver(values, "values", "bytes and None"))) {
    const auto count = static_cast<std::size_t>(PyTuple_GET_SIZE(items_.ptr()));
    values_.reserve(count);
    for (std::size_t i = 0; i < count; ++i) values_.push_back(bytesAt(i));
  }

  qcOutlines outlines() const { return qf_FromWkb(values_); }

 private:
  qcWkbValue bytesAt(std::size_t number) {
    PyObject* item = PyTuple_GET_ITEM(items_.ptr(), static_cast<Py_ssize_t>(number));
    if (item == Py_None) return std::nullopt;
    if (isBytesLike(item) && PyBytes_Check(item) == 0) item = copied(item);
    if (PyBytes_Check(item) == 0) {
      const std::string message = "values[" + std::to_string(number) +
                                  "] must be bytes or None, not " + Py_TYPE(item)->tp_name;
      throw nb::type_error(message.c_str());
    }
    const void* const bytes = PyBytes_AS_STRING(item);
    return std::span(static_cast<const std::byte*>(bytes),
                     static_cast<std::size_t>(PyBytes_GET_SIZE(item)));
  }

  /// A copy of an object that may change while it is read.
  PyObject* copied(PyObject* item) {
    copies_.push_back(nb::steal(PyBytes_FromObject(item)));
    if (!copies_.back().is_valid()) throw nb::python_error();
    return copies_.back().ptr();
  }

  nb::object items_;
  std::vector<nb::object> copies_;
  std::vector<qcWkbValue> values_;
};

qcOutlines fromWkb(nb::handle values) {
  if (isArrow(values)) return outlinesFromArrow(values);
  if (isBytesLike(values.ptr()))
    throw nb::type_error("values must be a list of bytes and None, not a single value");
  const WkbList list(values);
  const nb::gil_scoped_release others;
  return list.outlines();
}

/// Keeps the array alive; whoever drops it last need not hold the GIL.
std::shared_ptr<const PointArray> keptPoints(nb::handle given) {
  return {new PointArray(given, "xy"), [](const PointArray* array) {
            const nb::gil_scoped_acquire held;
            delete array;
          }};
}

std::vector<std::int64_t> offsetsIn(nb::handle given, const char* argument) {
  if (given.is_none()) return {};
  const nb::object array = arrayOf(given, argument);
  if (nb::cast<std::size_t>(array.attr("size")) == 0) {
    const std::string message =
        std::string(argument) + " must not be empty: the last offset is where the last one ends";
    throw nb::value_error(message.c_str());
  }
  const std::string kind = textOf(array.attr("dtype").attr("kind"));
  if ((kind != "i" && kind != "u") || nb::cast<int>(array.attr("ndim")) != 1) {
    const std::string message =
        std::string(argument) + " must be a list of whole numbers, not an array of " +
        textOf(array.attr("dtype")) + " of the shape " + textOf(array.attr("shape"));
    throw nb::type_error(message.c_str());
  }
  const nb::object greatest = nb::int_(array.attr("max")());
  if (greatest > nb::int_(std::numeric_limits<std::int64_t>::max())) {
    const std::string message =
        std::string(argument) + " has the offset " + textOf(greatest) + ", which is too large";
    throw nb::value_error(message.c_str());
  }
  using Numbers = nb::ndarray<nb::numpy, const std::int64_t, nb::ndim<1>, nb::c_contig>;
  const auto numbers =
      nb::cast<Numbers>(nb::module_::import_("numpy").attr("ascontiguousarray")(array, "int64"));
  return {numbers.data(), numbers.data() + numbers.size()};
}

/// Whether they say that each ring is a separate part.
bool areCountedUp(const std::vector<std::int64_t>& parts, std::size_t rings) {
  if (parts.size() != rings + 1) return false;
  for (std::size_t i = 0; i < parts.size(); ++i)
    if (parts[i] != static_cast<std::int64_t>(i)) return false;
  return true;
}

qcOutlines fromRagged(nb::handle xy, nb::handle rings, nb::handle features, nb::handle parts,
                      const std::string& kind) {
  if (kind != "areas" && kind != "lines") {
    const std::string message = "kind must be 'areas' or 'lines', not '" + kind + "'";
    throw nb::value_error(message.c_str());
  }
  const auto points = keptPoints(xy);
  const std::vector<std::int64_t> ringOffsets = offsetsIn(rings, "ring_offsets");
  const std::vector<std::int64_t> featureOffsets = offsetsIn(features, "feature_offsets");
  std::vector<std::int64_t> partOffsets = offsetsIn(parts, "part_offsets");
  if (kind == "lines" && areCountedUp(partOffsets, ringOffsets.size() - 1)) partOffsets.clear();
  qcRaggedOutlines arrays;
  arrays.kind = kind == "areas" ? qcOutlineKind::eAreas : qcOutlineKind::eLines;
  arrays.coordinates = points->coordinates();
  arrays.rings = ringOffsets;
  arrays.parts = partOffsets;
  arrays.features = featureOffsets;
  const nb::gil_scoped_release others;
  return qcOutlines::fromRagged(arrays, points);
}

qcOutlines fromShapely(nb::handle geometries) {
  const nb::object array = nb::module_::import_("numpy").attr("atleast_1d")(geometries);
  if (nb::cast<int>(array.attr("ndim")) != 1) {
    const std::string message =
        "geometries must have the shape (n,), not " + textOf(array.attr("shape"));
    throw nb::value_error(message.c_str());
  }
  return fromWkb(nb::module_::import_("shapely").attr("to_wkb")(array));
}

qcOutlines fromRegions(nb::handle shapes) {
  const nb::object iterator = iteratorOver(shapes, "regions", "shapes");
  qcOutlinesBuilder builder;
  std::size_t number = 0;
  for (const nb::handle shape : nb::iter(iterator)) {
    if (!nb::isinstance<Shape>(shape)) {
      const std::string message = "regions[" + std::to_string(number) +
                                  "] must be a Contour, a Region or a RegionSet, not " +
                                  Py_TYPE(shape.ptr())->tp_name;
      throw nb::type_error(message.c_str());
    }
    addShape(builder, shape);
    ++number;
  }
  return builder.finish();
}

}  // namespace

void bindOutlineSources(OutlinesClass& type) {
  type.def_static(
          "from_arrow", outlinesFromArrow, nb::arg("column"),
          nb::sig("def from_arrow(column: object) -> Outlines"),
          "The features of a column of any package with Arrow's PyCapsule interface: GeoArrow\n"
          "lines and polygons, lists of the same depth, and well-known binary; or of a table\n"
          "with such a column `geometry`, and `label`, `problem` and `edge_elements` if they\n"
          "have the types that to_arrow(attributes=True) gives them. Interleaved float64\n"
          "coordinates are not copied. A null becomes a feature without geometry; an\n"
          "inconsistent column raises BadParamsError.")
      .def_static(
          "from_wkb", fromWkb, nb::arg("values"),
          nb::sig("def from_wkb(values: collections.abc.Iterable[bytes | bytearray | "
                  "memoryview | None] | object) -> Outlines"),
          "The features in well-known binary: a list or array of bytes and None, or an Arrow\n"
          "column of binary. A value that cannot be read becomes a feature without geometry.")
      .def_static(
          "from_ragged", fromRagged, nb::arg("xy"), nb::arg("ring_offsets"),
          nb::arg("feature_offsets") = nb::none(), nb::arg("part_offsets") = nb::none(),
          nb::kw_only(), nb::arg("kind") = "areas",
          nb::sig("def from_ragged(xy: numpy.typing.ArrayLike, ring_offsets: "
                  "numpy.typing.ArrayLike, feature_offsets: numpy.typing.ArrayLike | None = None, "
                  "part_offsets: numpy.typing.ArrayLike | None = None, *, kind: "
                  "typing.Literal['areas', 'lines'] = 'areas') -> Outlines"),
          "The features in ragged arrays. `xy`, shape (n, 2), has the vertices of all rings: a\n"
          "float64 array in C order is not copied, and must not be changed afterwards. Offsets\n"
          "say where each ring, part and feature begins in the vertices, rings and parts, and\n"
          "where the last one ends. Without part_offsets, each feature is one part, an outline\n"
          "followed by its holes; without feature_offsets, each ring or part is a feature. Each\n"
          "ring of lines is a part. A ring may repeat its first vertex at its end.")
      .def_static(
          "from_shapely", fromShapely, nb::arg("geometries"),
          nb::sig("def from_shapely(geometries: object) -> Outlines"),
          "The features of Shapely geometries: a single one, or a list or array of geometries\n"
          "and None. Needs shapely.")
      .def_static(
          "from_regions", fromRegions, nb::arg("regions"),
          nb::sig("def from_regions(regions: collections.abc.Iterable[Shape]) -> Outlines"),
          "A feature for each shape, with its label. A RegionSet, which has no label, becomes a\n"
          "feature of several parts.");
}

}  // namespace python
