// SPDX-License-Identifier: MIT

#include <cntrformats/geojson/geometry.h>

#include <algorithm>
#include <array>

#include <cntrformats/errors.h>
#include <cntrformats/rings.h>

namespace formats {

namespace {

double coordinate(const Json& value, const char* axis) {
  if (value.is_number()) return value.get<double>();
  throw FeatureError(std::string(axis) + " is " + excerpt(value) + ", not a number");
}

qcVector<2> position(const Json& json) {
  if (!json.is_array() || json.size() < 2) {
    throw FeatureError(excerpt(json) + " is not a position [x, y]");
  }
  return {coordinate(json[0], "x"), coordinate(json[1], "y")};
}

const Json& array(const Json& json, const std::string& place) {
  if (json.is_array()) return json;
  throw FeatureError(place + ": " + excerpt(json) + " is not a list");
}

Points positions(const Json& json, const std::string& place) {
  Points points;
  points.reserve(array(json, place).size());
  try {
    for (const Json& element : json) points.push_back(position(element));
  } catch (const FeatureError& error) {
    throw FeatureError(place + ", vertex " + std::to_string(points.size()) + ": " + error.what());
  }
  return points;
}

Points ring(const Json& json, const std::string& place) {
  return asRing(positions(json, place), place);
}

qcRings line(const Json& json, const std::string& prefix) {
  const std::string place = prefix + "line";
  return {asLine(positions(json, place), place), {}};
}

qcRings polygon(const Json& json, const std::string& prefix) {
  if (array(json, prefix + "coordinates").empty()) throw FeatureError(prefix + "no outline");
  qcRings part{ring(json[0], prefix + "outline"), {}};
  for (std::size_t k = 1; k < json.size(); ++k) {
    part.holes.push_back(ring(json[k], prefix + "hole " + std::to_string(k)));
  }
  return part;
}

using ReadPart = qcRings (*)(const Json& json, const std::string& prefix);

std::vector<qcRings> several(const Json& json, ReadPart readPart) {
  std::vector<qcRings> parts;
  for (const Json& element : array(json, "coordinates")) {
    parts.push_back(readPart(element, "part " + std::to_string(parts.size() + 1) + ", "));
  }
  if (parts.empty()) throw FeatureError("no coordinates");
  return parts;
}

}  // namespace

bool isGeometry(const Json& json) {
  static const std::array<const char*, 7> types{
      "Point",           "LineString",   "Polygon",           "MultiPoint",
      "MultiLineString", "MultiPolygon", "GeometryCollection"};
  const Json& type = member(json, "type");
  return std::find(types.begin(), types.end(), type) != types.end();
}

Geometry readGeometry(const Json& json) {
  if (json.is_null()) throw FeatureError("no geometry");
  const Json& type = member(json, "type");
  const Json& coordinates = member(json, "coordinates");
  if (type == "Polygon") return {true, false, {polygon(coordinates, "")}};
  if (type == "MultiPolygon") return {true, true, several(coordinates, polygon)};
  if (type == "LineString") return {false, false, {line(coordinates, "")}};
  if (type == "MultiLineString") return {false, true, several(coordinates, line)};
  if (isGeometry(json)) throw FeatureError("a " + type.get<std::string>() + " has no outline");
  throw FeatureError(excerpt(json) + " is not a geometry");
}

}  // namespace formats
