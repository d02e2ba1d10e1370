// SPDX-License-Identifier: MIT
//
// Lets tests see what shapes remember: the indexes that are there, and how questions were answered.

#pragma once

#include <cntr/model/contourcache.h>
#include <cntr/model/regionsetcache.h>

struct qc_RememberedBy {
  static const qc_ContourCache& contour(const qcContour& contour) { return contour.cache(); }
  static std::size_t containmentWork(const qcContour& contour) { return contour.containmentWork_; }
  static bool anything(const qcContour& contour) { return contour.cache_ != nullptr; }
  /// Tests may put another index there.
  static qc_RegionSetCache& set(const qcRegionSet& set) { return set.cache(); }
};
