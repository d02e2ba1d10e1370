// SPDX-License-Identifier: MIT
//
// Repair of a region set: regions that cross are merged, then every region is made well-formed.

#include <cntr/cache/regionsetcache.h>

namespace {

using Handles = std::vector<qcPtrHandle_const<qcRegion>>;

/// Moves the last region into place j, which is given up.
void replaceByLast(Handles& regions, std::size_t j) {
  regions[j] = regions.back();
  regions.pop_back();
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

void qcRegionSet::outerHullRegularize(qcRegionSet& result, bool outerHullMode) const {
  checkEmptyRegionSet();
  Handles shaped = merged();
  for (auto& region : shaped) {
    const qcPtrHandle<qcRegion> repaired(new qcRegion);
    if (outerHullMode) {
      region->outerHull(*repaired);
    } else {
      region->regularize(*repaired);
    }
    region = repaired;
  }
  result = qcRegionSet(shaped, qcContourDefs::eNoIntersectionRepair);
}

// One pass over the pairs i < j. The region moved into place j after a merge is not tested against
// the merged region i.
Handles qcRegionSet::merged() const {
  Handles regions = regions_;
  for (std::size_t i = 0; i + 1 < regions.size(); ++i) {
    for (std::size_t j = i + 1; j < regions.size(); ++j) {
      if (!regions[i]->crosses(*regions[j])) continue;
      const qcPtrHandle<qcRegion> joined(new qcRegion);
      regions[i]->splice(*regions[j], *joined);
      regions[i] = joined;
      replaceByLast(regions, j);
    }
  }
  return regions;
}
