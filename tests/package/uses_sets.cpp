// SPDX-License-Identifier: MIT
//
// Asks libcntrsets for the union of two squares; ends with 0 when it is right.

#include <cstdlib>
#include <vector>

#include <cntrsets/filled.h>
#include <cntrsets/sets.h>

int main() {
  const std::vector<qcRings> a{{{{0, 0}, {4, 0}, {4, 4}, {0, 4}}, {}}};
  const std::vector<qcRings> b{{{{2, 2}, {6, 2}, {6, 6}, {2, 6}}, {}}};
  const std::vector<qcRings> both = qf_Union(a, b);
  const bool right =
      both.size() == 1 && both.front().outline.size() == 8 && qf_FilledMoments(both).area() == 28.0;
  return right ? EXIT_SUCCESS : EXIT_FAILURE;
}
