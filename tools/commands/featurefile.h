// SPDX-License-Identifier: MIT
//
// The file of features that a command writes.

#pragma once

#include <CLI/CLI.hpp>
#include <map>
#include <memory>
#include <string>

#include <tools/run/features.h>
#include <tools/run/outputfile.h>

namespace tool {

/// -o and --to.
struct OutputOptions {
  std::string file = "-";
  std::string to;
};

void addOutput(CLI::App& command, OutputOptions& options);

/// The format that --to, or else the ending of the file, names; null when neither does.
const formats::Format* namedFormat(const OutputOptions& options);

/// The same, or else the format of the first input, which is opened for that.
const formats::Format& outputFormat(const OutputOptions& options, Inputs& inputs);

/// A file that is being written from one or several others.
class FeatureFile {
 public:
  /// Throws FileError, as write() and complete() do.
  FeatureFile(Session& session, const std::string& file, const formats::Format& format,
              formats::Rings rings, std::size_t inputs);

  /// As messages show it.
  const std::string& name() const noexcept { return name_; }

  /// Makes a feature ready on any thread. Throws FeatureError.
  Answer prepare(const Origin& origin, formats::Feature feature) const;
  /// The same for a feature that cannot be read; nothing where it cannot be written either.
  Answer prepareUnreadable(const Origin& origin, const formats::Feature& feature) const;

  void write(Answer answer);
  /// The members of an input's collection, which are kept if it is the only input.
  void takeMembers(formats::Members&& members);
  /// To be called once, after the last feature. Tells what could not be held.
  void complete();

 private:
  bool isAlone(const Origin& origin) const { return origin.location.isLone && inputs_ == 1; }
  std::string accountOfLosses() const;

  Session& session_;
  std::string name_;
  const formats::Format& format_;
  std::size_t inputs_;
  Output output_;
  std::unique_ptr<formats::FeatureWriter> writer_;
  /// How often each thing was lost.
  std::map<std::string, std::size_t> losses_;
};

}  // namespace tool
