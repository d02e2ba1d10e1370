// SPDX-License-Identifier: MIT
//
// Outlines as plain Python values that hold all there is of them, for pickle.

#pragma once

#include <python/src/outlines.h>

namespace python {

/// Defines what pickle needs.
void bindOutlineState(OutlinesClass& type);

}  // namespace python
