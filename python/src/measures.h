// SPDX-License-Identifier: MIT
//
// Measures of one shape: those of the one list, as they are measured of many outlines.

#pragma once

#include <initializer_list>
#include <vector>

#include <cntrtable/facts.h>
#include <python/src/shape.h>

namespace python {

/// What is known of a shape that is measured. Throws qcContourDefs::EmptyRegionSet and EmptyContour
/// where there is too little to measure, and what table::factsOf() throws.
table::Facts factsOf(const Shape& shape, table::Needs needs);

/// The measures of these names, which are numbers; NaN where the question has no meaning.
std::vector<double> answersOf(const table::Facts& facts, std::initializer_list<const char*> names);

/// The same of a shape. Releases the GIL.
std::vector<double> measuresOf(const Shape& shape, std::initializer_list<const char*> names);

}  // namespace python
