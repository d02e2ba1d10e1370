// SPDX-License-Identifier: MIT
//
// The region's area, centre of mass and inertia, with and without its holes.

#include <cntr/inertia.h>
#include <cntr/model/regioncache.h>

double qcRegion::area(bool considerHoles) const {
  checkEmptyContour();
  if (considerHoles && !holes_.empty()) return areaWithHoles();
  if (area_ < 0.0) area_ = qf_Area(points());
  return area_;
}

double qcRegion::areaWithHoles() const {
  std::optional<double>& known = regionCache().areaWithHoles;
  if (known) return *known;
  double result = area(false);
  for (const auto& hole : holes_) result -= hole->area(false);
  known = result;
  return result;
}

qcVector<2> qcRegion::centerOfMass(bool considerHoles) const {
  checkEmptyContour();
  if (considerHoles && !holes_.empty()) return centerOfMassWithHoles();
  std::optional<qcVector<2>>& known = regionCache().centerWithoutHoles;
  if (!known) known = qf_CenterOfMass(points());
  return *known;
}

qcVector<2> qcRegion::centerOfMassWithHoles() const {
  if (regionCache().centerWithHolesWasGiven) return {};
  double total = area(false);
  qcVector<2> weighted = centerOfMass(false) * total;
  for (const auto& hole : holes_) {
    const double holeArea = hole->area(false);
    weighted = weighted - hole->centerOfMass(false) * holeArea;
    total -= holeArea;
  }
  regionCache().centerWithHolesWasGiven = true;
  return weighted * (1.0 / total);
}

qcMatrix<2> qcRegion::inertiaMatrix(bool considerHoles) const {
  checkEmptyContour();
  if (considerHoles && !holes_.empty()) {
    throw qcContourDefs::BadParams(L"inertiaMatrix(considerHoles) is not implemented");
  }
  std::optional<qcMatrix<2>>& known = regionCache().inertiaMatrix;
  if (!known) known = qf_InertiaDataPolygon(points()).inertiaMatrix();
  return *known;
}
