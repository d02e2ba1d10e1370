// SPDX-License-Identifier: MIT
//
// Asks each room of libcntr for something; ends with 0 when all answers are right.

#include <cstdlib>
#include <vector>

#include <cntr/ellipse.h>
#include <cntr/regionst.h>
#include <cntrtmpl/contourt.h>

int main() {
  const qcPtrHandle_const<qcRegion> plate(new qcRegion(
      std::vector<qcVector<2>>{{0, 0}, {40, 0}, {40, 30}, {0, 30}}, qcContourDefs::eRegularize));
  const qcRegionSet set(std::vector{plate}, qcContourDefs::eNoIntersectionRepair);
  const qcContourT<qcEdgelet> edge({{{1, 2}, 7, qcAngle8(64)}, {{4, 6}, 7, qcAngle8(64)}});
  const bool right =
      set.area(true) == 1200.0 && edge.length() == 10.0 && qf_StdDev({1.0, 3.0}) == 1.0;
  return right ? EXIT_SUCCESS : EXIT_FAILURE;
}
