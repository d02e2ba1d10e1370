// SPDX-License-Identifier: MIT

#include <cntrformats/archive/objects.h>

#include <utility>

#include <cntr/regionst.h>
#include <cntrformats/archive/vertices.h>
#include <cntrformats/errors.h>
#include <cntrtmpl/contourt.h>
#include <cntrtmpl/regionsett.h>

namespace formats {

namespace {

using EdgeContour = qcContourT<qcEdgelet>;

Points ring(const qcContour& contour, const std::string& place) {
  return archivedRing(contour.points(), place);
}

/// Edge elements are placed at their vertices: if the contour has a transform, the element's own
/// position belongs to another plane.
std::vector<qcEdgelet> edgeletsOf(const qcContour& contour, const Points& vertices) {
  const auto* withData = dynamic_cast<const EdgeContour*>(&contour);
  if (withData == nullptr || withData->data().empty()) return {};
  const auto& data = withData->data();
  if (data.size() != contour.points().size()) {
    throw FeatureError(std::to_string(data.size()) + " edge elements for " +
                       std::to_string(contour.points().size()) + " vertices");
  }
  std::vector<qcEdgelet> edgelets;
  for (std::size_t i = 0; i < vertices.size(); ++i) {
    edgelets.emplace_back(vertices[i], data[i].magnitude(), data[i].angle());
  }
  return edgelets;
}

qcRings partOf(const qcRegion& region, const std::string& prefix) {
  qcRings part{ring(region, prefix + "outline"), {}};
  for (const auto& hole : region.holes()) {
    const std::string place = prefix + "hole " + std::to_string(part.holes.size() + 1);
    if (!hole) throw FeatureError(place + " is missing");
    part.holes.push_back(ring(*hole, place));
  }
  return part;
}

qcRings partOf(const qcContour& contour) {
  if (const auto* region = dynamic_cast<const qcRegion*>(&contour)) return partOf(*region, "");
  qcRings part;
  part.outline = contour.isClosed() ? ring(contour, "outline") : archivedLine(contour.points());
  return part;
}

/// The label that all regions share.
std::optional<Label> commonLabel(const qcRegionSet& set) {
  const unsigned long label = set.regions().front()->label();
  for (const auto& region : set.regions()) {
    if (region->label() != label) return std::nullopt;
  }
  return labelOf(label);
}

Geometry geometryOf(const qcContour& contour) {
  Geometry geometry{contour.isClosed(), false, {partOf(contour)}};
  std::vector<qcEdgelet> edgelets = edgeletsOf(contour, geometry.parts.front().outline);
  if (!edgelets.empty()) geometry.edgelets.push_back(std::move(edgelets));
  return geometry;
}

/// Archives hold no edge elements of regions.
Geometry geometryOf(const qcRegionSet& set) {
  Geometry geometry{true, true};
  for (const auto& region : set.regions()) {
    const std::string prefix = "part " + std::to_string(geometry.parts.size() + 1) + ", ";
    if (!region) throw FeatureError(prefix + "no region");
    geometry.parts.push_back(partOf(*region, prefix));
  }
  if (geometry.parts.empty()) throw FeatureError("a set without regions");
  return geometry;
}

}  // namespace

void readObject(const qcPersistent* object, Feature& feature) {
  if (const auto* set = dynamic_cast<const qcRegionSet*>(object)) {
    feature.geometry = geometryOf(*set);
    feature.label = commonLabel(*set);
  } else if (const auto* contour = dynamic_cast<const qcContour*>(object)) {
    feature.geometry = geometryOf(*contour);
    feature.label = labelOf(contour->label());
  } else {
    throw FeatureError(object == nullptr ? "no object" : "an object without an outline");
  }
}

}  // namespace formats
