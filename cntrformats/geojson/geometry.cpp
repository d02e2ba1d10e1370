// SPDX-License-Identifier: MIT

#include <cntrformats/geojson/geometry.h>

#include <algorithm>
#include <array>

#include <cntrformats/errors.h>
#include <cntrformats/json.h>
#include <cntrformats/rings.h>

namespace formats {

namespace {

constexpr const char* collectionType = "GeometryCollection";

double coordinate(JsonValue value, const char* axis) {
  double number = 0.0;
  if (value.get_double().get(number) == simdjson::SUCCESS) return number;
  if (simdjson::ondemand::json_type(value.type()) == simdjson::ondemand::json_type::number) {
    throw simdjson::simdjson_error(simdjson::NUMBER_ERROR);
  }
  throw FeatureError(std::string(axis) + " is " + excerpt(rawOf(value)) + ", not a number");
}

[[noreturn]] void refusePosition(std::string_view json) {
  throw FeatureError(excerpt(json) + " is not a position [x, y]");
}

qcVector<2> position(JsonValue value) {
  if (!isList(value)) refusePosition(rawOf(value));
  JsonList list = value.get_array();
  std::array<double, 2> numbers{};
  std::size_t count = 0;
  for (auto element : list) {
    if (count < numbers.size()) {
      numbers[count] = coordinate(element.value(), count == 0 ? "x" : "y");
    } else {
      passOver(element.value());
    }
    ++count;
  }
  if (count < numbers.size()) {
    static_cast<void>(bool(list.reset()));
    refusePosition(std::string_view(list.raw_json()));
  }
  return {numbers[0], numbers[1]};
}

JsonList listOf(JsonValue value, const std::string& place) {
  if (!isList(value)) throw FeatureError(place + ": " + excerpt(rawOf(value)) + " is not a list");
  return value.get_array();
}

// These return no vertices for an empty list.

qcRings line(JsonValue value, const std::string& prefix) {
  const std::string place = prefix + "line";
  Points points = readPositions(value, place);
  return {points.empty() ? points : asLine(std::move(points), place), {}};
}

qcRings polygon(JsonValue value, const std::string& prefix) {
  qcRings part;
  std::size_t count = 0;
  for (auto element : listOf(value, prefix + "coordinates")) {
    const std::string place = prefix + (count == 0 ? "outline" : "hole " + std::to_string(count));
    Points ring = asRing(readPositions(element.value(), place), place);
    if (count++ == 0) {
      part.outline = std::move(ring);
    } else {
      part.holes.push_back(std::move(ring));
    }
  }
  return part;
}

using ReadPart = qcRings (*)(JsonValue value, const std::string& prefix);

std::vector<qcRings> single(JsonValue value, ReadPart readPart, const char* refusal) {
  std::vector<qcRings> parts{readPart(value, "")};
  if (parts.front().outline.empty()) throw EmptyGeometry(refusal);
  return parts;
}

std::vector<qcRings> several(JsonValue value, ReadPart readPart) {
  std::vector<qcRings> parts;
  std::size_t count = 0;
  for (auto element : listOf(value, "coordinates")) {
    const std::string prefix = "part " + std::to_string(++count) + ", ";
    qcRings part = readPart(element.value(), prefix);
    if (!part.outline.empty()) parts.push_back(std::move(part));
  }
  if (parts.empty()) throw EmptyGeometry("no coordinates");
  return parts;
}

Geometry fromCoordinates(JsonValue value, const std::string& type) {
  if (type == "Polygon") return {true, false, single(value, polygon, "no outline")};
  if (type == "MultiPolygon") return {true, true, several(value, polygon)};
  if (type == "LineString")
    return {false, false, single(value, line, "line has 0 points, but needs 2")};
  if (type == "MultiLineString") return {false, true, several(value, line)};
  throw FeatureError("a " + type + " has no outline");
}

Geometry fromGeometries(JsonValue value) {
  Geometry all{true, true};
  std::size_t count = 0;
  for (auto element : listOf(value, "geometries")) {
    ++count;
    try {
      addParts(all, readGeometry(element.value()));
    } catch (const EmptyGeometry&) {  // NOLINT(bugprone-empty-catch)
    } catch (const FeatureError& error) {
      throw FeatureError("geometry " + std::to_string(count) + ": " + error.what());
    }
  }
  if (count == 0) throw FeatureError(std::string("a ") + collectionType + " has no outline");
  if (all.parts.empty()) throw EmptyGeometry("no coordinates");
  return all;
}

}  // namespace

bool isGeometryType(std::string_view type) {
  static constexpr std::array<std::string_view, 7> types{
      "Point",           "LineString",   "Polygon",     "MultiPoint",
      "MultiLineString", "MultiPolygon", collectionType};
  return std::find(types.begin(), types.end(), type) != types.end();
}

Points readPositions(JsonValue value, const std::string& place) {
  Points points;
  try {
    for (auto element : listOf(value, place)) points.push_back(position(element.value()));
  } catch (const FeatureError& error) {
    if (!isList(value)) throw;
    throw FeatureError(place + ", vertex " + std::to_string(points.size()) + ": " + error.what());
  }
  return points;
}

Geometry readGeometry(JsonObject& object, const std::string& type) {
  const bool isCollection = type == collectionType;
  Geometry geometry;
  for (auto field : object) {
    const std::string_view name = field.unescaped_key();
    if (isCollection && name == "geometries") {
      geometry = fromGeometries(field.value());
    } else if (!isCollection && name == "coordinates") {
      geometry = fromCoordinates(field.value(), type);
    } else {
      passOver(field.value());
    }
  }
  if (!geometry.parts.empty()) return geometry;
  if (isCollection) throw FeatureError(std::string("a ") + collectionType + " has no outline");
  throw FeatureError("coordinates: null is not a list");
}

Geometry readGeometry(JsonValue value) {
  if (simdjson::ondemand::json_type(value.type()) == simdjson::ondemand::json_type::null) {
    passOver(value);
    throw FeatureError("no geometry");
  }
  if (!isObject(value)) throw FeatureError(excerpt(rawOf(value)) + " is not a geometry");
  JsonObject object = value.get_object();
  const std::string type = typeOf(object);
  if (isGeometryType(type)) return readGeometry(object, type);
  throw FeatureError(excerpt(std::string_view(object.raw_json())) + " is not a geometry");
}

}  // namespace formats
