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

bool hasZero(const plane::Box& box) {
  return box.minX == 0.0 || box.minY == 0.0 || box.maxX == 0.0 || box.maxY == 0.0;
}

plane::Box boundingBoxInOrder(Points points) {
  plane::Box box = plane::edgeBox(points.front(), points.front());
  for (const qcVector<2>& p : points.subspan(1)) box = enlarge(box, p);
  return box;
}

}  // namespace

// Two chains of comparisons side by side take half the time of one. Their order shows in the sign
// of a zero alone, the first of which counts.
plane::Box boundingBox(Points points) {
  plane::Box even = plane::edgeBox(points.front(), points.front());
  plane::Box odd = even;
  std::size_t i = 1;
  for (; i + 1 < points.size(); i += 2) {
    odd = enlarge(odd, points[i]);
    even = enlarge(even, points[i + 1]);
  }
  if (i < points.size()) odd = enlarge(odd, points[i]);
  even.add(odd);
  return hasZero(even) ? boundingBoxInOrder(points) : even;
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
