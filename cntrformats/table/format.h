// SPDX-License-Identifier: MIT
//
// The table of file formats: how each is named and recognised, and which functions read and write
// it.

#pragma once

#include <array>
#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include <cntrformats/losses.h>
#include <cntrformats/reader.h>
#include <cntrformats/source.h>
#include <cntrformats/writer.h>

namespace formats {

struct Format {
  /// For --from and --to.
  const char* name;
  /// Its name in messages.
  const char* title;
  /// File extensions in lower case with the dot; unused entries are empty.
  std::array<std::string_view, 4> endings;
  /// What a file in this format contains, in a few words.
  const char* meaning;
  /// What every file in this format begins with; empty for text.
  std::string_view signature;
  /// True for the first line of such a file, including its line feed; null if a line tells nothing.
  bool (*looksLike)(std::string_view line);
  /// Hands all features of a file to `sink`. Throws FileError when the file cannot be read, is not
  /// in this format or holds no features; what was found before has been handed over.
  void (*read)(Source& source, Keep keep, Sink& sink);
  std::unique_ptr<FeatureWriter> (*makeWriter)(std::ostream& out, Rings rings);
  /// What a file in this format cannot hold of the feature.
  Losses (*lossesOf)(const Feature& feature);
};

/// All formats; the first is GeoJSON.
std::span<const Format> allFormats();

/// The format of this name, or null.
const Format* formatNamed(std::string_view name);
/// The format that the extension of a file name stands for, without .gz at the end; null for other
/// extensions and for "-".
const Format* formatByEnding(const std::string& file);
/// The format that the beginning of the text looks like; GeoJSON if it looks like none. Consumes
/// nothing.
const Format& formatByContent(Source& source);

}  // namespace formats
