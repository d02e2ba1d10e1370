// SPDX-License-Identifier: MIT
//
// Measures of one shape: those of the one list, computed as for many outlines.

#pragma once

#include <initializer_list>
#include <vector>

#include <cntrtable/facts.h>
#include <python/src/shape.h>

namespace python {

/// The facts about a shape. Throws qcContourDefs::EmptyRegionSet and EmptyContour if there is too
/// little to measure, and what table::factsOf() throws.
table::Facts factsOf(const Shape& shape, table::Needs needs);

/// The measures of these names, which are numbers; NaN if the question has no meaning.
std::vector<double> answersOf(const table::Facts& facts, std::initializer_list<const char*> names);

/// The same for a shape. Releases the GIL.
std::vector<double> measuresOf(const Shape& shape, std::initializer_list<const char*> names);

}  // namespace python
