// SPDX-License-Identifier: MIT
//
// The file that --nominal names, which compare and draw read.

#pragma once

#include <string>
#include <vector>

#include <cntrformats/location.h>
#include <tools/answers/nominals.h>
#include <tools/run/session.h>

namespace formats {
struct Format;
}

namespace tool {

/// The nominal features of a file and their places in it.
struct NominalFile {
  /// Its name in messages.
  std::string name;
  Nominals nominals;
  std::vector<formats::Location> locations;
};

/// Reads all features and reports those with which nothing can be compared. Throws FileError when
/// the file cannot be read or holds none.
NominalFile readNominals(const std::string& file, const formats::Format* from, Session& session);

}  // namespace tool
