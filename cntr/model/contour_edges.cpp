// SPDX-License-Identifier: MIT
//
// The contour's edges: crossings with segments and contours, self-crossing, vertices near a point.

#include <cntr/compute/crossings.h>
#include <cntr/compute/extents.h>
#include <cntr/compute/selfcrossing.h>
#include <cntr/contour.h>
#include <cntr/index/policy.h>
#include <cntr/model/contourcache.h>

namespace {

qc_EdgeShapes shapesOf(const cntr::plane::Path& path) {
  qc_EdgeShapes shapes;
  shapes.segments.reserve(path.edgeCount());
  shapes.isValid.reserve(path.edgeCount());
  cntr::plane::forEachEdge(path, [&](const qcVector<2>& from, const qcVector<2>& to) {
    const bool isValid = !cntr::plane::isDegenerate({from, to});
    shapes.segments.push_back(isValid ? qcLineSeg(from, to) : qcLineSeg());
    shapes.isValid.push_back(isValid);
  });
  return shapes;
}

}  // namespace

cntr::plane::Path qcContour::path() const { return {points(), isClosed()}; }

const cntr::index::EdgeIndex* qcContour::edgeIndex() const {
  const cntr::plane::Path edges = path();
  if (!cntr::index::wantsEdgeIndex(edges.edgeCount())) {
    if (cache_) ++cache_->waysTaken.scan;
    return nullptr;
  }
  qc_ContourCache& known = cache();
  if (!known.edgeIndex) known.edgeIndex = std::make_shared<const cntr::index::EdgeIndex>(edges);
  ++known.waysTaken.index;
  return known.edgeIndex.get();
}

const cntr::plane::Box& qcContour::bounds() const {
  std::optional<cntr::plane::Box>& known = cache().bounds;
  if (!known) known = cntr::compute::boundingBox(points());
  return *known;
}

cntr::compute::CrossingTarget qcContour::crossingTarget() const {
  return {path(), bounds(), edgeIndex()};
}

void qcContour::computeLineSegs() const {
  std::shared_ptr<const qc_EdgeShapes>& known = cache().edgeShapes;
  if (!known) known = std::make_shared<const qc_EdgeShapes>(shapesOf(path()));
}

const std::vector<qcLineSeg>& qcContour::lineSegs() const {
  computeLineSegs();
  return cache().edgeShapes->segments;
}

const std::vector<bool>& qcContour::validLine() const {
  computeLineSegs();
  return cache().edgeShapes->isValid;
}

std::vector<qcVector<2>> qcContour::intersections(const qcLineSeg& segment,
                                                  std::vector<int>& segIndices,
                                                  bool countEndpointTouches) const {
  checkEmptyContour();
  segIndices.clear();
  std::vector<qcVector<2>> points;
  for (const auto& crossing : cntr::compute::crossings(crossingTarget(), segment.p1(), segment.p2(),
                                                       countEndpointTouches)) {
    points.push_back(crossing.point);
    segIndices.push_back(static_cast<int>(crossing.edge));
  }
  return points;
}

std::vector<qcVector<2>> qcContour::intersections(const qcLineSeg& segment,
                                                  bool countEndpointTouches) const {
  std::vector<int> segIndices;
  return intersections(segment, segIndices, countEndpointTouches);
}

std::vector<qcVector<2>> qcContour::intersections(const qcContour& other) const {
  checkEmptyContour();
  const cntr::compute::CrossingTarget target = crossingTarget();
  std::vector<qcVector<2>> points;
  cntr::plane::forEachEdge(other.path(), [&](const qcVector<2>& from, const qcVector<2>& to) {
    for (const auto& crossing : cntr::compute::crossings(target, from, to, true)) {
      points.push_back(crossing.point);
    }
  });
  return points;
}

bool qcContour::isCrossedBy(const qcLineSeg& segment, bool countEndpointTouches) const {
  checkEmptyContour();
  return cntr::compute::isCrossed(crossingTarget(), {segment.p1(), segment.p2()},
                                  countEndpointTouches);
}

bool qcContour::isSelfIntersecting() const {
  if (points().size() < 2) return false;
  std::optional<bool>& known = cache().isSelfIntersecting;
  if (!known) {
    known = !cntr::compute::isClearStar(path(), bounds()) &&
            cntr::compute::crossesItself(crossingTarget());
  }
  return *known;
}

std::vector<int> qcContour::vertexIndex(const qcVector<2>& point, double tolerance) const {
  checkEmptyContour();
  if (tolerance != tolerance) return {};
  qc_ContourCache& known = cache();
  auto& grids = known.vertexGrids;
  for (const auto& grid : grids) {
    if (grid->tolerance() != tolerance) continue;
    ++known.waysTaken.vertexGrid;
    return grid->near(points(), point);
  }
  grids.push_back(std::make_shared<const cntr::index::VertexGrid>(points(), tolerance));
  return grids.back()->near(points(), point);
}
