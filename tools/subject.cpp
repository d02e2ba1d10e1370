// SPDX-License-Identifier: MIT

#include <tools/subject.h>

namespace tool {

Subject::Subject(const Geometry& geometry, bool withHoles)
    : closed_(geometry.closed), withHoles_(withHoles) {
  if (!closed_) {
    for (const Part& part : geometry.parts) {
      contours_.emplace_back(new qcContour(part.outline, false, 0));
    }
    return;
  }
  regions_ = makeRegionSet(geometry.parts, withHoles);
  for (const RegionHandle& region : regions_->regions()) {
    contours_.emplace_back(region);
    holeCount_ += region->holes().size();
  }
  addBody(geometry.parts);
}

void Subject::addBody(const std::vector<Part>& parts) {
  if (!isArea(*area())) return;
  body_ = qc_InertiaData(*area(), centre(), inertiaOf(parts, withHoles_).inertiaMatrix());
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
  return regions_ ? std::optional<double>(regions_->area(withHoles_)) : std::nullopt;
}

// A region tells its centre with holes once only, so it is asked here and nowhere else.
qcVector<2> Subject::centre() const {
  const std::vector<RegionHandle> regions = regions_->regions();
  if (regions.size() == 1) return regions.front()->centerOfMass(withHoles_);
  return regions_->centerOfMass(withHoles_);
}

}  // namespace tool
