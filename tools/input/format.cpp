// SPDX-License-Identifier: MIT

#include <tools/input/format.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string_view>

#include <tools/input/csv.h>
#include <tools/input/json.h>

namespace tool {

namespace {

struct Known {
  Format format;
  const char* name;
  const char* title;
  std::vector<std::string> endings;
};

const std::vector<Known>& knownFormats() {
  static const std::vector<Known> formats{
      {Format::eGeoJson, "geojson", "GeoJSON", {".geojson", ".json"}},
      {Format::eGeoJsonLines,
       "geojsonl",
       "GeoJSON lines",
       {".geojsonl", ".geojsons", ".ndjson", ".jsonl"}},
      {Format::eWkt, "wkt", "WKT", {".wkt"}},
      {Format::eCsv, "csv", "CSV", {".csv"}},
      {Format::eArchive, "archive", "an archive", {".qcar"}}};
  return formats;
}

constexpr const char* blanks = " \t\r\n";

/// A whole JSON object in one line that is no collection, and is not all there is.
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

bool isWktLine(std::string_view line) {
  const std::size_t end = std::min(line.find('('), line.find(' '));
  const std::string_view keyword = line.substr(0, end);
  return end != std::string_view::npos && !keyword.empty() &&
         std::all_of(keyword.begin(), keyword.end(),
                     [](unsigned char c) { return std::isalpha(c) != 0; });
}

std::string lowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

}  // namespace

std::vector<std::string> formatNames() {
  std::vector<std::string> names;
  for (const Known& known : knownFormats()) names.emplace_back(known.name);
  return names;
}

Format formatNamed(const std::string& name) {
  const auto& formats = knownFormats();
  return std::find_if(formats.begin(), formats.end(),
                      [&name](const Known& known) { return known.name == name; })
      ->format;
}

const char* titleOf(Format format) {
  return knownFormats()[static_cast<std::size_t>(format)].title;
}

std::optional<Format> formatByEnding(const std::string& file) {
  const std::string ending = lowerCase(std::filesystem::path(file).extension().string());
  for (const Known& known : knownFormats()) {
    if (std::find(known.endings.begin(), known.endings.end(), ending) != known.endings.end()) {
      return known.format;
    }
  }
  return std::nullopt;
}

Format formatByContent(Source& source) {
  if (source.startsWith("QCAR")) return Format::eArchive;
  std::string_view line = source.firstLine();
  line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
  if (line.empty()) return Format::eGeoJson;
  if (line.front() == recordSeparator) return Format::eGeoJsonLines;
  if (line.front() == '{') return isFeatureLine(line) ? Format::eGeoJsonLines : Format::eGeoJson;
  line = line.substr(0, line.find_last_not_of(blanks) + 1);
  if (isWktLine(line)) return Format::eWkt;
  return looksLikeCsv(line) ? Format::eCsv : Format::eGeoJson;
}

}  // namespace tool
