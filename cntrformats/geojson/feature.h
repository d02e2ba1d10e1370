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

/// The type of a document of features, as written, with its quotes.
inline constexpr std::string_view featureCollection = "\"FeatureCollection\"";

/// Reads a Feature or a geometry, which is the whole text. Throws FeatureError.
void readFeature(const Passage& passage, Feature& feature);

// What the members of a feature mean; null means nothing. These throw FeatureError.

/// A whole number from 0 to 4294967295, or a string.
std::optional<Label> readLabel(JsonValue value);
/// A string, or any other value as it is written.
std::optional<std::string> readId(JsonValue value);

/// A Feature, or a geometry if the feature was read from one: the JSON that it was read from, with
/// its rings as requested and edge elements kept with their vertices, or else a new Feature, with
/// rings as GeoJSON requires.
std::string toJson(const Feature& feature, Rings rings);

/// Gives the feature new outlines, also in the JSON that it was read from. What describes the old
/// outlines is removed: boxes, and edge elements that do not fit the new ones.
void replaceGeometry(Feature& feature, const Geometry& geometry);

}  // namespace formats
