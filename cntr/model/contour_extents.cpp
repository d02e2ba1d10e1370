// SPDX-License-Identifier: MIT
//
// The contour's circles, extremal vertices and rectangles, and its image under a transform.

#include <cntr/compute/extents.h>
#include <cntr/compute/extremal.h>
#include <cntr/compute/farthest.h>
#include <cntr/contour.h>
#include <cntr/index/policy.h>
#include <cntr/model/contourcache.h>

namespace {

qcRect rectOf(const cntr::plane::Box& box) {
  return qcRect::ofCorners({box.minX, box.minY}, {box.maxX, box.maxY});
}

/// The circle between the two vertices; a default one if there are none.
qc_BareCircle circleOf(const std::vector<qcVector<2>>& points,
                       const std::optional<cntr::compute::VertexPair>& pair) {
  if (!pair) return {};
  return {(points[pair->first] + points[pair->second]) * 0.5, pair->distance * 0.5};
}

}  // namespace

qcCircle qcContour::encloseCircle(qcContourDefs::DiameterMode mode) const {
  static_cast<void>(diameter(mode));
  const qc_BareCircle& known = *cache().circles[static_cast<std::size_t>(mode)];
  return {known.center, known.radius};
}

// Remembers the whole circle, without making an object of it: that would take as long as a small
// contour's answer.
double qcContour::diameter(qcContourDefs::DiameterMode mode) const {
  if (mode != qcContourDefs::eFarthestVertexPair && mode != qcContourDefs::eFromFirstVertex) {
    throw qcContourDefs::BadParams(L"diameterMode is not one of the valid enums");
  }
  std::optional<qc_BareCircle>& known = cache().circles[static_cast<std::size_t>(mode)];
  if (!known) {
    if (mode == qcContourDefs::eFarthestVertexPair) {
      known = circleOf(points(), cntr::compute::farthestPair(path(), edgeIndex()));
    } else {
      if (points().empty()) throw qcContourDefs::EmptyContour();
      known = {points().front(), cntr::compute::radiusFromFirst(points())};
    }
  }
  return 2.0 * known->radius;
}

const cntr::index::EdgeIndex* qcContour::indexForExtremes() const {
  qc_ContourCache& known = cache();
  if (known.edgeIndex || cntr::index::wantsIndexForDirections(++known.directions)) {
    return edgeIndex();
  }
  ++known.waysTaken.scan;
  return nullptr;
}

long qcContour::extremalVertexIndex(const qcRadian& angle) const {
  checkEmptyContour();
  auto& known = cache().extremalVertices;
  if (const long* index = known.find(angle)) return *index;
  const long index = cntr::compute::extremalVertex(path(), indexForExtremes(), angle);
  known.remember(angle, index, cachedVectorSize_);
  return index;
}

qcVector<2> qcContour::extremalVertexPosition(const qcRadian& angle) const {
  const long index = extremalVertexIndex(angle);
  if (index < 0) throw qcContourDefs::BadParams();
  return points()[static_cast<std::size_t>(index)];
}

qcRect qcContour::encloseRect(const qcXform<2>& xform) const {
  checkEmptyContour();
  auto& known = cache().enclosingRects;
  if (const cntr::plane::Box* box = known.find(xform)) return rectOf(*box);
  const cntr::plane::Box box = cntr::compute::isIdentity(xform)
                                   ? cntr::compute::boundingBox(points())
                                   : cntr::compute::boundingBox(points(), xform);
  known.remember(xform, box, cachedVectorSize_);
  return rectOf(box);
}

void qcContour::map(const qcXform<2>& xform, qcContour& result) const {
  std::vector<qcVector<2>> mapped;
  mapped.reserve(points().size());
  for (const qcVector<2>& p : points()) mapped.push_back(xform * p);
  result = qcContour(mapped, isClosed(), label_);
}
