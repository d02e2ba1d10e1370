// SPDX-License-Identifier: MIT
//
// Sides for tests, in the coordinates of the plane.

#pragma once

#include <cstddef>
#include <vector>

#include <cntrsets/operations/sidetree.h>
#include <tests/cntrsets/features.h>

namespace features {

/// The sides of closed rings, except for those without length.
inline std::vector<cntr::sets::Side> sidesOf(const std::vector<Points>& rings) {
  std::vector<cntr::sets::Side> sides;
  for (const Points& ring : rings) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const qcVector<2>& to = ring[(i + 1) % ring.size()];
      if (ring[i] != to) sides.emplace_back(ring[i], to);
    }
  }
  return sides;
}

}  // namespace features
