// SPDX-License-Identifier: MIT

#include <tools/input/document.h>

#include <cmath>

#include <tools/errors.h>
#include <tools/input/edgelets.h>
#include <tools/input/geometry.h>
#include <tools/input/text.h>

namespace tool {

namespace {

constexpr double largestLabel = 4294967295.0;

/// The library's message without its name and number, which tell a user nothing.
std::string reason(const Json::exception& error) {
  const std::string message = error.what();
  const std::size_t end = message.find("] ");
  return end == std::string::npos ? message : message.substr(end + 2);
}

Json parse(const std::string& text) {
  if (text.find_first_not_of(" \t\r\n") == std::string::npos) throw FileError("nothing in it");
  try {
    return Json::parse(text);
  } catch (const Json::exception& error) {
    throw FileError("not JSON: " + reason(error));
  }
}

/// Programs that know one kind of number only write labels with a fraction of 0.
std::optional<unsigned long> readLabel(const Json& label) {
  if (label.is_null()) return std::nullopt;
  const double value = label.is_number() ? label.get<double>() : -1.0;
  if (value >= 0.0 && value <= largestLabel && value == std::floor(value)) {
    return static_cast<unsigned long>(value);
  }
  throw FeatureError("label is " + excerpt(label) + ", not a whole number from 0 to 4294967295");
}

Feature readFeature(const Json& json, std::size_t number) {
  if (isGeometry(json)) return {number, std::nullopt, readGeometry(json)};
  if (member(json, "type") != "Feature") throw FeatureError(excerpt(json) + " is not a Feature");
  const Json& properties = member(json, "properties");
  Feature feature{number, readLabel(member(properties, "label")),
                  readGeometry(member(json, "geometry"))};
  readEdgelets(member(properties, "edgelets"), feature.geometry);
  return feature;
}

void readFeatures(Document& document, Diagnostics& diagnostics) {
  std::size_t number = 0;
  for (const Json* json : featuresOf(document.json)) {
    ++number;
    try {
      document.features.push_back(readFeature(*json, number));
    } catch (const FeatureError& error) {
      diagnostics.badFeature(document.name, number, error.what());
    }
  }
}

}  // namespace

std::vector<const Json*> featuresOf(const Json& json) {
  if (isGeometry(json) || member(json, "type") == "Feature") return {&json};
  const Json& features = member(json, "features");
  if (member(json, "type") != "FeatureCollection" || !features.is_array()) {
    throw FileError("not GeoJSON: neither a FeatureCollection, nor a Feature, nor a geometry");
  }
  if (features.empty()) throw FileError("nothing in it: the collection has no features");
  std::vector<const Json*> found;
  for (const Json& feature : features) found.push_back(&feature);
  return found;
}

std::optional<Document> readDocument(const std::string& file, Diagnostics& diagnostics) {
  Document document;
  document.name = file == "-" ? "standard input" : file;
  try {
    document.json = parse(readText(file));
    readFeatures(document, diagnostics);
    return document;
  } catch (const FileError& error) {
    diagnostics.badFile(document.name, error.what());
    return std::nullopt;
  }
}

}  // namespace tool
