// SPDX-License-Identifier: MIT
//
// The arguments from which shapes are made. Messages about bad arguments give the name, what was
// expected and what was given.

#pragma once

#include <nanobind/nanobind.h>

#include <vector>

#include <python/src/shape.h>

namespace python {

/// A curve of points of shape (n, 2), a label from 0 to 4294967295, and edge elements: None, or a
/// pair of lists of n numbers, magnitudes up to 65535 and angles up to 255.
Curve curveOf(nanobind::handle points, bool closed, nanobind::handle label, nanobind::handle edges);

/// Holes from an iterable of closed contours and arrays of points.
std::vector<Curve> holesOf(nanobind::handle holes);

/// Copies of an iterable of regions.
std::vector<Part> partsOf(nanobind::handle regions);

}  // namespace python
