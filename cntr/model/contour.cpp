// SPDX-License-Identifier: MIT
//
// The contour model: construction, copying, accessors, forgetting, and the archive record. The
// queries are in contour_measures.cpp, contour_edges.cpp and contour_extents.cpp, drawing in
// contour_draw.cpp.

#include <cntr/contour.h>

#include <cstdint>
#include <memory>
#include <new>
#include <utility>

#include <cntr/model/contourcache.h>
#include <cntr/plane/tolerances.h>
#include <platform/core/record.h>

namespace {

constexpr const char* contourSource = "cntr/contour";

using Points = std::vector<qcVector<2>>;

std::vector<qcVector<2>> verticesOf(const qcPolygon& polygon) {
  std::vector<qcVector<2>> vertices;
  vertices.reserve(static_cast<std::size_t>(polygon.size()));
  for (long i = 0; i < polygon.size(); ++i) vertices.push_back(polygon[i]);
  return vertices;
}

/// Refuses what no archive could hold.
unsigned long checkedLabel(unsigned long label) {
  if (!std::in_range<std::uint32_t>(label)) {
    throw qcContourDefs::BadParams(L"label is above 4294967295");
  }
  return label;
}

bool endsCoincide(const qcPolygon& polygon) {
  return polygon.size() > 0 && cntr::plane::coincide(polygon[0], polygon[polygon.size() - 1]);
}

}  // namespace

qc_Instantiator qcContour::sExemplar(typeid(qcContour), &qcContour::make);

qcPersistent* qcContour::make() { return new qcContour({}, true, 0); }

qcContour::qcContour(const std::vector<qcVector<2>>& points, bool closed, unsigned long label)
    : label_(checkedLabel(label)), closed_(closed), points_(std::make_shared<Points>(points)) {}

qcContour::qcContour(const qcPolygon& polygon, unsigned long label)
    : label_(checkedLabel(label)),
      closed_(endsCoincide(polygon)),
      points_(std::make_shared<Points>(verticesOf(polygon))) {}

qcContour::qcContour(const qcContour& other)
    : qcPersistent(other),
      qcRepBase(other),
      label_(other.label_),
      closed_(other.closed_),
      containmentWork_(other.containmentWork_),
      points_(other.points_),
      cachedVectorSize_(other.cachedVectorSize_),
      cache_(other.cache_ ? std::make_unique<qc_ContourCache>(*other.cache_) : nullptr) {}

qcContour& qcContour::operator=(const qcContour& other) {
  if (this == &other) return *this;
  auto cacheCopy = other.cache_ ? std::make_unique<qc_ContourCache>(*other.cache_) : nullptr;
  cleanCacheInfo();
  points_ = other.points_;
  label_ = other.label_;
  closed_ = other.closed_;
  containmentWork_ = other.containmentWork_;
  cachedVectorSize_ = other.cachedVectorSize_;
  cache_ = std::move(cacheCopy);
  return *this;
}

qcContour::~qcContour() = default;

bool qcContour::operator==(const qcContour& other) const {
  return isClosed() == other.isClosed() && points() == other.points() &&
         cachedVectorSize_ == other.cachedVectorSize_;
}

void qcContour::points(const std::vector<qcVector<2>>& points) {
  std::shared_ptr<Points> exchanged = std::make_shared<Points>(points);
  cleanCacheInfo();
  points_.swap(exchanged);
  try {
    makeDataConsistentWithPoints();
  } catch (const std::bad_alloc&) {
    points_.swap(exchanged);
    throw;
  }
}

void qcContour::setPoints(const std::vector<qcVector<2>>& points) {
  std::shared_ptr<Points> taken = std::make_shared<Points>(points);
  cleanCacheInfo();
  points_ = std::move(taken);
}

void qcContour::isClosed(bool closed) {
  closed_ = closed;
  cleanCacheInfo();
}

void qcContour::label(unsigned long label) {
  label_ = checkedLabel(label);
  mutating_();
}

void qcContour::cachedVectorSize(long size) {
  if (size < 0) throw qcContourDefs::BadParams();
  cachedVectorSize_ = size;
  mutating_();
}

void qcContour::makeDataConsistentWithPoints() {}

void qcContour::makePointsConsistentWithData() {}

void qcContour::cleanCacheInfo() {
  mutating_();
  containmentWork_ = 0;
  cache_.reset();
}

void qcContour::checkEmptyContour() const {
  if (points().size() < 2) throw qcContourDefs::EmptyContour();
}

// A copy may be closed while its source is open: a region is closed whatever its stored flag.
qc_ContourCache& qcContour::cache() const {
  const bool closed = isClosed();
  if (cache_ && cache_->ofClosed != closed) cache_.reset();
  if (!cache_) {
    // "For overwrite": the members start empty, so the memory need not be cleared first.
    cache_ = std::make_unique_for_overwrite<qc_ContourCache>();
    cache_->ofClosed = closed;
  }
  return *cache_;
}

void qcContour::dispatchSerialize(qcArchive& archive) {
  qc_Record::transferOnce(archive, *this, 1,
                          [&](unsigned char version) { qcContour::serialize_(archive, version); });
}

void qcContour::serialize_(qcArchive& archive, unsigned char version) {
  constexpr int versionCheckLine = 904;
  constexpr int oldBaseCheckLine = 894;
  if (version > 1) throw qcArchive::UnknownVersion(contourSource, versionCheckLine);
  if (version == 0) return serializeOldRecord_(archive, contourSource, oldBaseCheckLine);
  qcPersistent::dispatchSerialize(archive);
  Fields fields{label_, closed_, cachedVectorSize_, {}};
  archive || fields.label || fields.closed;
  archive || (archive.isLoading() ? fields.points : *points_) || fields.cachedVectorSize;
  if (archive.isLoading()) takeLoaded(std::move(fields));
}

void qcContour::serializeOldRecord_(qcArchive& archive, const char* source, int line) {
  unsigned char baseVersion = 0;
  archive || baseVersion;
  if (baseVersion != 0) throw qcArchive::UnknownVersion(source, line);
  qcPersistent::dispatchSerialize(archive);
  Fields fields{0, closed_, cachedVectorSize_, {}};
  unsigned char dropped = 0;
  archive || (archive.isLoading() ? fields.points : *points_);
  archive || dropped;
  archive || fields.cachedVectorSize || fields.closed;
  if (archive.isLoading()) takeLoaded(std::move(fields));
}

void qcContour::takeLoaded(Fields fields) {
  if (fields.cachedVectorSize < 0) throw qcArchive::BadFormat(L"a negative cachedVectorSize");
  points_ = std::make_shared<Points>(std::move(fields.points));
  label_ = fields.label;
  closed_ = fields.closed;
  cachedVectorSize_ = fields.cachedVectorSize;
  cleanCacheInfo();
}
