// SPDX-License-Identifier: MIT
//
// How far each stretch of a measured boundary is from the nominal one, for pictures. comparison.h
// summarises the distances.

#pragma once

#include <vector>

#include <cntrformats/feature.h>
#include <tools/answers/nominals.h>

namespace tool {

/// A straight piece of a measured boundary.
struct Stretch {
  qcVector<2> from;
  qcVector<2> to;
  /// The signed distance of the end that is farther from the nominal boundary, as in
  /// qf_Deviation().
  double deviation = 0.0;
};

/// The whole measured boundary, in pieces between its vertices that are no longer than the steps of
/// `cntr compare`, in the coordinates of the file. One call at a time; throws what compared()
/// throws.
std::vector<Stretch> stretchesOf(const formats::Geometry& measured, const Nominal& nominal);

/// The nominal boundary, edge by edge, in the coordinates of the file, without deviations.
std::vector<Stretch> edgesOf(const Nominal& nominal);

}  // namespace tool
