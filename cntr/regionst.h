// SPDX-License-Identifier: MIT
//
// qcRegionSet, an ordered list of shared regions that are measured, queried and repaired together.
// Regions are in region.h.

#pragma once

#include <initializer_list>
#include <memory>
#include <vector>

#include <cntr/region.h>

/// @addtogroup sets
/// @{

struct qc_RegionSetCache;
namespace cntr::index {
struct RegionIndex;
}  // namespace cntr::index

/// Regions in order. They are shared and must not be changed once they have been handed over: later
/// answers may be those from before the change. A null handle throws qcBadPointer when it is first
/// met.
///
/// Answers are remembered until the list changes; one set may be used by one thread at a time.
///
/// A query costs as much as the same query on all regions together, except that inside(),
/// distToPoint() and isSelfIntersecting() look only at regions whose boxes matter. If a ring of
/// any region has fewer than 2 vertices or non-finite coordinates, they look at all regions, or
/// all pairs.
class CNTR_EXPORT qcRegionSet : public virtual qcPersistent, public virtual qcRepBase {
 public:
  /// An empty vector is accepted. With mode eOuterHull or eRegularize the set then replaces itself
  /// by its outerHull() or regularize().
  qcRegionSet(const std::vector<qcPtrHandle_const<qcRegion>>& regions,
              qcContourDefs::IntersectionMode mode);
  /// The same for handles that may change their region; do not change it afterwards.
  qcRegionSet(const std::vector<qcPtrHandle<qcRegion>>& regions,
              qcContourDefs::IntersectionMode mode);
  /// The same for handles of either kind listed in braces; `{}` means no regions.
  qcRegionSet(std::initializer_list<qcPtrHandle_const<qcRegion>> regions,
              qcContourDefs::IntersectionMode mode);
  /// Shares the regions; copies the remembered answers.
  qcRegionSet(const qcRegionSet& other);
  /// Copies like the copy constructor, after forgetting this object's own answers.
  qcRegionSet& operator=(const qcRegionSet& other);
  ~qcRegionSet() override;

  /// Equal numbers of regions, and equal regions (by qcRegion::operator==, which ignores holes) in
  /// the same order.
  bool operator==(const qcRegionSet& other) const;

  /// The regions in order. O(n): the handles are copied.
  std::vector<qcPtrHandle_const<qcRegion>> regions() const { return regions_; }
  /// Replaces the regions, forgets all answers and applies the mode.
  void regions(const std::vector<qcPtrHandle_const<qcRegion>>& regions,
               qcContourDefs::IntersectionMode mode);
  /// The same for handles that may change their region; do not change it afterwards.
  void regions(const std::vector<qcPtrHandle<qcRegion>>& regions,
               qcContourDefs::IntersectionMode mode);
  /// The same for handles of either kind listed in braces; `{}` removes all regions.
  void regions(std::initializer_list<qcPtrHandle_const<qcRegion>> regions,
               qcContourDefs::IntersectionMode mode);
  /// Appends a region, forgets all answers and applies the mode to the whole set. With mode
  /// eNoIntersectionRepair overlaps are kept.
  void add(const qcPtrHandle_const<qcRegion>& region, qcContourDefs::IntersectionMode mode);

  /// How many rectangles encloseRect() remembers (at most one more than that); 3 in a new set.
  long cachedVectorSize() const noexcept { return cachedVectorSize_; }
  /// Takes effect with the next rectangle. Throws BadParams when `size` is negative.
  void cachedVectorSize(long size);

  /// Sum of qcRegion::area(considerHoles); 0 for an empty set. Overlaps count twice. Remembered.
  double area(bool considerHoles) const;
  /// Mean of the regions' centres of mass, weighted by their areas; (0, 0) when the total area is
  /// at most 1e-15 in absolute value. Throws EmptyRegionSet. Remembered. With holes it asks each
  /// region's centerOfMass(true), which returns the centre only once after each change of the
  /// region.
  qcVector<2> centerOfMass(bool considerHoles) const;
  /// Second moments about the common centre of mass. Throws EmptyRegionSet, and what
  /// qcRegion::inertiaMatrix() throws: with `considerHoles` no region may have holes. Remembered.
  qcMatrix<2> inertiaMatrix(bool considerHoles) const;
  /// True when qcRegion::inside(p, considerHoles) is true for any region; false for an empty set.
  bool inside(const qcVector<2>& p, bool considerHoles) const;
  /// The smallest qcRegion::distToPoint() with the same flags. Throws EmptyRegionSet.
  double distToPoint(const qcVector<2>& p, bool vertexOnly, bool considerHoles,
                     bool zeroIfInside) const;
  /// True when an outline crosses itself or two of them cross or touch (a region inside
  /// another, clear of its outline, does not count). Holes are not examined. False for an empty
  /// set.
  ///
  /// Remembered, and marked as known (with the answer false) before it is computed: when a region
  /// makes the computation throw, the next call returns false. Check the regions of such sets one
  /// by one.
  bool isSelfIntersecting() const;
  /// The smallest rectangle around all outlines mapped by `xform`. Throws EmptyRegionSet.
  /// Remembered by transform.
  qcRect encloseRect(const qcXform<2>& xform) const;

  /// Merges regions that cross into one and repairs every region by its own regularize(). A set
  /// that is not self-intersecting is copied as it is. Remembered.
  ///
  /// Two regions are merged into one ring that runs around each as that region is wound. What
  /// becomes of their overlap depends on their winding and on their first vertices, see
  /// docs/repair.md.
  ///
  /// Merging is a single pass over pairs i < j that looks at outlines only: a region that crosses
  /// the result of a later merge may stay unmerged. Where that matters, repeat until
  /// isSelfIntersecting() is false. `result`, which may be this set, is unchanged when a region
  /// cannot be repaired (see qcRegion::regularize()). Merging takes O(m log m) for m vertices as
  /// long as few edges lie near edges of other regions that they do not cross. If a region has
  /// fewer than 2 vertices or coordinates that are not finite, every pair of regions is compared.
  /// Then the merged regions, with up to three times as many vertices in all, are repaired.
  void regularize(qcRegionSet& result) const;
  /// The same with the regions' outerHull().
  void outerHull(qcRegionSet& result) const;

  /// Draws every region by qcRegion::draw(tablet, color, layers), which draws nothing for plain
  /// regions: draw their outlines with `region->draw(tablet, mode, color, layers)`.
  void draw(qcUITablet& tablet, const qcColor& color, const qcUITablet::Layers& layers) const;

 protected:
  /// Current record version 1: the qcPersistent record, the list of regions, cachedVectorSize.
  /// Version 0, without cachedVectorSize, is still read.
  void dispatchSerialize(qcArchive& archive) override;
  /// The fields of a record of the given version; throws qcArchive::UnknownVersion for others.
  virtual void serialize_(qcArchive& archive, unsigned char version);
  /// Hook for sets that carry data for each vertex: called after the regions have been set. Does
  /// nothing here.
  virtual void makeDataConsistentWithPoints();
  /// Its counterpart: called after the data have been set.
  virtual void makePointsConsistentWithData();
  /// Forgets every answer and sends a change notice.
  virtual void cleanCacheInfo();

  /// Replaces the regions and nothing else: no answer is forgotten, no hook is called.
  void setRegions(const std::vector<qcPtrHandle_const<qcRegion>>& regions);
  /// Throws EmptyRegionSet when there is no region.
  void checkEmptyRegionSet() const;

 private:
  /// Gives the tests access to what is remembered.
  friend struct qc_RememberedBy;

  CNTR_LOCAL static qcPersistent* make();
  CNTR_LOCAL static qc_Instantiator sExemplar;

  CNTR_LOCAL void repair(qcContourDefs::IntersectionMode mode);
  CNTR_LOCAL bool hasCrossingPair() const;
  /// The regions by place; null for small sets and for sets with regions that cannot be queried.
  CNTR_LOCAL const cntr::index::RegionIndex* index() const;
  CNTR_LOCAL std::shared_ptr<const cntr::index::RegionIndex> madeIndex() const;
  CNTR_LOCAL void assignRepaired(qcRegionSet& result, bool outerHullMode) const;
  CNTR_LOCAL void outerHullRegularize(qcRegionSet& result, bool outerHullMode) const;
  /// The regions with those that cross merged into one: by their index, or one pair after the
  /// other.
  CNTR_LOCAL std::vector<qcPtrHandle_const<qcRegion>> merged() const;
  CNTR_LOCAL std::vector<qcPtrHandle_const<qcRegion>> mergedByPlace(
      const cntr::index::RegionIndex& known) const;
  CNTR_LOCAL std::vector<qcPtrHandle_const<qcRegion>> mergedPairByPair() const;
  CNTR_LOCAL qc_RegionSetCache& cache() const;

  std::vector<qcPtrHandle_const<qcRegion>> regions_;
  long cachedVectorSize_ = 3;
  mutable std::unique_ptr<qc_RegionSetCache> cache_;
};

/// @}
