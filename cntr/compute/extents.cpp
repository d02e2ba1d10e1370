// SPDX-License-Identifier: MIT

#include <cntr/compute/extents.h>

namespace cntr::compute {

namespace {

/// How close a transform must come to the identity to be one.
constexpr double identityTolerance = 1e-15;

plane::Box enlarge(const plane::Box& box, const qcVector<2>& p) {
  return {qnKernel::lesser(box.minX, p.x()), qnKernel::lesser(box.minY, p.y()),
          qnKernel::greater(box.maxX, p.x()), qnKernel::greater(box.maxY, p.y())};
}

}  // namespace

plane::Box boundingBox(Points points) {
  plane::Box box = plane::edgeBox(points.front(), points.front());
  for (const qcVector<2>& p : points.subspan(1)) box = enlarge(box, p);
  return box;
}

plane::Box boundingBox(Points points, const qcXform<2>& xform) {
  const qcVector<2> first = xform * points.front();
  plane::Box box = plane::edgeBox(first, first);
  for (const qcVector<2>& p : points.subspan(1)) box = enlarge(box, xform * p);
  return box;
}

bool isIdentity(const qcXform<2>& xform) {
  return qfRealEq(xform.trans(), qcVector<2>(), identityTolerance) &&
         qfRealEq(xform.matrix(), qcMatrix<2>(), identityTolerance);
}

double radiusFromFirst(Points points) {
  double radius = 0.0;
  for (const qcVector<2>& p : points.subspan(1)) {
    const double distance = points.front().distance(p);
    if (distance > radius) radius = distance;
  }
  return radius;
}

}  // namespace cntr::compute
