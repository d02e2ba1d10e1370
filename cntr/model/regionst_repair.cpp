// SPDX-License-Identifier: MIT
//
// Repair of a region set: regions that cross are merged, then every region is repaired.

#include <algorithm>
#include <numeric>

#include <cntr/compute/merging.h>
#include <cntr/model/regionsetcache.h>

namespace {

using Handles = std::vector<qcPtrHandle_const<qcRegion>>;

/// The places of the regions, ascending by the number of their vertices.
std::vector<std::size_t> smallestFirst(const Handles& regions) {
  std::vector<std::size_t> places(regions.size());
  std::iota(places.begin(), places.end(), std::size_t{0});
  // Not stable_sort: it carries on without the memory that it is refused.
  std::sort(places.begin(), places.end(), [&](std::size_t a, std::size_t b) {
    const std::size_t ofA = regions[a]->points().size();
    const std::size_t ofB = regions[b]->points().size();
    return ofA < ofB || (ofA == ofB && a < b);
  });
  return places;
}

}  // namespace

void qcRegionSet::repair(qcContourDefs::IntersectionMode mode) {
  if (mode == qcContourDefs::eOuterHull) outerHull(*this);
  if (mode == qcContourDefs::eRegularize) regularize(*this);
}

void qcRegionSet::regularize(qcRegionSet& result) const { assignRepaired(result, false); }

void qcRegionSet::outerHull(qcRegionSet& result) const { assignRepaired(result, true); }

void qcRegionSet::assignRepaired(qcRegionSet& result, bool outerHullMode) const {
  if (!isSelfIntersecting()) {
    result = *this;
    return;
  }
  qcPtrHandle_const<qcRegionSet>& known = outerHullMode ? cache().outerHull : cache().regularized;
  if (!known) {
    const qcPtrHandle<qcRegionSet> made(
        new qcRegionSet(Handles(), qcContourDefs::eNoIntersectionRepair));
    outerHullRegularize(*made, outerHullMode);
    known = made;
    mutating_();
  }
  const qcPtrHandle_const<qcRegionSet> kept = known;
  result = *kept;
}

// A region that cannot be repaired makes the whole set fail, always in the same way. So those that
// can be tried quickly come first: the outline into which many touching regions were merged may
// cross itself at as many places as there are pairs of them.
void qcRegionSet::outerHullRegularize(qcRegionSet& result, bool outerHullMode) const {
  checkEmptyRegionSet();
  Handles shaped = merged();
  for (const std::size_t place : smallestFirst(shaped)) {
    const qcPtrHandle<qcRegion> repaired(new qcRegion);
    if (outerHullMode) {
      shaped[place]->outerHull(*repaired);
    } else {
      shaped[place]->regularize(*repaired);
    }
    shaped[place] = repaired;
  }
  result = qcRegionSet(shaped, qcContourDefs::eNoIntersectionRepair);
}

Handles qcRegionSet::merged() const {
  const cntr::index::RegionIndex* const known = index();
  return known == nullptr ? mergedPairByPair() : mergedByPlace(*known);
}

// One pass over the pairs i < j. The region moved into place j after a merge is not tested against
// the merged region i.
Handles qcRegionSet::mergedPairByPair() const {
  Handles list = regions_;
  for (std::size_t i = 0; i + 1 < list.size(); ++i) {
    for (std::size_t j = i + 1; j < list.size(); ++j) {
      if (!list[i]->crosses(*list[j])) continue;
      const qcPtrHandle<qcRegion> joined(new qcRegion);
      list[i]->splice(*list[j], *joined);
      list[i] = joined;
      list[j] = list.back();
      list.pop_back();
    }
  }
  return list;
}

Handles qcRegionSet::mergedByPlace(const cntr::index::RegionIndex& known) const {
  std::vector<cntr::compute::CrossingTarget> outlines;
  outlines.reserve(regions_.size());
  for (const auto& region : regions_) outlines.push_back(region->crossingTarget());
  const auto remaining = cntr::compute::mergeCrossing(outlines, known);
  if (!remaining) throw qcContourDefs::BadParams(L"spliced regions do not intersect");
  Handles list;
  list.reserve(remaining->size());
  for (const cntr::compute::Remaining& region : *remaining) {
    list.push_back(region.joined.empty()
                       ? regions_[region.number]
                       : qcPtrHandle_const<qcRegion>(
                             new qcRegion(region.joined, qcContourDefs::eNoIntersectionRepair)));
  }
  return list;
}
