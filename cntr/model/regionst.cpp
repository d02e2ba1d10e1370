// SPDX-License-Identifier: MIT
//
// The region set's model: construction, copying, contents, drawing, forgetting, and the archive
// record. Its measures are in regionst_measures.cpp, repair in regionst_repair.cpp.

#include <cntr/regionst.h>

#include <new>

#include <cntr/model/regionsetcache.h>
#include <platform/core/record.h>

namespace {

using ConstHandles = std::vector<qcPtrHandle_const<qcRegion>>;

ConstHandles constHandles(const std::vector<qcPtrHandle<qcRegion>>& regions) {
  return {regions.begin(), regions.end()};
}

}  // namespace

qc_Instantiator qcRegionSet::sExemplar(typeid(qcRegionSet), &qcRegionSet::make);

qcPersistent* qcRegionSet::make() {
  return new qcRegionSet(ConstHandles(), qcContourDefs::eNoIntersectionRepair);
}

qcRegionSet::qcRegionSet(const ConstHandles& regions, qcContourDefs::IntersectionMode mode)
    : regions_(regions) {
  repair(mode);
}

qcRegionSet::qcRegionSet(const std::vector<qcPtrHandle<qcRegion>>& regions,
                         qcContourDefs::IntersectionMode mode)
    : qcRegionSet(constHandles(regions), mode) {}

qcRegionSet::qcRegionSet(std::initializer_list<qcPtrHandle_const<qcRegion>> regions,
                         qcContourDefs::IntersectionMode mode)
    : qcRegionSet(ConstHandles(regions), mode) {}

qcRegionSet::qcRegionSet(const qcRegionSet& other)
    : qcPersistent(other),
      qcRepBase(other),
      regions_(other.regions_),
      cachedVectorSize_(other.cachedVectorSize_),
      cache_(other.cache_ ? std::make_unique<qc_RegionSetCache>(*other.cache_) : nullptr) {}

qcRegionSet& qcRegionSet::operator=(const qcRegionSet& other) {
  if (this == &other) return *this;
  // `other` may be remembered by this set alone: it must live until everything is copied.
  ConstHandles regions = other.regions_;
  const long size = other.cachedVectorSize_;
  auto answers = other.cache_ ? std::make_unique<qc_RegionSetCache>(*other.cache_) : nullptr;
  // A constructor that repairs gets here as well, when there is nobody to notify yet.
  cleanCacheInfo();  // NOLINT(clang-analyzer-optin.cplusplus.VirtualCall)
  regions_.swap(regions);
  cachedVectorSize_ = size;
  cache_ = std::move(answers);
  return *this;
}

qcRegionSet::~qcRegionSet() = default;

bool qcRegionSet::operator==(const qcRegionSet& other) const {
  if (regions_.size() != other.regions_.size()) return false;
  for (std::size_t i = 0; i < regions_.size(); ++i) {
    if (!(*regions_[i] == *other.regions_[i])) return false;
  }
  return true;
}

void qcRegionSet::regions(const ConstHandles& regions, qcContourDefs::IntersectionMode mode) {
  ConstHandles exchanged = regions;
  cleanCacheInfo();
  regions_.swap(exchanged);
  try {
    makeDataConsistentWithPoints();
  } catch (const std::bad_alloc&) {
    regions_.swap(exchanged);
    throw;
  }
  repair(mode);
}

void qcRegionSet::regions(const std::vector<qcPtrHandle<qcRegion>>& regions,
                          qcContourDefs::IntersectionMode mode) {
  this->regions(constHandles(regions), mode);
}

void qcRegionSet::regions(std::initializer_list<qcPtrHandle_const<qcRegion>> regions,
                          qcContourDefs::IntersectionMode mode) {
  this->regions(ConstHandles(regions), mode);
}

void qcRegionSet::add(const qcPtrHandle_const<qcRegion>& region,
                      qcContourDefs::IntersectionMode mode) {
  cleanCacheInfo();
  regions_.push_back(region);
  try {
    makeDataConsistentWithPoints();
  } catch (const std::bad_alloc&) {
    regions_.pop_back();
    throw;
  }
  repair(mode);
}

void qcRegionSet::setRegions(const ConstHandles& regions) { regions_ = regions; }

void qcRegionSet::cachedVectorSize(long size) {
  if (size < 0) throw qcContourDefs::BadParams();
  cachedVectorSize_ = size;
}

void qcRegionSet::draw(qcUITablet& tablet, const qcColor& color,
                       const qcUITablet::Layers& layers) const {
  for (const auto& region : regions_) region->draw(tablet, color, layers);
}

void qcRegionSet::makeDataConsistentWithPoints() {}

void qcRegionSet::makePointsConsistentWithData() {}

void qcRegionSet::cleanCacheInfo() {
  mutating_();
  cache_.reset();
}

void qcRegionSet::checkEmptyRegionSet() const {
  if (regions_.empty()) throw qcContourDefs::EmptyRegionSet();
}

qc_RegionSetCache& qcRegionSet::cache() const {
  if (!cache_) cache_ = std::make_unique<qc_RegionSetCache>();
  return *cache_;
}

void qcRegionSet::dispatchSerialize(qcArchive& archive) {
  qc_Record::transferOnce(
      archive, *this, 1, [&](unsigned char version) { qcRegionSet::serialize_(archive, version); });
}

void qcRegionSet::serialize_(qcArchive& archive, unsigned char version) {
  constexpr int versionCheckLine = 479;
  if (version > 1) throw qcArchive::UnknownVersion("cntr/regionst", versionCheckLine);
  qcPersistent::dispatchSerialize(archive);
  ConstHandles loaded;
  archive || (archive.isLoading() ? loaded : regions_);
  long size = cachedVectorSize_;
  if (version == 1) archive || size;
  if (size < 0) throw qcArchive::BadFormat(L"a negative cachedVectorSize");
  if (!archive.isLoading()) return;
  regions_.swap(loaded);
  cachedVectorSize_ = size;
  cleanCacheInfo();
}
