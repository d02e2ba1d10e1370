// SPDX-License-Identifier: MIT
//
// Points, lines, segments, rectangles, circles, ellipses and polygons as archivable objects. Their
// arithmetic is that of kernels.h. Loops over many vertices use the kernels on bare vectors; these
// classes are for single shapes that are handed over, remembered and stored.
//
// Every record is a version byte 0 (loading any other throws qcArchive::UnknownVersion naming the
// class, line 0), the qcPersistent record, then the values that the constructor takes, in order.

#pragma once

#include <vector>

#include <platform/core/exception.h>
#include <platform/core/kernels.h>
#include <platform/core/persistent.h>
#include <platform/core/vector.h>

/// @addtogroup plane
/// @{

/// A point of the plane as an object.
class QCPLATFORM_EXPORT qcPoint : public virtual qcPersistent {
 public:
  /// The origin.
  qcPoint() noexcept = default;
  /// At `position`.
  qcPoint(const qcVector<2>& position) noexcept : position_(position) {}

  /// Where the point is.
  const qcVector<2>& pos() const noexcept { return position_; }
  /// Converts to a vector where one is expected.
  operator const qcVector<2>&() const noexcept { return position_; }
  /// Euclidean distance to p.
  double distToPoint(const qcVector<2>& p) const noexcept { return position_.distance(p); }
  /// Exact equality of the positions.
  bool operator==(const qcPoint& other) const noexcept { return position_ == other.position_; }

 protected:
  void dispatchSerialize(qcArchive& archive) override;

 private:
  QCPLATFORM_LOCAL static qcPersistent* make();
  QCPLATFORM_LOCAL static qc_Instantiator sExemplar;

  qcVector<2> position_;
};

/// An infinite line: a point and a direction, which need not have length 1.
class QCPLATFORM_EXPORT qcLine : public virtual qcPersistent {
 public:
  /// Through the origin, with a zero direction.
  qcLine() noexcept = default;
  /// Through `point` along `direction`, both kept as given.
  qcLine(const qcVector<2>& point, const qcVector<2>& direction) noexcept
      : point_(point), direction_(direction) {}

  /// The point given.
  const qcVector<2>& pos() const noexcept { return point_; }
  /// The direction given.
  const qcVector<2>& dir() const noexcept { return direction_; }

  /// Where the lines meet. Lines whose cross product is exactly 0 give the point of this line
  /// nearest to the other's point. Never throws.
  qcPoint intersect(const qcLine& other) const noexcept {
    return qnKernel::intersectLines(point_, direction_, other.point_, other.direction_);
  }
  /// True when the sine of the angle between the lines is at most 1e-12 in absolute value. A zero
  /// direction is parallel to everything.
  bool isParallel(const qcLine& other) const noexcept {
    return qnKernel::isParallel(direction_, other.direction_);
  }
  /// The foot of the perpendicular from p; the line's point when the direction is zero.
  qcPoint proj(const qcVector<2>& p) const noexcept {
    return qnKernel::projectOnLine(p, point_, direction_);
  }
  /// Distance from p to its foot; to the line's point when the direction is zero.
  double distToPoint(const qcVector<2>& p) const noexcept {
    return qnKernel::distanceToLine(p, point_, direction_);
  }
  /// Exact equality of points and directions: two descriptions of one line can differ.
  bool operator==(const qcLine& other) const noexcept {
    return point_ == other.point_ && direction_ == other.direction_;
  }

 protected:
  void dispatchSerialize(qcArchive& archive) override;

 private:
  QCPLATFORM_LOCAL static qcPersistent* make();
  QCPLATFORM_LOCAL static qc_Instantiator sExemplar;

  qcVector<2> point_;
  qcVector<2> direction_;
};

/// A straight segment with its two ends.
class QCPLATFORM_EXPORT qcLineSeg : public virtual qcPersistent {
 public:
  /// From the origin to the origin.
  qcLineSeg() noexcept = default;
  /// From p1 to p2.
  qcLineSeg(const qcVector<2>& p1, const qcVector<2>& p2) noexcept : p1_(p1), p2_(p2) {}

  /// The start.
  const qcVector<2>& p1() const noexcept { return p1_; }
  /// The end.
  const qcVector<2>& p2() const noexcept { return p2_; }

  /// The line that carries the segment: (p1, p2 - p1).
  qcLine line() const noexcept { return {p1_, p2_ - p1_}; }
  /// Distance to the closed segment.
  double distToPoint(const qcVector<2>& p) const noexcept {
    return qnKernel::distanceToSegment(p, p1_, p2_);
  }
  /// Exact equality of both ends, in their order.
  bool operator==(const qcLineSeg& other) const noexcept {
    return p1_ == other.p1_ && p2_ == other.p2_;
  }

 protected:
  void dispatchSerialize(qcArchive& archive) override;

 private:
  QCPLATFORM_LOCAL static qcPersistent* make();
  QCPLATFORM_LOCAL static qc_Instantiator sExemplar;

  qcVector<2> p1_;
  qcVector<2> p2_;
};

/// An axis-aligned rectangle: it keeps its corners exactly as given, rather than a size that would
/// be rounded. "Upper left" is the corner of the smaller coordinates, as on a screen whose y points
/// down.
class QCPLATFORM_EXPORT qcRect : public virtual qcPersistent {
 public:
  /// Zero-size at the origin.
  qcRect() noexcept = default;
  /// From `origin` to `origin + size`; a size may be negative.
  qcRect(const qcVector<2>& origin, const qcVector<2>& size) noexcept
      : qcRect(qcPoint(origin), qcPoint(origin + size)) {}
  /// Two opposite corners, in any order.
  qcRect(const qcPoint& corner, const qcPoint& opposite) noexcept;
  /// The same from bare coordinates, in half the time.
  static qcRect ofCorners(const qcVector<2>& corner, const qcVector<2>& opposite) noexcept;

  /// The corner of the smaller coordinates.
  const qcVector<2>& ul() const noexcept { return ul_; }
  /// The corner of the larger coordinates.
  const qcVector<2>& lr() const noexcept { return lr_; }
  /// The extent along x, not negative.
  double width() const noexcept { return lr_.x() - ul_.x(); }
  /// The extent along y, not negative.
  double height() const noexcept { return lr_.y() - ul_.y(); }

  /// The smallest rectangle that contains both: componentwise minimum and maximum. A NaN coordinate
  /// of this rectangle stays; one of `other` is ignored.
  qcRect enclose(const qcRect& other) const noexcept;
  /// True for points inside and on the boundary.
  bool within(const qcVector<2>& p) const noexcept {
    return p.x() >= ul_.x() && p.x() <= lr_.x() && p.y() >= ul_.y() && p.y() <= lr_.y();
  }
  /// Exact equality of both corners.
  bool operator==(const qcRect& other) const noexcept {
    return ul_ == other.ul_ && lr_ == other.lr_;
  }

 protected:
  void dispatchSerialize(qcArchive& archive) override;

 private:
  QCPLATFORM_LOCAL static qcPersistent* make();
  QCPLATFORM_LOCAL static qc_Instantiator sExemplar;
  QCPLATFORM_LOCAL void setCorners(const qcVector<2>& a, const qcVector<2>& b) noexcept;

  qcVector<2> ul_;
  qcVector<2> lr_;
};

/// A circle: a centre and a radius.
class QCPLATFORM_EXPORT qcCircle : public virtual qcPersistent {
 public:
  /// Centre (0, 0), radius 0.
  qcCircle() noexcept = default;
  /// Centre and radius as given; the radius is not checked.
  qcCircle(const qcVector<2>& center, double radius) noexcept : center_(center), radius_(radius) {}

  /// The centre.
  const qcVector<2>& center() const noexcept { return center_; }
  /// The radius, in the unit of the coordinates.
  double radius() const noexcept { return radius_; }
  /// Exact equality of centre and radius.
  bool operator==(const qcCircle& other) const noexcept {
    return center_ == other.center_ && radius_ == other.radius_;
  }

 protected:
  void dispatchSerialize(qcArchive& archive) override;

 private:
  QCPLATFORM_LOCAL static qcPersistent* make();
  QCPLATFORM_LOCAL static qc_Instantiator sExemplar;

  qcVector<2> center_;
  double radius_ = 0.0;
};

/// An ellipse, described by its geometry record.
class QCPLATFORM_EXPORT qcEllipse : public virtual qcPersistent {
 public:
  /// Centre, semi-axes and their directions.
  struct qcEllipseGeom {
    /// The centre.
    qcVector<2> center;
    /// Semi-axis along `rotation`.
    double radius1 = 0.0;
    /// The other semi-axis, a quarter turn (plus `skew`) further.
    double radius2 = 0.0;
    /// Direction of the first semi-axis.
    qcRadian rotation;
    /// Deviation of the second semi-axis from a right angle; 0 for a principal-axes description.
    qcRadian skew;

    /// Exact equality of all numbers.
    bool operator==(const qcEllipseGeom&) const noexcept = default;
  };

  /// Centre (0, 0), both radii 0.
  qcEllipse() noexcept = default;
  /// Both radii those of the circle, angles 0.
  qcEllipse(const qcCircle& circle) noexcept;
  /// The ellipse that `geom` describes; nothing is checked or brought into another form.
  qcEllipse(const qcEllipseGeom& geom) noexcept : geom_(geom) {}

  /// The geometry record as given.
  const qcEllipseGeom& geom() const noexcept { return geom_; }
  /// Exact equality of the geometry records: two descriptions of one ellipse can differ.
  bool operator==(const qcEllipse& other) const noexcept { return geom_ == other.geom_; }

 protected:
  void dispatchSerialize(qcArchive& archive) override;

 private:
  QCPLATFORM_LOCAL static qcPersistent* make();
  QCPLATFORM_LOCAL static qc_Instantiator sExemplar;

  qcEllipseGeom geom_;
};

/// A list of vertices with the rule that says which points it fills.
class QCPLATFORM_EXPORT qcPolygon : public virtual qcPersistent {
 public:
  /// Which points a polygon that crosses itself fills.
  enum PolyFillMode { eEvenOdd = 0, eNonZero = 1 };

  /// Thrown for a vertex index outside 0 .. size() - 1.
  class QCPLATFORM_EXPORT BadIndex : public qcException {
   public:
    void suicideAndRethrow() override;
  };

  /// No vertices, even-odd.
  qcPolygon() = default;
  /// The vertices as given.
  qcPolygon(std::vector<qcVector<2>> vertices, PolyFillMode fillMode = eEvenOdd)
      : vertices_(std::move(vertices)), fillMode_(fillMode) {}

  /// The number of vertices.
  int size() const noexcept { return static_cast<int>(vertices_.size()); }
  /// Throws BadIndex when `index` is not in 0 .. size() - 1.
  const qcVector<2>& operator[](long index) const;
  /// The rule given.
  PolyFillMode fillMode() const noexcept { return fillMode_; }
  /// Equal rule and exactly equal vertices, in the same order from the same start.
  bool operator==(const qcPolygon& other) const noexcept {
    return fillMode_ == other.fillMode_ && vertices_ == other.vertices_;
  }

 protected:
  /// Record values: the fill mode as an unsigned long (0 or 1; loading any other throws
  /// qcArchive::BadFormat), then the list of vertices.
  void dispatchSerialize(qcArchive& archive) override;

 private:
  QCPLATFORM_LOCAL static qcPersistent* make();
  QCPLATFORM_LOCAL static qc_Instantiator sExemplar;

  std::vector<qcVector<2>> vertices_;
  PolyFillMode fillMode_ = eEvenOdd;
};

/// @}
