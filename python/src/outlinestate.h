// SPDX-License-Identifier: MIT
//
// The complete state of Outlines as plain Python values, for pickle.

#pragma once

#include <python/src/outlines.h>

namespace python {

/// Defines what pickle needs.
void bindOutlineState(OutlinesClass& type);

}  // namespace python
