// SPDX-License-Identifier: MIT
//
// A file that has been opened, and whose format is known.

#pragma once

#include <memory>
#include <string>

#include <cntrformats/format.h>

namespace formats {

struct Input {
  /// As messages and answers name it.
  std::string name;
  std::unique_ptr<Source> source;
  const Format* format;

  void read(Keep keep, Sink& sink) const { format->read(*source, keep, sink); }
};

/// A file as messages and answers name it.
std::string displayName(const std::string& file);

/// Opens a file, "-" for standard input. Its format is `from` unless that is null, or else that of
/// its ending, or else that which its beginning looks like. Throws FileError.
Input openInput(const std::string& file, const Format* from);

}  // namespace formats
