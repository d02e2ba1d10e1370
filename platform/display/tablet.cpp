// SPDX-License-Identifier: MIT
//
// The home of the drawing surface's virtual table.

#include <platform/display/tablet.h>

qcUITablet::~qcUITablet() = default;
