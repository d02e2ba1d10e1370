// SPDX-License-Identifier: MIT

#include <python/src/features.h>

#include <nanobind/stl/string.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <python/src/shape.h>

namespace nb = nanobind;

namespace python {

namespace {

Curve curveOf(const qcOutlines& outlines, std::size_t feature, std::size_t part, std::size_t ring) {
  const std::span<const double> coordinates = outlines.ring(feature, part, ring);
  std::vector<qcVector<2>> points;
  points.reserve(coordinates.size() / 2);
  for (std::size_t i = 0; i < coordinates.size(); i += 2)
    points.emplace_back(coordinates[i], coordinates[i + 1]);
  EdgeElements edges;
  for (const qcEdgelet& edgelet : outlines.edgelets(feature, part, ring)) {
    edges.magnitudes.push_back(edgelet.magnitude());
    edges.angles.push_back(edgelet.angle().steps());
  }
  const bool isClosed = outlines.kind(feature) == qcOutlineKind::eAreas;
  const unsigned long label = ring == 0 ? outlines.label(feature).value_or(0) : 0;
  return Curve(qcContour(points, isClosed, label), std::move(edges));
}

nb::object partOf(const qcOutlines& outlines, std::size_t feature, std::size_t part) {
  Curve outline = curveOf(outlines, feature, part, 0);
  if (!outline.isClosed()) return nb::cast(Contour(std::move(outline)));
  Part region{std::move(outline), {}};
  for (std::size_t ring = 1; ring < outlines.rings(feature, part); ++ring)
    region.holes.push_back(curveOf(outlines, feature, part, ring));
  return nb::cast(Region(std::move(region)));
}

void addCurve(qcOutlinesBuilder& builder, const Curve& curve) {
  const std::span<double> place = builder.addRing(curve.points().size());
  for (std::size_t i = 0; i < curve.points().size(); ++i) {
    place[2 * i] = curve.points()[i].x();
    place[2 * i + 1] = curve.points()[i].y();
  }
  const std::vector<std::uint16_t>& magnitudes = curve.edges.magnitudes;
  if (magnitudes.empty()) return;
  std::vector<qcEdgelet> edgelets;
  for (std::size_t i = 0; i < magnitudes.size(); ++i)
    edgelets.emplace_back(curve.points()[i], magnitudes[i], qcAngle8(curve.edges.angles[i]));
  builder.setEdgelets(edgelets);
}

}  // namespace

nb::object shapeOf(const qcOutlines& outlines, std::size_t feature) {
  nb::list shapes;
  for (std::size_t part = 0; part < outlines.parts(feature); ++part)
    if (outlines.rings(feature, part) > 0) shapes.append(partOf(outlines, feature, part));
  if (nb::len(shapes) == 0) return nb::none();
  return nb::len(shapes) == 1 ? nb::object(shapes[0]) : nb::object(std::move(shapes));
}

void addShape(qcOutlinesBuilder& builder, nb::handle object) {
  const auto& shape = nb::cast<const Shape&>(object);
  for (const Part& part : shape.parts()) {
    addCurve(builder, part.outline);
    for (const Curve& hole : part.holes) addCurve(builder, hole);
    builder.endPart();
  }
  std::optional<std::uint32_t> label;
  if (!nb::isinstance<RegionSet>(object))
    label = static_cast<std::uint32_t>(shape.parts().front().label());
  builder.endFeature(shape.isClosed() ? qcOutlineKind::eAreas : qcOutlineKind::eLines, label);
}

}  // namespace python
