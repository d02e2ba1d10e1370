// SPDX-License-Identifier: MIT
//
// Polygon moments. The inertia of a polygon is that of a fan of triangles from its centroid; each
// triangle is measured in a frame along its base, turned into the world and added to the body so
// far. The order of every operation is part of the answer.

#include <cntr/inertia.h>

#include <array>
#include <cmath>

#include <platform/core/kernels.h>

namespace {

constexpr double third = 0.3333333333333333;
constexpr double twelfth = 0.08333333333333333;
constexpr double twentyFourth = 0.041666666666666664;

const qcVector<2>& positionOf(const qcVector<2>& point) { return point; }
const qcVector<2>& positionOf(const qcEdgelet& edgelet) { return edgelet.position(); }

template <class Vertex>
double shoelaceArea(const std::vector<Vertex>& vertices) {
  if (vertices.empty()) return 0.0;
  double sum = 0.0;
  qcVector<2> previous = positionOf(vertices.back());
  for (const Vertex& vertex : vertices) {
    const qcVector<2> current = positionOf(vertex);
    sum += current.y() * previous.x() - previous.y() * current.x();
    previous = current;
  }
  return std::abs(sum * 0.5);
}

/// The centroid of the triangle (0, 0), b, c as the crossing of the medians from the origin and
/// from b. The origin is not added to c: that could only change the sign of a zero, which is lost
/// in the sums of centerOfMass().
qcVector<2> centroidFromOrigin(const qcVector<2>& b, const qcVector<2>& c) {
  return qnKernel::intersectLines({}, (b + c) * 0.5, b, c * 0.5 - b);
}

/// A symmetric matrix of second moments in the frame of a triangle's base.
struct LocalMoments {
  double area;
  qcVector<2> center;
  double along;   // integral of x^2 about the centroid, x along the base
  double across;  // integral of y^2
  double mixed;   // integral of x y
};

/// The triangle (-u, 0), (v, 0), (0, h), about its centroid.
LocalMoments baseApexMoments(double u, double v, double h) {
  LocalMoments m{};
  m.area = (u + v) * h * 0.5;
  m.center = qcVector<2>((v - u) * third, h * third);
  const double x = m.center.x();
  const double y = m.center.y();
  m.along = (u * u * u + v * v * v) * h * twelfth - x * x * m.area;
  m.across = (u + v) * (h * h * h) * twelfth - y * y * m.area;
  m.mixed = (v * v - u * u) * (h * h) * twentyFourth - y * x * m.area;
  return m;
}

struct Triangle {
  qcVector<2> a;
  qcVector<2> b;
  qcVector<2> apex;

  Triangle rotated() const { return {b, apex, a}; }
  double base() const { return a.distance(b); }

  /// True when the foot of the perpendicular from the apex lies on the base.
  bool hasFootOnBase() const {
    constexpr double slack = 1e-10;
    return !(qnKernel::distanceToLine(apex, a, b - a) <
             qnKernel::distanceToSegment(apex, a, b) - slack);
  }
};

/// The triangle turned so that the apex stands above its base. Every triangle has such a base;
/// where rounding hides it (from coordinates of about 1e6 on), the longest side serves.
Triangle onItsBase(const Triangle& given) {
  const std::array<Triangle, 3> turns{given, given.rotated(), given.rotated().rotated()};
  for (const Triangle& turn : turns) {
    if (turn.hasFootOnBase()) return turn;
  }
  const Triangle* longest = turns.data();
  for (const Triangle& turn : turns) {
    if (turn.base() > longest->base()) longest = &turn;
  }
  return *longest;
}

/// Mirrors the local frame across the base, for a clockwise triangle.
void mirror(LocalMoments& m) {
  m.area = -m.area;
  m.center = qcVector<2>(m.center.x(), -m.center.y());
  m.mixed = -m.mixed;
}

/// The matrix of local moments, rotated by the angle with cosine c and sine s.
qcMatrix<2> turned(const LocalMoments& m, double c, double s) {
  const double xx = m.along * (c * c) - 2.0 * s * m.mixed * c + m.across * (s * s);
  const double yy = m.along * (s * s) + 2.0 * s * m.mixed * c + m.across * (c * c);
  const double xy = (c * c - s * s) * m.mixed + m.along * s * c - m.across * s * c;
  return {xx, xy, xy, yy};
}

/// Inertia of one triangle, with signed area. Cosine and sine of the base's direction are x/len and
/// y/len, without a detour through the angle.
qc_InertiaData triangleInertiaData(const Triangle& given) {
  const Triangle t = onItsBase(given);
  const qcVector<2> base = t.b - t.a;
  const qcVector<2> foot = qnKernel::projectOnLine(t.apex, t.a, base);
  LocalMoments m = baseApexMoments(foot.distance(t.a), foot.distance(t.b), foot.distance(t.apex));
  if (qnKernel::cross(base, t.apex - t.a) < 0.0) mirror(m);
  const double length = base.len();
  const double c = length == 0.0 ? 1.0 : base.x() / length;
  const double s = length == 0.0 ? 0.0 : base.y() / length;
  const qcVector<2> center(foot.x() + c * m.center.x() + -s * m.center.y(),
                           foot.y() + s * m.center.x() + c * m.center.y());
  return qc_InertiaData(m.area, center, turned(m, c, s));
}

std::vector<qc_InertiaData> fanFrom(const qcVector<2>& center,
                                    const std::vector<qcVector<2>>& points) {
  std::vector<qc_InertiaData> fan;
  fan.reserve(points.size());
  qcVector<2> previous = points.back();
  for (const qcVector<2>& current : points) {
    fan.push_back(triangleInertiaData({center, previous, current}));
    previous = current;
  }
  return fan;
}

/// Adds up bodies, each once, in passes; each pass takes those that qualify, in index order.
class Accumulator {
 public:
  explicit Accumulator(const std::vector<qc_InertiaData>& parts)
      : parts_(parts), used_(parts.size(), false) {}

  template <class Qualifies>
  void pass(Qualifies qualifies) {
    for (std::size_t i = 0; i < parts_.size(); ++i) {
      if (used_[i] || !qualifies(parts_[i].area())) continue;
      sum_ = sum_ + parts_[i];
      used_[i] = true;
    }
  }
  const qc_InertiaData& sum() const { return sum_; }

 private:
  const std::vector<qc_InertiaData>& parts_;
  std::vector<bool> used_;
  qc_InertiaData sum_;
};

double meanArea(const std::vector<qc_InertiaData>& parts) {
  double sum = 0.0;
  for (const qc_InertiaData& part : parts) sum += part.area();
  return sum / static_cast<double>(parts.size());
}

/// How an operand enters a sum: its weight in the parallel-axis terms and the sign of its matrix.
struct Weights {
  double first;
  double second;
  double firstSign = 1.0;
  double secondSign = 1.0;
};

Weights weightsOf(double first, double second) {
  const double product = first * second;
  if (product > 0.0) return {std::abs(first), std::abs(second)};
  if (product < 0.0) {
    return first > second ? Weights{first, second, 1.0, -1.0} : Weights{first, second, -1.0, 1.0};
  }
  return {first, second};
}

}  // namespace

qc_InertiaData qc_InertiaData::operator+(const qc_InertiaData& other) const noexcept {
  constexpr double cancelled = 1e-16;
  if (area_ == 0.0) return other;
  if (other.area_ == 0.0) return *this;
  const double total = area_ + other.area_;
  const qcVector<2> center = std::abs(total) > cancelled
                                 ? (center_ * area_ + other.center_ * other.area_) * (1.0 / total)
                                 : qcVector<2>();
  const qcVector<2> d1 = center - center_;
  const qcVector<2> d2 = center - other.center_;
  const Weights w = weightsOf(area_, other.area_);
  const qcMatrix<2>& i1 = matrix_;
  const qcMatrix<2>& i2 = other.matrix_;
  const double xx = w.firstSign * i1.element(0, 0) + d1.x() * w.first * d1.x() +
                    w.secondSign * i2.element(0, 0) + d2.x() * w.second * d2.x();
  const double yy = d1.y() * w.first * d1.y() + w.firstSign * i1.element(1, 1) +
                    w.secondSign * i2.element(1, 1) + d2.y() * w.second * d2.y();
  const double xy = w.firstSign * i1.element(0, 1) + d1.x() * w.first * d1.y() +
                    w.secondSign * i2.element(0, 1) + d2.x() * w.second * d2.y();
  return qc_InertiaData(total, center, qcMatrix<2>(xx, xy, xy, yy));
}

double qf_Area(const std::vector<qcVector<2>>& points) { return shoelaceArea(points); }

double qf_Area(const std::vector<qcEdgelet>& edgelets) {
  return edgelets.size() > 2 ? shoelaceArea(edgelets) : 0.0;
}

qcVector<2> qf_CenterOfMass(const std::vector<qcVector<2>>& points) {
  return qnContour::centerOfMass(points);
}

qcVector<2> qf_CenterOfMass(const std::vector<qcEdgelet>& edgelets) {
  std::vector<qcVector<2>> positions;
  positions.reserve(edgelets.size());
  for (const qcEdgelet& edgelet : edgelets) positions.push_back(edgelet.position());
  return qnContour::centerOfMass(positions);
}

qcVector<2> qnContour::centerOfMass(const std::vector<qcVector<2>>& points) {
  constexpr double negligibleTriangle = 1e-15;
  constexpr double negligibleTotal = 1e-6;
  if (points.size() <= 2) return {};
  double total = 0.0;
  double weightedX = 0.0;
  double weightedY = 0.0;
  qcVector<2> previous = points.back();
  for (const qcVector<2>& current : points) {
    const double w = current.y() * previous.x() - previous.y() * current.x();
    if (std::abs(w) > negligibleTriangle) {
      const qcVector<2> centroid = centroidFromOrigin(previous, current);
      total += w;
      weightedX += centroid.x() * w;
      weightedY += centroid.y() * w;
    }
    previous = current;
  }
  if (!(std::abs(total) > negligibleTotal)) return {};
  const double reciprocal = 1.0 / total;
  return {weightedX * reciprocal, weightedY * reciprocal};
}

qc_InertiaData qf_InertiaDataPolygon(const std::vector<qcVector<2>>& points) {
  constexpr double sliver = 1e-6;
  if (points.size() < 3) return {};
  const std::vector<qc_InertiaData> fan = fanFrom(qnContour::centerOfMass(points), points);
  const double mean = meanArea(fan);
  const double threshold = mean > 0.0 ? sliver : -sliver;
  Accumulator body(fan);
  body.pass([&](double area) { return area > mean || (mean < 0.0 && area < mean); });
  body.pass([&](double area) { return area > threshold || (threshold < 0.0 && area < threshold); });
  body.pass([](double) { return true; });
  return body.sum();
}
