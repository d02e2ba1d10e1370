// SPDX-License-Identifier: MIT
//
// Questions drawn from a fuzzer's bytes, put to a shape of the library and to its plain form. The
// program ends when the answers differ in a bit, or when only one of the two throws.

#pragma once

#include <cntr/regionst.h>
#include <testing/plain/set.h>

#include "input.h"

namespace fuzz {

/// A budget for the plain answers, roughly in tests of an edge.
class Patience {
 public:
  explicit Patience(std::size_t edgeTests) : left_(edgeTests) {}

  bool isOver() const { return left_ == 0; }
  /// True when this much is left, which is then used up.
  bool allows(std::size_t edgeTests) {
    const bool isAllowed = edgeTests <= left_;
    left_ -= isAllowed ? edgeTests : left_;
    return isAllowed;
  }

 private:
  std::size_t left_;
};

/// Each asks one question, as far as the budget allows.
void askContour(Input& input, Patience& patience, const qcContour& made,
                const plain::Contour& expected);
/// Includes the questions about the outer boundary, but not the centre of mass with holes: that
/// answer depends on earlier questions.
void askRegion(Input& input, Patience& patience, const qcRegion& made,
               const plain::Region& expected);
/// Leaves out the centre of mass with holes, too.
void askSet(Input& input, Patience& patience, const qcRegionSet& made,
            const plain::Regions& expected);

/// The number of vertices of a region, of its holes and of theirs.
std::size_t countVertices(const plain::Region& region);
std::size_t countVertices(const plain::Regions& regions);

}  // namespace fuzz
