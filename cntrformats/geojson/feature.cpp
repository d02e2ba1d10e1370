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
std::optional<Label> readLabel(const Json& label) {
  if (label.is_null()) return std::nullopt;
  if (label.is_string()) return label.get<std::string>();
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

void read(const Json& json, Feature& feature) {
  if (isGeometry(json)) {
    feature.geometry = readGeometry(json);
    return;
  }
  if (member(json, "type") != "Feature") throw FeatureError(excerpt(json) + " is not a Feature");
  const Json& properties = member(json, "properties");
  feature.id = readId(member(json, "id"));
  feature.label = readLabel(member(properties, "label"));
  feature.geometry = readGeometry(member(json, "geometry"));
  readEdgelets(member(properties, "edgelets"), feature.geometry);
}

}  // namespace

void readFeature(const Json& json, Keep keep, Feature& feature) {
  if (keep == Keep::eSourceToo) feature.text = compact(json);
  read(json, feature);
}

}  // namespace formats
