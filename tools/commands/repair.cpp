// SPDX-License-Identifier: MIT
//
// cntr repair: a copy of files in which outlines no longer cross themselves or each other.

#include <memory>

#include <cntrformats/errors.h>
#include <cntrformats/geojson/feature.h>
#include <tools/answers/repair.h>
#include <tools/commands/commands.h>
#include <tools/commands/featurefile.h>
#include <tools/commands/options.h>
#include <tools/report/rows.h>

namespace tool {

using namespace formats;

namespace {

struct Options {
  InputOptions input;
  OutputOptions output;
  RowOptions report;
  std::string mode = "regularize";
  bool isQuiet = false;
};

qcContourDefs::IntersectionMode modeOf(const Options& options) {
  return options.mode == "outer-hull" ? qcContourDefs::eOuterHull : qcContourDefs::eRegularize;
}

/// The report makes room on standard output when the outlines go there.
std::unique_ptr<RowWriter> makeReport(const Options& options, Session& session) {
  const bool isBeside = options.output.file == "-";
  std::vector<std::string> columns{"feature", "label", "result"};
  if (options.input.files.size() > 1) columns.insert(columns.begin(), "file");
  return makeRows(options.report, isBeside ? session.messages : session.out, {columns, columns},
                  EmptyColumns::eLeftOut,
                  isBeside ? session.console.messageStyle : session.console.outStyle);
}

/// Writes features as they are or repaired, and a line about each.
class Repairing : public Answerer {
 public:
  Repairing(const Options& options, FeatureFile& file, Session& session)
      : mode_(modeOf(options)),
        showsFile_(options.input.files.size() > 1),
        isQuiet_(options.isQuiet),
        file_(file),
        report_(makeReport(options, session)) {}

  Answer answer(const Origin& origin, Feature feature) const override {
    try {
      const Repair repair = repaired(feature.geometry, mode_);
      PreparedRows row = report_->prepare({rowOf(origin, feature, repair.account)});
      if (repair.geometry) replaceGeometry(feature, *repair.geometry);
      Answer answer = file_.prepare(origin, std::move(feature));
      answer.rows = std::move(row);
      return answer;
    } catch (const FeatureError& error) {
      return unchanged(origin, std::move(feature), error.what());
    } catch (const qcException& error) {
      return unchanged(origin, std::move(feature), error.what());
    }
  }

  Answer answerUnreadable(const Origin& origin, const Feature& feature) const override {
    return file_.prepareUnreadable(origin, feature);
  }

  void write(Answer answer) override {
    PreparedRows row = std::move(answer.rows);
    file_.write(std::move(answer));
    if (!isQuiet_) report_->write(std::move(row));
  }

  void takeMembers(Members&& members) override {
    std::erase_if(members, [](const Member& member) { return member.name == "bbox"; });
    file_.takeMembers(std::move(members));
  }

  void finish() {
    file_.complete();
    if (!isQuiet_) report_->finish();
  }

 private:
  Answer unchanged(const Origin& origin, Feature feature, const std::string& why) const {
    Answer answer = file_.prepare(origin, std::move(feature));
    answer.complaint = why;
    return answer;
  }

  Row rowOf(const Origin& origin, const Feature& feature, const std::string& account) const {
    Row row;
    if (showsFile_) row.emplace_back(origin.file);
    row.emplace_back(feature.number);
    row.push_back(labelCell(feature.label));
    row.emplace_back(account);
    return row;
  }

  qcContourDefs::IntersectionMode mode_;
  bool showsFile_;
  bool isQuiet_;
  FeatureFile& file_;
  std::unique_ptr<RowWriter> report_;
};

/// The format of the first file, which is opened for that.
const Format& formatOfFirst(Inputs& inputs) {
  try {
    inputs.first = openInput(inputs.files.front(), inputs.from);
    return *inputs.first->format;
  } catch (const FileError&) {
    return allFormats().front();  // It will be opened again, and reported.
  }
}

void repair(const Options& options, Session& session) {
  Inputs inputs = options.input.inputs();
  inputs.keep = Keep::eSourceToo;
  const Format* const named = namedFormat(options.output);
  const Format& format = named != nullptr ? *named : formatOfFirst(inputs);
  inputs.showProgress = !session.console.outIsTerminal;
  try {
    FeatureFile file(session, options.output.file, format, Rings::eAsTheyWere, inputs.files.size());
    Repairing repairing(options, file, session);
    answerAll(inputs, session, repairing);
    if (session.diagnostics.status() < eUnusable) repairing.finish();
  } catch (const FileError& error) {
    session.diagnostics.badFile(options.output.file, error.what());
  }
}

constexpr const char* help =
    "Both ways follow the outline and turn at every crossing: where two lobes overlap, the "
    "overlap\n"
    "is left out. outer-hull then drops loops that lie inside others. Features of several "
    "polygons\n"
    "are repaired as a whole, those that cross being merged. A repaired outline has no holes.\n\n"
    "The report names each feature with what was done. Features that need no repair are written "
    "as\n"
    "they were, and so are those that cannot be repaired, and from GeoJSON to GeoJSON those that\n"
    "cannot be read; these are named on standard error. The report goes to standard error, too,\n"
    "when the outlines go to standard output.\n\n"
    "Examples:\n"
    "  cntr repair samples/coins.geojson -o repaired.geojson\n"
    "  cntr repair --mode outer-hull samples/coins.geojson -o repaired.geojson\n"
    "  cat samples/coins.geojson | cntr repair --quiet -o - --to geojsonl";

}  // namespace

void addRepair(CLI::App& app, Session& session) {
  const auto options = std::make_shared<Options>();
  CLI::App& command =
      *app.add_subcommand("repair", "Repair outlines that cross themselves or each other");
  addInputs(command, options->input);
  addOutput(command, options->output);
  command.add_option("--mode", options->mode, "How; regularize is the default")
      ->check(CLI::IsMember({"regularize", "outer-hull"}));
  command.add_flag("--quiet", options->isQuiet, "Report nothing but what could not be repaired");
  addRowFormats(command, options->report);
  command.footer(help);
  command.callback([options, &session] { repair(*options, session); });
}

}  // namespace tool
