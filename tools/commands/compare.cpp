// SPDX-License-Identifier: MIT
//
// cntr compare: how far each measured feature is from its nominal one, and whether that is within a
// tolerance.

#include <algorithm>
#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <cntrformats/errors.h>
#include <cntrformats/table/input.h>
#include <tools/answers/comparison.h>
#include <tools/commands/commands.h>
#include <tools/commands/nominalfile.h>
#include <tools/commands/numberlist.h>
#include <tools/commands/options.h>
#include <tools/commands/rowanswerer.h>
#include <tools/report/numbers.h>

namespace tool {

using namespace formats;

namespace {

struct CompareOptions {
  InputOptions input;
  RowOptions rows;
  std::string nominal;
  ComparingOptions comparing;
  std::string unit;
  bool isComplete = false;
};

/// What the rows of this run show: tables leave out columns that would be the same in every row.
struct Shown {
  bool file;
  bool nominal;
  bool placement;
  bool tolerance;

  Shown(const CompareOptions& options, const Nominals& nominals)
      : file(!options.rows.isTable() || options.input.files.size() > 1),
        nominal(!options.rows.isTable() || nominals.all().size() > 1),
        placement(options.comparing.align),
        tolerance(options.comparing.tolerance.has_value()) {}
};

std::vector<std::string> columnsOf(const Shown& shown) {
  std::vector<std::string> columns;
  if (shown.file) columns.emplace_back("file");
  columns.insert(columns.end(), {"feature", "label", "id"});
  if (shown.nominal) columns.emplace_back("nominal");
  columns.insert(columns.end(), {"unit", "deviation_min", "deviation_max", "deviation_mean",
                                 "deviation_rms", "hausdorff", "iou", "area_difference"});
  if (shown.placement) columns.insert(columns.end(), {"align_angle", "align_x", "align_y"});
  columns.insert(columns.end(), {"in_tolerance", "note"});
  return columns;
}

template <class Value>
Cell optionalCell(const std::optional<Value>& value) {
  if constexpr (std::is_same_v<Value, double>) return value ? numberCell(*value) : Cell();
  return value ? Cell(*value) : Cell();
}

void addPlacement(Row& row, const Placement& placement) {
  row.push_back(numberCell(placement.angle));
  row.push_back(numberCell(placement.shift.x()));
  row.push_back(numberCell(placement.shift.y()));
}

/// Compares features into rows: one for each, even if it is bad.
class Comparing : public RowAnswerer {
 public:
  Comparing(const CompareOptions& options, const Nominals& nominals, Session& session)
      : RowAnswerer(makeRows(options.rows, session.out, columnsOf(Shown(options, nominals)),
                             EmptyColumns::eLeftOut, session.console.outStyle)),
        options_(options),
        nominals_(nominals),
        shown_(options, nominals),
        columns_(columnsOf(shown_).size()),
        isMeasured_(nominals.all().size()) {}

  /// True when a feature has been paired with that nominal.
  bool isMeasured(std::size_t nominal) const { return isMeasured_[nominal]; }

 protected:
  std::vector<Row> rowsOf(const Origin& origin, const Feature& feature,
                          std::string& complaint) const override {
    const Nominal& nominal = nominals_.counterpartOf(feature);
    isMeasured_[static_cast<std::size_t>(&nominal - nominals_.all().data())] = true;
    const Comparison comparison = compared(feature.geometry, nominal, options_.comparing);
    complaint = complaintAbout(comparison);
    return {answered(origin, feature, nominal, comparison)};
  }

  /// A feature that cannot be compared is not within the tolerance.
  Row unanswered(const Origin& origin, const Feature& feature,
                 const std::string& why) const override {
    Row row = heading(origin, feature);
    row.resize(columns_ - 2);
    row.push_back(shown_.tolerance ? Cell(false) : Cell());
    row.emplace_back(why);
    return row;
  }

 private:
  std::string complaintAbout(const Comparison& comparison) const {
    if (comparison.inTolerance.value_or(true)) return "";
    return "is out of tolerance: its Hausdorff distance is " +
           shortNumber(comparison.hausdorff, 6) + ", more than " +
           shortNumber(*options_.comparing.tolerance, 6);
  }

  Row heading(const Origin& origin, const Feature& feature) const {
    Row row;
    if (shown_.file) row.emplace_back(origin.file);
    row.emplace_back(feature.number);
    row.push_back(labelCell(feature.label));
    row.push_back(optionalCell(feature.id));
    return row;
  }

  Row answered(const Origin& origin, const Feature& feature, const Nominal& nominal,
               const Comparison& comparison) const {
    Row row = heading(origin, feature);
    if (shown_.nominal) row.emplace_back(nominal.number);
    row.push_back(options_.unit.empty() ? Cell() : Cell(options_.unit));
    const qcDeviation& deviation = comparison.deviation;
    for (const double value :
         {deviation.least, deviation.greatest, deviation.mean, deviation.rms, comparison.hausdorff})
      row.push_back(numberCell(value));
    row.push_back(optionalCell(comparison.iou));
    row.push_back(optionalCell(comparison.areaDifference));
    if (shown_.placement) addPlacement(row, comparison.placement.value());
    row.push_back(optionalCell(comparison.inTolerance));
    row.push_back(comparison.note.empty() ? Cell() : Cell(comparison.note));
    return row;
  }

  const CompareOptions& options_;
  const Nominals& nominals_;
  Shown shown_;
  std::size_t columns_;
  mutable std::vector<std::atomic<bool>> isMeasured_;
};

/// Reports nominal features with which no measured one was compared; bad nominals have already been
/// reported.
void reportMissing(const Comparing& comparing, const NominalFile& file, bool isComplete,
                   Diagnostics& diagnostics) {
  const std::size_t count = file.locations.size();
  std::size_t missing = 0;
  for (std::size_t i = 0; i < count; ++i) {
    if (comparing.isMeasured(i) || !file.nominals.all()[i].problem.empty()) continue;
    ++missing;
    if (isComplete) diagnostics.badFeature(file.name, file.locations[i], "was not measured");
  }
  if (isComplete) return diagnostics.sumUp();
  if (missing == 0) return;
  diagnostics.warning(file.name, std::to_string(missing) + " of " + std::to_string(count) +
                                     (count == 1 ? " feature" : " features") +
                                     (missing == 1 ? " was" : " were") + " not measured");
}

void compareWith(const NominalFile& file, const CompareOptions& options, Session& session) {
  Comparing comparing(options, file.nominals, session);
  Inputs inputs = options.input.inputs();
  printRows(inputs, session, comparing);
  reportMissing(comparing, file, options.isComplete, session.diagnostics);
}

void compare(const CompareOptions& options, Session& session) {
  try {
    compareWith(readNominals(options.nominal, nullptr, session), options, session);
  } catch (const FileError& error) {
    session.diagnostics.badFile(displayName(options.nominal), error.what());
  }
}

void check(const CompareOptions& options) {
  const std::vector<std::string>& files = options.input.files;
  if (options.nominal == "-" && std::find(files.begin(), files.end(), "-") != files.end())
    throw CLI::ValidationError("--nominal", "only one of the two files can be standard input");
}

constexpr const char* compareHelp =
    "If there is a single nominal feature, every feature is compared with it;\n"
    "otherwise with the one that has the same label, or else the same id.\n\n"
    "Columns:\n"
    "  nominal          number of the nominal feature in its file\n"
    "  deviation_min    smallest distance of the measured boundary from the nominal\n"
    "                   one, negative inside what the nominal feature fills\n"
    "  deviation_max    largest distance\n"
    "  deviation_mean   mean distance along the measured boundary\n"
    "  deviation_rms    root mean square distance along it\n"
    "  hausdorff        distance of the point of either boundary that is farthest\n"
    "                   from the other\n"
    "  iou              area that both fill, as a share of the area that either fills\n"
    "  area_difference  measured area less the nominal one\n"
    "  align_angle      with --align: the rotation about the origin, in degrees from\n"
    "                   the x axis towards the y axis, and\n"
    "  align_x align_y  the shift after it that bring the measured feature onto its\n"
    "                   nominal one\n"
    "  in_tolerance     with --tolerance: whether hausdorff is at most the tolerance\n\n"
    "Boundaries are those of what features fill (by the rule nonzero, see\n"
    "'cntr repair --help'), those of holes included. Distances from open lines have\n"
    "no signs, and lines have no areas. If a part of the nominal boundary is missing\n"
    "from the measured feature, hausdorff shows it, but deviation_max need not.\n"
    "Lengths are multiplied by --scale, and --tolerance and --spacing are lengths in\n"
    "the unit that results.\n\n"
    "The exit status is 1 when a feature is out of tolerance or cannot be compared;\n"
    "both are reported on standard error. Nominal features that nothing was compared\n"
    "with are counted there; with --complete each is reported, and the exit status\n"
    "is 1.\n\n"
    "Examples:\n"
    "  cntr compare samples/coins.geojson --nominal samples/coins.geojson --tolerance 0.5\n"
    "  cntr offset samples/cell.geojson --distance 1 | cntr compare --nominal "
    "samples/cell.geojson\n"
    "  cntr compare --align --scale 0.107 --unit um samples/cell.geojson --nominal "
    "samples/cell.geojson";

}  // namespace

void addCompare(CLI::App& app, Session& session) {
  const auto options = std::make_shared<CompareOptions>();
  CLI::App& command = *app.add_subcommand("compare", "Compare outlines with nominal ones");
  addInputs(command, options->input);
  command
      .add_option("--nominal", options->nominal, "File of nominal features; - is standard input")
      ->required()
      ->type_name("FILE");
  ComparingOptions& comparing = options->comparing;
  command.add_flag("--align", comparing.align,
                   "Rotate and shift each feature onto its nominal one\n"
                   "before comparing");
  command.add_option("--tolerance", comparing.tolerance, "Largest Hausdorff distance that passes")
      ->check(refusalOfNotNegative)
      ->type_name("T");
  command
      .add_option("--spacing", comparing.spacing,
                  "Longest step between the points of the measured\n"
                  "boundary at which distances are taken, besides its\n"
                  "vertices; by default 1/1024 of its length")
      ->check(refusalOfPositive)
      ->type_name("S");
  command.add_flag("--complete", options->isComplete,
                   "Fail when a nominal feature was not measured");
  addRowFormats(command, options->rows);
  addScale(command, comparing.scale, "Length of one unit of the coordinates");
  command.add_option("--unit", options->unit, "Unit of that length, such as mm")->type_name("NAME");
  command.footer(compareHelp);
  command.callback([options, &session] {
    check(*options);
    compare(*options, session);
  });
}

}  // namespace tool
