// SPDX-License-Identifier: MIT
//
// The Python class Outlines, many features at once: it is qcOutlines itself. Its sources are in
// outlinesources.cpp and imagesources.cpp, the conversions to other forms in outlinesforms.cpp.

#pragma once

#include <nanobind/nanobind.h>

#include <cntrtable/outlines.h>

namespace python {

using OutlinesClass = nanobind::class_<qcOutlines>;

/// Defines cntr.Outlines.
void bindOutlines(nanobind::module_& module);

/// Define its static methods from_...(): from other forms of features, and from what image
/// libraries find.
void bindOutlineSources(OutlinesClass& type);
void bindImageSources(OutlinesClass& type);
/// Defines its methods to_...(), and those by which other packages accept it.
void bindOutlineForms(OutlinesClass& type);

}  // namespace python
