// SPDX-License-Identifier: MIT
//
// What can go wrong with a file of features.

#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include <cntrformats/json.h>

namespace formats {

/// One feature cannot be read, written or answered; the others can.
class FeatureError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A feature that cannot be read although it is JSON.
class UnreadableFeature : public FeatureError {
 public:
  UnreadableFeature(const std::string& what, Json source)
      : FeatureError(what), source_(std::move(source)) {}
  /// Null when it was not to be kept.
  const Json& source() const noexcept { return source_; }

 private:
  Json source_;
};

/// A whole file cannot be read or written.
class FileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace formats
