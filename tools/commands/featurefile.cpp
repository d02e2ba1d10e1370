// SPDX-License-Identifier: MIT

#include <tools/commands/featurefile.h>

#include <cntrformats/errors.h>
#include <tools/commands/options.h>

namespace tool {

using namespace formats;

void addOutput(CLI::App& command, OutputOptions& options) {
  command
      .add_option("-o,--output", options.file, "File to write; - (the default) is standard output")
      ->type_name("FILE");
  addFormat(command, "--to", options.to, "Format of the output, whatever its extension");
}

const Format* namedFormat(const OutputOptions& options) {
  return options.to.empty() ? formatByEnding(options.file) : formatNamed(options.to);
}

const Format& outputFormat(const OutputOptions& options, Inputs& inputs) {
  if (const Format* const named = namedFormat(options)) return *named;
  try {
    inputs.first = openInput(inputs.files.front(), inputs.from);
    return *inputs.first->format;
  } catch (const FileError&) {
    return allFormats().front();  // It will be opened again and reported.
  }
}

FeatureFile::FeatureFile(Session& session, const std::string& file, const Format& format,
                         Rings rings, std::size_t inputs)
    : session_(session),
      name_(file == "-" ? "standard output" : file),
      format_(format),
      inputs_(inputs),
      output_(session.out, file),
      writer_(format.makeWriter(output_.stream(), rings)) {}

Answer FeatureFile::prepare(const Origin& origin, Feature feature) const {
  Answer answer;
  answer.losses = format_.lossesOf(feature);
  answer.feature = writer_->prepare(std::move(feature), isAlone(origin));
  return answer;
}

Answer FeatureFile::prepareUnreadable(const Origin& origin, const Feature& feature) const {
  Answer answer;
  answer.feature = writer_->prepareUnreadable(feature, isAlone(origin));
  return answer;
}

void FeatureFile::write(Answer answer) {
  if (!answer.feature) return;
  for (const char* loss : answer.losses) ++losses_[loss];
  writer_->write(std::move(*answer.feature));
  if (!output_.stream()) output_.complete();
}

void FeatureFile::takeMembers(Members&& members) {
  const bool hasOthers = members.size() > (valueOf(members, "type") != nullptr ? 1U : 0U);
  if (inputs_ == 1 && writer_->takeMembers(std::move(members))) return;
  if (hasOthers)
    ++losses_[inputs_ == 1 ? "members of the collection" : "members of the collections"];
}

void FeatureFile::complete() {
  writer_->finish();
  output_.complete();
  if (!losses_.empty()) session_.diagnostics.warning(name_, accountOfLosses());
}

std::string FeatureFile::accountOfLosses() const {
  std::string text = std::string(format_.title) + " cannot hold ";
  const char* separator = "";
  for (const auto& [loss, count] : losses_) {
    text += separator + loss + " (" + std::to_string(count) + ")";
    separator = ", ";
  }
  return text;
}

void FeaturesToFile::takeMembers(Members&& members) {
  if (outlines_ == OutlinesAre::eNew)
    std::erase_if(members, [](const Member& member) { return member.name == "bbox"; });
  file_.takeMembers(std::move(members));
}

void writeFeatures(Inputs& inputs, const OutputOptions& output, const Format& format, Rings rings,
                   Session& session,
                   const std::function<std::unique_ptr<FeaturesToFile>(FeatureFile&)>& make) {
  inputs.keep = Keep::eSourceToo;
  if (session.console.outIsTerminal && output.file == "-") inputs.showProgress = false;
  try {
    FeatureFile file(session, output.file, format, rings, inputs.files.size());
    const auto answerer = make(file);
    answerAll(inputs, session, *answerer);
    if (session.diagnostics.status() < eUnusable) answerer->finish();
  } catch (const FileError& error) {
    session.diagnostics.badFile(output.file, error.what());
  }
}

}  // namespace tool
