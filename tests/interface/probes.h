// SPDX-License-Identifier: MIT
//
// The protected names of shapes and of what is archivable, as derived classes see them.

#pragma once

#include <cntr/regionst.h>

struct PersistentProbe : qcPersistent {
  using qcPersistent::dispatchSerialize;
  using qcPersistent::haveVisited;
  using qcPersistent::mutating_;
  using qcPersistent::serializePointer;
  using qcPersistent::setVisited;
};

struct ContourProbe : qcContour {
  using qcContour::checkEmptyContour;
  using qcContour::cleanCacheInfo;
  using qcContour::computeLineSegs;
  using qcContour::dispatchSerialize;
  using qcContour::intersections;
  using qcContour::lineSegs;
  using qcContour::makeDataConsistentWithPoints;
  using qcContour::makePointsConsistentWithData;
  using qcContour::medianFeatureSize;
  using qcContour::serialize_;
  using qcContour::setPoints;
  using qcContour::validLine;
};

struct RegionProbe : qcRegion {
  using qcRegion::checkEmptyContour;
  using qcRegion::cleanCacheInfo;
  using qcRegion::dispatchSerialize;
  using qcRegion::makeDataConsistentWithPoints;
  using qcRegion::makePointsConsistentWithData;
  using qcRegion::serialize_;
};

struct SetProbe : qcRegionSet {
  using qcRegionSet::checkEmptyRegionSet;
  using qcRegionSet::cleanCacheInfo;
  using qcRegionSet::dispatchSerialize;
  using qcRegionSet::makeDataConsistentWithPoints;
  using qcRegionSet::makePointsConsistentWithData;
  using qcRegionSet::serialize_;
  using qcRegionSet::setRegions;
};
