// SPDX-License-Identifier: MIT
//
// What the rooms ask about: numbered shapes, regions and sets, and transforms whose numbers need no
// sine. Each random argument is drawn in a statement of its own, because the order of two draws in
// one expression would be the compiler's choice.

#pragma once

#include <cstddef>

#include <cntr/regionst.h>
#include <testing/shapes/shapes.h>

namespace golden {

using shapes::Point;
using shapes::Points;
using shapes::Random;

/// A star with gentle waves, a ring of spikes, a comb or a star that crosses itself, and four times
/// as often any shape at all, of up to 300 vertices.
shapes::Shape shape(std::size_t number);

/// Calls `ask(shape, random)` for the shapes numbered from 0 to `count` - 1.
template <class Ask>
void forEachShape(std::size_t count, Ask ask) {
  for (std::size_t number = 0; number < count; ++number) {
    Random random(number + 1000);
    ask(shape(number), random);
  }
}

/// A region of that shape with up to three holes within its box that do not cross it.
qcPtrHandle<qcRegion> regionWithHoles(std::size_t number);

/// One to nine regions, most of which overlap others.
qcRegionSet regionSet(std::size_t number);

/// The identity or any matrix and any translation.
qcXform<2> anyXform(Random& random);

}  // namespace golden
