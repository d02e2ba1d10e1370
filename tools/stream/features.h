// SPDX-License-Identifier: MIT
//
// The features of all input files as one stream, answered on several threads, in the order of the
// input.

#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <tools/input/input.h>
#include <tools/session.h>
#include <tools/stream/orderedwork.h>

namespace tool {

struct Inputs {
  std::vector<std::string> files;
  std::optional<Format> from;
  /// Worker threads.
  unsigned jobs = 1;
  /// Tell a user at a terminal how far the work has come.
  bool showProgress = true;
  /// The first file, if it has been opened to know its format.
  std::optional<Input> first;
};

/// A feature's place and the name of its file.
struct Origin {
  const std::string& file;
  Location location;
};

/// Standard output takes no more.
class StandardOutputError : public std::runtime_error {
 public:
  StandardOutputError() : std::runtime_error("cannot be written") {}
};

/// What a command does with features.
class Answerer {
 public:
  virtual ~Answerer() = default;
  /// Works on any thread, and returns what is left to be done in order on the calling one. Throws
  /// FeatureError or an exception of the library when there is no answer.
  virtual Finish answer(const Origin& origin, Feature feature) const = 0;
  /// The same for a feature that is JSON but cannot be read, which has been reported.
  virtual Finish answerUnreadable(const Origin& /*origin*/, const Json& /*source*/) const {
    return {};
  }
  /// In order on the calling thread, see Sink.
  virtual void takeMembers(Json&& /*members*/) {}
};

/// Answers all features. What cannot be read or answered is reported, and the others are answered.
/// Throws StandardOutputError as soon as answers no longer get through.
void answerAll(Inputs& inputs, Session& session, Answerer& answerer);

}  // namespace tool
