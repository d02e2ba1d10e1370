// SPDX-License-Identifier: MIT
//
// Texts as files of a format: what is read from them, and what is written.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <cntrformats/table/input.h>

namespace texts {

struct Found {
  std::vector<formats::Feature> features;
  std::vector<formats::Location> places;
  /// "2: what is wrong" for feature 2.
  std::vector<std::string> complaints;
  /// The features that could not be read.
  std::vector<formats::Feature> unreadable;
  formats::Members members;
};

/// A file that is removed at the end.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& text, const std::string& ending = "");
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const std::string& path() const { return path_; }

 private:
  std::string path_ = "/tmp/cntrformats_XXXXXX";
};

/// A pipe that is written while it is read. A read that waits for a minute ends the program.
class Pipe {
 public:
  Pipe();
  ~Pipe();
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  /// REQUIRES: few enough bytes for the pipe to hold.
  void write(std::string_view bytes) const;
  /// Waits after each byte until it has been read.
  void writeOneByOne(std::string_view bytes) const;
  /// Nothing more will be written.
  void close();

  const std::string& path() const { return path_; }

 private:
  static constexpr unsigned mostSeconds = 60;

  std::string path_;
  int descriptor_ = -1;
};

/// Everything that a file with this content holds. Throws FileError.
Found read(const std::string& format, const std::string& text,
           formats::Keep keep = formats::Keep::eFeature);
/// The same for a JSON document, with its sources kept, read through a window of that size.
Found readDocument(const std::string& text, std::size_t window);
/// The same for a file of any format.
Found readFile(const std::string& path, const formats::Format* from = nullptr);

/// What is wrong with a file of this content as a whole; empty when nothing is.
std::string flawOf(const std::string& format, const std::string& text);

/// What is wrong with the first feature that cannot be read; empty when all can.
std::string problemOf(const std::string& format, const std::string& text);

std::string flawOfDocument(const std::string& text, std::size_t window);

/// The name of the format that a text is taken for.
std::string guess(const std::string& text);

/// A file with these features.
std::string written(const std::string& format, const std::vector<formats::Feature>& features,
                    formats::Rings rings = formats::Rings::eAsGeoJsonWants);

/// The text as a gzip file.
std::string packed(const std::string& text);

/// A triangle as GeoJSON.
inline const std::string triangle = R"({"type":"Polygon","coordinates":[[[0,0],[4,0],[4,4]]]})";

/// A square with a corner at (0, 0), which runs from the x axis towards the y axis.
formats::Points square(double size);
/// A feature of one outline.
formats::Feature outline(const formats::Points& points);

bool isSame(double a, double b);
bool isSame(const formats::Points& a, const formats::Points& b);

}  // namespace texts
