// SPDX-License-Identifier: MIT
//
// Outlines as plain Python values that hold all there is of them, to be kept and to be made
// Outlines of again: for pickle and for files.

#pragma once

#include <python/src/outlines.h>

namespace python {

/// Defines take_apart() and put_together() of the module, and with these what pickle needs.
void bindOutlineState(nanobind::module_& module, OutlinesClass& type);

}  // namespace python
