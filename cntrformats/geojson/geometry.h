// SPDX-License-Identifier: MIT
//
// GeoJSON geometries become parts: outlines with holes, or open lines.

#pragma once

#include <string>
#include <string_view>

#include <cntrformats/feature.h>
#include <cntrformats/geojson/parse.h>

namespace formats {

/// True for the type of one of GeoJSON's seven geometries.
bool isGeometryType(std::string_view type);

/// Reads a Polygon, MultiPolygon, LineString or MultiLineString, or a GeometryCollection of either
/// outlines or lines, from an object of this type. A ring's repeated closing point is dropped; a
/// ring without one still counts as closed. Coordinates beyond x and y are ignored, and so are
/// empty members of a geometry with several members.
///
/// Throws FeatureError for anything else, for fewer than 3 vertices in a ring or 2 in a line, and
/// for a coordinate that is not a number; the message names the place.
Geometry readGeometry(JsonObject& object, const std::string& type);

/// The same for the member `geometry` of a feature.
Geometry readGeometry(JsonValue value);

/// A list of positions [x, y]; `place` is for messages.
Points readPositions(JsonValue value, const std::string& place);

}  // namespace formats
