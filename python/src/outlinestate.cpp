// SPDX-License-Identifier: MIT
//
// Edge elements are columns with a place for each vertex of all features, rings one behind the
// other. Magnitudes are numbers of 32 bits, -1 where a vertex has no edge element.

#include <nanobind/stl/string.h>
#include <python/src/newarrays.h>
#include <python/src/outlinestate.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace nb = nanobind;

namespace python {

namespace {

template <class Number>
using Numbers = nb::ndarray<nb::numpy, const Number, nb::ndim<1>, nb::c_contig>;

/// Calls `visit(vertices, edge elements)` for each ring of the feature.
template <class Visit>
void forRings(const qcOutlines& outlines, std::size_t feature, Visit visit) {
  for (std::size_t part = 0; part < outlines.parts(feature); ++part)
    for (std::size_t ring = 0; ring < outlines.rings(feature, part); ++ring)
      visit(outlines.ring(feature, part, ring), outlines.edgelets(feature, part, ring));
}

struct EdgeColumns {
  std::vector<std::int32_t> magnitudes;
  std::vector<std::uint8_t> angles;
  /// Of vertices, for each feature.
  std::vector<std::int64_t> counts;
  bool hasAny = false;
};

EdgeColumns edgeColumnsOf(const qcOutlines& outlines) {
  EdgeColumns columns;
  for (std::size_t i = 0; i < outlines.size(); ++i) {
    const std::size_t before = columns.magnitudes.size();
    forRings(outlines, i, [&](std::span<const double> ring, std::span<const qcEdgelet> edgelets) {
      for (const qcEdgelet& edgelet : edgelets) {
        columns.magnitudes.push_back(edgelet.magnitude());
        columns.angles.push_back(edgelet.angle().steps());
      }
      columns.hasAny = columns.hasAny || !edgelets.empty();
      const std::size_t missing = ring.size() / 2 - edgelets.size();
      columns.magnitudes.resize(columns.magnitudes.size() + missing, -1);
      columns.angles.resize(columns.magnitudes.size());
    });
    columns.counts.push_back(static_cast<std::int64_t>(columns.magnitudes.size() - before));
  }
  return columns;
}

nb::tuple takeApart(nb::handle self) {
  EdgeColumns edges = [&outlines = nb::cast<const qcOutlines&>(self)] {
    const nb::gil_scoped_release others;
    return edgeColumnsOf(outlines);
  }();
  nb::object columns = nb::none();
  if (edges.hasAny) {
    columns = nb::make_tuple(newArray(std::move(edges.magnitudes)),
                             newArray(std::move(edges.angles)), newArray(std::move(edges.counts)));
  }
  return nb::make_tuple(self.attr("to_wkb")(), self.attr("labels"), self.attr("problems"), columns);
}

/// The edge elements of features and their rings, one behind the other.
class EdgeReader {
 public:
  EdgeReader(nb::handle columns, std::size_t features) {
    if (columns.is_none()) return;
    magnitudes_ = nb::cast<Numbers<std::int32_t>>(columns[0]);
    angles_ = nb::cast<Numbers<std::uint8_t>>(columns[1]);
    counts_ = nb::cast<Numbers<std::int64_t>>(columns[2]);
    if (magnitudes_.size() != angles_.size())
      throw nb::value_error("there must be as many magnitudes as angles");
    if (counts_.size() != features)
      throw nb::value_error("there must be a number of edge elements for each feature");
    std::size_t left = magnitudes_.size();
    for (std::size_t i = 0; i < features; ++i) {
      if (counts_(i) < 0 || static_cast<std::uint64_t>(counts_(i)) > left)
        throw nb::value_error("there are too few edge elements");
      left -= static_cast<std::size_t>(counts_(i));
    }
    if (left > 0) throw nb::value_error("there are too many edge elements");
  }

  /// Goes on to the next feature, which has none at all, or one for each vertex.
  void beginFeature(const qcOutlines& outlines, std::size_t feature) {
    if (counts_.size() == 0) return;
    place_ = end_;
    const auto count = static_cast<std::size_t>(counts_(feature));
    end_ += count;
    std::size_t vertices = 0;
    forRings(outlines, feature,
             [&vertices](std::span<const double> ring, auto) { vertices += ring.size() / 2; });
    if (count == 0 || vertices == 0 || count == vertices) return;
    const std::string message = "feature " + std::to_string(feature) + " has " +
                                std::to_string(count) + " edge elements for " +
                                std::to_string(vertices) + " vertices";
    throw std::invalid_argument(message);
  }

  /// Those of the next ring of the feature; empty where one of its vertices has none.
  std::vector<qcEdgelet> next(std::span<const double> ring) {
    std::vector<qcEdgelet> edgelets;
    if (place_ == end_) return edgelets;
    const std::size_t count = ring.size() / 2;
    for (std::size_t i = 0; i < count; ++i, ++place_) {
      const std::int32_t magnitude = magnitudes_(place_);
      if (magnitude < 0) continue;
      edgelets.emplace_back(qcVector<2>(ring[2 * i], ring[2 * i + 1]),
                            static_cast<unsigned short>(magnitude), qcAngle8(angles_(place_)));
    }
    if (edgelets.size() < count) edgelets.clear();
    return edgelets;
  }

 private:
  Numbers<std::int32_t> magnitudes_;
  Numbers<std::uint8_t> angles_;
  /// Of the edge elements of each feature; of nothing where there are none.
  Numbers<std::int64_t> counts_;
  std::size_t place_ = 0;
  std::size_t end_ = 0;
};

void addFeature(qcOutlinesBuilder& builder, const qcOutlines& outlines, std::size_t feature,
                std::optional<std::uint32_t> label, EdgeReader& edges) {
  for (std::size_t part = 0; part < outlines.parts(feature); ++part) {
    for (std::size_t i = 0; i < outlines.rings(feature, part); ++i) {
      const std::span<const double> ring = outlines.ring(feature, part, i);
      const std::span<double> place = builder.addRing(ring.size() / 2);
      std::copy(ring.begin(), ring.end(), place.begin());
      const std::vector<qcEdgelet> edgelets = edges.next(ring);
      if (!edgelets.empty()) builder.setEdgelets(edgelets);
    }
    builder.endPart();
  }
  builder.endFeature(outlines.kind(feature), label);
}

/// The texts of a dictionary by the numbers of features.
std::map<std::size_t, std::string> problemsIn(const nb::dict& problems) {
  std::map<std::size_t, std::string> texts;
  for (const auto& [feature, why] : problems)
    texts.emplace(nb::cast<std::size_t>(feature), nb::cast<std::string>(why));
  return texts;
}

qcOutlines putTogether(nb::handle values, nb::handle labels, const nb::dict& problems,
                       nb::handle edges) {
  const nb::object geometries = nb::type<qcOutlines>().attr("from_wkb")(values);
  const auto& outlines = nb::cast<const qcOutlines&>(geometries);
  const auto numbers = nb::cast<Numbers<std::int64_t>>(labels);
  if (numbers.size() != outlines.size())
    throw nb::value_error("there must be a label for each feature");
  EdgeReader reader(edges, outlines.size());
  const std::map<std::size_t, std::string> reasons = problemsIn(problems);
  const nb::gil_scoped_release others;
  qcOutlinesBuilder builder;
  for (std::size_t i = 0; i < outlines.size(); ++i) {
    reader.beginFeature(outlines, i);
    if (outlines.kind(i) == qcOutlineKind::eNothing) {
      const auto why = reasons.find(i);
      builder.failFeature(why != reasons.end() ? why->second : outlines.problem(i));
    } else {
      std::optional<std::uint32_t> label;
      if (numbers(i) >= 0) label = static_cast<std::uint32_t>(numbers(i));
      addFeature(builder, outlines, i, label, reader);
    }
  }
  return builder.finish();
}

void setState(qcOutlines& self, const nb::tuple& state) {
  new (&self) qcOutlines(putTogether(state[0], state[1], nb::cast<nb::dict>(state[2]), state[3]));
}

/// In a way that all protocols of pickle know.
nb::tuple pickled(nb::handle self) {
  return nb::make_tuple(nb::module_::import_("copyreg").attr("__newobj__"),
                        nb::make_tuple(self.type()), takeApart(self));
}

}  // namespace

void bindOutlineState(nb::module_& module, OutlinesClass& type) {
  constexpr const char* takeApartSignature =
      "def take_apart(outlines: Outlines) -> tuple[list[bytes | None], "
      "numpy.typing.NDArray[numpy.int64], dict[int, str], "
      "tuple[numpy.typing.NDArray[numpy.int32], numpy.typing.NDArray[numpy.uint8], "
      "numpy.typing.NDArray[numpy.int64]] | None]";
  module.def("take_apart", takeApart, nb::sig(takeApartSignature),
             "Well-known binary, labels, problems, and the edge elements' magnitudes and angles\n"
             "with the number of vertices of each feature, or None where there are none.");
  module.def("put_together", putTogether, nb::arg("values"), nb::arg("labels"), nb::arg("problems"),
             nb::arg("edges").none(),
             nb::sig("def put_together(values: object, labels: numpy.typing.NDArray[numpy.int64], "
                     "problems: dict[int, str], edges: tuple[numpy.typing.NDArray[numpy.int32], "
                     "numpy.typing.NDArray[numpy.uint8], "
                     "numpy.typing.NDArray[numpy.int64]] | None) -> Outlines"),
             "The outlines that take_apart() gave these of. Labels are -1, or up to 4294967295,\n"
             "magnitudes -1, or up to 65535; a feature may have no edge elements at all.");
  type.def("__reduce__", pickled, nb::sig("def __reduce__(self) -> tuple[object, ...]"))
      .def("__setstate__", setState,
           nb::sig("def __setstate__(self, state: tuple[object, ...], /) -> None"));
}

}  // namespace python
