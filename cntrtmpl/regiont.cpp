// SPDX-License-Identifier: MIT
//
// The region with data, instantiated for edge elements: construction, drawing, the archive record.
// Data and points are kept in step by contourt.cpp.

#include <cntrtmpl/regiont.h>

#include <platform/core/record.h>

namespace {

/// Draws a segment of length 1 centred on the edgelet's position, a quarter turn back from its
/// angle, mapped by `xform`.
void drawEdgelet(qcUITablet& tablet, const qcEdgelet& edgelet, const qcXform<2>& xform,
                 const qcColor& color, const qcUITablet::Layers& layers) {
  constexpr double halfLength = 0.5;
  const qcAngle8 quarterTurn(64);
  const qcDegree halfTurn(180.0);
  const qc2Rigid along(edgelet.angle() - quarterTurn, edgelet.position());
  const auto end = [&](const qcDegree& angle) {
    const qcVector<2> p = xform * (along.trans() + qcVector<2>(halfLength, qcRadian(angle)));
    return qcPair<double>(p.x(), p.y());
  };
  tablet.drawLineSeg(end(along.angle()), end(along.angle() + halfTurn), color, layers);
}

}  // namespace

template <class Datum>
qcRegionT<Datum>::Instantiator::Instantiator()
    : qc_Instantiator(typeid(qcRegionT), &qcRegionT::make) {}

template <class Datum>
typename qcRegionT<Datum>::Instantiator qcRegionT<Datum>::sExemplar;

template <class Datum>
qcPersistent* qcRegionT<Datum>::make() {
  return new qcRegionT;
}

template <class Datum>
qcRegionT<Datum>::qcRegionT() : qcRegionT(std::vector<Datum>(), 0) {}

template <class Datum>
qcRegionT<Datum>::qcRegionT(const qcContourT<Datum>& contour, unsigned long label)
    : qcContour(contour), qcContourT<Datum>(contour) {
  this->label(label);
}

template <class Datum>
qcRegionT<Datum>::qcRegionT(const std::vector<Datum>& data, unsigned long label)
    : qcRegionT(data, qcPtrHandle_const<qc2XformBase>(), label) {}

template <class Datum>
qcRegionT<Datum>::qcRegionT(const std::vector<Datum>& data,
                            const qcPtrHandle_const<qc2XformBase>& dataFromPoints,
                            unsigned long label)
    : qcContour({}, true, 0), qcContourT<Datum>(data, dataFromPoints) {
  this->label(label);
}

template <class Datum>
qcRegionT<Datum>& qcRegionT<Datum>::operator=(const qcRegionT& other) {
  if (this == &other) return *this;
  // `other` may be one of this region's own holes: it must live until everything is copied.
  Holes holes = other.holes_;
  auto taken = other.dataAndTransform();
  qcRegion::operator=(other);
  this->take(std::move(taken));
  holes_.swap(holes);
  return *this;
}

template <class Datum>
bool qcRegionT<Datum>::operator==(const qcRegionT& other) const {
  return qcContourT<Datum>::operator==(other);
}

template <class Datum>
void qcRegionT<Datum>::draw(qcUITablet& tablet, const qcColor& color,
                            const qcUITablet::Layers& layers) const {
  for (const Datum& element : this->data()) {
    drawEdgelet(tablet, element, qcXform<2>::I, color, layers);
  }
}

template <class Datum>
void qcRegionT<Datum>::regularizeT(qcRegionT& /*dest*/) const {
  throw qcPel::BadWindow();
}

template <class Datum>
void qcRegionT<Datum>::mapT(const qcXform<2>& /*xform*/, qcRegionT& /*dest*/) const {
  throw qcPel::BadWindow();
}

template <class Datum>
void qcRegionT<Datum>::dispatchSerialize(qcArchive& archive) {
  qc_Record::transferOnce(archive, *this, 0,
                          [&](unsigned char version) { qcRegionT::serialize_(archive, version); });
}

template <class Datum>
void qcRegionT<Datum>::serialize_(qcArchive& archive, unsigned char version) {
  constexpr int versionCheckLine = 186;
  if (version != 0) throw qcArchive::UnknownVersion("cntrtmpl", versionCheckLine);
  qcRegion::dispatchSerialize(archive);
}

template class qcRegionT<qcEdgelet>;
