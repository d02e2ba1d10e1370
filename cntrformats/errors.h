// SPDX-License-Identifier: MIT
//
// What can go wrong with a file of features.

#pragma once

#include <stdexcept>

namespace formats {

/// One feature cannot be read, written or answered; the others can.
class FeatureError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A whole file cannot be read or written.
class FileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace formats
