// SPDX-License-Identifier: MIT
//
// The library's archive: one list of handles to contours, regions and region sets, those with edge
// elements included.

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

Points finite(const Points& points, const std::string& place) {
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (std::isfinite(points[i].x()) && std::isfinite(points[i].y())) continue;
    throw FeatureError(place + ", vertex " + std::to_string(i) + ": not finite");
  }
  return points;
}

Points ring(const qcContour& contour, const std::string& place) {
  requireRing(contour.points(), place);
  return finite(contour.points(), place);
}

/// Edge elements stand at their vertices; their own positions are those of another plane where the
/// contour has a transform.
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

Part partOf(const qcRegion& region, const std::string& prefix) {
  Part part{ring(region, prefix + "outline"), {}, {}};
  for (const auto& hole : region.holes()) {
    const std::string place = prefix + "hole " + std::to_string(part.holes.size() + 1);
    if (!hole) throw FeatureError(place + " is missing");
    part.holes.push_back(ring(*hole, place));
  }
  part.edgelets = edgeletsOf(region, part.outline);
  return part;
}

Part partOf(const qcContour& contour) {
  if (const auto* region = dynamic_cast<const qcRegion*>(&contour)) return partOf(*region, "");
  Part part;
  part.outline = contour.isClosed() ? ring(contour, "outline")
                                    : asLine(finite(contour.points(), "line"), "line");
  part.edgelets = edgeletsOf(contour, part.outline);
  return part;
}

/// The library's label of what has none is 0.
std::optional<unsigned long> labelOf(unsigned long label) {
  return label == 0 ? std::nullopt : std::optional(label);
}

/// The label that all regions have.
std::optional<unsigned long> commonLabel(const qcRegionSet& set) {
  const unsigned long label = set.regions().front()->label();
  for (const auto& region : set.regions()) {
    if (region->label() != label) return std::nullopt;
  }
  return labelOf(label);
}

Geometry geometryOf(const qcRegionSet& set) {
  Geometry geometry{true, {}, true};
  for (const auto& region : set.regions()) {
    const std::string prefix = "part " + std::to_string(geometry.parts.size() + 1) + ", ";
    if (!region) throw FeatureError(prefix + "no region");
    geometry.parts.push_back(partOf(*region, prefix));
  }
  if (geometry.parts.empty()) throw FeatureError("a set without regions");
  return geometry;
}

Feature featureOf(const qcPersistent* shape) {
  Feature feature;
  if (const auto* set = dynamic_cast<const qcRegionSet*>(shape)) {
    feature.geometry = geometryOf(*set);
    feature.label = commonLabel(*set);
  } else if (const auto* contour = dynamic_cast<const qcContour*>(shape)) {
    const auto* region = dynamic_cast<const qcRegion*>(contour);
    feature.geometry = {region != nullptr || contour->isClosed(), {partOf(*contour)}};
    feature.label = labelOf(contour->label());
  } else {
    throw FeatureError(shape == nullptr ? "no object" : "an object without an outline");
  }
  return feature;
}

/// Shapes are looked at while their archive lives, on its thread; what is wrong with them is told
/// when the record is decoded.
std::function<Feature()> decoded(const qcPersistent* shape, std::size_t number) {
  try {
    const auto feature = std::make_shared<Feature>(featureOf(shape));
    feature->number = number;
    return [feature] { return std::move(*feature); };
  } catch (const FeatureError& error) {
    return [what = std::string(error.what())]() -> Feature { throw FeatureError(what); };
  }
}

void readShapes(qcArchive& archive, const Source& source, Sink& sink) {
  const std::size_t count = qf_TransferListHead(archive, 0);
  for (std::size_t number = 1; number <= count; ++number) {
    const std::uint64_t begin = source.position();
    const qcPersistent* shape = archive.transferShared(nullptr);
    sink.take({{number}, source.position() - begin, decoded(shape, number)});
  }
  if (count == 0) throw FileError("nothing in it");
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
