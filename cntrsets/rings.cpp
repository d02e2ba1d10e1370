// SPDX-License-Identifier: MIT
//
// Outlines with holes made into the library's regions.

#include <cntrsets/rings.h>

qcRegion qf_ToRegion(const qcRings& rings) {
  std::vector<qcPtrHandle_const<qcRegion>> holes;
  holes.reserve(rings.holes.size());
  for (const std::vector<qcVector<2>>& hole : rings.holes)
    holes.emplace_back(new qcRegion(hole, qcContourDefs::eNoIntersectionRepair));
  qcRegion region(rings.outline, qcContourDefs::eNoIntersectionRepair);
  region.holes(holes);
  return region;
}
