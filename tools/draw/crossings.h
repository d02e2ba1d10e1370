// SPDX-License-Identifier: MIT
//
// Where the outlines, holes or lines of a feature cross themselves and each other.

#pragma once

#include <cntrformats/feature.h>

namespace tool {

/// The crossings, sorted. Those that share a square of the given size count as one, and only one is
/// held in memory. An outline crosses itself as defined by qcContour::isSelfIntersecting(); two
/// outlines also cross where they touch.
formats::Points crossingsOf(const formats::Geometry& geometry, double size);

}  // namespace tool
