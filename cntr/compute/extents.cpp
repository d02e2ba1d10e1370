// SPDX-License-Identifier: MIT

#include <cntr/compute/extents.h>

#include <cntr/plane/lanes.h>

namespace cntr::compute {

namespace {

/// How close a transform must be to the identity to count as the identity.
constexpr double identityTolerance = 1e-15;

plane::Box enlarge(const plane::Box& box, const qcVector<2>& p) {
  return {qnKernel::lesser(box.minX, p.x()), qnKernel::lesser(box.minY, p.y()),
          qnKernel::greater(box.maxX, p.x()), qnKernel::greater(box.maxY, p.y())};
}

bool hasZero(const plane::Box& box) {
  return box.minX == 0.0 || box.minY == 0.0 || box.maxX == 0.0 || box.maxY == 0.0;
}

/// The low and the high corner of a growing box: x and y are compared at once.
struct Corners {
  plane::Pair low;
  plane::Pair high;

  /// Gives each coordinate the result of enlarge().
  void add(const qcVector<2>& p) noexcept {
    const plane::Pair at{p.x(), p.y()};
    low = at < low ? at : low;
    high = at > high ? at : high;
  }
  plane::Box box() const noexcept { return {low[0], low[1], high[0], high[1]}; }
};

Corners cornersAt(const qcVector<2>& p) {
  const plane::Pair at{p.x(), p.y()};
  return {at, at};
}

plane::Box boundingBoxInOrder(Points points) {
  Corners corners = cornersAt(points.front());
  for (const qcVector<2>& p : points.subspan(1)) corners.add(p);
  return corners.box();
}

}  // namespace

// Two chains of comparisons side by side take half the time of one. Their order affects only the
// sign of a zero: the first zero counts.
plane::Box boundingBox(Points points) {
  Corners even = cornersAt(points.front());
  Corners odd = even;
  std::size_t i = 1;
  for (; i + 1 < points.size(); i += 2) {
    odd.add(points[i]);
    even.add(points[i + 1]);
  }
  if (i < points.size()) odd.add(points[i]);
  plane::Box box = even.box();
  box.add(odd.box());
  return hasZero(box) ? boundingBoxInOrder(points) : box;
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
