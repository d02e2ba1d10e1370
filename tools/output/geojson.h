// SPDX-License-Identifier: MIT
//
// GeoJSON as it is written: rings closed and turned as the format wants them, a feature to a line.

#pragma once

#include <string>

#include <tools/feature.h>
#include <tools/input/json.h>

namespace tool {

/// A Polygon or MultiPolygon, or LineString or MultiLineString. Rings repeat their first point at
/// the end; outlines have positive area in the file's coordinates, holes negative.
Json toJson(const Geometry& geometry);

/// The text of a file: a collection with each of its members and features on a line of its own.
std::string toText(const Json& document);

}  // namespace tool
