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

#include <cntrformats/input.h>
#include <tools/report/rows.h>
#include <tools/run/session.h>

namespace tool {

struct Inputs {
  std::vector<std::string> files;
  /// Null: told by the files themselves.
  const formats::Format* from = nullptr;
  formats::Keep keep = formats::Keep::eFeature;
  /// Whether a feature is to be answered, asked on any thread; null when all are.
  std::function<bool(const formats::Feature&)> isWanted = nullptr;
  /// Threads that answer.
  unsigned jobs = 1;
  /// Tell a user at a terminal how far the work has come.
  bool showProgress = true;
  /// The first file, if it has been opened to know its format.
  std::optional<formats::Input> first;
};

/// A feature's place and the name of its file.
struct Origin {
  const std::string& file;
  formats::Location location;
};

/// What a command makes of a feature: what is to be written, any of it empty.
struct Answer {
  /// What is wrong with the feature, to be reported before anything is written; empty if nothing.
  std::string complaint;
  PreparedRows rows;
  std::optional<formats::Prepared> feature;
  /// What the file that the feature is written to cannot hold.
  formats::Losses losses;
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

  // On any thread.

  /// REQUIRES: the feature has no problem. Throws FeatureError or an exception of the library when
  /// there is no answer.
  virtual Answer answer(const Origin& origin, formats::Feature feature) const = 0;
  /// The same for a feature that has a problem, which is reported besides.
  virtual Answer answerUnreadable(const Origin& /*origin*/,
                                  const formats::Feature& /*feature*/) const {
    return {};
  }

  // In order, on the thread that called answerAll().

  /// Called for every feature: there is nothing but a complaint where there is no answer.
  virtual void write(Answer answer) = 0;
  /// See Sink.
  virtual void takeMembers(formats::Members&& /*members*/) {}
};

/// Answers all features. What cannot be read or answered is reported, and the others are answered.
/// Throws StandardOutputError as soon as answers no longer get through.
void answerAll(Inputs& inputs, Session& session, Answerer& answerer);

}  // namespace tool
