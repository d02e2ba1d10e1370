// SPDX-License-Identifier: MIT
//
// A feature from its JSON, and back.

#pragma once

#include <cntrformats/feature.h>
#include <cntrformats/json.h>
#include <cntrformats/reader.h>
#include <cntrformats/writer.h>

namespace formats {

/// Reads a Feature or a geometry. Throws FeatureError.
void readFeature(const Json& json, Keep keep, Feature& feature);

/// A Feature, or a geometry if the feature was read from one: what it was read from with its rings
/// as asked for, edge elements staying with their vertices, or else a new Feature. Rings of a new
/// one are as GeoJSON wants them.
Json toJson(const Feature& feature, Rings rings);

/// Gives the feature new outlines, in the JSON that it was read from, too. What described the old
/// outlines and does not fit the new ones goes: boxes and edge elements.
void replaceGeometry(Feature& feature, const Geometry& geometry);

}  // namespace formats
