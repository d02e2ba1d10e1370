// SPDX-License-Identifier: MIT
//
// GeoJSON text sequences (RFC 8142), whose records begin with RS, and GeoJSON with a feature to
// each line.

#include <tools/input/geojsonfeature.h>
#include <tools/input/lines.h>
#include <tools/input/readers.h>

namespace tool {

namespace {

Feature decode(const std::string& text, std::size_t number) {
  Json json = parseJson(text);
  if (member(json, "type") == "FeatureCollection") {
    throw FeatureError("a whole FeatureCollection, which is no line of GeoJSON lines");
  }
  return readFeature(std::move(json), number);
}

}  // namespace

void readGeoJsonLines(Source& source, Sink& sink) {
  const bool separated = source.firstCharacter() == recordSeparator;
  Lines lines(source);
  std::string text;
  std::size_t number = 0;
  while (separated ? lines.nextRecord(text) : lines.next(text)) {
    if (isBlank(text)) continue;
    ++number;
    sink.take(
        {{number, lines.number()}, text.size(), [text, number] { return decode(text, number); }});
  }
  if (number == 0) throw FileError("nothing in it");
}

}  // namespace tool
