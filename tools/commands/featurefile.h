// SPDX-License-Identifier: MIT
//
// The file of features that a command writes, and what commands that write one have in common.

#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include <tools/run/features.h>
#include <tools/run/outputfile.h>

namespace tool {

/// -o and --to.
struct OutputOptions {
  std::string file = "-";
  std::string to;
};

void addOutput(CLI::App& command, OutputOptions& options);

/// The format that --to or else the extension of the file names; null when neither does.
const formats::Format* namedFormat(const OutputOptions& options);

/// The same, or else the format of the first input, which is opened for this.
const formats::Format& outputFormat(const OutputOptions& options, Inputs& inputs);

/// A file that is written from one or several others.
class FeatureFile {
 public:
  /// Throws FileError, as write() and complete() do.
  FeatureFile(Session& session, const std::string& file, const formats::Format& format,
              formats::Rings rings, std::size_t inputs);

  /// Its name in messages.
  const std::string& name() const noexcept { return name_; }

  /// Prepares a feature for writing; on any thread. Throws FeatureError.
  Answer prepare(const Origin& origin, formats::Feature feature) const;
  /// The same for a feature that cannot be read; nothing if it cannot be written either.
  Answer prepareUnreadable(const Origin& origin, const formats::Feature& feature) const;

  void write(Answer answer);
  /// The members of an input's collection, which are kept if it is the only input.
  void takeMembers(formats::Members&& members);
  /// To be called once, after the last feature. Reports what the file could not hold.
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

/// Whether features keep their outlines: only then is a collection's box still valid.
enum class OutlinesAre { eTheSame, eNew };

/// An answerer whose answers are features for a file.
class FeaturesToFile : public Answerer {
 public:
  FeaturesToFile(FeatureFile& file, OutlinesAre outlines) : file_(file), outlines_(outlines) {}

  void write(Answer answer) override { file_.write(std::move(answer)); }
  void takeMembers(formats::Members&& members) override;
  /// To be called once, after the last feature. Throws FileError.
  virtual void finish() { file_.complete(); }

 protected:
  FeatureFile& file() const noexcept { return file_; }

 private:
  FeatureFile& file_;
  OutlinesAre outlines_;
};

/// Writes the features of all inputs, as answered by the answerer that `make` returns for the file.
/// What the file cannot hold is reported.
void writeFeatures(Inputs& inputs, const OutputOptions& output, const formats::Format& format,
                   formats::Rings rings, Session& session,
                   const std::function<std::unique_ptr<FeaturesToFile>(FeatureFile&)>& make);

}  // namespace tool
