// SPDX-License-Identifier: MIT
//
// Small figures, handles and watchful regions for the tests of regions and region sets.

#pragma once

#include <string>
#include <vector>

#include <cntr/region.h>
#include <cntr/regionst.h>
#include <gtest/gtest.h>
#include <testing/twin/same.h>
#include <tests/cntr/figures.h>
#include <tests/platform/archive_bytes.h>

#include "refusals.h"

namespace fixtures {

using figures::rectangle;
using figures::square;
using Points = std::vector<qcVector<2>>;
using Handle = qcPtrHandle_const<qcRegion>;
using Handles = std::vector<Handle>;

inline constexpr qcContourDefs::IntersectionMode keep = qcContourDefs::eNoIntersectionRepair;

/// Two triangles that meet at (1, 1): the second edge is the first that crosses nothing.
inline Points bowTie() { return {{0, 0}, {2, 2}, {2, 0}, {0, 2}}; }

/// A five-pointed star drawn in one stroke: every edge is crossed twice.
inline Points pentagram() { return {{0, 10}, {6, -8}, {-9, 3}, {9, 3}, {-6, -8}}; }

inline Handle handle(const Points& points) { return Handle(new qcRegion(points, keep)); }

/// A region with holes, through a handle.
inline Handle handle(const Points& points, const Handles& holes) {
  const qcPtrHandle<qcRegion> region(new qcRegion(points, keep));
  region->holes(holes);
  return region;
}

inline qcRegion regionWith(const Points& points, const Handles& holes) {
  qcRegion region(points, keep);
  region.holes(holes);
  return region;
}

inline qcRegionSet setOf(const Handles& regions) { return qcRegionSet(regions, keep); }

/// The square from 0 to 10 with the hole from 2 to 4.
inline qcRegion squareWithHole() { return regionWith(square(0, 0, 10), {handle(square(2, 2, 2))}); }

/// A square from 0 to 10 whose only hole is a null handle, which no setter accepts: the archive
/// gives one in place of an object of another class.
inline qcRegion regionWithNullHole() {
  qcRegion region;
  qcRegion stored(square(0, 0, 10), keep);
  std::string bytes = storedBytes([&](qcArchive& archive) { archive || stored; });
  bytes.resize(bytes.size() - 4);
  loadBytes(bytes + fromHex("01000000 00000000"), [&](qcArchive& archive) { archive || region; });
  return region;
}

/// Makes its own contour part, as the most derived class must, and remembers its answers when asked
/// to: they then show what was computed before, and what anew.
class WatchedRegion : public qcRegion {
 public:
  explicit WatchedRegion(const Points& points) : qcContour(points, true, 0) {}

  /// Replaces the vertices and forgets nothing.
  void replaceBehindItsBack(const Points& points) {
    keepsAnswers_ = true;
    setPoints(points);
    keepsAnswers_ = false;
  }

 protected:
  void cleanCacheInfo() override {
    if (!keepsAnswers_) qcRegion::cleanCacheInfo();
  }

 private:
  bool keepsAnswers_ = false;
};

/// The same for sets.
class WatchedSet : public qcRegionSet {
 public:
  explicit WatchedSet(const Handles& regions) : qcRegionSet(regions, keep) {}
  void replaceBehindItsBack(const Handles& regions) { setRegions(regions); }
};

/// How many change notices `act` makes `object` send.
template <class Act>
unsigned long noticesOf(qcPersistent& object, Act act) {
  const bool wasTracking = object.isTracking();
  object.isTracking(true);
  const unsigned long before = object.changes();
  act();
  object.isTracking(wasTracking);
  return object.changes() - before;
}

}  // namespace fixtures
