// SPDX-License-Identifier: MIT
//
// Repair of a feature whose outlines cross themselves or each other, overlap or touch. The rules
// that follow outlines are in walk.h.

#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include <cntrformats/feature.h>

namespace tool {

enum class RepairRule {
  /// Fills what some part's outline winds around and none of that part's holes does.
  eNonZero,
  /// Fills what the rings wind around an odd number of times.
  eEvenOdd,
  /// The library's regularize().
  eWalk,
  /// The library's outerHull().
  eOuterHull
};

/// The vertices, parts and holes of a geometry.
struct Extent {
  std::size_t vertices = 0;
  std::size_t parts = 0;
  std::size_t holes = 0;
};

Extent extentOf(const formats::Geometry& geometry);

struct Repair {
  enum class Result {
    /// The rings already bound what the rule fills; they may start elsewhere, run in the other
    /// direction or be in another order.
    eUnchanged,
    eRepaired,
    /// The outlines are kept unchanged.
    eFailed
  };

  Result result = Result::eUnchanged;
  /// What replaces the feature's outlines; empty when they are kept unchanged.
  std::optional<formats::Geometry> geometry = {};
  /// What the rule fills; walk and outer-hull are compared with nonzero. Empty for open lines and
  /// if it could not be computed.
  std::optional<double> areaBefore = {};
  /// Empty for open lines and failures, and so are the numbers below.
  std::optional<double> areaAfter = {};
  std::optional<Extent> after = {};
  /// The spacing of the grid to which vertices had to be moved; empty in most cases.
  std::optional<double> snapped = {};
  /// Any further remark: why it failed, what is left out.
  std::string note = {};
};

/// Repairs all parts together. The results of nonzero and evenodd have the normal form of
/// cntrsets/sets.h; edge elements stay with their vertices if the rings are the same, and are left
/// out otherwise. A repair that loses more than the fraction `maxLoss` of the area fails, and so
/// does that of a feature without area. Open lines are unchanged.
Repair repaired(const formats::Geometry& geometry, RepairRule rule, double maxLoss);

}  // namespace tool
