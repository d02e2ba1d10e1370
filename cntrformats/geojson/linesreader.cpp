// SPDX-License-Identifier: MIT
//
// GeoJSON text sequences (RFC 8142), whose records begin with RS, and GeoJSON with one feature per
// line.

#include <memory>

#include <cntrformats/geojson/feature.h>
#include <cntrformats/geojson/geojson.h>
#include <cntrformats/json.h>
#include <cntrformats/lines.h>

namespace formats {

namespace {

void readLine(std::string& text, std::size_t line, Feature& feature) {
  if (memberOf(text, "type") == featureCollection) {
    throw FeatureError("a whole FeatureCollection, which is no line of GeoJSON lines");
  }
  readFeature(text, {line, 1}, feature);
}

/// True for a line with a line feed that is one whole JSON object and no collection.
bool isFeatureLine(std::string_view line) {
  if (!line.ends_with('\n')) return false;
  try {
    requireObject(std::string(line), {});
  } catch (const FeatureError&) {
    return false;
  }
  const std::string_view type = memberOf(line, "type");
  return type.starts_with('"') && type != featureCollection;
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
    const auto kept = std::make_shared<std::string>(std::move(text));
    const std::size_t line = lines.number();
    sink.take({{number, line}, kept->size(), [kept, line, number, keep] {
                 Feature feature =
                     decoded(number, [&](Feature& made) { readLine(*kept, line, made); });
                 if (keep == Keep::eSourceToo) feature.text = std::move(*kept);
                 return feature;
               }});
  }
  if (number == 0) throw FileError("nothing in it");
}

}  // namespace formats
