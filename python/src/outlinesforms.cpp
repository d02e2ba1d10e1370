// SPDX-License-Identifier: MIT
//
// Conversions of Outlines to Arrow, well-known binary, ragged arrays and Shapely's geometries.

#include <nanobind/stl/string.h>
#include <python/src/arrowcapsules.h>
#include <python/src/newarrays.h>
#include <python/src/outlines.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include <cntrtable/geoarrow.h>

namespace nb = nanobind;

namespace python {

namespace {

/// A value of an argument, by its name.
template <class T>
struct Choice {
  std::string_view name;
  T value;
};

constexpr std::array<Choice<qcArrowLayout>, 6> layouts{
    {{"fitting", qcArrowLayout::eFitting},
     {"polygon", qcArrowLayout::ePolygon},
     {"multipolygon", qcArrowLayout::eMultiPolygon},
     {"linestring", qcArrowLayout::eLineString},
     {"multilinestring", qcArrowLayout::eMultiLineString},
     {"wkb", qcArrowLayout::eWkb}}};
constexpr auto interleaved = qcArrowCoordinates::eInterleaved;
constexpr std::array<Choice<qcArrowCoordinates>, 2> coordinateLayouts{
    {{"interleaved", interleaved}, {"separated", qcArrowCoordinates::eSeparated}}};

template <class T, std::size_t count>
T chosen(const std::array<Choice<T>, count>& choices, const std::string& name,
         const std::string& argument) {
  std::string all;
  for (const Choice<T>& choice : choices) {
    if (choice.name == name) return choice.value;
    all.append(all.empty() ? "'" : ", '").append(choice.name).append("'");
  }
  const std::string message = argument + " must be one of " + all + ", not '" + name + "'";
  throw nb::value_error(message.c_str());
}

ArrowColumn columnOf(const qcOutlines& outlines, qcArrowLayout layout,
                     qcArrowCoordinates coordinates) {
  const nb::gil_scoped_release others;
  return ArrowColumn(qf_ToArrow(outlines, layout, coordinates));
}

ArrowColumn tableOf(const qcOutlines& outlines, qcArrowLayout layout,
                    qcArrowCoordinates coordinates) {
  const nb::gil_scoped_release others;
  return ArrowColumn(qf_ToArrowTable(outlines, layout, coordinates));
}

ArrowColumn toArrow(const qcOutlines& self, const std::string& layout,
                    const std::string& coordinates, bool withAttributes) {
  const auto make = withAttributes ? tableOf : columnOf;
  return make(self, chosen(layouts, layout, "layout"),
              chosen(coordinateLayouts, coordinates, "coordinates"));
}

template <class Offset>
nb::list bytesIn(const ArrowArray& array) {
  const auto* const validity = static_cast<const std::uint8_t*>(array.buffers[0]);
  const auto* const offsets = static_cast<const Offset*>(array.buffers[1]);
  const auto* const bytes = static_cast<const char*>(array.buffers[2]);
  nb::list values;
  for (std::int64_t i = 0; i < array.length; ++i) {
    const bool isNull = validity != nullptr && ((validity[i / 8] >> (i % 8)) & 1U) == 0U;
    if (isNull) {
      values.append(nb::none());
    } else {
      values.append(
          nb::bytes(bytes + offsets[i], static_cast<std::size_t>(offsets[i + 1] - offsets[i])));
    }
  }
  return values;
}

nb::list toWkb(const qcOutlines& self) {
  const ArrowColumn column = columnOf(self, qcArrowLayout::eWkb, interleaved);
  const bool isLarge = column.schema().format == std::string_view("Z");
  return isLarge ? bytesIn<std::int64_t>(column.array()) : bytesIn<std::int32_t>(column.array());
}

nb::object toShapely(const qcOutlines& self) {
  const nb::object values = nb::module_::import_("numpy").attr("array")(toWkb(self), "object");
  return nb::module_::import_("shapely").attr("from_wkb")(values);
}

nb::tuple toRagged(const qcOutlines& self) {
  qcRaggedArrays arrays;
  {
    const nb::gil_scoped_release others;
    arrays = self.toRagged();
  }
  const std::size_t vertices = arrays.coordinates.size() / 2;
  return nb::make_tuple(newArray(std::move(arrays.coordinates), {vertices, 2}),
                        newArray(std::move(arrays.rings)), newArray(std::move(arrays.features)),
                        newArray(std::move(arrays.parts)));
}

}  // namespace

void bindOutlineForms(OutlinesClass& type) {
  type.def("to_arrow", toArrow, nb::arg("layout") = "fitting",
           nb::arg("coordinates") = "interleaved", nb::kw_only(), nb::arg("attributes") = false,
           "The features as a GeoArrow column. The layout is 'polygon', 'multipolygon',\n"
           "'linestring', 'multilinestring', 'wkb', or the first of these that fits;\n"
           "coordinates are 'interleaved' or 'separated'. Features without geometry are null.\n"
           "With attributes=True a table of the column `geometry` and those that to_parquet()\n"
           "writes: `label`, and where there are any `problem` and `edge_elements`. The outlines\n"
           "themselves are such a table to packages that take one. Raises BadParamsError for a\n"
           "layout that cannot hold a feature.")
      .def("to_wkb", toWkb, nb::sig("def to_wkb(self) -> list[bytes | None]"),
           "Each feature as well-known binary, None for features without geometry.")
      .def("to_shapely", toShapely,
           nb::sig("def to_shapely(self) -> numpy.typing.NDArray[numpy.object_]"),
           "Each feature as a Shapely geometry, None for features without geometry. Needs\n"
           "shapely, which raises GEOSException for rings of fewer than 3 vertices.")
      .def(
          "to_parquet",
          [](nb::handle self, nb::handle path) {
            nb::module_::import_("cntr._parquet").attr("write")(self, path);
          },
          nb::arg("path"), nb::sig("def to_parquet(self, path: str | os.PathLike[str]) -> None"),
          "Writes a file of GeoParquet 1.1: `geometry` as well-known binary without a reference\n"
          "system, `label`, and where there are any `problem` and `edge_elements`.\n"
          "cntr.read_parquet() reads it. Needs pyarrow.")
      .def("to_ragged", toRagged,
           nb::sig("def to_ragged(self) -> tuple[numpy.typing.NDArray[numpy.float64], "
                   "numpy.typing.NDArray[numpy.int64], numpy.typing.NDArray[numpy.int64], "
                   "numpy.typing.NDArray[numpy.int64]]"),
           "The arrays that from_ragged() takes, in that order: vertices, shape (n, 2), and the\n"
           "offsets of rings, features and parts. Rings of areas repeat their first vertex;\n"
           "features without geometry have no parts. Labels, edge elements and the kind of the\n"
           "features are left out.");
  defineArrowMethods(type, [](const qcOutlines& self) {
    return tableOf(self, qcArrowLayout::eFitting, interleaved);
  });
}

}  // namespace python
