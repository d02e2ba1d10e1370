// SPDX-License-Identifier: MIT
//
// The region model: construction, copying, holes, mapping, forgetting, and the archive record. Its
// measures are in region_moments.cpp, point queries in region_queries.cpp, repair in
// region_repair.cpp.

#include <cntr/region.h>

#include <cntr/model/regioncache.h>
#include <platform/core/record.h>

namespace {

constexpr const char* regionSource = "cntr/region";

}  // namespace

qc_Instantiator qcRegion::sExemplar(typeid(qcRegion), &qcRegion::make);

qcPersistent* qcRegion::make() { return new qcRegion; }

qcRegion::qcRegion() : qcContour({}, true, 0) {}

qcRegion::qcRegion(const std::vector<qcVector<2>>& vertices, qcContourDefs::IntersectionMode mode)
    : qcContour(vertices, true, 0) {
  repair(mode);
}

qcRegion::qcRegion(std::initializer_list<qcVector<2>> vertices,
                   qcContourDefs::IntersectionMode mode)
    : qcRegion(std::vector<qcVector<2>>(vertices), mode) {}

qcRegion::qcRegion(const qcPolygon& polygon, qcContourDefs::IntersectionMode mode)
    : qcContour(polygon, 0) {
  repair(mode);
}

qcRegion::qcRegion(const qcContour& contour, qcContourDefs::IntersectionMode mode)
    : qcContour(contour) {
  qcRegion::cleanCacheInfo();
  repair(mode);
}

qcRegion::qcRegion(const qcRegion& other)
    : qcPersistent(other),
      qcRepBase(other),
      qcContour(other),
      holes_(other.holes_),
      area_(other.area_),
      regionCache_(other.regionCache_ ? std::make_unique<qc_RegionCache>(*other.regionCache_)
                                      : nullptr) {}

qcRegion& qcRegion::operator=(const qcRegion& other) {
  if (this == &other) return *this;
  // `other` may be one of this region's own holes: they must live until everything is copied.
  std::vector<qcPtrHandle_const<qcRegion>> holes = other.holes_;
  auto answers =
      other.regionCache_ ? std::make_unique<qc_RegionCache>(*other.regionCache_) : nullptr;
  qcContour::operator=(other);
  holes_.swap(holes);
  area_ = other.area_;
  regionCache_ = std::move(answers);
  return *this;
}

qcRegion::~qcRegion() = default;

bool qcRegion::operator==(const qcRegion& other) const { return qcContour::operator==(other); }

void qcRegion::isClosed(bool closed) {
  if (!closed) throw qcContourDefs::RegionCannotBeSetOpen();
}

void qcRegion::holes(const std::vector<qcPtrHandle_const<qcRegion>>& holes) {
  cleanCacheInfo();
  makeDataConsistentWithPoints();
  for (const auto& hole : holes) checkHole(hole);
  std::vector<qcPtrHandle_const<qcRegion>> accepted = holes;
  holes_.swap(accepted);
}

void qcRegion::holes(const std::vector<qcPtrHandle<qcRegion>>& holes) {
  this->holes(std::vector<qcPtrHandle_const<qcRegion>>(holes.begin(), holes.end()));
}

void qcRegion::holes(std::initializer_list<qcPtrHandle_const<qcRegion>> holes) {
  this->holes(std::vector<qcPtrHandle_const<qcRegion>>(holes));
}

void qcRegion::checkHole(const qcPtrHandle_const<qcRegion>& hole) const {
  if (crosses(*hole)) throw qcContourDefs::BadParams(L"holes cannot intersect region");
}

void qcRegion::map(const qcXform<2>& xform, qcRegion& dest) const {
  std::vector<qcVector<2>> mapped;
  mapped.reserve(points().size());
  for (const qcVector<2>& p : points()) mapped.push_back(xform * p);
  const unsigned long sourceLabel = label();
  dest = qcRegion(mapped, qcContourDefs::eNoIntersectionRepair);
  dest.label(sourceLabel);
}

void qcRegion::draw(qcUITablet& /*tablet*/, const qcColor& /*color*/,
                    const qcUITablet::Layers& /*layers*/) const {}

void qcRegion::cleanCacheInfo() {
  qcContour::cleanCacheInfo();
  area_ = -1.0;
  regionCache_.reset();
}

void qcRegion::checkEmptyContour() const {
  if (points().size() < 3) throw qcContourDefs::EmptyContour();
}

qc_RegionCache& qcRegion::regionCache() const {
  if (!regionCache_) regionCache_ = std::make_unique<qc_RegionCache>();
  return *regionCache_;
}

void qcRegion::dispatchSerialize(qcArchive& archive) {
  qc_Record::transferOnce(archive, *this, 1,
                          [&](unsigned char version) { qcRegion::serialize_(archive, version); });
}

void qcRegion::serialize_(qcArchive& archive, unsigned char version) {
  constexpr int versionCheckLine = 819;
  constexpr int oldBaseCheckLine = 809;
  std::vector<qcPtrHandle_const<qcRegion>> loaded;
  if (version == 1) {
    qcContour::dispatchSerialize(archive);
    archive || (archive.isLoading() ? loaded : holes_);
  } else if (version == 0 && archive.isLoading()) {
    serializeOldRecord_(archive, regionSource, oldBaseCheckLine);
  } else {
    throw qcArchive::UnknownVersion(regionSource, versionCheckLine);
  }
  if (!archive.isLoading()) return;
  holes_.swap(loaded);
  cleanCacheInfo();
}
