// SPDX-License-Identifier: MIT
//
// What can go wrong for the user. The command line and diagnostics.h turn these into messages and
// exit statuses.

#pragma once

#include <stdexcept>

namespace tool {

/// One feature cannot be read or answered; the others can.
class FeatureError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A whole file cannot be read or written.
class FileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace tool
