// SPDX-License-Identifier: MIT
//
// GeoJSON text sequences (RFC 8142), whose records begin with RS, and GeoJSON with a feature to
// each line.

#include <cntrformats/geojson/feature.h>
#include <cntrformats/geojson/geojson.h>
#include <cntrformats/json.h>
#include <cntrformats/lines.h>

namespace formats {

namespace {

void read(const std::string& text, Keep keep, Feature& feature) {
  const Json json = parseJson(text);
  if (member(json, "type") == "FeatureCollection") {
    throw FeatureError("a whole FeatureCollection, which is no line of GeoJSON lines");
  }
  readFeature(json, keep, feature);
}

/// True for a whole JSON object in one line that is no collection, and is not all there is.
bool isFeatureLine(std::string_view line) {
  if (!line.ends_with('\n')) return false;
  const auto outermost = [](int depth, Json::parse_event_t event, Json&) {
    using Event = Json::parse_event_t;
    return depth == 0 || event == Event::key || event == Event::value;
  };
  const Json json = Json::parse(line.begin(), line.end(), outermost, false);
  const Json& type = member(json, "type");
  return type.is_string() && type != "FeatureCollection";
}

}  // namespace

bool looksLikeGeoJsonLines(std::string_view line) {
  return line.starts_with(recordSeparator) || (line.starts_with('{') && isFeatureLine(line));
}

void readGeoJsonLines(Source& source, Keep keep, Sink& sink) {
  const bool separated = source.firstCharacter() == recordSeparator;
  Lines lines(source);
  std::string text;
  std::size_t number = 0;
  while (separated ? lines.nextRecord(text) : lines.next(text)) {
    if (isBlank(text)) continue;
    ++number;
    sink.take({{number, lines.number()}, text.size(), [text, number, keep] {
                 return decoded(number, [&](Feature& feature) { read(text, keep, feature); });
               }});
  }
  if (number == 0) throw FileError("nothing in it");
}

}  // namespace formats
