// SPDX-License-Identifier: MIT
//
// The files that a command reads.

#pragma once

#include <memory>
#include <optional>
#include <string>

#include <tools/input/reader.h>

namespace tool {

/// A file as messages and answers name it.
std::string displayName(const std::string& file);

/// A file that has been opened, and whose format is known.
struct Input {
  std::string name;
  std::unique_ptr<Source> source;
  Format format = Format::eGeoJson;
};

/// Opens a file, "-" for standard input. Its format is `from`, or else that of its ending, or else
/// that which its beginning looks like. Throws FileError.
Input openInput(const std::string& file, std::optional<Format> from);

}  // namespace tool
