// SPDX-License-Identifier: MIT

#include <cntr/compute/extents.h>

#include <cmath>
#include <limits>

namespace cntr::compute {

namespace {

/// How close a direction must come to an axis, and a transform to the identity.
constexpr double axisTolerance = 1e-15;

template <class Position>
long lastAlong(Points points, Position position) {
  double best = std::numeric_limits<double>::lowest();
  long index = -1;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const double value = position(points[i]);
    if (value > best) {
      best = value;
      index = static_cast<long>(i);
    }
  }
  return index;
}

index::Box enlarge(const index::Box& box, const qcVector<2>& p) {
  return {qnKernel::lesser(box.minX, p.x()), qnKernel::lesser(box.minY, p.y()),
          qnKernel::greater(box.maxX, p.x()), qnKernel::greater(box.maxY, p.y())};
}

}  // namespace

long extremalVertex(Points points, const qcRadian& angle) {
  const double cosine = std::cos(angle.toDouble());
  const double sine = std::sin(angle.toDouble());
  const auto along = [direction = qcVector<2>(cosine, sine)](double x, double y) {
    return qfRealEq(direction, qcVector<2>(x, y), axisTolerance);
  };
  if (along(1, 0)) return lastAlong(points, [](const qcVector<2>& p) { return p.x(); });
  if (along(-1, 0)) return lastAlong(points, [](const qcVector<2>& p) { return -p.x(); });
  if (along(0, 1)) return lastAlong(points, [](const qcVector<2>& p) { return p.y(); });
  if (along(0, -1)) return lastAlong(points, [](const qcVector<2>& p) { return -p.y(); });
  return lastAlong(points, [=](const qcVector<2>& p) { return sine * p.y() + cosine * p.x(); });
}

index::Box boundingBox(Points points) {
  index::Box box = index::edgeBox(points.front(), points.front());
  for (const qcVector<2>& p : points.subspan(1)) box = enlarge(box, p);
  return box;
}

index::Box boundingBox(Points points, const qcXform<2>& xform) {
  const qcVector<2> first = xform * points.front();
  index::Box box = index::edgeBox(first, first);
  for (const qcVector<2>& p : points.subspan(1)) box = enlarge(box, xform * p);
  return box;
}

bool isIdentity(const qcXform<2>& xform) {
  return qfRealEq(xform.trans(), qcVector<2>(), axisTolerance) &&
         qfRealEq(xform.matrix(), qcMatrix<2>(), axisTolerance);
}

std::optional<VertexPair> farthestPair(Points points) {
  std::optional<VertexPair> best;
  double largest = 0.0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    for (std::size_t j = i + 1; j < points.size(); ++j) {
      const double distance = points[i].distance(points[j]);
      if (distance > largest) {
        largest = distance;
        best = {i, j, distance};
      }
    }
  }
  return best;
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
