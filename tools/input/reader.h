// SPDX-License-Identifier: MIT
//
// Reading a file feature by feature, whatever its format.

#pragma once

#include <functional>
#include <string>

#include <tools/feature.h>
#include <tools/input/format.h>
#include <tools/location.h>

namespace tool {

/// A feature as far as it takes to find its end.
struct Record {
  Location location;
  /// About how many bytes it takes.
  std::size_t size = 0;
  /// Reads it; on any thread, once. Throws FeatureError, of JSON UnreadableFeature.
  std::function<Feature()> decode;
};

/// Takes what a reader finds, in the order of the file.
class Sink {
 public:
  virtual ~Sink() = default;
  virtual void take(Record record) = 0;
  /// The members of a FeatureCollection besides its features: those in front of the features when
  /// they begin, those behind them at the end.
  virtual void takeMembers(Json&& /*members*/) {}
};

/// Hands all features of a file to `sink`. Throws FileError when the file cannot be read, is not of
/// that format or holds no features; what was found by then has been handed over.
void readRecords(Source& source, Format format, Sink& sink);

}  // namespace tool
