// SPDX-License-Identifier: MIT

#include <tools/answers/subject.h>

#include <algorithm>

#include <tools/answers/body.h>

namespace tool {

using namespace formats;

namespace {

/// An outline that does not cross its holes has all of a hole inside or nothing.
bool hasHoleOutside(const qcRegion& region) {
  const auto& holes = region.holes();
  return std::any_of(holes.begin(), holes.end(), [&region](const RegionHandle& hole) {
    return !region.inside(hole->points().front(), false);
  });
}

bool hasCrossingHoles(const qcRegion& region) {
  return !region.holes().empty() &&
         qcRegionSet(region.holes(), qcContourDefs::eNoIntersectionRepair).isSelfIntersecting();
}

}  // namespace

Subject::Subject(const Geometry& geometry, bool withHoles)
    : closed_(geometry.closed), withHoles_(withHoles) {
  if (!closed_) {
    for (const Boundary& line : boundariesOf(geometry, false)) contours_.push_back(line.contour);
    return;
  }
  regions_ = makeRegionSet(geometry.parts, withHoles);
  for (const RegionHandle& region : regions_->regions()) {
    contours_.emplace_back(region);
    holeCount_ += region->holes().size();
  }
  findFlaws();
  if (flaws_.empty()) addBody(geometry.parts);
}

void Subject::findFlaws() {
  const std::vector<RegionHandle> regions = regions_->regions();
  const auto isAny = [&regions](bool (*hasFlaw)(const qcRegion&)) {
    return std::any_of(regions.begin(), regions.end(),
                       [hasFlaw](const RegionHandle& region) { return hasFlaw(*region); });
  };
  if (regions_->isSelfIntersecting()) flaws_.push_back("crosses itself");
  if (isAny(hasCrossingHoles)) flaws_.push_back("holes cross");
  if (isAny(hasHoleOutside)) flaws_.push_back("hole outside");
}

void Subject::addBody(const std::vector<qcRings>& parts) {
  if (!isArea(*area())) return;
  body_ = qc_InertiaData(*area(), centreOf(*regions_, withHoles_),
                         inertiaOf(parts, withHoles_).inertiaMatrix());
}

const qcContour* Subject::only() const noexcept {
  return contours_.size() == 1 ? contours_.front().get() : nullptr;
}

std::size_t Subject::vertexCount() const {
  std::size_t count = 0;
  for (const auto& contour : contours_) count += contour->points().size();
  return count;
}

double Subject::length() const {
  double sum = 0.0;
  for (const auto& contour : contours_) sum += contour->length();
  return sum;
}

qcRect Subject::rectangle() const {
  qcRect box = contours_.front()->encloseRect(qcXform<2>::I);
  for (const auto& contour : contours_) box = box.enclose(contour->encloseRect(qcXform<2>::I));
  return box;
}

std::optional<bool> Subject::crossesItself() const {
  if (regions_) return regions_->isSelfIntersecting();
  return only() == nullptr ? std::nullopt : std::optional<bool>(only()->isSelfIntersecting());
}

std::optional<double> Subject::area() const {
  if (!regions_ || !flaws_.empty()) return std::nullopt;
  return regions_->area(withHoles_);
}

}  // namespace tool
