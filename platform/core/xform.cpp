// SPDX-License-Identifier: MIT
//
// The inverse of a transform value, and the transform objects with their records.

#include <platform/core/xform.h>

#include <platform/core/record.h>

namespace {

using Handle = qcPtrHandle<qc2XformBase>;

}  // namespace

qcXform<2> qcXform<2>::inverse() const {
  const qcMatrix<2> inverted = matrix_.inverse();
  return {inverted, -(inverted * translation_)};
}

qc_Instantiator qc2XformLinear::sExemplar(typeid(qc2XformLinear), &qc2XformLinear::make);

qcPersistent* qc2XformLinear::make() { return new qc2XformLinear; }

void* qc2XformLinear::operator new(std::size_t size) { return ::operator new(size); }

void qc2XformLinear::operator delete(void* memory) noexcept { ::operator delete(memory); }

qcVector<2> qc2XformLinear::mapPoint(const qcVector<2>& point) const { return xform_ * point; }

bool qc2XformLinear::isLinear() const { return true; }

qcXform<2> qc2XformLinear::linearXform() const { return xform_; }

Handle qc2XformLinear::clone() const { return Handle(new qc2XformLinear(*this)); }

Handle qc2XformLinear::composeBase(const qc2XformBase& other) const {
  return Handle(new qc2XformLinear(xform_ * other.linearXform()));
}

Handle qc2XformLinear::inverseBase() const { return Handle(new qc2XformLinear(xform_.inverse())); }

void qc2XformLinear::dispatchSerialize(qcArchive& archive) {
  qc_Record::transferOnce(archive, *this, 0,
                          [&](unsigned char version) { serialize_(archive, version); });
}

void qc2XformLinear::serialize_(qcArchive& archive, unsigned char version) {
  qc_Record::checkVersion(version, "qc2XformLinear");
  qc_Record::transferBody(archive, *this, xform_);
}

qc_Instantiator qc2Rigid::sExemplar(typeid(qc2Rigid), &qc2Rigid::make);

qcPersistent* qc2Rigid::make() { return new qc2Rigid; }

qc2Rigid::qc2Rigid(const qcDegree& angle, const qcVector<2>& translation) noexcept
    : angle_(angle), xform_(qcMatrix<2>(angle, angle, 1.0, 1.0), translation) {}

qcVector<2> qc2Rigid::mapPoint(const qcVector<2>& point) const { return xform_ * point; }

bool qc2Rigid::isLinear() const { return true; }

qcXform<2> qc2Rigid::linearXform() const { return xform_; }

Handle qc2Rigid::clone() const { return Handle(new qc2Rigid(*this)); }

Handle qc2Rigid::composeBase(const qc2XformBase& other) const {
  if (const auto* rigid = dynamic_cast<const qc2Rigid*>(&other)) {
    return Handle(new qc2Rigid(angle_ + rigid->angle_, xform_ * rigid->trans()));
  }
  return Handle(new qc2XformLinear(xform_ * other.linearXform()));
}

Handle qc2Rigid::inverseBase() const {
  const qcMatrix<2> back(-angle_, -angle_, 1.0, 1.0);
  return Handle(new qc2Rigid(-angle_, -(back * trans())));
}

void qc2Rigid::dispatchSerialize(qcArchive& archive) {
  qc_Record::transferOnce(archive, *this, 0,
                          [&](unsigned char version) { serialize_(archive, version); });
}

void qc2Rigid::serialize_(qcArchive& archive, unsigned char version) {
  qc_Record::checkVersion(version, "qc2Rigid");
  qcDegree angle = angle_;
  qcVector<2> translation = trans();
  qc_Record::transferBody(archive, *this, angle, translation);
  if (archive.isLoading()) *this = qc2Rigid(angle, translation);
}
