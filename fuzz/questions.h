// SPDX-License-Identifier: MIT
//
// Questions drawn from a fuzzer's bytes, put to a shape of the library and to its plain form. The
// program ends when the answers differ in a bit, or one throws what the other does not.

#pragma once

#include <cntr/regionst.h>
#include <testing/plain/set.h>

#include "input.h"

namespace fuzz {

/// How much the plain answers may cost that are still asked for, about in tests of an edge.
class Patience {
 public:
  explicit Patience(std::size_t edgeTests) : left_(edgeTests) {}

  bool isOver() const { return left_ == 0; }
  /// True when so much is left, and takes it.
  bool allows(std::size_t edgeTests) {
    const bool isAllowed = edgeTests <= left_;
    left_ -= isAllowed ? edgeTests : left_;
    return isAllowed;
  }

 private:
  std::size_t left_;
};

/// Each asks one question, as far as there is patience for it.
void askContour(Input& input, Patience& patience, const qcContour& made,
                const plain::Contour& expected);
/// Also the questions about the outer boundary. None about the centre of mass with holes: the
/// answer depends on what was asked before.
void askRegion(Input& input, Patience& patience, const qcRegion& made,
               const plain::Region& expected);
/// Leaves out the centre of mass with holes, too.
void askSet(Input& input, Patience& patience, const qcRegionSet& made,
            const plain::Regions& expected);

/// Vertices of a region, of its holes and theirs.
std::size_t countVertices(const plain::Region& region);
std::size_t countVertices(const plain::Regions& regions);

}  // namespace fuzz
