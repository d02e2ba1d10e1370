// SPDX-License-Identifier: MIT
//
// Repair of a region set: regions that cross are merged, then every region is made well-formed.

#include <algorithm>
#include <limits>
#include <numeric>

#include <cntr/model/regionsetcache.h>

namespace {

using Handles = std::vector<qcPtrHandle_const<qcRegion>>;

/// The working list of the merging pass: merging two regions moves the last one into the place of
/// the second. Knows which later regions' boxes touch an earlier one's, given the index of the set.
class MergeList {
 public:
  MergeList(const Handles& regions, const cntr::index::RegionIndex* index)
      : regions_(regions), index_(index), placeOf_(regions.size()), numberAt_(regions.size()) {
    std::iota(placeOf_.begin(), placeOf_.end(), std::size_t{0});
    numberAt_ = placeOf_;
  }

  std::size_t size() const { return regions_.size(); }
  const qcPtrHandle_const<qcRegion>& operator[](std::size_t place) const { return regions_[place]; }
  Handles release() && { return std::move(regions_); }

  /// Places from `first` on, ascending, of regions that may cross one in the box: those whose boxes
  /// touch it, or all without an index. REQUIRES: the regions from `first` on are original ones.
  std::vector<std::size_t> placesNear(const cntr::plane::Box& box, std::size_t first) const {
    std::vector<std::size_t> places;
    if (index_ == nullptr) {
      for (std::size_t place = first; place < size(); ++place) places.push_back(place);
      return places;
    }
    for (const std::size_t number : index_->tree.touching(box)) {
      if (placeOf_[number] >= first && placeOf_[number] < size()) {
        places.push_back(placeOf_[number]);
      }
    }
    std::sort(places.begin(), places.end());
    return places;
  }

  /// Puts `joined` in place i and gives up the region at place j.
  void merge(std::size_t i, std::size_t j, const qcPtrHandle<qcRegion>& joined) {
    regions_[i] = joined;
    regions_[j] = regions_.back();
    regions_.pop_back();
    placeOf_[numberAt_[j]] = gone;
    if (j < size()) {
      numberAt_[j] = numberAt_[size()];
      placeOf_[numberAt_[j]] = j;
    }
  }

 private:
  static constexpr std::size_t gone = static_cast<std::size_t>(-1);

  Handles regions_;
  const cntr::index::RegionIndex* index_;
  /// Where the region of each original number is now, and the number of the region at each place.
  std::vector<std::size_t> placeOf_;
  std::vector<std::size_t> numberAt_;
};

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
  MergeList list(regions_, index());
  for (std::size_t i = 0; i + 1 < list.size(); ++i) {
    std::vector<std::size_t> places = list.placesNear(boxOf(*list[i]), i + 1);
    for (std::size_t k = 0; k < places.size();) {
      const std::size_t j = places[k++];
      if (!list[i]->crosses(*list[j])) continue;
      const qcPtrHandle<qcRegion> joined(new qcRegion);
      list[i]->splice(*list[j], *joined);
      list.merge(i, j, joined);
      places = list.placesNear(boxOf(*joined), j + 1);
      k = 0;
    }
  }
  return std::move(list).release();
}

cntr::plane::Box qcRegionSet::boxOf(const qcRegion& region) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const cntr::plane::Box everywhere{-infinity, -infinity, infinity, infinity};
  return region.boxOfBoundaries().value_or(everywhere);
}
