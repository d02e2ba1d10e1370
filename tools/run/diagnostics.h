// SPDX-License-Identifier: MIT
//
// Messages on standard error, and the exit status that follows from them.

#pragma once

#include <cstddef>
#include <iosfwd>
#include <map>
#include <string>

#include <cntrformats/location.h>
#include <tools/run/console.h>

namespace tool {

enum ExitStatus : int {
  eAllWell = 0,
  /// Some features could not be read or answered.
  eSomeFailed = 1,
  /// Wrong usage, or a file that cannot be read or written.
  eUnusable = 2
};

class Diagnostics {
 public:
  /// On a terminal, `style` makes messages stand out.
  Diagnostics(std::ostream& out, Style style) : out_(out), style_(style) {}

  /// From now on lists all bad features instead of the first few.
  void listAll() { listsAll_ = true; }

  /// Reports a feature of `file` that was not answered, with the name that it has besides its
  /// number. The first few in a file are listed, the others counted.
  void badFeature(const std::string& file, const formats::Location& location,
                  const std::string& what, const std::string& name = "");
  /// Reports how many bad features were counted but not listed.
  void sumUp();
  void badFile(const std::string& file, const std::string& what);
  /// Warns the user about something although nothing has failed.
  void warning(const std::string& file, const std::string& what);

  /// The status of the worst report.
  ExitStatus status() const noexcept { return status_; }

 private:
  void report(ExitStatus status, const std::string& message);

  std::ostream& out_;
  Style style_;
  bool listsAll_ = false;
  /// The number of bad features by file.
  std::map<std::string, std::size_t> badFeatures_;
  ExitStatus status_ = eAllWell;
};

}  // namespace tool
