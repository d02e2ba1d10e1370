// SPDX-License-Identifier: MIT
//
// A whole file at once, for what needs all of its features together.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include <cntrformats/input.h>
#include <tools/run/diagnostics.h>

namespace tool {

struct Document {
  /// The file's name as messages show it.
  std::string name;
  /// The members of a GeoJSON collection besides its features.
  formats::Members members;
  /// Those that could be read.
  std::vector<formats::Feature> features;
};

/// Reads a file of any format, "-" for standard input; see openInput(). Features that cannot be
/// read are reported and left out. A file that cannot be read, is not of its format or holds no
/// features is reported, and nothing is returned.
std::optional<Document> readDocument(const std::string& file, Diagnostics& diagnostics,
                                     const formats::Format* from);

}  // namespace tool
