// SPDX-License-Identifier: MIT
//
// Messages on standard error, and the exit status that follows from them.

#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>

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
  explicit Diagnostics(std::ostream& out) : out_(out) {}

  /// A feature of `file`, counted from 1, that was not answered.
  void badFeature(const std::string& file, std::size_t number, const std::string& what);
  void badFile(const std::string& file, const std::string& what);

  /// The worst of what was reported.
  ExitStatus status() const noexcept { return status_; }

 private:
  void report(ExitStatus status, const std::string& message);

  std::ostream& out_;
  ExitStatus status_ = eAllWell;
};

}  // namespace tool
