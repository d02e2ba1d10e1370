// SPDX-License-Identifier: MIT
//
// A feature from its JSON, and back.

#pragma once

#include <string>
#include <string_view>

#include <cntrformats/feature.h>
#include <cntrformats/geojson/parse.h>
#include <cntrformats/reader.h>
#include <cntrformats/writer.h>

namespace formats {

/// The type of a document of features, as it stands there.
inline constexpr std::string_view featureCollection = "\"FeatureCollection\"";

/// Reads a Feature or a geometry, the whole text. Throws FeatureError.
void readFeature(std::string& text, const TextPlace& place, Feature& feature);

// What members of features mean; null means nothing. These throw FeatureError.

/// A whole number from 0 to 4294967295, or a text.
std::optional<Label> readLabel(JsonValue value);
/// A text, or any other value as it is written.
std::optional<std::string> readId(JsonValue value);

/// A Feature, or a geometry if the feature was read from one: what it was read from with its rings
/// as asked for, edge elements staying with their vertices, or else a new Feature. Rings of a new
/// one are as GeoJSON wants them.
std::string toJson(const Feature& feature, Rings rings);

/// Gives the feature new outlines, in the JSON that it was read from, too. What described the old
/// outlines and does not fit the new ones goes: boxes and edge elements.
void replaceGeometry(Feature& feature, const Geometry& geometry);

}  // namespace formats
