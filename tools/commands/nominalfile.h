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

/// The nominal features of a file, and where in it they are.
struct NominalFile {
  /// Its name in messages.
  std::string name;
  Nominals nominals;
  std::vector<formats::Location> locations;
};

/// Reads all features and reports those that nothing can be compared with. Throws FileError when
/// the file cannot be read or holds none.
NominalFile readNominals(const std::string& file, const formats::Format* from, Session& session);

}  // namespace tool
