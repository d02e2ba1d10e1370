// SPDX-License-Identifier: MIT
//
// Reading a file feature by feature, whatever its format: a reader finds where features begin and
// end, and hands each over to be decoded on any thread.

#pragma once

#include <cstddef>
#include <functional>

#include <cntrformats/errors.h>
#include <cntrformats/feature.h>
#include <cntrformats/location.h>
#include <cntrformats/members.h>

namespace formats {

/// A feature that has been read only as far as needed to find its end.
struct Record {
  Location location;
  /// About how many bytes it takes.
  std::size_t size = 0;
  /// Decodes it; on any thread, once. What is wrong with it becomes the feature's problem.
  std::function<Feature()> decode;
};

/// The feature that `read` fills in. A FeatureError becomes its problem: it then has no geometry,
/// but keeps what was filled in before.
Feature decoded(std::size_t number, const std::function<void(Feature&)>& read);

/// Whether features keep the JSON that they were read from, so that it can be written back in full.
enum class Keep { eFeature, eSourceToo };

/// Takes what a reader finds, in the order of the file.
class Sink {
 public:
  virtual ~Sink() = default;
  virtual void take(Record record) = 0;
  /// The members of a FeatureCollection besides its features: those before the features when they
  /// begin, those after them at the end.
  virtual void takeMembers(Members&& /*members*/) {}
};

}  // namespace formats
