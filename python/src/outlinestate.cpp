// SPDX-License-Identifier: MIT
//
// Edge elements are columns with a place for each vertex of all features, rings one behind the
// other. Magnitudes are numbers of 32 bits, -1 where a vertex has no edge element.

#include <python/src/newarrays.h>
#include <python/src/outlinestate.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <optional>
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
  EdgeColumns edges = edgeColumnsOf(nb::cast<const qcOutlines&>(self));
  nb::object columns = nb::none();
  if (edges.hasAny) {
    columns = nb::make_tuple(newArray(std::move(edges.magnitudes)),
                             newArray(std::move(edges.angles)), newArray(std::move(edges.counts)));
  }
  return nb::make_tuple(self.attr("to_wkb")(), self.attr("labels"), self.attr("problems"), columns);
}

/// The edge elements of rings, one behind the other.
class EdgeReader {
 public:
  explicit EdgeReader(nb::handle columns) {
    if (columns.is_none()) return;
    magnitudes_ = nb::cast<Numbers<std::int32_t>>(columns[0]);
    angles_ = nb::cast<Numbers<std::uint8_t>>(columns[1]);
    if (magnitudes_.size() != angles_.size())
      throw nb::value_error("there must be as many magnitudes as angles");
    hasAny_ = true;
  }

  /// Those of the next ring; empty where one of its vertices has none.
  std::vector<qcEdgelet> next(std::span<const double> ring) {
    std::vector<qcEdgelet> edgelets;
    if (!hasAny_) return edgelets;
    const std::size_t count = ring.size() / 2;
    if (count > magnitudes_.size() - place_)
      throw nb::value_error("there are too few edge elements");
    for (std::size_t i = 0; i < count; ++i, ++place_) {
      const std::int32_t magnitude = magnitudes_(place_);
      if (magnitude < 0) continue;
      edgelets.emplace_back(qcVector<2>(ring[2 * i], ring[2 * i + 1]),
                            static_cast<unsigned short>(magnitude), qcAngle8(angles_(place_)));
    }
    if (edgelets.size() < count) edgelets.clear();
    return edgelets;
  }

  void requireEnd() const {
    if (hasAny_ && place_ != magnitudes_.size())
      throw nb::value_error("there are too many edge elements");
  }

 private:
  bool hasAny_ = false;
  Numbers<std::int32_t> magnitudes_;
  Numbers<std::uint8_t> angles_;
  std::size_t place_ = 0;
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

qcOutlines putTogether(nb::handle values, nb::handle labels, const nb::dict& problems,
                       nb::handle edges) {
  const nb::object geometries = nb::type<qcOutlines>().attr("from_wkb")(values);
  const auto& outlines = nb::cast<const qcOutlines&>(geometries);
  const auto numbers = nb::cast<Numbers<std::int64_t>>(labels);
  if (numbers.size() != outlines.size())
    throw nb::value_error("there must be a label for each feature");
  EdgeReader reader(edges);
  qcOutlinesBuilder builder;
  for (std::size_t i = 0; i < outlines.size(); ++i) {
    if (outlines.kind(i) == qcOutlineKind::eNothing) {
      const nb::object why = problems.attr("get")(i, outlines.problem(i).c_str());
      builder.failFeature(nb::cast<std::string>(why));
    } else {
      std::optional<std::uint32_t> label;
      if (numbers(i) >= 0) label = static_cast<std::uint32_t>(numbers(i));
      addFeature(builder, outlines, i, label, reader);
    }
  }
  reader.requireEnd();
  return builder.finish();
}

void setState(qcOutlines& self, const nb::tuple& state) {
  new (&self) qcOutlines(putTogether(state[0], state[1], nb::cast<nb::dict>(state[2]), state[3]));
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
                     "numpy.typing.NDArray[numpy.uint8], typing.Any] | None) -> Outlines"),
             "The outlines that take_apart() gave these of.");
  type.def("__getstate__", takeApart, nb::sig("def __getstate__(self) -> tuple[object, ...]"))
      .def("__setstate__", setState,
           nb::sig("def __setstate__(self, state: tuple[object, ...], /) -> None"));
}

}  // namespace python
