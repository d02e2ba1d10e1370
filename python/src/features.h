// SPDX-License-Identifier: MIT
//
// Shapes from and to the features of qcOutlines.

#pragma once

#include <nanobind/nanobind.h>

#include <cstddef>

#include <cntrtable/outlines.h>

namespace python {

/// A copy of the feature: a Region or an open Contour, a list of them if it has several parts, None
/// if it is eNothing. REQUIRES: feature < outlines.size().
nanobind::object shapeOf(const qcOutlines& outlines, std::size_t feature);

/// Adds a Contour, a Region or a RegionSet as a feature: areas, or a line if it is open, with its
/// label; a RegionSet has no label. REQUIRES: `object` is one of these.
void addShape(qcOutlinesBuilder& builder, nanobind::handle object);

}  // namespace python
