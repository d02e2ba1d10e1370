// SPDX-License-Identifier: MIT

#include <cntrformats/geojson/annotations.h>

#include <cntrformats/errors.h>
#include <cntrformats/geojson/feature.h>
#include <cntrformats/geojson/geometry.h>
#include <cntrformats/json.h>
#include <cntrformats/rings.h>

namespace formats {

namespace {

using simdjson::ondemand::json_type;

void requireKind(bool isObject, std::string_view text, const char* what) {
  if (!isObject) throw FeatureError(excerpt(text) + " is not " + what);
}

/// The pairs of x1, y1, x2, y2, ...
Points pairsOf(JsonValue value, const std::string& place) {
  if (!isList(value)) throw FeatureError(place + ": " + excerpt(rawOf(value)) + " is not a list");
  std::vector<double> numbers;
  for (auto element : value.get_array()) {
    double number = 0.0;
    if (element.get_double().get(number) != simdjson::SUCCESS) {
      throw FeatureError(place + ": " + excerpt(rawOf(element.value())) + " is not a number");
    }
    numbers.push_back(number);
  }
  if (numbers.size() % 2 != 0) {
    throw FeatureError(place + ": " + std::to_string(numbers.size()) +
                       " numbers are not pairs of x and y");
  }
  Points points;
  for (std::size_t k = 0; k < numbers.size(); k += 2) {
    points.emplace_back(numbers[k], numbers[k + 1]);
  }
  return points;
}

/// {"counts": ..., "size": [height, width]}
[[noreturn]] void refuseMask(JsonValue value) {
  bool isCompressed = false;
  for (auto field : value.get_object()) {
    const std::string_view name = field.unescaped_key();
    const json_type kind = field.value().type();
    if (name == "counts" && kind == json_type::string) isCompressed = true;
    passOver(field.value());
  }
  throw FeatureError(isCompressed ? "a compressed RLE mask, which has no outline"
                                  : "an RLE mask, which has no outline");
}

Geometry segmentation(JsonValue value) {
  if (isObject(value)) refuseMask(value);
  if (!isList(value)) {
    throw FeatureError("segmentation: " + excerpt(rawOf(value)) + " is not a list");
  }
  Geometry geometry;
  std::size_t count = 0;
  for (auto element : value.get_array()) {
    const std::string place = "part " + std::to_string(++count) + ", outline";
    geometry.parts.push_back({asRing(pairsOf(element.value(), place), place), {}});
  }
  if (count == 0) throw FeatureError("an empty segmentation");
  geometry.multiple = count > 1;
  return geometry;
}

/// Skips a member, and notes whether it says anything.
void passOverFurther(JsonValue value, Feature& feature) {
  switch (json_type(value.type())) {
    case json_type::null:
      return passOver(value);
    case json_type::string:
      if (!std::string_view(value.get_string()).empty()) feature.hasFurtherMembers = true;
      return;
    case json_type::object:
      for (auto field : value.get_object()) {
        static_cast<void>(std::string_view(field.unescaped_key()));
        passOver(field.value());
        feature.hasFurtherMembers = true;
      }
      return;
    default:
      feature.hasFurtherMembers = true;
      return passOver(value);
  }
}

/// Reads a member; an error becomes the problem, so that the members after it are still read.
template <class Read>
void attempt(std::string& problem, const Read& read) {
  problem.clear();
  try {
    read();
  } catch (const FeatureError& error) {
    problem = error.what();
  }
}

Points rectangleOf(const Points& points) {
  if (points.size() != 2) return points;
  const auto& [a, b] = std::pair(points[0], points[1]);
  return {a, {b.x(), a.y()}, b, {a.x(), b.y()}};
}

Geometry geometryOf(const std::string& kind, const Points& points) {
  if (kind == "polygon") return {true, false, {{asRing(points, "outline"), {}}}};
  if (kind == "rectangle") return {true, false, {{asRing(rectangleOf(points), "outline"), {}}}};
  if (kind == "line" || kind == "linestrip") return {false, false, {{asLine(points, "line"), {}}}};
  throw FeatureError("a shape of type " + jsonString(kind) + " has no outline");
}

}  // namespace

void readCocoAnnotation(const Passage& passage, Feature& feature) {
  std::string problem = "no segmentation";
  const bool isObject = parseObject(passage, [&](JsonObject& object) {
    for (auto field : object) {
      const std::string_view name = field.unescaped_key();
      if (name == "segmentation") {
        attempt(problem, [&] { feature.geometry = segmentation(field.value()); });
      } else if (name == "category_id") {
        feature.label = readLabel(field.value());
      } else if (name == "id") {
        feature.id = readId(field.value());
      } else {
        passOverFurther(field.value(), feature);
      }
    }
  });
  requireKind(isObject, passage.text, "an annotation");
  if (!problem.empty()) throw FeatureError(problem);
}

void readLabelMeShape(const Passage& passage, Feature& feature) {
  std::string kind = "polygon";
  Points points;
  std::string problem = "no points";
  const bool isObject = parseObject(passage, [&](JsonObject& object) {
    for (auto field : object) {
      const std::string_view name = field.unescaped_key();
      if (name == "points") {
        attempt(problem, [&] { points = readPositions(field.value(), "points"); });
      } else if (name == "label") {
        feature.label = readLabel(field.value());
      } else if (name == "shape_type" && json_type(field.value().type()) == json_type::string) {
        kind = std::string_view(field.value().get_string());
      } else {
        passOverFurther(field.value(), feature);
      }
    }
  });
  requireKind(isObject, passage.text, "a shape");
  if (!problem.empty()) throw FeatureError(problem);
  feature.geometry = geometryOf(kind, points);
}

}  // namespace formats
