// SPDX-License-Identifier: MIT
//
// Reading a file feature by feature, whatever its format: a reader finds where features begin and
// end, and hands each over to be decoded on any thread.

#pragma once

#include <cstddef>
#include <functional>
#include <memory>

#include <cntrformats/errors.h>
#include <cntrformats/feature.h>
#include <cntrformats/location.h>
#include <cntrformats/members.h>

namespace formats {

/// Features that a reader has found together and not decoded yet.
class Undecoded {
 public:
  virtual ~Undecoded() = default;
  /// Decodes one feature; on any thread, once for each. What is wrong with it becomes its problem.
  virtual Feature decode(std::size_t index) = 0;
};

/// A feature that has been read only as far as needed to find its end.
struct Record {
  Location location;
  /// The approximate number of its bytes.
  std::size_t size = 0;
  std::shared_ptr<Undecoded> undecoded;
  /// Its place among them.
  std::size_t index = 0;

  Feature decode() const { return undecoded->decode(index); }
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
  /// Called before the reader waits for the rest of the file.
  virtual void pause() {}
  /// The members of a FeatureCollection besides its features: those before the features when they
  /// begin, those after them at the end.
  virtual void takeMembers(Members&& /*members*/) {}
};

}  // namespace formats
