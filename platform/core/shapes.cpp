// SPDX-License-Identifier: MIT
//
// The shape classes: factories, records, and functions too long for their header. The frame of the
// records is in record.h.

#include <platform/core/shapes.h>

#include <platform/core/record.h>

qc_Instantiator qcPoint::sExemplar(typeid(qcPoint), &qcPoint::make);
qc_Instantiator qcLine::sExemplar(typeid(qcLine), &qcLine::make);
qc_Instantiator qcLineSeg::sExemplar(typeid(qcLineSeg), &qcLineSeg::make);
qc_Instantiator qcRect::sExemplar(typeid(qcRect), &qcRect::make);
qc_Instantiator qcCircle::sExemplar(typeid(qcCircle), &qcCircle::make);
qc_Instantiator qcEllipse::sExemplar(typeid(qcEllipse), &qcEllipse::make);
qc_Instantiator qcPolygon::sExemplar(typeid(qcPolygon), &qcPolygon::make);

qcPersistent* qcPoint::make() { return new qcPoint; }
qcPersistent* qcLine::make() { return new qcLine; }
qcPersistent* qcLineSeg::make() { return new qcLineSeg; }
qcPersistent* qcRect::make() { return new qcRect; }
qcPersistent* qcCircle::make() { return new qcCircle; }
qcPersistent* qcEllipse::make() { return new qcEllipse; }
qcPersistent* qcPolygon::make() { return new qcPolygon; }

void qcPoint::dispatchSerialize(qcArchive& archive) {
  qc_Record::transfer(archive, *this, "qcPoint", position_);
}

void qcLine::dispatchSerialize(qcArchive& archive) {
  qc_Record::transfer(archive, *this, "qcLine", point_, direction_);
}

void qcLineSeg::dispatchSerialize(qcArchive& archive) {
  qc_Record::transfer(archive, *this, "qcLineSeg", p1_, p2_);
}

qcRect::qcRect(const qcPoint& corner, const qcPoint& opposite) noexcept {
  setCorners(corner.pos(), opposite.pos());
}

qcRect qcRect::ofCorners(const qcVector<2>& corner, const qcVector<2>& opposite) noexcept {
  qcRect rect;
  rect.setCorners(corner, opposite);
  return rect;
}

void qcRect::setCorners(const qcVector<2>& a, const qcVector<2>& b) noexcept {
  const bool swapX = b.x() < a.x();
  const bool swapY = b.y() < a.y();
  ul_ = qcVector<2>(swapX ? b.x() : a.x(), swapY ? b.y() : a.y());
  lr_ = qcVector<2>(swapX ? a.x() : b.x(), swapY ? a.y() : b.y());
}

qcRect qcRect::enclose(const qcRect& other) const noexcept {
  using qnKernel::greater;
  using qnKernel::lesser;
  qcRect both;
  both.ul_ = qcVector<2>(lesser(ul_.x(), other.ul_.x()), lesser(ul_.y(), other.ul_.y()));
  both.lr_ = qcVector<2>(greater(lr_.x(), other.lr_.x()), greater(lr_.y(), other.lr_.y()));
  return both;
}

void qcRect::dispatchSerialize(qcArchive& archive) {
  qc_Record::transfer(archive, *this, "qcRect", ul_, lr_);
}

void qcCircle::dispatchSerialize(qcArchive& archive) {
  qc_Record::transfer(archive, *this, "qcCircle", center_, radius_);
}

qcEllipse::qcEllipse(const qcCircle& circle) noexcept
    : geom_{circle.center(), circle.radius(), circle.radius(), qcRadian(), qcRadian()} {}

void qcEllipse::dispatchSerialize(qcArchive& archive) {
  qc_Record::transfer(archive, *this, "qcEllipse", geom_.center, geom_.radius1, geom_.radius2,
                      geom_.rotation, geom_.skew);
}

const qcVector<2>& qcPolygon::operator[](long index) const {
  if (index < 0 || index >= static_cast<long>(vertices_.size())) throw BadIndex();
  return vertices_[static_cast<std::size_t>(index)];
}

void qcPolygon::BadIndex::suicideAndRethrow() { qf_DeleteAndThrowCopy(this); }

/// The fill mode as an unsigned long; anything but 0 and 1 is refused.
static qcArchive& operator||(qcArchive& archive, qcPolygon::PolyFillMode& fillMode) {
  unsigned long value = fillMode;
  archive || value;
  if (value > qcPolygon::eNonZero) throw qcArchive::BadFormat(L"unknown polygon fill mode");
  if (archive.isLoading()) fillMode = static_cast<qcPolygon::PolyFillMode>(value);
  return archive;
}

void qcPolygon::dispatchSerialize(qcArchive& archive) {
  qc_Record::transfer(archive, *this, "qcPolygon", fillMode_, vertices_);
}
