// SPDX-License-Identifier: MIT

#include <tools/output/geojson.h>

#include <tools/shapes.h>

namespace tool {

namespace {

Json positions(const Points& points) {
  Json list = Json::array();
  for (const qcVector<2>& p : points) list.push_back(Json::array({p.x(), p.y()}));
  return list;
}

Json ring(Points points) {
  points.push_back(points.front());
  return positions(points);
}

Json coordinates(const Part& part, bool closed) {
  if (!closed) return positions(part.outline);
  Json rings = Json::array({ring(counterClockwise(part.outline))});
  for (const Points& hole : part.holes) {
    const Points turned = counterClockwise(hole);
    rings.push_back(ring({turned.rbegin(), turned.rend()}));
  }
  return rings;
}

std::string compact(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string lines(const Json& list) {
  std::string text = "[";
  for (const Json& element : list)
    text.append(text.size() > 1 ? ",\n" : "\n").append(compact(element));
  return text.append("\n]");
}

}  // namespace

Json toJson(const Geometry& geometry) {
  const auto& [closed, parts] = geometry;
  const std::string type = closed ? "Polygon" : "LineString";
  if (parts.size() == 1) {
    return {{"type", type}, {"coordinates", coordinates(parts.front(), closed)}};
  }
  Json all = Json::array();
  for (const Part& part : parts) all.push_back(coordinates(part, closed));
  return {{"type", "Multi" + type}, {"coordinates", all}};
}

std::string toText(const Json& document) {
  if (!member(document, "features").is_array()) return compact(document) + "\n";
  std::string text;
  for (const auto& [name, value] : document.items()) {
    text.append(text.empty() ? "{\n" : ",\n").append(compact(name)).append(": ");
    text.append(name == "features" ? lines(value) : compact(value));
  }
  return text.append("\n}\n");
}

}  // namespace tool
