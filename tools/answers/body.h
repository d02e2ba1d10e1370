// SPDX-License-Identifier: MIT
//
// Area, centre and second moments of outlines with holes: all that the program tells of where the
// mass of a feature is comes from here.

#pragma once

#include <vector>

#include <cntr/inertia.h>
#include <cntrformats/shapes.h>

namespace tool {

/// True for an area that has a centre: the library takes what is smaller for a line and puts its
/// centre at (0, 0).
bool isArea(double area);

/// Area, centre and second moments of several outlines together, less their holes if asked for,
/// even if they cross. Outlines may run either way. REQUIRES: parts of outlines, not of lines.
qc_InertiaData inertiaOf(const std::vector<qcRings>& parts, bool withHoles);

/// The library's own answer for a set. A region tells its centre with holes once only, so a set is
/// to be asked once.
qcVector<2> centreOf(const qcRegionSet& set, bool withHoles);

/// A centre for the eye: the centre of mass of an outline less its holes, even if they cross, or
/// the mean position of a line or of an outline without an area.
qcVector<2> middleOf(const qcRings& part, bool closed);

}  // namespace tool
