// SPDX-License-Identifier: MIT
//
// What the class Outlines answers itself. Several threads may query the same object: it never
// changes.

#include <nanobind/stl/optional.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/tuple.h>
#include <nanobind/stl/vector.h>
#include <python/src/arrays.h>
#include <python/src/features.h>
#include <python/src/geojson.h>
#include <python/src/measured.h>
#include <python/src/newarrays.h>
#include <python/src/outlines.h>
#include <python/src/outlinestate.h>
#include <python/src/texts.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <cntrtable/joining.h>
#include <cntrtable/repairing.h>

namespace nb = nanobind;

namespace python {

namespace {

qcOutlines validOutlines(const qcOutlines& self, const std::string& rule, std::int64_t threads) {
  const qcPolygon::PolyFillMode mode = ruleNamed(rule);
  const unsigned workers = threadsIn(threads);
  const nb::gil_scoped_release others;
  return qf_MakeValid(self, mode, workers);
}

std::size_t numberOf(std::ptrdiff_t index, std::size_t size, const char* what) {
  const auto count = static_cast<std::ptrdiff_t>(size);
  const std::ptrdiff_t number = index < 0 ? index + count : index;
  if (number < 0 || number >= count) {
    const std::string message = "there is no " + std::string(what) + " " + std::to_string(index) +
                                " among " + std::to_string(size);
    throw nb::index_error(message.c_str());
  }
  return static_cast<std::size_t>(number);
}

nb::object itemAt(const qcOutlines& self, std::ptrdiff_t index) {
  return shapeOf(self, numberOf(index, self.size(), "feature"));
}

qcOutlines sliceOf(const qcOutlines& self, const nb::slice& index) {
  const auto [start, stop, step, length] = index.compute(self.size());
  if (step == 1) return self.slice(length == 0 ? 0 : static_cast<std::size_t>(start), length);
  std::vector<std::size_t> features(length);
  for (std::size_t i = 0; i < length; ++i)
    features[i] = static_cast<std::size_t>(start + static_cast<std::ptrdiff_t>(i) * step);
  return self.selected(features);
}

nb::object featuresOf(nb::handle self) {
  nb::object iterator = nb::steal(PySeqIter_New(self.ptr()));
  if (!iterator.is_valid()) throw nb::python_error();
  return iterator;
}

nb::object verticesOf(nb::handle self, std::ptrdiff_t feature, std::ptrdiff_t part,
                      std::ptrdiff_t ring) {
  const auto& outlines = nb::cast<const qcOutlines&>(self);
  const std::size_t f = numberOf(feature, outlines.size(), "feature");
  const std::size_t p = numberOf(part, outlines.parts(f), "part");
  const std::size_t r = numberOf(ring, outlines.rings(f, p), "ring");
  const std::span<const double> numbers = outlines.ring(f, p, r);
  using View = nb::ndarray<nb::numpy, const double>;
  return nb::cast(View(numbers.data(), {numbers.size() / 2, 2}, self));
}

nb::tuple insideJoin(const qcOutlines& self, const nb::object& points, std::int64_t threads) {
  const PointArray array(points, "points");
  const unsigned workers = threadsIn(threads);
  qcInsidePairs pairs;
  {
    const nb::gil_scoped_release others;
    pairs = qf_InsideJoin(self, array.coordinates(), workers);
  }
  return nb::make_tuple(newArray(std::move(pairs.outlines)), newArray(std::move(pairs.points)));
}

nb::object labelsOf(const qcOutlines& self) {
  std::vector<std::int64_t> labels(self.size(), -1);
  {
    const nb::gil_scoped_release others;
    for (std::size_t i = 0; i < self.size(); ++i)
      if (const auto label = self.label(i)) labels[i] = *label;
  }
  return newArray(std::move(labels));
}

/// Calls `visit(vertices)` for each ring of all features.
template <class Visit>
void forAllRings(const qcOutlines& self, Visit visit) {
  for (std::size_t i = 0; i < self.size(); ++i)
    for (std::size_t part = 0; part < self.parts(i); ++part)
      for (std::size_t ring = 0; ring < self.rings(i, part); ++ring)
        visit(self.ring(i, part, ring));
}

using Bounds = std::tuple<double, double, double, double>;

std::optional<Bounds> boundsOf(const qcOutlines& self) {
  const nb::gil_scoped_release others;
  constexpr double infinity = std::numeric_limits<double>::infinity();
  double left = infinity;
  double low = infinity;
  double right = -infinity;
  double high = -infinity;
  forAllRings(self, [&](std::span<const double> ring) {
    for (std::size_t i = 0; i < ring.size(); i += 2) {
      left = std::min(left, ring[i]);
      right = std::max(right, ring[i]);
      low = std::min(low, ring[i + 1]);
      high = std::max(high, ring[i + 1]);
    }
  });
  if (!(left <= right && low <= high)) return std::nullopt;
  return Bounds(left, low, right, high);
}

std::vector<std::string> geometryTypesOf(const qcOutlines& self) {
  const nb::gil_scoped_release others;
  std::set<std::string> types;
  for (std::size_t i = 0; i < self.size(); ++i) {
    if (self.kind(i) == qcOutlineKind::eNothing) continue;
    const bool isAreas = self.kind(i) == qcOutlineKind::eAreas;
    types.insert(std::string(self.parts(i) > 1 ? "Multi" : "") +
                 (isAreas ? "Polygon" : "LineString"));
  }
  return {types.begin(), types.end()};
}

nb::dict problemsOf(const qcOutlines& self) {
  nb::dict problems;
  for (std::size_t i = 0; i < self.size(); ++i)
    if (self.kind(i) == qcOutlineKind::eNothing)
      problems[nb::int_(i)] = nb::str(self.problem(i).c_str());
  return problems;
}

bool isSameRing(const qcOutlines& a, const qcOutlines& b, std::size_t feature, std::size_t part,
                std::size_t ring) {
  const auto edgesOf = [](const qcEdgelet& edgelet) {
    return std::pair(edgelet.magnitude(), edgelet.angle().steps());
  };
  return std::ranges::equal(a.ring(feature, part, ring), b.ring(feature, part, ring)) &&
         std::ranges::equal(a.edgelets(feature, part, ring), b.edgelets(feature, part, ring), {},
                            edgesOf, edgesOf);
}

bool isSameFeature(const qcOutlines& a, const qcOutlines& b, std::size_t feature) {
  if (a.kind(feature) != b.kind(feature) || a.parts(feature) != b.parts(feature)) return false;
  for (std::size_t part = 0; part < a.parts(feature); ++part) {
    if (a.rings(feature, part) != b.rings(feature, part)) return false;
    for (std::size_t ring = 0; ring < a.rings(feature, part); ++ring)
      if (!isSameRing(a, b, feature, part, ring)) return false;
  }
  return true;
}

bool isSame(const qcOutlines& a, const qcOutlines& b) {
  const nb::gil_scoped_release others;
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (!isSameFeature(a, b, i)) return false;
  return true;
}

std::string describeOutlines(const qcOutlines& self) {
  const nb::gil_scoped_release others;
  std::array<std::size_t, 3> counts{};
  for (std::size_t i = 0; i < self.size(); ++i) ++counts[static_cast<std::size_t>(self.kind(i))];
  const auto [nothing, areas, lines] = counts;
  return "<cntr.Outlines: " + counted(self.size(), "feature", "features") + ", " +
         counted(areas, "area", "areas") + ", " + counted(lines, "line", "lines") + ", " +
         std::to_string(nothing) + " without geometry>";
}

}  // namespace

void bindOutlines(nb::module_& module) {
  OutlinesClass type(
      module, "Outlines",
      "Many features, each consisting of outlines with holes or of open lines, held as\n"
      "columns. Immutable; slices share the memory of the original. A feature that could\n"
      "not be read keeps its place, and `problems` says why.");
  type.def("__len__", &qcOutlines::size)
      .def("__repr__", describeOutlines)
      .def("__getitem__", itemAt, nb::arg("index"),
           nb::sig("def __getitem__(self, index: int, /) -> Contour | Region | list[Contour] | "
                   "list[Region] | None"))
      .def("__getitem__", sliceOf, nb::arg("index"),
           nb::sig("def __getitem__(self, index: slice, /) -> Outlines"))
      .def("__iter__", featuresOf,
           nb::sig("def __iter__(self) -> collections.abc.Iterator[Contour | Region | "
                   "list[Contour] | list[Region] | None]"))
      .def(
          "__eq__",
          [](const qcOutlines& self, const qcOutlines& other) { return isSame(self, other); },
          nb::is_operator(), nb::sig("def __eq__(self, other: object, /) -> bool"),
          "Whether all features are equal in kind, vertices, holes and edge elements. Labels\n"
          "and problems are not compared.")
      .def("vertices", verticesOf, nb::arg("feature"), nb::arg("part") = 0, nb::arg("ring") = 0,
           nb::sig("def vertices(self, feature: int, part: int = 0, ring: int = 0) -> "
                   "numpy.typing.NDArray[numpy.float64]"),
           "The vertices of a ring without a repeated last one, shape (n, 2): a read-only view.\n"
           "Ring 0 of a part is its outline, the others are holes.")
      .def(
          "_repr_html_",
          [](nb::handle self) { return nb::module_::import_("cntr._html").attr("table")(self); },
          nb::sig("def _repr_html_(self) -> str"),
          "A table of the first features with their pictures.")
      .def_prop_ro("labels", labelsOf,
                   nb::sig("def labels(self) -> numpy.typing.NDArray[numpy.int64]"),
                   "The label of each feature, -1 if it has none.")
      .def_prop_ro(
          "bounds", boundsOf,
          nb::sig("def bounds(self) -> tuple[float, float, float, float] | None"),
          "The smallest and largest coordinates of all vertices, (xmin, ymin, xmax, ymax),\n"
          "ignoring NaN; None if there are none.")
      .def_prop_ro("geometry_types", geometryTypesOf,
                   nb::sig("def geometry_types(self) -> list[str]"),
                   "The types of geometry that occur, sorted: Polygon, MultiPolygon, LineString,\n"
                   "MultiLineString.")
      .def_prop_ro("problems", problemsOf, nb::sig("def problems(self) -> dict[int, str]"),
                   "Why features have no geometry, by the numbers of these features.")
      .def("measure", measured, nb::arg("columns") = nb::none(), nb::arg("threads") = 0,
           nb::sig("def measure(self, columns: collections.abc.Sequence[str] | None = None, "
                   "threads: int = 0) -> Measured"),
           "Measures all features: the given columns of cntr.MEASURES, by default a common\n"
           "choice of them, then `status` and `note`. A feature that cannot be measured has the\n"
           "status 'failed'. `threads` is the number of threads, 0 for one per processor; it\n"
           "does not affect the answers.")
      .def("inside_join", insideJoin, nb::arg("points"), nb::arg("threads") = 0,
           nb::sig("def inside_join(self, points: numpy.typing.ArrayLike, threads: int = 0) -> "
                   "tuple[numpy.typing.NDArray[numpy.int64], numpy.typing.NDArray[numpy.int64]]"),
           "Finds which of the points, shape (n, 2), are inside which features. Returns two\n"
           "arrays of equal length, the number of a feature and the number of a point in it,\n"
           "sorted by feature, then by point. Lines and features without geometry contain no\n"
           "points.")
      .def("make_valid", validOutlines, nb::arg("rule") = "nonzero", nb::arg("threads") = 0,
           "The filled set of each feature by the rule, 'nonzero' or 'evenodd', as valid\n"
           "outlines with holes; labels are kept. Lines are unchanged; a feature without area\n"
           "becomes one without geometry. Edge elements are dropped.");
  type.attr("__hash__") = nb::none();
  bindOutlineSources(type);
  bindImageSources(type);
  bindOutlineForms(type);
  bindGeoJson(type);
  bindOutlineState(type);
}

}  // namespace python
