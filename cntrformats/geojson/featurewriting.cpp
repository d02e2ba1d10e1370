// SPDX-License-Identifier: MIT
//
// Features as they are written; feature.cpp reads them.

#include <cntrformats/geojson/feature.h>

#include <algorithm>

#include <cntrformats/geojson/geometry.h>
#include <cntrformats/rings.h>

namespace formats {

namespace {

/// True for a ring that runs the other way than GeoJSON wants it; one without area runs either way.
bool runsWrong(const Points& ring, bool isHole) {
  const double area = signedArea(ring);
  return isHole ? area > 0.0 : area < 0.0;
}

/// Reverses the order and keeps the first one first. `list` may be empty.
template <class List>
void turn(List& list) {
  if (list.size() > 1) std::reverse(list.begin() + 1, list.end());
}

Json positions(const Points& points) {
  Json list = Json::array();
  for (const qcVector<2>& p : points) list.push_back(Json::array({p.x(), p.y()}));
  return list;
}

Json ring(Points points, bool isHole) {
  if (runsWrong(points, isHole)) turn(points);
  points.push_back(points.front());
  return positions(points);
}

Json coordinates(const qcRings& part, bool closed) {
  if (!closed) return positions(part.outline);
  Json rings = Json::array({ring(part.outline, false)});
  for (const Points& hole : part.holes) rings.push_back(ring(hole, true));
  return rings;
}

/// A Polygon or MultiPolygon, or LineString or MultiLineString. Rings repeat their first point at
/// the end; outlines have positive area in the file's coordinates, holes negative, and the first
/// vertex stays the first.
Json toJson(const Geometry& geometry) {
  const auto& [closed, multiple, parts, edgelets] = geometry;
  const std::string type = closed ? "Polygon" : "LineString";
  if (parts.size() == 1 && !multiple) {
    return {{"type", type}, {"coordinates", coordinates(parts.front(), closed)}};
  }
  Json all = Json::array();
  for (const qcRings& part : parts) all.push_back(coordinates(part, closed));
  return {{"type", "Multi" + type}, {"coordinates", all}};
}

bool hasProperty(const Geometry& geometry) {
  return geometry.parts.size() == 1 && !geometry.edgelets.empty();
}

/// The property that a feature of one part may have.
Json edgeletProperty(const Geometry& geometry) {
  Json list = Json::array();
  for (const qcEdgelet& edgelet : geometry.edgelets.front()) {
    list.push_back(Json::array({edgelet.magnitude(), edgelet.angle().steps()}));
  }
  if (geometry.closed && runsWrong(geometry.parts.front().outline, false)) turn(list);
  return list;
}

Json labelProperty(const Label& label) {
  return std::visit([](const auto& value) { return Json(value); }, label);
}

Json newFeature(const Feature& feature) {
  Json json{{"type", "Feature"}};
  if (feature.id) json["id"] = *feature.id;
  Json properties = Json::object();
  if (feature.label) properties["label"] = labelProperty(*feature.label);
  if (hasProperty(feature.geometry)) properties["edgelets"] = edgeletProperty(feature.geometry);
  json["properties"] = std::move(properties);
  json["geometry"] = toJson(feature.geometry);
  return json;
}

/// `ring` is that of `points` as the file has it, closed or not.
void tidy(Json& ring, const Points& points, bool isHole) {
  if (ring.size() == points.size()) ring.push_back(ring.front());
  if (runsWrong(points, isHole)) std::reverse(ring.begin(), ring.end());
}

void tidy(Json& rings, const qcRings& part) {
  tidy(rings[0], part.outline, false);
  for (std::size_t k = 0; k < part.holes.size(); ++k) tidy(rings[k + 1], part.holes[k], true);
}

/// Turns the rings of the JSON that the geometry was read from, so that all that is in it stays.
void tidyRings(Json& json, const Geometry& geometry) {
  Json& coordinates = json["coordinates"];
  if (json["type"] == "Polygon") return tidy(coordinates, geometry.parts.front());
  for (std::size_t k = 0; k < geometry.parts.size(); ++k) tidy(coordinates[k], geometry.parts[k]);
}

void replaceCoordinates(Json& json, const Geometry& geometry) {
  json.update(toJson(geometry));
  json.erase("bbox");
}

}  // namespace

Json toJson(const Feature& feature, Rings rings) {
  if (feature.text.empty()) return newFeature(feature);
  Json json = parseJson(feature.text);
  if (rings == Rings::eAsTheyWere || !feature.geometry.closed) return json;
  if (isGeometry(json)) {
    tidyRings(json, feature.geometry);
    return json;
  }
  tidyRings(json["geometry"], feature.geometry);
  if (hasProperty(feature.geometry)) {
    json["properties"]["edgelets"] = edgeletProperty(feature.geometry);
  }
  return json;
}

void replaceGeometry(Feature& feature, const Geometry& geometry) {
  feature.geometry = geometry;
  if (feature.text.empty()) return;
  Json json = parseJson(feature.text);
  if (isGeometry(json)) {
    replaceCoordinates(json, geometry);
  } else {
    json.erase("bbox");
    if (json["properties"].is_object()) json["properties"].erase("edgelets");
    if (hasProperty(geometry)) json["properties"]["edgelets"] = edgeletProperty(geometry);
    replaceCoordinates(json["geometry"], geometry);
  }
  feature.text = compact(json);
}

}  // namespace formats
