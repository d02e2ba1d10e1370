// SPDX-License-Identifier: MIT
//
// Anchors the virtual table of the drawing surface.

#include <platform/display/tablet.h>

qcUITablet::~qcUITablet() = default;
