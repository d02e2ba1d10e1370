// SPDX-License-Identifier: MIT
//
// Messages on standard error, and the exit status that follows from them.

#pragma once

#include <cstddef>
#include <iosfwd>
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

  /// A feature of `file` that was not answered.
  void badFeature(const std::string& file, const formats::Location& location,
                  const std::string& what);
  void badFile(const std::string& file, const std::string& what);
  /// What the user should know, although all is well.
  void warning(const std::string& file, const std::string& what);

  /// The worst of what was reported.
  ExitStatus status() const noexcept { return status_; }

 private:
  void report(ExitStatus status, const std::string& message);

  std::ostream& out_;
  Style style_;
  ExitStatus status_ = eAllWell;
};

}  // namespace tool
