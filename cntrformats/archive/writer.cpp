// SPDX-License-Identifier: MIT
//
// The library's archive: one list of handles. A line or an outline with edge elements becomes a
// contour, another outline a region, and several outlines a set of regions.

#include <ostream>
#include <vector>

#include <cntrformats/archive/archive.h>
#include <cntrformats/shapes.h>
#include <cntrtmpl/contourt.h>
#include <platform/core/archive.h>

namespace formats {

namespace {

using EdgeContour = qcContourT<qcEdgelet>;

/// 0 means no label.
unsigned long labelOf(const Feature& feature) {
  const auto* const number = feature.label ? std::get_if<unsigned long>(&*feature.label) : nullptr;
  return number == nullptr ? 0 : *number;
}

void setLabel(qcContour& contour, const Feature& feature) { contour.label(labelOf(feature)); }

bool hasEdgelets(const Geometry& geometry, std::size_t part) {
  return !geometry.edgelets.empty() && !geometry.edgelets[part].empty();
}

Shape contourOf(const Feature& feature, std::size_t part) {
  const auto& [closed, multiple, parts, edgelets] = feature.geometry;
  const qcPtrHandle<qcContour> contour =
      hasEdgelets(feature.geometry, part) ? qcPtrHandle<qcContour>(new EdgeContour(edgelets[part]))
                                          : makeContour(parts[part].outline, closed);
  contour->isClosed(closed);
  setLabel(*contour, feature);
  return {contour};
}

qcPtrHandle<qcRegion> regionOf(const Feature& feature, const qcRings& part) {
  qcPtrHandle<qcRegion> region = makeRegion(part, true);
  setLabel(*region, feature);
  return region;
}

Shape setOf(const Feature& feature) {
  const auto region = [&](const qcRings& part) { return regionOf(feature, part); };
  return {{},
          qcPtrHandle<qcRegionSet>(new qcRegionSet(makeRegionSet(feature.geometry.parts, region)))};
}

/// True for lines, and for a single outline without holes that has edge elements.
bool holdsEdgelets(const Geometry& geometry) {
  if (!geometry.closed) return true;
  return geometry.parts.size() == 1 && !geometry.multiple && hasEdgelets(geometry, 0) &&
         geometry.parts.front().holes.empty();
}

std::vector<Shape> shapesOf(const Feature& feature) {
  const auto& [closed, multiple, parts, edgelets] = feature.geometry;
  if (!closed) {
    std::vector<Shape> lines;
    lines.reserve(parts.size());
    for (std::size_t k = 0; k < parts.size(); ++k) lines.push_back(contourOf(feature, k));
    return lines;
  }
  if (parts.size() > 1 || multiple) return {setOf(feature)};
  if (holdsEdgelets(feature.geometry)) return {contourOf(feature, 0)};
  return {{regionOf(feature, parts.front())}};
}

void store(qcArchive& archive, Shape& shape) {
  if (shape.set) {
    archive || shape.set;
  } else {
    archive || shape.contour;
  }
}

class ArchiveWriter : public FeatureWriter {
 public:
  explicit ArchiveWriter(std::ostream& out) : out_(out) {}

  Prepared prepare(Feature feature, bool isLone) const override {
    return {"", shapesOf(feature), isLone};
  }

  void write(Prepared prepared) override {
    shapes_.insert(shapes_.end(), prepared.shapes.begin(), prepared.shapes.end());
  }

  /// The list begins with its length, so that nothing can be written earlier.
  void finish() override {
    try {
      qcStreamArchive archive(out_);
      qf_TransferListHead(archive, shapes_.size());
      for (Shape& shape : shapes_) store(archive, shape);
    } catch (const qcArchive::WriteFailed&) {
      out_.setstate(std::ios::badbit);
    }
  }

 private:
  std::ostream& out_;
  std::vector<Shape> shapes_;
};

}  // namespace

std::unique_ptr<FeatureWriter> makeArchiveWriter(std::ostream& out, Rings) {
  return std::make_unique<ArchiveWriter>(out);
}

Losses lossesInArchive(const Feature& feature) {
  const Geometry& geometry = feature.geometry;
  Losses losses = lossesOf(feature, {labelOf(feature) != 0, false, holdsEdgelets(geometry), false});
  if (!geometry.closed && geometry.multiple) losses.push_back("lines that belong together");
  return losses;
}

}  // namespace formats
