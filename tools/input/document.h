// SPDX-License-Identifier: MIT
//
// A GeoJSON file: its features, and all that it holds besides.

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <tools/diagnostics.h>
#include <tools/feature.h>
#include <tools/input/json.h>

namespace tool {

// Nothing that moves or dies here throws; nlohmann-json does not say so.
struct Document {  // NOLINT(bugprone-exception-escape)
  /// The file's name as messages show it.
  std::string name;
  Json json;
  /// Those that could be read.
  std::vector<Feature> features;
};

/// Reads a FeatureCollection, a Feature or a geometry from a file, "-" for standard input. Features
/// that cannot be read are reported and left out. A file that cannot be read, is no GeoJSON or
/// holds no features is reported, and nothing is returned.
std::optional<Document> readDocument(const std::string& file, Diagnostics& diagnostics);

/// The JSON objects that `json` counts as its features, in order: the members of a collection, or
/// the one Feature or geometry that it is. Throws FileError when there is none.
std::vector<const Json*> featuresOf(const Json& json);

}  // namespace tool
