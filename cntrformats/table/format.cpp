// SPDX-License-Identifier: MIT

#include <cntrformats/table/format.h>

#include <algorithm>
#include <cctype>
#include <filesystem>

#include <cntrformats/archive/archive.h>
#include <cntrformats/csv/csv.h>
#include <cntrformats/geojson/geojson.h>
#include <cntrformats/wkt/wkt.h>

namespace formats {

namespace {

constexpr Format table[] = {
    {"geojson",
     "GeoJSON",
     {".geojson", ".json"},
     "one document",
     "",
     nullptr,
     readGeoJson,
     makeGeoJsonWriter,
     lossesInGeoJson},
    {"geojsonl",
     "GeoJSON lines",
     {".geojsonl", ".geojsons", ".ndjson", ".jsonl"},
     "one feature per line",
     "",
     looksLikeGeoJsonLines,
     readGeoJsonLines,
     makeGeoJsonLinesWriter,
     lossesInGeoJson},
    {"wkt",
     "WKT",
     {".wkt"},
     "geometries, each on a new line",
     "",
     looksLikeWkt,
     readWkt,
     makeWktWriter,
     lossesInWkt},
    {"csv",
     "CSV",
     {".csv"},
     "a vertex per line: id,x,y or x,y",
     "",
     looksLikeCsv,
     readCsv,
     makeCsvWriter,
     lossesInCsv},
    {"archive",
     "an archive",
     {".qcar"},
     "a list of the library's shapes",
     "QCAR",
     nullptr,
     readArchive,
     makeArchiveWriter,
     lossesInArchive},
};

template <class Condition>
const Format* firstFormat(const Condition& condition) {
  const auto* const found = std::find_if(std::begin(table), std::end(table), condition);
  return found == std::end(table) ? nullptr : found;
}

}  // namespace

std::span<const Format> allFormats() { return table; }

const Format* formatNamed(std::string_view name) {
  return firstFormat([&](const Format& format) { return format.name == name; });
}

const Format* formatByEnding(const std::string& file) {
  const auto endingOf = [](const std::filesystem::path& path) {
    std::string ending = path.extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return ending;
  };
  const std::filesystem::path path(file);
  std::string ending = endingOf(path);
  if (ending == ".gz") ending = endingOf(path.stem());
  if (ending.empty()) return nullptr;
  return firstFormat([&](const Format& format) {
    return std::find(format.endings.begin(), format.endings.end(), ending) != format.endings.end();
  });
}

const Format& formatByContent(Source& source) {
  const Format* const bySignature = firstFormat([&](const Format& format) {
    return !format.signature.empty() && source.startsWith(format.signature);
  });
  if (bySignature != nullptr) return *bySignature;
  const std::string_view line = source.firstLine();
  const Format* const byLine = firstFormat(
      [&](const Format& format) { return format.looksLike != nullptr && format.looksLike(line); });
  return byLine == nullptr ? table[0] : *byLine;
}

}  // namespace formats
