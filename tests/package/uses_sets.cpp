// SPDX-License-Identifier: MIT
//
// Asks libcntrsets for the union of two squares, and libcntr for its area; ends with 0 when both
// are right.

#include <cstdlib>
#include <vector>

#include <cntrsets/rings.h>
#include <cntrsets/sets.h>

int main() {
  const std::vector<qcRings> a{{{{0, 0}, {4, 0}, {4, 4}, {0, 4}}, {}}};
  const std::vector<qcRings> b{{{{2, 2}, {6, 2}, {6, 6}, {2, 6}}, {}}};
  const std::vector<qcRings> both = qf_Union(a, b);
  const bool right = both.size() == 1 && qf_ToRegion(both.front()).area(true) == 28.0;
  return right ? EXIT_SUCCESS : EXIT_FAILURE;
}
