// SPDX-License-Identifier: MIT
//
// The file of features that a command writes.

#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <tools/output/file.h>
#include <tools/output/losses.h>
#include <tools/output/writer.h>
#include <tools/session.h>
#include <tools/stream/features.h>

namespace tool {

/// -o and --to.
struct OutputOptions {
  std::string file = "-";
  std::string to;
};

void addOutput(CLI::App& command, OutputOptions& options);

/// The format that --to, or else the ending of the file, names; nothing when neither does.
std::optional<Format> namedFormat(const OutputOptions& options);

/// A file that is being written from one or several others.
class FeatureFile {
 public:
  /// Throws FileError, as complete() and the writings do.
  FeatureFile(Session& session, const std::string& file, Format format, Rings rings,
              std::size_t inputs);

  /// Makes a feature ready on any thread; what is returned writes it. Throws FeatureError.
  Finish writing(const Origin& origin, Feature feature);
  /// The same for a feature that cannot be read; nothing where it cannot be written either.
  Finish writingUnreadable(const Origin& origin, const Json& source);

  /// The members of an input's collection, which are kept if it is the only input.
  void takeMembers(Json&& members);
  /// To be called once, behind the last feature. Tells what could not be held.
  void complete();

 private:
  bool isAlone(const Origin& origin) const { return origin.location.isLone && inputs_ == 1; }
  void write(const Prepared& prepared);

  Session& session_;
  std::string name_;
  Format format_;
  std::size_t inputs_;
  Output output_;
  std::unique_ptr<FeatureWriter> writer_;
  Losses losses_;
};

}  // namespace tool
