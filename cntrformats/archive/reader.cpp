// SPDX-License-Identifier: MIT
//
// The library's archive: one list of handles to contours, regions and region sets, those with edge
// elements included.

#include <algorithm>
#include <cmath>
#include <istream>
#include <memory>

#include <cntr/regionst.h>
#include <cntrformats/archive/archive.h>
#include <cntrformats/errors.h>
#include <cntrformats/rings.h>
#include <cntrtmpl/contourt.h>
#include <cntrtmpl/regionsett.h>
#include <platform/core/archive.h>

namespace formats {

namespace {

using EdgeContour = qcContourT<qcEdgelet>;

bool isFinite(const qcVector<2>& point) {
  return std::isfinite(point.x()) && std::isfinite(point.y());
}

/// A product with 0 is NaN where a coordinate is not finite: two sums tell in a fraction of the
/// time that it takes to look at each coordinate.
bool areFinite(const Points& points) {
  double x = 0.0;
  double y = 0.0;
  for (const qcVector<2>& point : points) {
    x += point.x() * 0.0;
    y += point.y() * 0.0;
  }
  return x == 0.0 && y == 0.0;
}

void requireFinite(const Points& points, const std::string& place) {
  if (areFinite(points)) return;
  const auto first = std::find_if_not(points.begin(), points.end(), isFinite);
  throw FeatureError(place + ", vertex " + std::to_string(first - points.begin()) + ": not finite");
}

Points ring(const qcContour& contour, const std::string& place) {
  requireRing(contour.points(), place);
  requireFinite(contour.points(), place);
  return contour.points();
}

Points line(const qcContour& contour) {
  requireFinite(contour.points(), "line");
  return asLine(contour.points(), "line");
}

/// An edge element is placed at its vertex: where the contour has a transform, the element's own
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
  part.outline = contour.isClosed() ? ring(contour, "outline") : line(contour);
  return part;
}

/// In the library the label 0 stands for no label.
std::optional<Label> labelOf(unsigned long label) {
  return label == 0 ? std::nullopt : std::optional<Label>(label);
}

/// The label that all regions have.
std::optional<Label> commonLabel(const qcRegionSet& set) {
  const unsigned long label = set.regions().front()->label();
  for (const auto& region : set.regions()) {
    if (region->label() != label) return std::nullopt;
  }
  return labelOf(label);
}

/// No lists at all rather than empty ones alone.
void setEdgelets(Geometry& geometry, std::vector<std::vector<qcEdgelet>> lists) {
  const bool isAny = std::any_of(lists.begin(), lists.end(),
                                 [](const auto& edgelets) { return !edgelets.empty(); });
  if (isAny) geometry.edgelets = std::move(lists);
}

Geometry geometryOf(const qcContour& contour) {
  const bool isRegion = dynamic_cast<const qcRegion*>(&contour) != nullptr;
  Geometry geometry{isRegion || contour.isClosed(), false, {partOf(contour)}};
  setEdgelets(geometry, {edgeletsOf(contour, geometry.parts.front().outline)});
  return geometry;
}

Geometry geometryOf(const qcRegionSet& set) {
  Geometry geometry{true, true};
  std::vector<std::vector<qcEdgelet>> edgelets;
  for (const auto& region : set.regions()) {
    const std::string prefix = "part " + std::to_string(geometry.parts.size() + 1) + ", ";
    if (!region) throw FeatureError(prefix + "no region");
    geometry.parts.push_back(partOf(*region, prefix));
    edgelets.push_back(edgeletsOf(*region, geometry.parts.back().outline));
  }
  if (geometry.parts.empty()) throw FeatureError("a set without regions");
  setEdgelets(geometry, std::move(edgelets));
  return geometry;
}

void readShape(const qcPersistent* shape, Feature& feature) {
  if (const auto* set = dynamic_cast<const qcRegionSet*>(shape)) {
    feature.geometry = geometryOf(*set);
    feature.label = commonLabel(*set);
  } else if (const auto* contour = dynamic_cast<const qcContour*>(shape)) {
    feature.geometry = geometryOf(*contour);
    feature.label = labelOf(contour->label());
  } else {
    throw FeatureError(shape == nullptr ? "no object" : "an object without an outline");
  }
}

class ReadShape : public Undecoded {
 public:
  explicit ReadShape(Feature&& feature) : feature_(std::move(feature)) {}
  Feature decode(std::size_t /*index*/) override { return std::move(feature_); }

 private:
  Feature feature_;
};

/// Shapes are looked at while their archive lives, on its thread.
void readShapes(qcArchive& archive, const Source& source, Sink& sink) {
  const std::size_t count = qf_TransferListHead(archive, 0);
  for (std::size_t number = 1; number <= count; ++number) {
    const std::uint64_t begin = source.position();
    const qcPersistent* shape = archive.transferShared(nullptr);
    Feature feature = decoded(number, [shape](Feature& made) { readShape(shape, made); });
    sink.take(
        {{number}, source.position() - begin, std::make_shared<ReadShape>(std::move(feature))});
  }
}

}  // namespace

void readArchive(Source& source, Keep /*keep*/, Sink& sink) {
  std::istream bytes(&source);
  try {
    qcStreamArchive archive(bytes);
    readShapes(archive, source, sink);
  } catch (const qcException& error) {
    throw FileError(std::string("not an archive of shapes: ") + error.what());
  }
  if (source.sgetc() != std::char_traits<char>::eof()) {
    throw FileError("goes on behind its list of shapes");
  }
}

}  // namespace formats
