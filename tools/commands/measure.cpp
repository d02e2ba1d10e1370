// SPDX-License-Identifier: MIT
//
// cntr measure: a row of measures for every feature, and for every part of a feature that has
// several.

#include <algorithm>
#include <cmath>
#include <memory>
#include <sstream>

#include <tools/answers/measures.h>
#include <tools/commands/commands.h>
#include <tools/commands/options.h>
#include <tools/report/rows.h>

namespace tool {

using namespace formats;

namespace {

struct Options {
  InputOptions input;
  RowOptions rows;
  std::vector<std::string> columns;
  std::string sort;
  double scale = 1.0;
  std::string unit;
  bool all = false;
  bool withHoles = true;
};

using Measures = std::vector<const Measure*>;

const Measure* measureNamed(const std::string& name, const char* option) {
  const auto all = allMeasures();
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&name](const Measure& measure) { return measure.name == name; });
  if (found != all.end()) return &*found;
  throw CLI::ValidationError(option,
                             "there is no column '" + name + "'; cntr measure --help lists them");
}

Measures chosenBy(const Options& options) {
  Measures chosen;
  for (const std::string& name : options.columns) {
    chosen.push_back(measureNamed(name, "--columns"));
  }
  if (!chosen.empty()) return chosen;
  for (const Measure& measure : allMeasures()) {
    const bool isFile = std::string(measure.name) == "file" && options.input.files.size() > 1;
    if (options.all || !options.rows.isTable() || measure.isStandard || isFile) {
      chosen.push_back(&measure);
    }
  }
  return chosen;
}

/// The column to sort by, and the order.
struct Sorting {
  const Measure* measure;
  RowOrder order;
};

std::optional<Sorting> sortingOf(const Options& options) {
  if (options.sort.empty()) return std::nullopt;
  const std::size_t colon = options.sort.find(':');
  const std::string order = colon == std::string::npos ? "asc" : options.sort.substr(colon + 1);
  if (order != "asc" && order != "desc") {
    throw CLI::ValidationError("--sort", "'" + order + "' is neither asc nor desc");
  }
  return Sorting{measureNamed(options.sort.substr(0, colon), "--sort"), {order == "desc"}};
}

/// The name with the power of the unit that its values are in.
std::string headingOf(const Measure& measure, const std::string& unit) {
  if (unit.empty() || measure.dimension == 0) return measure.name;
  const std::string power = measure.dimension == 1 ? "" : "^" + std::to_string(measure.dimension);
  return std::string(measure.name) + " [" + unit + power + "]";
}

RowColumns columnsOf(const Measures& measures, const std::string& unit) {
  RowColumns columns;
  for (const Measure* measure : measures) {
    columns.names.emplace_back(measure->name);
    columns.headings.push_back(headingOf(*measure, unit));
  }
  return columns;
}

/// Measures features into rows.
class Measuring : public Answerer {
 public:
  Measuring(const Options& options, Session& session)
      : measures_(chosenBy(options)),
        factor_(options.scale),
        withHoles_(options.withHoles),
        rows_(makeRows(options.rows, session.out, columnsOf(measures_, options.unit),
                       options.columns.empty() ? EmptyColumns::eLeftOut : EmptyColumns::eKept,
                       session.console.outStyle)) {
    if (const auto sorting = sortingOf(options)) {
      measures_.push_back(sorting->measure);
      rows_ = makeSorted(std::move(rows_), sorting->order);
    }
  }

  Answer answer(const Origin& origin, Feature feature) const override {
    return {"", rows_->prepare(answers(origin.file, feature)), {}, {}};
  }
  void write(Answer answer) override { rows_->write(std::move(answer.rows)); }

  bool isStreaming() const { return rows_->isStreaming(); }
  void finish() { rows_->finish(); }

 private:
  /// The feature as a whole, then its parts if there are several. All of them are answered before
  /// the first is written, so that a feature with a bad part leaves no rows behind.
  std::vector<Row> answers(const std::string& file, const Feature& feature) const {
    const Subject whole(feature.geometry, withHoles_);
    std::vector<Row> rows{row({file, feature, std::nullopt, whole})};
    const auto& parts = feature.geometry.parts;
    for (std::size_t k = 0; parts.size() > 1 && k < parts.size(); ++k) {
      const Subject part({feature.geometry.closed, false, {parts[k]}}, withHoles_);
      rows.push_back(row({file, feature, k + 1, part}));
    }
    return rows;
  }

  Row row(const Measured& measured) const {
    Row row;
    for (const Measure* measure : measures_) {
      row.push_back(scaled(measure->answer(measured), measure->dimension));
    }
    return row;
  }

  Cell scaled(const Cell& cell, int dimension) const {
    const double* number = std::get_if<double>(&cell);
    if (number == nullptr || dimension == 0) return cell;
    return numberCell(*number * std::pow(factor_, dimension));
  }

  Measures measures_;
  double factor_;
  bool withHoles_;
  std::unique_ptr<RowWriter> rows_;
};

void measure(const Options& options, Session& session) {
  Measuring measuring(options, session);
  Inputs inputs = options.input.inputs();
  inputs.showProgress = !(session.console.outIsTerminal && measuring.isStreaming());
  answerAll(inputs, session, measuring);
  measuring.finish();
}

std::string help() {
  std::ostringstream text;
  text << "Columns (* shown by default; all of them with --all, --json, --jsonl and --csv):\n";
  for (const Measure& measure : allMeasures()) {
    const std::string name = std::string(measure.isStandard ? "* " : "  ") + measure.name;
    text << "  " << name << std::string(25 - std::min<std::size_t>(name.size(), 24), ' ')
         << measure.meaning << '\n';
  }
  text
      << "\n"
         "Lengths and positions are in the unit of the coordinates, areas in its square, second\n"
         "moments in its fourth power; --scale says how many of another unit it is, and --unit\n"
         "names that in the headings. An outline that crosses itself has no area, centre and\n"
         "moments: the note says why. A table leaves out columns in which no row has an answer.\n"
         "--jsonl and --csv write each row as soon as it is known, unless they have to be sorted.\n"
         "\n"
         "Examples:\n"
         "  cntr measure samples/coins.geojson\n"
         "  cntr measure --columns label,area,diameter --sort area:desc samples/coins.geojson\n"
         "  cntr measure --scale 0.107 --unit um samples/cell.geojson\n"
         "  cntr measure --csv samples/coins.geojson samples/cell.geojson\n"
         "  cat samples/coins.geojson | cntr measure --jsonl --jobs 2";
  return text.str();
}

}  // namespace

void addMeasure(CLI::App& app, Session& session) {
  const auto options = std::make_shared<Options>();
  CLI::App& command = *app.add_subcommand("measure", "Measure every outline");
  addInputs(command, options->input);
  addRowFormats(command, options->rows);
  addNames(command, "--columns", options->columns, "Show these columns, in this order");
  command.add_flag("--all", options->all, "Show all columns")->excludes("--columns");
  command
      .add_option("--sort", options->sort, "Sort by a column; COLUMN:desc has the largest first")
      ->type_name("COLUMN");
  command.add_option("--scale", options->scale, "The length of one unit of the coordinates")
      ->check(CLI::PositiveNumber)
      ->type_name("FACTOR");
  command.add_option("--unit", options->unit, "The unit of that length, such as mm")
      ->type_name("NAME");
  addHoles(command, options->withHoles);
  command.footer(help());
  command.callback([options, &session] { measure(*options, session); });
}

}  // namespace tool
