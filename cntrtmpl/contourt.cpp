// SPDX-License-Identifier: MIT
//
// The contour with data, instantiated for edge elements: the two hooks that keep data and points in
// step, and the archive record.

#include <cntrtmpl/contourt.h>

#include <platform/core/record.h>

namespace {

qcPtrHandle_const<qc2XformBase> ownTransform(const qcPtrHandle_const<qc2XformBase>& given) {
  if (given) return given->clone();
  return qcPtrHandle_const<qc2XformBase>(new qc2XformLinear);
}

}  // namespace

template <class Datum>
qcContourT<Datum>::Instantiator::Instantiator()
    : qc_Instantiator(typeid(qcContourT), &qcContourT::make) {}

template <class Datum>
typename qcContourT<Datum>::Instantiator qcContourT<Datum>::sExemplar;

template <class Datum>
qcPersistent* qcContourT<Datum>::make() {
  return new qcContourT;
}

template <class Datum>
qcContourT<Datum>::qcContourT() : qcContour({}, true, 0) {}

template <class Datum>
qcContourT<Datum>::qcContourT(const std::vector<Datum>& data)
    : qcContourT(data, qcPtrHandle_const<qc2XformBase>()) {}

template <class Datum>
qcContourT<Datum>::qcContourT(const std::vector<Datum>& data,
                              const qcPtrHandle_const<qc2XformBase>& dataFromPoints)
    : qcContour({}, true, 0), dataFromPoints_(ownTransform(dataFromPoints)), data_(data) {
  qcContourT::makePointsConsistentWithData();
}

template <class Datum>
qcContourT<Datum>::qcContourT(const qcContourT& other)
    : qcPersistent(other),
      qcRepBase(other),
      qcContour(other),
      dataFromPoints_(other.dataFromPoints_),
      data_(other.data_),
      pointsFromData_(other.pointsFromData_) {}

template <class Datum>
qcContourT<Datum>& qcContourT<Datum>::operator=(const qcContourT& other) {
  if (this == &other) return *this;
  DataAndTransform taken = other.dataAndTransform();
  qcContour::operator=(other);
  take(std::move(taken));
  return *this;
}

template <class Datum>
void qcContourT<Datum>::take(DataAndTransform taken) noexcept {
  data_.swap(taken.data);
  dataFromPoints_ = std::move(taken.dataFromPoints);
  pointsFromData_ = std::move(taken.pointsFromData);
}

template <class Datum>
bool qcContourT<Datum>::operator==(const qcContourT& other) const {
  return points() == other.points() && dataFromPoints_ == other.dataFromPoints_;
}

template <class Datum>
void qcContourT<Datum>::data(const std::vector<Datum>& data) {
  // Copy first: `data` may be the contour's own.
  std::vector<Datum> exchanged = data;
  data_.swap(exchanged);
  try {
    makePointsConsistentWithData();
  } catch (...) {
    data_.swap(exchanged);
    throw;
  }
}

template <class Datum>
Datum qcContourT<Datum>::datum(const qcVector<2>& point) const {
  return Datum(dataFromPoints_->mapPoint(point), 0, qcAngle8(0));
}

template <class Datum>
qcVector<2> qcContourT<Datum>::point(const Datum& datum) const {
  if (!pointsFromData_) pointsFromData_ = dataFromPoints_->inverseBase();
  return pointsFromData_->mapPoint(datum.position());
}

template <class Datum>
void qcContourT<Datum>::convexHullT(qcRegionT<Datum>& /*hull*/) const {
  throw qcPel::BadWindow();
}

template <class Datum>
void qcContourT<Datum>::mapT(const qcXform<2>& /*xform*/, qcContourT& /*result*/) const {
  throw qcPel::BadWindow();
}

template <class Datum>
void qcContourT<Datum>::makeDataConsistentWithPoints() {
  cleanCacheInfo();
  std::vector<Datum> rebuilt;
  rebuilt.reserve(points().size());
  for (const qcVector<2>& p : points()) rebuilt.push_back(datum(p));
  data_.swap(rebuilt);
}

template <class Datum>
void qcContourT<Datum>::makePointsConsistentWithData() {
  std::vector<qcVector<2>> rebuilt;
  rebuilt.reserve(data_.size());
  for (const Datum& element : data_) rebuilt.push_back(point(element));
  setPoints(rebuilt);
}

template <class Datum>
void qcContourT<Datum>::dispatchSerialize(qcArchive& archive) {
  qc_Record::transferOnce(archive, *this, 1,
                          [&](unsigned char version) { qcContourT::serialize_(archive, version); });
}

template <class Datum>
void qcContourT<Datum>::serialize_(qcArchive& archive, unsigned char version) {
  constexpr int versionCheckLine = 98;
  if (version > 1) throw qcArchive::UnknownVersion("cntrtmpl", versionCheckLine);
  qcContour::dispatchSerialize(archive);
  std::vector<Datum> loaded;
  archive || (archive.isLoading() ? loaded : data_);
  qcPtrHandle_const<qc2XformBase> transform = dataFromPoints_;
  if (version == 1) archive || transform;
  if (!archive.isLoading()) return;
  data_.swap(loaded);
  dataFromPoints_ = transform;
  pointsFromData_ = {};
}

template class qcContourT<qcEdgelet>;
