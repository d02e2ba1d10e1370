// SPDX-License-Identifier: MIT
//
// GeoJSON as it is written.

#pragma once

#include <tools/feature.h>
#include <tools/output/writer.h>

namespace tool {

/// A Polygon or MultiPolygon, or LineString or MultiLineString. Rings repeat their first point at
/// the end; outlines have positive area in the file's coordinates, holes negative, and the first
/// vertex stays the first.
Json toJson(const Geometry& geometry);

/// A Feature, or a geometry if the feature was read from one: what it was read from with its rings
/// as asked for, edge elements staying with their vertices, or else a new Feature.
Json toJson(Feature feature, Rings rings);

}  // namespace tool
