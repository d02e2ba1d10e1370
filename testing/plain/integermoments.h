// SPDX-License-Identifier: MIT
//
// The integrals of powers of x and y over what a simple ring with integer coordinates bounds,
// without any rounding.

#pragma once

#include <cstddef>
#include <vector>

#include <platform/core/vector.h>

namespace plain {

__extension__ using Wide = __int128;

/// The names give the integrand and its factor: xy24 is 24 times the integral of xy. All are
/// negative for a ring that runs clockwise.
struct IntegerMoments {
  Wide area2 = 0;
  Wide x6 = 0;
  Wide y6 = 0;
  Wide xx12 = 0;
  Wide xy24 = 0;
  Wide yy12 = 0;

  explicit IntegerMoments(const std::vector<qcVector<2>>& ring) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const qcVector<2>& a = ring[i];
      const qcVector<2>& b = ring[(i + 1) % ring.size()];
      const auto ax = static_cast<Wide>(a.x());
      const auto ay = static_cast<Wide>(a.y());
      const auto bx = static_cast<Wide>(b.x());
      const auto by = static_cast<Wide>(b.y());
      const Wide cross = ax * by - bx * ay;
      area2 += cross;
      x6 += cross * (ax + bx);
      y6 += cross * (ay + by);
      xx12 += cross * (ax * ax + ax * bx + bx * bx);
      yy12 += cross * (ay * ay + ay * by + by * by);
      xy24 += cross * (2 * ax * ay + ax * by + bx * ay + 2 * bx * by);
    }
  }
};

}  // namespace plain
