// SPDX-License-Identifier: MIT
//
// Makes the library's regions from outlines with holes.

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
