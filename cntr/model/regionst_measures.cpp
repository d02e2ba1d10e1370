// SPDX-License-Identifier: MIT
//
// The region set's measures and queries, computed from those of its regions. Remembering an answer
// sends one change notice.

#include <algorithm>
#include <cmath>
#include <limits>

#include <cntr/compute/manycrossings.h>
#include <cntr/index/policy.h>
#include <cntr/inertia.h>
#include <cntr/model/regionsetcache.h>
#include <cntr/plane/tolerances.h>

namespace {

std::vector<cntr::plane::Path> outlinesOf(const std::vector<qcPtrHandle_const<qcRegion>>& regions) {
  std::vector<cntr::plane::Path> paths;
  paths.reserve(regions.size());
  for (const auto& region : regions) paths.push_back({region->points(), true});
  return paths;
}

}  // namespace

double qcRegionSet::area(bool considerHoles) const {
  std::optional<double>& known = cache().area[considerHoles ? 1 : 0];
  if (known) return *known;
  double sum = 0.0;
  for (const auto& region : regions_) sum += region->area(considerHoles);
  known = sum;
  mutating_();
  return sum;
}

qcVector<2> qcRegionSet::centerOfMass(bool considerHoles) const {
  constexpr double negligibleArea = 1e-15;
  checkEmptyRegionSet();
  std::optional<qcVector<2>>& known = cache().centerOfMass[considerHoles ? 1 : 0];
  if (known) return *known;
  qcVector<2> weighted;
  double total = 0.0;
  for (const auto& region : regions_) {
    const double regionArea = region->area(considerHoles);
    weighted = weighted + region->centerOfMass(considerHoles) * regionArea;
    total += regionArea;
  }
  const bool isNegligible = !(std::abs(total) > negligibleArea);
  const qcVector<2> center = isNegligible ? qcVector<2>() : weighted * (1.0 / total);
  known = center;
  mutating_();
  return center;
}

qcMatrix<2> qcRegionSet::inertiaMatrix(bool considerHoles) const {
  checkEmptyRegionSet();
  std::optional<qcMatrix<2>>& known = cache().inertiaMatrix[considerHoles ? 1 : 0];
  if (known) return *known;
  qc_InertiaData sum;
  for (const auto& region : regions_) {
    const qcMatrix<2> matrix = region->inertiaMatrix(considerHoles);
    const qcVector<2> center = region->centerOfMass(considerHoles);
    sum = sum + qc_InertiaData(region->area(considerHoles), center, matrix);
  }
  known = sum.inertiaMatrix();
  mutating_();
  return *known;
}

const cntr::index::RegionIndex* qcRegionSet::index() const {
  qc_RegionSetCache& known = cache();
  if (!known.indexIsKnown && cntr::index::wantsRegionIndex(regions_.size())) {
    known.index = madeIndex();
    known.indexIsKnown = true;
  }
  ++(known.index ? known.waysTaken.index : known.waysTaken.scan);
  return known.index.get();
}

std::shared_ptr<const cntr::index::RegionIndex> qcRegionSet::madeIndex() const {
  std::vector<cntr::plane::Box> boxes;
  boxes.reserve(regions_.size());
  for (const auto& region : regions_) {
    const auto box = region ? region->boxOfBoundaries() : std::nullopt;
    if (!box) return nullptr;
    boxes.push_back(*box);
  }
  return std::make_shared<const cntr::index::RegionIndex>(boxes);
}

bool qcRegionSet::inside(const qcVector<2>& p, bool considerHoles) const {
  const auto holdsPoint = [&](const qcPtrHandle_const<qcRegion>& region) {
    return region->inside(p, considerHoles);
  };
  const cntr::index::RegionIndex* const known = index();
  if (known == nullptr) return std::any_of(regions_.begin(), regions_.end(), holdsPoint);
  return !known->forEachHolding(p, [&](std::size_t i) { return !holdsPoint(regions_[i]); });
}

double qcRegionSet::distToPoint(const qcVector<2>& p, bool vertexOnly, bool considerHoles,
                                bool zeroIfInside) const {
  checkEmptyRegionSet();
  double nearest = std::numeric_limits<double>::infinity();
  const auto visit = [&](std::size_t i) {
    const double distance = regions_[i]->distToPoint(p, vertexOnly, considerHoles, zeroIfInside);
    if (distance < nearest) nearest = distance;
  };
  if (const cntr::index::RegionIndex* const known = index()) {
    known->tree.forEachNearestFirst(
        p, [&] { return nearest * nearest * cntr::plane::tieSlack; }, visit);
  } else {
    for (std::size_t i = 0; i < regions_.size(); ++i) visit(i);
  }
  return nearest;
}

bool qcRegionSet::isSelfIntersecting() const {
  if (regions_.empty()) return false;
  std::optional<bool>& known = cache().isSelfIntersecting;
  if (known) return *known;
  known = false;
  mutating_();
  for (const auto& region : regions_) {
    if (region->isSelfIntersecting()) known = true;
  }
  if (hasCrossingPair()) known = true;
  return *known;
}

bool qcRegionSet::hasCrossingPair() const {
  const cntr::index::RegionIndex* const known = index();
  std::size_t pairs = 0;
  for (std::size_t i = 0; i + 1 < regions_.size(); ++i) {
    const auto isLaterAndCrosses = [&](std::size_t j) {
      if (j <= i) return false;
      ++pairs;
      return regions_[i]->crosses(*regions_[j]);
    };
    if (known != nullptr) {
      const std::vector<std::size_t> near = known->tree.touching(known->boxes[i]);
      if (std::any_of(near.begin(), near.end(), isLaterAndCrosses)) return true;
      if (cntr::index::wantsEdgesOfSet(regions_.size(), pairs)) {
        return cntr::compute::anyCrossesAnother(outlinesOf(regions_));
      }
    } else {
      for (std::size_t j = i + 1; j < regions_.size(); ++j) {
        if (isLaterAndCrosses(j)) return true;
      }
    }
  }
  return false;
}

qcRect qcRegionSet::encloseRect(const qcXform<2>& xform) const {
  checkEmptyRegionSet();
  auto& known = cache().enclosingRects;
  if (const qcRect* rect = known.find(xform)) return *rect;
  qcRect rect = regions_.front()->encloseRect(xform);
  for (std::size_t i = 1; i < regions_.size(); ++i) {
    rect = rect.enclose(regions_[i]->encloseRect(xform));
  }
  known.remember(xform, rect, cachedVectorSize_);
  mutating_();
  return rect;
}
