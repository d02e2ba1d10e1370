// SPDX-License-Identifier: MIT

#include <tools/commands/featurefile.h>

#include <tools/commands/options.h>

namespace tool {

void addOutput(CLI::App& command, OutputOptions& options) {
  command
      .add_option("-o,--output", options.file,
                  "The file to write; - (the default) is standard output")
      ->type_name("FILE");
  addFormat(command, "--to", options.to, "Its format, rather than what its ending says");
}

std::optional<Format> namedFormat(const OutputOptions& options) {
  return options.to.empty() ? formatByEnding(options.file) : formatOr(options.to);
}

FeatureFile::FeatureFile(Session& session, const std::string& file, Format format, Rings rings,
                         std::size_t inputs)
    : session_(session),
      name_(file == "-" ? "standard output" : file),
      format_(format),
      inputs_(inputs),
      output_(session.out, file),
      writer_(makeWriter(output_.stream(), format, rings)) {}

Finish FeatureFile::writing(const Origin& origin, Feature feature) {
  const auto losses = lossesOf(feature, format_);
  Prepared prepared = writer_->prepare(std::move(feature), isAlone(origin));
  return [this, losses, prepared = std::move(prepared)] {
    losses_.add(losses);
    write(prepared);
  };
}

Finish FeatureFile::writingUnreadable(const Origin& origin, const Json& source) {
  const auto prepared = writer_->prepareUnreadable(source, isAlone(origin));
  if (!prepared) return {};
  return [this, prepared = *prepared] { write(prepared); };
}

void FeatureFile::takeMembers(Json&& members) {
  const std::size_t ownMembers = members.contains("type") ? 1 : 0;
  if (inputs_ == 1 && format_ == Format::eGeoJson) {
    writer_->takeMembers(std::move(members));
  } else if (members.size() > ownMembers) {
    losses_.add({inputs_ == 1 ? "members of the collection" : "members of the collections"});
  }
}

void FeatureFile::complete() {
  writer_->finish();
  output_.complete();
  if (!losses_.areNone()) session_.diagnostics.warning(name_, losses_.account(format_));
}

void FeatureFile::write(const Prepared& prepared) {
  writer_->write(prepared);
  if (!output_.stream()) output_.complete();
}

}  // namespace tool
