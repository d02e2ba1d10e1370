// SPDX-License-Identifier: MIT

#include <nanobind/stl/string.h>
#include <python/src/arrays.h>
#include <python/src/geojson.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include <cntrformats/geojson/geojson.h>
#include <cntrformats/table/format.h>
#include <cntrtable/refusal.h>

namespace nb = nanobind;

namespace python {

namespace {

using formats::Feature;
using formats::Geometry;

/// Adds what a reader finds, one feature after the other.
class FeatureSink : public formats::Sink {
 public:
  void take(formats::Record record) override {
    const Feature feature = record.decode();
    if (feature.problem.empty()) {
      add(feature);
    } else {
      const std::size_t line = record.location.line;
      builder_.failFeature((line == 0 ? "" : "line " + std::to_string(line) + ": ") +
                           feature.problem);
    }
  }

  qcOutlines outlines() { return builder_.finish(); }

 private:
  void add(const Feature& feature) {
    const Geometry& geometry = feature.geometry;
    for (std::size_t i = 0; i < geometry.parts.size(); ++i) {
      addVertices(geometry.parts[i].outline);
      if (!geometry.edgelets.empty() && !geometry.edgelets[i].empty())
        builder_.setEdgelets(geometry.edgelets[i]);
      for (const formats::Points& hole : geometry.parts[i].holes) addVertices(hole);
      builder_.endPart();
    }
    builder_.endFeature(geometry.closed ? qcOutlineKind::eAreas : qcOutlineKind::eLines,
                        labelOf(feature));
  }

  /// Names of classes are not labels here.
  static std::optional<std::uint32_t> labelOf(const Feature& feature) {
    if (!feature.label) return std::nullopt;
    const auto* const number = std::get_if<unsigned long>(&*feature.label);
    if (number == nullptr) return std::nullopt;
    return static_cast<std::uint32_t>(*number);
  }

  void addVertices(const formats::Points& points) {
    const std::span<double> place = builder_.addRing(points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
      place[2 * i] = points[i].x();
      place[2 * i + 1] = points[i].y();
    }
  }

  qcOutlinesBuilder builder_;
};

qcOutlines readAll(formats::Source& source, bool isByLines) {
  FeatureSink sink;
  const auto read = isByLines ? formats::readGeoJsonLines : formats::readGeoJson;
  read(source, formats::Keep::eFeature, sink);
  return sink.outlines();
}

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// The first character of a text; sources skip the byte order mark.
char firstIn(std::string_view text) {
  if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  return first == std::string_view::npos ? ' ' : text[first];
}

/// The name of a file may begin with a bracket.
bool isGeoJsonText(const std::string& given, nb::handle os) {
  const char first = firstIn(given);
  return first == '{' || first == formats::recordSeparator ||
         (first == '[' && !nb::cast<bool>(os.attr("path").attr("exists")(given)));
}

qcOutlines readText(const std::string& text) {
  formats::Source source(formats::Text{text});
  return readAll(source, formats::looksLikeGeoJsonLines(source.firstLine()));
}

qcOutlines readFile(const std::string& path) {
  // A lone "-" would be standard input.
  formats::Source source(path == "-" ? "./-" : path);
  const formats::Format* const format = formats::formatByEnding(path);
  return readAll(source, (format != nullptr && format->read == formats::readGeoJsonLines) ||
                             formats::looksLikeGeoJsonLines(source.firstLine()));
}

[[noreturn]] void refuseSurrogate() {
  throw nb::value_error("text_or_path has a lone surrogate, which is not a character");
}

/// Paths as the file system takes them: their bytes need not be UTF-8.
nb::bytes bytesOf(nb::handle given, nb::handle os) {
  try {
    return nb::cast<nb::bytes>(os.attr("fsencode")(given));
  } catch (nb::python_error& error) {
    if (error.matches(PyExc_UnicodeError)) refuseSurrogate();
    throw;
  }
}

void requireCharacters(nb::handle text) {
  if (PyUnicode_AsUTF8AndSize(text.ptr(), nullptr) != nullptr) return;
  PyErr_Clear();
  refuseSurrogate();
}

qcOutlines fromGeoJson(nb::handle given) {
  const nb::module_ os = nb::module_::import_("os");
  const bool isText = nb::isinstance<nb::str>(given);
  if (!isText && PyBytes_Check(given.ptr()) == 0 && !nb::hasattr(given, "__fspath__")) {
    const std::string message =
        std::string("text_or_path must be text or a path, not ") + Py_TYPE(given.ptr())->tp_name;
    throw nb::type_error(message.c_str());
  }
  const nb::bytes encoded = bytesOf(given, os);
  const std::string bytes(encoded.c_str(), encoded.size());
  if (bytes.empty()) throw nb::value_error("text_or_path is empty");
  if (isText && isGeoJsonText(bytes, os)) {
    requireCharacters(given);
    const nb::gil_scoped_release others;
    return readText(bytes);
  }
  os.attr("stat")(given);
  const auto name = nb::cast<std::string>(encoded.attr("decode")("utf-8", "backslashreplace"));
  const nb::gil_scoped_release others;
  try {
    return readFile(bytes);
  } catch (const formats::FileError& error) {
    throw formats::FileError(name + ": " + error.what());
  }
}

bool isFinite(std::span<const double> numbers) {
  return std::all_of(numbers.begin(), numbers.end(), [](double x) { return std::isfinite(x); });
}

Geometry geometryOf(const qcOutlines& outlines, std::size_t feature) {
  Geometry geometry;
  geometry.closed = outlines.kind(feature) == qcOutlineKind::eAreas;
  geometry.parts = outlines.feature(feature);
  for (std::size_t part = 0; part < outlines.parts(feature); ++part) {
    for (std::size_t ring = 0; ring < outlines.rings(feature, part); ++ring) {
      if (isFinite(outlines.ring(feature, part, ring))) continue;
      table::refuse("feature " + std::to_string(feature) +
                    " has a coordinate that is not a finite number");
    }
  }
  std::erase_if(geometry.parts, [](const qcRings& part) { return part.outline.empty(); });
  for (qcRings& part : geometry.parts)
    std::erase_if(part.holes, [](const formats::Points& hole) { return hole.empty(); });
  if (geometry.parts.size() == 1 && outlines.parts(feature) == 1) {
    const auto edgelets = outlines.edgelets(feature, 0, 0);
    if (!edgelets.empty()) geometry.edgelets.emplace_back(edgelets.begin(), edgelets.end());
  }
  return geometry;
}

formats::Prepared prepared(const formats::FeatureWriter& writer, const qcOutlines& outlines,
                           std::size_t number) {
  if (outlines.kind(number) == qcOutlineKind::eNothing)
    return {R"({"type":"Feature","properties":{},"geometry":null})"};
  Feature feature;
  if (const auto label = outlines.label(number)) feature.label = static_cast<unsigned long>(*label);
  feature.geometry = geometryOf(outlines, number);
  return writer.prepare(std::move(feature), false);
}

std::string toGeoJson(const qcOutlines& self) {
  const nb::gil_scoped_release others;
  std::ostringstream text;
  const auto writer = formats::makeGeoJsonWriter(text, formats::Rings::eAsGeoJsonWants);
  for (std::size_t i = 0; i < self.size(); ++i) writer->write(prepared(*writer, self, i));
  writer->finish();
  return text.str();
}

}  // namespace

void bindGeoJson(OutlinesClass& type) {
  type.def_static(
          "from_geojson", fromGeoJson, nb::arg("text_or_path"),
          nb::sig("def from_geojson(text_or_path: str | bytes | os.PathLike[str] | "
                  "os.PathLike[bytes]) -> Outlines"),
          "The features in GeoJSON: a text that begins with a brace, or a file, which may be\n"
          "compressed with gzip. Documents, one feature per line, and text sequences can be\n"
          "read. Labels that are whole numbers are kept. A feature that cannot be read becomes\n"
          "one without geometry. Input that is not GeoJSON raises Error with the line and\n"
          "column.")
      .def("to_geojson", toGeoJson,
           "A FeatureCollection as text, with labels, and with edge elements for outlines of\n"
           "features of one part. Outlines run counter-clockwise (y up), holes clockwise.\n"
           "Features without geometry have null as their geometry. Raises BadParamsError for\n"
           "coordinates that are not finite.")
      .def_prop_ro(
          "__geo_interface__",
          [](nb::handle self) {
            return nb::module_::import_("json").attr("loads")(self.attr("to_geojson")());
          },
          nb::sig("def __geo_interface__(self) -> dict[str, typing.Any]"),
          "The FeatureCollection as Python objects.");
}

}  // namespace python
