// SPDX-License-Identifier: MIT
//
// cntr repair: a copy of files in which outlines no longer cross themselves or each other.

#include <map>
#include <memory>

#include <cntrformats/geojson/feature.h>
#include <tools/answers/repair.h>
#include <tools/commands/commands.h>
#include <tools/commands/featurefile.h>
#include <tools/commands/options.h>
#include <tools/report/rows.h>

namespace tool {

using namespace formats;

namespace {

const std::map<std::string, RepairRule> rules{{"nonzero", RepairRule::eNonZero},
                                              {"evenodd", RepairRule::eEvenOdd},
                                              {"walk", RepairRule::eWalk},
                                              {"outer-hull", RepairRule::eOuterHull}};

struct RepairOptions {
  InputOptions input;
  OutputOptions output;
  RowOptions report;
  std::string rule = "nonzero";
  std::string mode;
  double maxLoss = 0.1;
  bool isQuiet = false;
};

RepairRule ruleOf(const RepairOptions& options) {
  if (options.mode.empty()) return rules.at(options.rule);
  return options.mode == "regularize" ? RepairRule::eWalk : RepairRule::eOuterHull;
}

/// The report goes to standard error when the outlines go to standard output.
std::unique_ptr<RowWriter> makeReport(const RepairOptions& options, Session& session) {
  const bool isBeside = options.output.file == "-";
  std::vector<std::string> columns{
      "feature",        "label", "result", "area_before", "area_after", "vertices_before",
      "vertices_after", "parts", "holes",  "snapped",     "note"};
  if (options.input.files.size() > 1) columns.insert(columns.begin(), "file");
  return makeRows(options.report, isBeside ? session.messages : session.out, columns,
                  EmptyColumns::eLeftOut,
                  isBeside ? session.console.messageStyle : session.console.outStyle);
}

const char* nameOf(Repair::Result result) {
  switch (result) {
    case Repair::Result::eUnchanged:
      return "unchanged";
    case Repair::Result::eRepaired:
      return "repaired";
    default:
      return "failed";
  }
}

Cell cellOf(const std::optional<double>& value) { return value ? numberCell(*value) : Cell(); }

/// Writes features unchanged or repaired, and a line of the report about each.
class Repairing : public FeaturesToFile {
 public:
  Repairing(const RepairOptions& options, FeatureFile& file, Session& session)
      : FeaturesToFile(file, OutlinesAre::eNew),
        rule_(ruleOf(options)),
        maxLoss_(options.maxLoss),
        showsFile_(options.input.files.size() > 1),
        isQuiet_(options.isQuiet),
        report_(makeReport(options, session)) {}

  Answer answer(const Origin& origin, Feature feature) const override {
    Repair repair = repaired(feature.geometry, rule_, maxLoss_);
    PreparedRows row = report_->prepare({rowOf(origin, feature, repair)});
    if (repair.geometry) replaceGeometry(feature, *repair.geometry);
    Answer answer = file().prepare(origin, std::move(feature));
    answer.rows = std::move(row);
    if (repair.result == Repair::Result::eFailed) answer.complaint = repair.note;
    return answer;
  }

  Answer answerUnreadable(const Origin& origin, const Feature& feature) const override {
    const Repair repair{.result = Repair::Result::eFailed, .note = feature.problem};
    Answer answer = file().prepareUnreadable(origin, feature);
    answer.rows = report_->prepare({rowOf(origin, feature, repair)});
    return answer;
  }

  void write(Answer answer) override {
    PreparedRows row = std::move(answer.rows);
    FeaturesToFile::write(std::move(answer));
    if (!isQuiet_) report_->write(std::move(row));
  }

  void finish() override {
    FeaturesToFile::finish();
    if (!isQuiet_) report_->finish();
  }

 private:
  Row rowOf(const Origin& origin, const Feature& feature, const Repair& repair) const {
    Row row;
    if (showsFile_) row.emplace_back(origin.file);
    row.emplace_back(feature.number);
    row.push_back(labelCell(feature.label));
    row.emplace_back(nameOf(repair.result));
    row.push_back(cellOf(repair.areaBefore));
    row.push_back(cellOf(repair.areaAfter));
    const Extent before = extentOf(feature.geometry);
    row.push_back(before.parts > 0 ? Cell(before.vertices) : Cell());
    row.push_back(repair.after ? Cell(repair.after->vertices) : Cell());
    row.push_back(repair.after ? Cell(repair.after->parts) : Cell());
    row.push_back(repair.after ? Cell(repair.after->holes) : Cell());
    row.push_back(cellOf(repair.snapped));
    row.push_back(repair.note.empty() ? Cell() : Cell(repair.note));
    return row;
  }

  RepairRule rule_;
  double maxLoss_;
  bool showsFile_;
  bool isQuiet_;
  std::unique_ptr<RowWriter> report_;
};

void repair(const RepairOptions& options, Session& session) {
  Inputs inputs = options.input.inputs();
  inputs.showProgress = !session.console.outIsTerminal;
  writeFeatures(
      inputs, options.output, outputFormat(options.output, inputs), Rings::eAsTheyWere, session,
      [&](FeatureFile& file) { return std::make_unique<Repairing>(options, file, session); });
}

constexpr const char* repairHelp =
    "Rules, which say what the outlines of a feature fill:\n"
    "  nonzero     what the outline of some part runs around but none of that part's\n"
    "              holes; the default\n"
    "  evenodd     what the rings run around an odd number of times: overlaps are\n"
    "              left out\n"
    "  walk        no rule: follows the outline and turns at every crossing\n"
    "              (regularize())\n"
    "  outer-hull  the same, then loops inside others are dropped (outerHull())\n\n"
    "nonzero and evenodd keep the area and give a normal form, which is valid for\n"
    "other programs (simple features): no outline crosses itself or another, holes\n"
    "lie within, outlines run counter-clockwise and holes clockwise, in a plane with\n"
    "y up; rings begin at the leftmost of their vertices (of several the lowest), and\n"
    "parts are sorted by these. Vertices that remain keep their coordinates, unless a\n"
    "grid was needed (see 'snapped'). walk and outer-hull lose holes, and sometimes\n"
    "most of the area.\n\n"
    "The report has a line for each feature, with the area that the rule fills (for\n"
    "walk and outer-hull, that nonzero fills) and the area of what was written:\n"
    "  unchanged  it was valid; at most its rings were reversed, begun at another\n"
    "             vertex or sorted\n"
    "  repaired   it has new outlines\n"
    "  failed     it has no area, or would lose more of it than --max-loss; it is\n"
    "             written as it was and reported on standard error; the exit status\n"
    "             is 1\n"
    "'snapped' is the spacing of a grid that vertices had to be moved to, where\n"
    "crossings lie closer together than doubles can tell. Features that cannot be\n"
    "read count as failed; from GeoJSON to GeoJSON they are written unchanged. Open\n"
    "lines are unchanged. The report goes to standard error when the outlines go to\n"
    "standard output.\n\n"
    "Examples:\n"
    "  cntr repair samples/coins.geojson -o repaired.geojson\n"
    "  cntr repair --rule evenodd samples/coins.geojson -o repaired.geojson\n"
    "  cat samples/coins.geojson | cntr repair --quiet -o - --to geojsonl";

}  // namespace

void addRepair(CLI::App& app, Session& session) {
  const auto options = std::make_shared<RepairOptions>();
  CLI::App& command = *app.add_subcommand("repair", "Repair outlines that cross, touch or overlap");
  addInputs(command, options->input);
  addOutput(command, options->output);
  CLI::Option* const rule =
      command.add_option("--rule", options->rule, "What outlines fill, see below")
          ->check(CLI::IsMember({"nonzero", "evenodd", "walk", "outer-hull"}));
  command.add_option("--mode", options->mode, "The same as --rule; regularize is walk")
      ->check(CLI::IsMember({"regularize", "outer-hull"}))
      ->excludes(rule);
  command
      .add_option("--max-loss", options->maxLoss,
                  "Share of its area that a feature may lose; by\n"
                  "default 0.1")
      ->check(CLI::Range(0.0, 1.0))
      ->type_name("SHARE");
  command.add_flag("--quiet", options->isQuiet, "Report only what failed");
  addRowFormats(command, options->report);
  command.footer(repairHelp);
  command.callback([options, &session] { repair(*options, session); });
}

}  // namespace tool
