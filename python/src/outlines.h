// SPDX-License-Identifier: MIT
//
// The Python class Outlines, many features at once: it is qcOutlines itself. Where they come from
// is in outlinesources.cpp and imagesources.cpp, what is made of them in outlinesforms.cpp.

#pragma once

#include <nanobind/nanobind.h>

#include <cntrtable/outlines.h>

namespace python {

using OutlinesClass = nanobind::class_<qcOutlines>;

/// Defines cntr.Outlines.
void bindOutlines(nanobind::module_& module);

/// Define its static methods from_...(): those of forms that hold features, and those of what image
/// libraries find.
void bindOutlineSources(OutlinesClass& type);
void bindImageSources(OutlinesClass& type);
/// Defines its methods to_...(), and those by which other packages take it.
void bindOutlineForms(OutlinesClass& type);

}  // namespace python
