// SPDX-License-Identifier: MIT
//
// The set of regions with data, instantiated for edge elements: the two hooks that keep its lists
// parallel, and the archive record.

#include <cntrtmpl/regionsett.h>

#include <platform/core/record.h>

template <class Datum>
qcRegionSetT<Datum>::Instantiator::Instantiator()
    : qc_Instantiator(typeid(qcRegionSetT), &qcRegionSetT::make) {}

template <class Datum>
typename qcRegionSetT<Datum>::Instantiator qcRegionSetT<Datum>::sExemplar;

template <class Datum>
qcPersistent* qcRegionSetT<Datum>::make() {
  return new qcRegionSetT;
}

template <class Datum>
qcRegionSetT<Datum>::qcRegionSetT() : qcRegionSetT(RegionsT()) {}

template <class Datum>
qcRegionSetT<Datum>::qcRegionSetT(const RegionsT& regions)
    : qcRegionSet(std::vector<qcPtrHandle_const<qcRegion>>(), qcContourDefs::eNoIntersectionRepair),
      regionsT_(regions) {
  qcRegionSetT::makePointsConsistentWithData();
}

template <class Datum>
qcRegionSetT<Datum>::qcRegionSetT(std::vector<qcPtrHandle<qcRegionT<Datum>>> regions)
    : qcRegionSetT(RegionsT(regions.begin(), regions.end())) {}

template <class Datum>
qcRegionSetT<Datum>::qcRegionSetT(
    std::initializer_list<qcPtrHandle_const<qcRegionT<Datum>>> regions)
    : qcRegionSetT(RegionsT(regions)) {}

template <class Datum>
bool qcRegionSetT<Datum>::operator==(const qcRegionSetT& other) const {
  return qcRegionSet::operator==(other);
}

template <class Datum>
void qcRegionSetT<Datum>::cleanCacheInfo() {
  qcRegionSet::cleanCacheInfo();
}

template <class Datum>
void qcRegionSetT<Datum>::regularizeT(qcRegionSetT& /*result*/) const {
  throw qcPel::BadWindow();
}

template <class Datum>
void qcRegionSetT<Datum>::mapT(const qcXform<2>& /*xform*/, qcRegionSetT& /*result*/) const {
  throw qcPel::BadWindow();
}

template <class Datum>
void qcRegionSetT<Datum>::makeDataConsistentWithPoints() {
  RegionsT rebuilt;
  for (const auto& plain : regions()) {
    const qcPtrHandle<qcRegionT<Datum>> region(new qcRegionT<Datum>);
    static_cast<qcContour&>(*region).points(plain->points());
    rebuilt.push_back(region);
  }
  regionsT_.swap(rebuilt);
}

template <class Datum>
void qcRegionSetT<Datum>::makePointsConsistentWithData() {
  std::vector<qcPtrHandle_const<qcRegion>> plain;
  plain.reserve(regionsT_.size());
  for (const auto& region : regionsT_) plain.emplace_back(&*region);
  setRegions(plain);
}

template <class Datum>
void qcRegionSetT<Datum>::dispatchSerialize(qcArchive& archive) {
  qc_Record::transferOnce(archive, *this, 0, [&](unsigned char version) {
    qcRegionSetT::serialize_(archive, version);
  });
}

template <class Datum>
void qcRegionSetT<Datum>::serialize_(qcArchive& archive, unsigned char version) {
  constexpr int versionCheckLine = 283;
  if (version != 0) throw qcArchive::UnknownVersion("cntrtmpl", versionCheckLine);
  qcRegionSet::dispatchSerialize(archive);
  RegionsT loaded;
  archive || (archive.isLoading() ? loaded : regionsT_);
  if (archive.isLoading()) regionsT_.swap(loaded);
}

template class qcRegionSetT<qcEdgelet>;
