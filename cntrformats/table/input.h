// SPDX-License-Identifier: MIT
//
// A file that has been opened and whose format is known.

#pragma once

#include <memory>
#include <string>

#include <cntrformats/table/format.h>

namespace formats {

struct Input {
  /// Its name in messages and answers.
  std::string name;
  std::unique_ptr<Source> source;
  const Format* format;

  void read(Keep keep, Sink& sink) const { format->read(*source, keep, sink); }
};

/// A file as messages and answers name it.
std::string displayName(const std::string& file);

/// Opens a file, "-" for standard input. Its format is `from` unless that is null, else that of its
/// extension, else the one that its beginning looks like. Throws FileError.
Input openInput(const std::string& file, const Format* from);

}  // namespace formats
