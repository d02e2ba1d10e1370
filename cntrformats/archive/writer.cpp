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

void setLabel(qcContour& contour, const Feature& feature) {
  contour.label(feature.label.value_or(0));
}

Shape contourOf(const Feature& feature, const Part& part) {
  const bool closed = feature.geometry.closed;
  const qcPtrHandle<qcContour> contour(part.edgelets.empty()
                                           ? new qcContour(part.outline, closed, 0)
                                           : new EdgeContour(part.edgelets));
  contour->isClosed(closed);
  setLabel(*contour, feature);
  return {contour};
}

qcPtrHandle<qcRegion> regionOf(const Feature& feature, const Part& part) {
  qcPtrHandle<qcRegion> region = makeRegion(part, true);
  setLabel(*region, feature);
  return region;
}

Shape setOf(const Feature& feature) {
  std::vector<qcPtrHandle<qcRegion>> regions;
  regions.reserve(feature.geometry.parts.size());
  for (const Part& part : feature.geometry.parts) regions.push_back(regionOf(feature, part));
  return {{},
          qcPtrHandle<qcRegionSet>(new qcRegionSet(regions, qcContourDefs::eNoIntersectionRepair))};
}

std::vector<Shape> shapesOf(const Feature& feature) {
  const auto& [closed, parts, multiple] = feature.geometry;
  if (!closed) {
    std::vector<Shape> lines;
    lines.reserve(parts.size());
    for (const Part& part : parts) lines.push_back(contourOf(feature, part));
    return lines;
  }
  const Part& first = parts.front();
  if (!first.edgelets.empty() && first.holes.empty()) return {contourOf(feature, first)};
  if (parts.size() > 1 || multiple) return {setOf(feature)};
  return {{regionOf(feature, first)}};
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

  /// The list begins with its length, so nothing can be written earlier.
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
  Losses losses =
      lossesOf(feature, {feature.label != 0U, false, geometry.parts.front().holes.empty()});
  if (!geometry.closed && geometry.multiple) losses.push_back("lines that belong together");
  return losses;
}

}  // namespace formats
