// SPDX-License-Identifier: MIT
//
// The file formats: their names, and how one is known.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include <tools/input/source.h>

namespace tool {

enum class Format {
  /// One document: a FeatureCollection, a Feature or a geometry.
  eGeoJson,
  /// A feature to a line, or to a record that begins with RS as RFC 8142 wants it.
  eGeoJsonLines,
  /// A geometry to a line.
  eWkt,
  /// A vertex to a line: id,x,y.
  eCsv,
  /// The library's archive: one list of shapes.
  eArchive
};

/// The names for --from and --to.
std::vector<std::string> formatNames();
/// REQUIRES: one of formatNames().
Format formatNamed(const std::string& name);
/// The format as messages call it.
const char* titleOf(Format format);

/// The format that the ending of a file's name stands for; nothing for other endings and for "-".
std::optional<Format> formatByEnding(const std::string& file);
/// The format that the text looks like, judged by its first line that is not blank, which stays to
/// be read. GeoJSON when it looks like none.
Format formatByContent(Source& source);

}  // namespace tool
