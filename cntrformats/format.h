// SPDX-License-Identifier: MIT
//
// The table of file formats: what each is called, how it is known, and who reads and writes it.

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
  /// As messages call it.
  const char* title;
  /// Of file names, in small letters with the dot; the rest is empty.
  std::array<std::string_view, 4> endings;
  /// What a file of it is, in a few words.
  const char* meaning;
  /// What every file of it begins with; empty for text.
  std::string_view signature;
  /// True for the first line of such a file, its line feed included; null where lines tell nothing.
  bool (*looksLike)(std::string_view line);
  /// Hands all features of a file to `sink`. Throws FileError when the file cannot be read, is not
  /// of this format or holds no features; what was found by then has been handed over.
  void (*read)(Source& source, Keep keep, Sink& sink);
  std::unique_ptr<FeatureWriter> (*makeWriter)(std::ostream& out, Rings rings);
  /// What a file cannot hold of the feature.
  Losses (*lossesOf)(const Feature& feature);
};

/// All formats; the first is GeoJSON.
std::span<const Format> allFormats();

/// Null where there is none of that name.
const Format* formatNamed(std::string_view name);
/// The format that the ending of a file's name stands for, .gz at the end left out; null for other
/// endings and for "-".
const Format* formatByEnding(const std::string& file);
/// The format that the beginning of the text looks like, GeoJSON when it looks like none. All of it
/// stays to be read.
const Format& formatByContent(Source& source);

}  // namespace formats
