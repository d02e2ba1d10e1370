// SPDX-License-Identifier: MIT
//
// The features of all input files as one stream: read on one thread, answered on several, and
// written in the order of the input.

#pragma once

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <cntrformats/table/input.h>
#include <tools/report/rows.h>
#include <tools/run/session.h>

namespace tool {

struct Inputs {
  std::vector<std::string> files;
  /// Null if the format of each file is to be detected.
  const formats::Format* from = nullptr;
  formats::Keep keep = formats::Keep::eFeature;
  /// Whether a feature is to be answered, called on any thread; null if all are.
  std::function<bool(const formats::Feature&)> isWanted = nullptr;
  /// The number of threads that answer.
  unsigned jobs = 1;
  /// Whether to show progress to a user at a terminal.
  bool showProgress = true;
  /// The first file, if it has already been opened to detect its format.
  std::optional<formats::Input> first;
};

/// The place of a feature and the name of its file.
struct Origin {
  const std::string& file;
  formats::Location location;
};

/// A command's answer for a feature: what is to be written. Any of it may be empty.
struct Answer {
  /// What is wrong with the feature, reported before anything is written; empty if nothing is.
  std::string complaint;
  PreparedRows rows;
  std::optional<formats::Prepared> feature;
  /// What the output file cannot hold.
  formats::Losses losses;
};

/// Standard output no longer accepts data.
class StandardOutputError : public std::runtime_error {
 public:
  StandardOutputError() : std::runtime_error("cannot be written") {}
};

/// What a command does with features.
class Answerer {
 public:
  virtual ~Answerer() = default;

  // Called on any thread.

  /// REQUIRES: the feature has no problem. Throws FeatureError or an exception of the library when
  /// there is no answer.
  virtual Answer answer(const Origin& origin, formats::Feature feature) const = 0;
  /// The same for a feature that has a problem, which is reported as well.
  virtual Answer answerUnreadable(const Origin& /*origin*/,
                                  const formats::Feature& /*feature*/) const {
    return {};
  }

  // Called in order, on the thread that called answerAll().

  /// Called for every feature, with only a complaint if there is no answer.
  virtual void write(Answer answer) = 0;
  /// See Sink.
  virtual void takeMembers(formats::Members&& /*members*/) {}
};

/// Answers all features. Whatever cannot be read or answered is reported, and the others are
/// answered. Throws StandardOutputError as soon as answers can no longer be written.
void answerAll(Inputs& inputs, Session& session, Answerer& answerer);

}  // namespace tool
