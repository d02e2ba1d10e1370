// SPDX-License-Identifier: MIT
//
// GeoJSON text sequences (RFC 8142), whose records begin with RS, and GeoJSON with one feature per
// line.

#include <cntrformats/characters.h>
#include <cntrformats/errors.h>
#include <cntrformats/geojson/feature.h>
#include <cntrformats/geojson/geojson.h>
#include <cntrformats/json.h>
#include <cntrformats/lines.h>
#include <cntrformats/textwindow.h>

namespace formats {

namespace {

void readLine(const Passage& passage, Feature& feature) {
  if (memberOf(passage.text, "type") == featureCollection) {
    throw FeatureError("a whole FeatureCollection, which is no line of GeoJSON lines");
  }
  readFeature(passage, feature);
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
  const char ending = separated ? recordSeparator : '\n';
  TextWindow window(source, Source::mostAtOnce);
  Passages features(sink, readLine, keep == Keep::eSourceToo);
  window.release(features);
  std::size_t number = 0;
  std::size_t line = 1;
  while (auto text = window.ahead(0, ending)) {
    const std::size_t size = text->size();
    const std::size_t following = line + (separated ? countOf(*text, '\n') : 1);
    if (!separated && text->ends_with('\r')) text->remove_suffix(1);
    if (!isBlank(*text)) {
      features.add({++number, line}, window.position(), window.position() + text->size());
    }
    line = following;
    window.pass(size + 1);
  }
  window.handOver();
  if (number == 0) throw FileError("nothing in it");
}

}  // namespace formats
