// SPDX-License-Identifier: MIT
//
// Well-known text: a geometry as text.

#pragma once

#include <string>

#include <tools/feature.h>

namespace tool {

/// Reads a POLYGON, MULTIPOLYGON, LINESTRING or MULTILINESTRING; a LINEARRING is an outline. Rings
/// are treated as those of GeoJSON, see geometry.h, and so are coordinates beyond x and y, with or
/// without Z and M. Throws FeatureError; the message names the place.
Geometry parseWkt(const std::string& text);

}  // namespace tool
