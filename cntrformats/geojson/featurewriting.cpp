// SPDX-License-Identifier: MIT
//
// Writes features; feature.cpp reads them. What was read is written with its own bytes, except that
// rings are closed and reversed if necessary.

#include <algorithm>
#include <functional>
#include <utility>

#include <cntrformats/geojson/feature.h>
#include <cntrformats/geojson/geometry.h>
#include <cntrformats/json.h>
#include <cntrformats/number.h>
#include <cntrformats/rings.h>

namespace formats {

namespace {

/// True for a ring that runs in the wrong direction for GeoJSON; one without area may run in
/// either.
bool runsWrong(const Points& ring, bool isHole) {
  const double area = signedArea(ring);
  return isHole ? area > 0.0 : area < 0.0;
}

/// Reverses the order but keeps the first element first. `list` may be empty.
template <class List>
void turn(List& list) {
  if (list.size() > 1) std::reverse(list.begin() + 1, list.end());
}

/// Appends "[element,element,...]".
template <class List, class AppendElement>
void appendJsonList(std::string& json, const List& list, const AppendElement& appendElement) {
  json += '[';
  const char* separator = "";
  for (const auto& element : list) {
    json += std::exchange(separator, ",");
    appendElement(element);
  }
  json += ']';
}

void appendPositions(std::string& json, const Points& points) {
  appendJsonList(json, points, [&json](const qcVector<2>& p) {
    json.append(1, '[').append(allDigits(p.x())).append(1, ',');
    json.append(allDigits(p.y())).append(1, ']');
  });
}

void appendRing(std::string& json, Points points, bool isHole) {
  if (runsWrong(points, isHole)) turn(points);
  points.push_back(points.front());
  appendPositions(json, points);
}

void appendCoordinates(std::string& json, const qcRings& part, bool closed) {
  if (!closed) return appendPositions(json, part.outline);
  json += '[';
  appendRing(json, part.outline, false);
  for (const Points& hole : part.holes) {
    json += ',';
    appendRing(json, hole, true);
  }
  json += ']';
}

std::string typeOf(const Geometry& geometry) {
  const bool isSingle = geometry.parts.size() == 1 && !geometry.multiple;
  return std::string(isSingle ? "" : "Multi") + (geometry.closed ? "Polygon" : "LineString");
}

/// The coordinates of a Polygon or MultiPolygon, or of a LineString or MultiLineString. Rings
/// repeat their first point at the end; outlines have positive area in the file's coordinates,
/// holes negative, and the first vertex stays the first.
std::string coordinatesOf(const Geometry& geometry) {
  std::string json;
  if (geometry.parts.size() == 1 && !geometry.multiple) {
    appendCoordinates(json, geometry.parts.front(), geometry.closed);
  } else {
    appendJsonList(json, geometry.parts,
                   [&](const qcRings& part) { appendCoordinates(json, part, geometry.closed); });
  }
  return json;
}

std::string geometryJson(const Geometry& geometry) {
  return R"({"type":")" + typeOf(geometry) + R"(","coordinates":)" + coordinatesOf(geometry) + "}";
}

/// True when there are edge elements that a property can hold: those of a single part.
bool hasEdgeletProperty(const Geometry& geometry) {
  return geometry.parts.size() == 1 && !geometry.edgelets.empty() &&
         !geometry.edgelets.front().empty();
}

bool isTurned(const Geometry& geometry) {
  return geometry.closed && runsWrong(geometry.parts.front().outline, false);
}

std::string edgeletProperty(const Geometry& geometry) {
  std::vector<qcEdgelet> edgelets = geometry.edgelets.front();
  if (isTurned(geometry)) turn(edgelets);
  std::string json;
  appendJsonList(json, edgelets, [&json](const qcEdgelet& edgelet) {
    json.append(1, '[').append(std::to_string(edgelet.magnitude())).append(1, ',');
    json.append(std::to_string(edgelet.angle().steps())).append(1, ']');
  });
  return json;
}

std::string labelProperty(const Label& label) {
  const std::string text = toText(label);
  return std::holds_alternative<std::string>(label) ? jsonString(text) : text;
}

std::string newFeature(const Feature& feature) {
  std::string json = R"({"type":"Feature",)";
  if (feature.id) json.append(R"("id":)").append(jsonString(*feature.id)).append(1, ',');
  json += R"("properties":{)";
  if (feature.label) json.append(R"("label":)").append(labelProperty(*feature.label));
  if (hasEdgeletProperty(feature.geometry)) {
    json.append(feature.label ? "," : "").append(R"("edgelets":)");
    json.append(edgeletProperty(feature.geometry));
  }
  return json.append(R"(},"geometry":)").append(geometryJson(feature.geometry)).append(1, '}');
}

/// Replaces pieces of a text, one after the other from its beginning.
class Edits {
 public:
  explicit Edits(std::string_view text) : text_(text) {}

  /// REQUIRES: `old` is a piece of the text, after those that have been replaced.
  void replace(std::string_view old, std::string_view replacement) {
    const auto begin = static_cast<std::size_t>(old.data() - text_.data());
    result_.append(text_.substr(done_, begin - done_)).append(replacement);
    done_ = begin + old.size();
  }

  std::string_view text() const { return text_; }
  std::string result() { return result_.append(text_.substr(done_)); }

 private:
  std::string_view text_;
  std::string result_;
  std::size_t done_ = 0;
};

std::string joined(const std::vector<std::string_view>& elements) {
  std::string json = "[";
  for (const std::string_view element : elements) {
    if (json.size() > 1) json += ',';
    json += element;
  }
  return json += ']';
}

/// Closes and reverses the rings of a feature in its text. Rings come in the order of the file;
/// empty ones do not count.
class RingTidier {
 public:
  explicit RingTidier(const Feature& feature) : edits_(feature.text), geometry_(feature.geometry) {}

  std::string tidied() {
    const std::string_view text = edits_.text();
    if (isGeometryType(nameOf(memberOf(text, "type")))) {
      tidyGeometry(text);
    } else {
      const std::string_view geometry = lastMemberOf(text, "geometry");
      const std::string_view edgelets = edgeletsIn(text);
      for (const JsonMember& member : membersOf(text)) {
        if (member.value.data() == geometry.data()) tidyGeometry(geometry);
        if (holds(member.value, edgelets)) tidyEdgelets(edgelets);
      }
    }
    return edits_.result();
  }

 private:
  static std::string_view nameOf(std::string_view json) {
    return json.size() < 2 ? json : json.substr(1, json.size() - 2);
  }

  /// The edge elements that were read: the last, whichever member of this name they are in.
  static std::string_view edgeletsIn(std::string_view text) {
    std::string_view edgelets;
    for (const JsonMember& member : membersOf(text)) {
      if (!isNamed(member, "properties")) continue;
      const std::string_view found = lastMemberOf(member.value, "edgelets");
      if (!found.empty()) edgelets = found;
    }
    return edgelets;
  }

  static bool holds(std::string_view json, std::string_view piece) {
    return std::less_equal<>()(json.data(), piece.data()) &&
           std::less<>()(piece.data(), json.data() + json.size());
  }

  void tidyGeometry(std::string_view json) {
    const std::string_view type = nameOf(memberOf(json, "type"));
    const std::string_view coordinates = lastMemberOf(json, "coordinates");
    if (type == "Polygon") tidyPart(coordinates);
    if (type == "MultiPolygon") {
      for (const std::string_view part : elementsOf(coordinates)) tidyPart(part);
    }
    if (type == "GeometryCollection") {
      for (const std::string_view one : elementsOf(lastMemberOf(json, "geometries"))) {
        tidyGeometry(one);
      }
    }
  }

  void tidyPart(std::string_view json) {
    const auto rings = elementsOf(json);
    if (rings.empty()) return;
    const qcRings& part = geometry_.parts[part_++];
    tidyRing(rings[0], part.outline, false);
    for (std::size_t k = 1; k < rings.size(); ++k) tidyRing(rings[k], part.holes[k - 1], true);
  }

  void tidyRing(std::string_view json, const Points& points, bool isHole) {
    const bool isWrong = runsWrong(points, isHole);
    auto positions = elementsOf(json);
    const bool isOpen = positions.size() == points.size();
    if (!isWrong && !isOpen) return;
    if (isOpen) positions.push_back(positions.front());
    if (isWrong) std::reverse(positions.begin(), positions.end());
    edits_.replace(json, joined(positions));
  }

  void tidyEdgelets(std::string_view json) {
    if (geometry_.edgelets.empty() || !isTurned(geometry_)) return;
    auto edgelets = elementsOf(json);
    turn(edgelets);
    edits_.replace(json, joined(edgelets));
  }

  Edits edits_;
  const Geometry& geometry_;
  std::size_t part_ = 0;
};

/// The object with new coordinates, without its box.
std::string withCoordinates(std::string_view json, const Geometry& geometry) {
  std::string result = R"({"type":")" + typeOf(geometry) + "\"";
  for (const JsonMember& member : membersOf(json)) {
    const auto is = [&](std::string_view name) { return isNamed(member, name); };
    if (is("type") || is("coordinates") || is("geometries") || is("bbox")) continue;
    result.append(",\"").append(member.name).append("\":").append(member.value);
  }
  return result.append(R"(,"coordinates":)").append(coordinatesOf(geometry)).append(1, '}');
}

/// The object without that member.
std::string without(std::string_view json, std::string_view dropped) {
  std::string result = "{";
  for (const JsonMember& member : membersOf(json)) {
    if (isNamed(member, dropped)) continue;
    result.append(result.size() > 1 ? ",\"" : "\"").append(member.name);
    result.append("\":").append(member.value);
  }
  return result += '}';
}

/// The properties with the edge elements of the geometry in place of any others.
std::string withEdgelets(std::string_view json, const Geometry& geometry) {
  if (!hasEdgeletProperty(geometry)) {
    return lastMemberOf(json, "edgelets").empty() ? std::string(json) : without(json, "edgelets");
  }
  std::string result = json.starts_with('{') ? without(json, "edgelets") : "{}";
  result.pop_back();
  if (result.size() > 1) result += ',';
  return result.append(R"("edgelets":)").append(edgeletProperty(geometry)).append(1, '}');
}

}  // namespace

std::string toJson(const Feature& feature, Rings rings) {
  if (feature.text.empty()) return newFeature(feature);
  if (rings == Rings::eAsTheyWere || !feature.geometry.closed) return feature.text;
  return RingTidier(feature).tidied();
}

void replaceGeometry(Feature& feature, const Geometry& geometry) {
  feature.geometry = geometry;
  const std::string_view text = feature.text;
  if (text.empty()) return;
  if (memberOf(text, "type") != "\"Feature\"") {
    feature.text = withCoordinates(text, geometry);
    return;
  }
  Edits edits(text);
  for (const JsonMember& member : membersOf(text)) {
    if (isNamed(member, "geometry")) {
      edits.replace(member.value, withCoordinates(member.value, geometry));
    }
    if (isNamed(member, "properties")) {
      edits.replace(member.value, withEdgelets(member.value, geometry));
    }
  }
  feature.text = edits.result();
  if (!lastMemberOf(feature.text, "bbox").empty()) feature.text = without(feature.text, "bbox");
}

}  // namespace formats
