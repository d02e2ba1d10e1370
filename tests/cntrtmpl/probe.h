// SPDX-License-Identifier: MIT
//
// Short names for the classes with edge elements, the protected operations of each of their bases,
// and the counts of their hooks.

#pragma once

#include <vector>

#include <cntrtmpl/regionsett.h>
#include <platform/core/archive.h>

using ContourT = qcContourT<qcEdgelet>;
using RegionT = qcRegionT<qcEdgelet>;
using RegionSetT = qcRegionSetT<qcEdgelet>;

using Points = std::vector<qcVector<2>>;
using Edgelets = std::vector<qcEdgelet>;
using XformHandle = qcPtrHandle_const<qc2XformBase>;

/// Calls protected members on an object through a reference to `Base`, virtual ones virtually. No
/// object of this class is ever made.
template <class Base>
class Probe : public Base {
 public:
  Probe() = delete;

  static void rebuildData(Base& object) { (object.*(&Probe::makeDataConsistentWithPoints))(); }
  static void rebuildPoints(Base& object) { (object.*(&Probe::makePointsConsistentWithData))(); }
  static void forget(Base& object) { (object.*(&Probe::cleanCacheInfo))(); }
  static void serialize(Base& object, qcArchive& archive, unsigned char version) {
    (object.*(&Probe::serialize_))(archive, version);
  }
  static const std::vector<qcLineSeg>& edges(const Base& object) {
    return (object.*(&Probe::lineSegs))();
  }
};

/// A contour or region that counts how often its hooks run.
template <class Base>
class HookCounter : public Base {
 public:
  template <class... Arguments>
  explicit HookCounter(const Arguments&... arguments)
      : qcContour({}, true, 0), Base(arguments...) {}

  int dataRebuilt = 0;
  int pointsRebuilt = 0;

 protected:
  void makeDataConsistentWithPoints() override {
    ++dataRebuilt;
    Base::makeDataConsistentWithPoints();
  }
  void makePointsConsistentWithData() override {
    ++pointsRebuilt;
    Base::makePointsConsistentWithData();
  }
};
