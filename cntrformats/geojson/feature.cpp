// SPDX-License-Identifier: MIT

#include <cntrformats/geojson/feature.h>

#include <cmath>

#include <cntrformats/errors.h>
#include <cntrformats/geojson/edgelets.h>
#include <cntrformats/geojson/geometry.h>
#include <cntrformats/json.h>

namespace formats {

namespace {

using simdjson::ondemand::json_type;

json_type kindOf(JsonValue value) { return value.type(); }

/// Reads the members of a feature, in any order.
class FeatureReader {
 public:
  explicit FeatureReader(Feature& feature) : feature_(feature) {}

  void read(JsonObject& object) {
    bool hasGeometry = false;
    for (auto field : object) {
      const std::string_view name = field.unescaped_key();
      if (name == "geometry") {
        hasGeometry = true;
        attempt([&] { feature_.geometry = readGeometry(field.value()); });
      } else if (name == "properties") {
        readProperties(field.value());
      } else if (name == "id") {
        feature_.id = readId(field.value());
      } else {
        passOver(field.value());
      }
    }
    if (!hasGeometry) note("no geometry");
    if (!problem_.empty()) throw FeatureError(problem_);
    readEdgelets(edgelets_, feature_.geometry);
  }

 private:
  /// An error in one member does not keep the others from being read.
  template <class Read>
  void attempt(const Read& read) {
    try {
      read();
    } catch (const FeatureError& error) {
      note(error.what());
    }
  }

  void note(const std::string& problem) {
    if (problem_.empty()) problem_ = problem;
  }

  void readProperties(JsonValue value) {
    if (!isObject(value)) return passOver(value);
    for (auto field : value.get_object()) {
      const std::string_view name = field.unescaped_key();
      if (name == "label") {
        attempt([&] { feature_.label = readLabel(field.value()); });
      } else if (name == "edgelets") {
        edgelets_ = rawOf(field.value());
      } else {
        passOver(field.value());
      }
    }
  }

  Feature& feature_;
  std::string problem_;
  std::string_view edgelets_;
};

}  // namespace

/// Programs that have only one kind of number write labels with a fraction of 0.
std::optional<Label> readLabel(JsonValue value) {
  const json_type kind = kindOf(value);
  if (kind == json_type::string) return std::string(std::string_view(value.get_string()));
  const double number = kind == json_type::number ? double(value.get_double()) : -1.0;
  if (number >= 0.0 && number <= static_cast<double>(largestLabel) &&
      number == std::floor(number)) {
    return static_cast<unsigned long>(number);
  }
  const std::string_view raw = rawOf(value);
  if (raw == "null") return std::nullopt;
  throw FeatureError("label is " + excerpt(raw) + ", not a whole number from 0 to 4294967295");
}

std::optional<std::string> readId(JsonValue value) {
  if (kindOf(value) == json_type::string) return std::string(std::string_view(value.get_string()));
  const std::string_view raw = rawOf(value);
  return raw == "null" ? std::nullopt : std::optional(compact(raw));
}

void readFeature(const Passage& passage, Feature& feature) {
  const bool isObject = parseObject(passage, [&](JsonObject& object) {
    const std::string type = typeOf(object);
    if (isGeometryType(type)) {
      feature.geometry = readGeometry(object, type);
    } else if (type == "Feature") {
      FeatureReader(feature).read(object);
    } else {
      throw FeatureError(excerpt(passage.text) + " is not a Feature");
    }
  });
  if (!isObject) throw FeatureError(excerpt(passage.text) + " is not a Feature");
}

}  // namespace formats
