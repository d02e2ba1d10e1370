// SPDX-License-Identifier: MIT
//
// Outlines from and to GeoJSON, by the readers and writers that the program uses.

#pragma once

#include <python/src/outlines.h>

namespace python {

/// Defines Outlines.from_geojson() and Outlines.to_geojson().
void bindGeoJson(OutlinesClass& type);

}  // namespace python
