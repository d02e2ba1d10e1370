// SPDX-License-Identifier: MIT
//
// Integrals over the areas that rings bound, with twice the digits of a double.

#pragma once

#include <cstddef>
#include <span>

#include <cntr/plane/twofold.h>
#include <cntrsets/frame.h>

namespace cntr::sets {

/// Integrals over an area, each times the number in its name.
struct Integrals {
  plane::Twofold area2{};
  plane::Twofold x6{};
  plane::Twofold y6{};
  plane::Twofold xx12{};
  plane::Twofold xy24{};
  plane::Twofold yy12{};

  void add(const Integrals& other, const plane::Twofold& factor) {
    area2 = area2 + other.area2 * factor;
    x6 = x6 + other.x6 * factor;
    y6 = y6 + other.y6 * factor;
    xx12 = xx12 + other.xx12 * factor;
    xy24 = xy24 + other.xy24 * factor;
    yy12 = yy12 + other.yy12 * factor;
  }
};

/// Over the ring in the coordinates of the frame, negative where it runs clockwise.
Integrals integralsOf(std::span<const qcVector<2>> ring, const Frame& frame);

/// Only the first three of them, the same bits.
Integrals firstIntegralsOf(std::span<const qcVector<2>> ring, const Frame& frame);

/// All of them, without the instructions of newer processors.
Integrals integralsOnAnyProcessor(std::span<const qcVector<2>> ring, const Frame& frame);

/// Only the first of the integrals.
plane::Twofold doubledAreaOf(std::span<const qcVector<2>> ring, const Frame& frame);

}  // namespace cntr::sets
