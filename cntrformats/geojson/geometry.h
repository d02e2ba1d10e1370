// SPDX-License-Identifier: MIT
//
// GeoJSON geometries become parts: outlines with holes, or open lines.

#pragma once

#include <cntrformats/feature.h>
#include <cntrformats/json.h>

namespace formats {

/// True for an object whose type is one of GeoJSON's seven geometries.
bool isGeometry(const Json& json);

/// Reads a Polygon, MultiPolygon, LineString or MultiLineString. A ring's repeated closing point is
/// dropped; a ring without one is taken as closed all the same. Coordinates beyond x and y are
/// passed over.
///
/// Throws FeatureError for anything else, for fewer than 3 vertices in a ring or 2 in a line, and
/// for what is not a number; the message names the place.
Geometry readGeometry(const Json& json);

}  // namespace formats
