// SPDX-License-Identifier: MIT
//
// The contour's length, positions, nearest points, polygon, hull and ellipse: returns the answer if
// it is remembered, else computes and remembers it.

#include <cntr/compute/length.h>
#include <cntr/compute/nearest.h>
#include <cntr/compute/visitingorder.h>
#include <cntr/contour.h>
#include <cntr/ellipse.h>
#include <cntr/model/contourcache.h>
#include <cntr/model/manypoints.h>
#include <platform/core/hull.h>

double qcContour::length() const {
  if (points().size() < 2) return 0.0;
  std::optional<double>& known = cache().length;
  if (!known) known = cntr::compute::length(path());
  return *known;
}

qcVector<2> qcContour::meanPosition() const {
  checkEmptyContour();
  std::optional<qcVector<2>>& known = cache().meanPosition;
  if (!known) known = cntr::compute::meanPosition(path());
  return *known;
}

double qcContour::medianFeatureSize() const {
  checkEmptyContour();
  std::optional<double>& known = cache().medianFeatureSize;
  if (!known) known = cntr::compute::medianEdgeLength(path());
  return *known;
}

qcVector<2> qcContour::closestPoint(const qcVector<2>& p, bool vertexOnly) const {
  checkEmptyContour();
  if (vertexOnly) return points()[static_cast<std::size_t>(closestVertexIndex(p))];
  return cntr::compute::closestPoint(path(), edgeIndex(), p);
}

long qcContour::closestVertexIndex(const qcVector<2>& p) const {
  checkEmptyContour();
  return static_cast<long>(cntr::compute::closestVertex(path(), edgeIndex(), p));
}

double qcContour::distToPoint(const qcVector<2>& p, bool vertexOnly) const {
  return p.distance(closestPoint(p, vertexOnly));
}

void qcContour::closestPoint(std::span<const qcVector<2>> points, bool vertexOnly,
                             std::span<qcVector<2>> answers) const {
  cntr::model::checkSameSize(points.size(), answers.size());
  if (points.empty()) return;
  checkEmptyContour();
  const std::vector<qcVector<2>>& vertices = *points_;
  const cntr::index::EdgeIndex* const index = edgeIndex();
  if (index == nullptr && !vertexOnly) return cntr::compute::closestPoints(path(), points, answers);
  cntr::compute::NearestSearch search(path(), index);
  for (const std::size_t i : cntr::compute::visitingOrder(points)) {
    answers[i] =
        vertexOnly ? vertices[search.closestVertex(points[i])] : search.closestPoint(points[i]);
  }
}

void qcContour::distToPoint(std::span<const qcVector<2>> points, bool vertexOnly,
                            std::span<double> answers) const {
  cntr::model::checkSameSize(points.size(), answers.size());
  std::vector<qcVector<2>> nearest(points.size());
  closestPoint(points, vertexOnly, nearest);
  for (std::size_t i = 0; i < points.size(); ++i) answers[i] = points[i].distance(nearest[i]);
}

qcPolygon qcContour::polygon() const {
  std::vector<qcVector<2>> vertices = points();
  if (isClosed() && !vertices.empty()) vertices.push_back(points().front());
  return qcPolygon(std::move(vertices), qcPolygon::eEvenOdd);
}

void qcContour::convexHull(qcRegion& hull) const {
  checkEmptyContour();
  qcPtrHandle<qcRegion>& known = cache().convexHull;
  if (!known) {
    std::vector<qcVector<2>> vertices;
    qfConvexHull(points(), vertices);
    known = qcPtrHandle<qcRegion>(new qcRegion(vertices, qcContourDefs::eNoIntersectionRepair));
  }
  const qcPtrHandle<qcRegion> kept = known;
  hull = *kept;
}

void qcContour::fitEllipse(qcEllipse& ellipse, double& error) const {
  checkEmptyContour();
  std::shared_ptr<const qc_FittedEllipse>& known = cache().fittedEllipse;
  if (!known) {
    const auto fitted = std::make_shared<qc_FittedEllipse>();
    qf_FitEllipse(points(), fitted->ellipse, fitted->residual);
    known = fitted;
  }
  ellipse = known->ellipse;
  error = known->residual;
}
