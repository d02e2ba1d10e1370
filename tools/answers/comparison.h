// SPDX-License-Identifier: MIT
//
// How far a measured feature is from its nominal one.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include <cntr/deviation.h>
#include <cntrformats/feature.h>
#include <tools/answers/nominals.h>

namespace tool {

struct ComparingOptions {
  /// Move the measured feature onto its nominal first.
  bool align = false;
  /// The longest step between the points at which distances are taken; empty for 1/1024 of the
  /// measured length.
  std::optional<double> spacing;
  /// The length of a unit of the coordinates, in the unit of the other lengths here and of the
  /// answers.
  double scale = 1.0;
  /// The largest Hausdorff distance that passes.
  std::optional<double> tolerance;
};

/// A rotation about the origin, in degrees from the x axis towards the y axis, followed by a shift.
struct Placement {
  double angle = 0.0;
  qcVector<2> shift;
};

struct Comparison {
  qcDeviation deviation;
  double hausdorff = 0.0;
  /// The area that both fill divided by the area that either fills; empty with open lines.
  std::optional<double> iou = {};
  /// The measured area less the nominal one; empty with open lines.
  std::optional<double> areaDifference = {};
  /// What moved the measured feature onto its nominal.
  std::optional<Placement> placement = {};
  /// Empty without a tolerance.
  std::optional<bool> inTolerance = {};
  /// Any further remark.
  std::string note = {};
};

/// Compares the boundaries of what both fill. Lengths are computed in coordinates in which the size
/// of the nominal is about 1, wherever it lies; the Hausdorff distance is below the true one by at
/// most 1e-9 of the larger extent. Any thread may compare. Throws exceptions of the library and of
/// the set operations.
Comparison compared(const formats::Geometry& measured, const Nominal& nominal,
                    const ComparingOptions& options);

}  // namespace tool
