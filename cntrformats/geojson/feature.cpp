// SPDX-License-Identifier: MIT

#include <cntrformats/geojson/feature.h>

#include <cmath>

#include <cntrformats/errors.h>
#include <cntrformats/geojson/edgelets.h>
#include <cntrformats/geojson/geometry.h>

namespace formats {

namespace {

constexpr double largestLabel = 4294967295.0;

/// Programs that know one kind of number only write labels with a fraction of 0.
std::optional<unsigned long> readLabel(const Json& label) {
  if (label.is_null()) return std::nullopt;
  const double value = label.is_number() ? label.get<double>() : -1.0;
  if (value >= 0.0 && value <= largestLabel && value == std::floor(value)) {
    return static_cast<unsigned long>(value);
  }
  throw FeatureError("label is " + excerpt(label) + ", not a whole number from 0 to 4294967295");
}

std::optional<std::string> readId(const Json& id) {
  if (id.is_null()) return std::nullopt;
  return id.is_string() ? id.get<std::string>() : compact(id);
}

Feature read(const Json& json) {
  Feature feature;
  if (isGeometry(json)) {
    feature.geometry = readGeometry(json);
    return feature;
  }
  if (member(json, "type") != "Feature") throw FeatureError(excerpt(json) + " is not a Feature");
  const Json& properties = member(json, "properties");
  feature.label = readLabel(member(properties, "label"));
  feature.id = readId(member(json, "id"));
  feature.geometry = readGeometry(member(json, "geometry"));
  readEdgelets(member(properties, "edgelets"), feature.geometry);
  return feature;
}

}  // namespace

Feature readFeature(Json json, std::size_t number, Keep keep) {
  try {
    Feature feature = read(json);
    feature.number = number;
    if (keep == Keep::eSourceToo) feature.source = std::move(json);
    return feature;
  } catch (const FeatureError& error) {
    throw UnreadableFeature(error.what(), keep == Keep::eSourceToo ? std::move(json) : Json());
  }
}

}  // namespace formats
