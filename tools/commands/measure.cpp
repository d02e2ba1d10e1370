// SPDX-License-Identifier: MIT
//
// cntr measure: a row of measures for every feature, and with --parts for every part of a feature
// that has several.

#include <algorithm>
#include <memory>
#include <sstream>

#include <tools/answers/columns.h>
#include <tools/commands/commands.h>
#include <tools/commands/options.h>
#include <tools/commands/rowanswerer.h>
#include <tools/report/rows.h>

namespace tool {

using namespace formats;

namespace {

struct MeasureOptions {
  InputOptions input;
  RowOptions rows;
  std::vector<std::string> columns;
  std::string sort;
  MeasuringOptions measuring;
  bool all = false;
  bool byParts = false;
  bool isStrict = false;
};

using Columns = std::vector<const Column*>;

const Column* columnNamed(const std::string& name, const char* option) {
  const auto& all = allColumns();
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&name](const Column& column) { return column.name == name; });
  if (found != all.end()) return &*found;
  throw CLI::ValidationError(option,
                             "there is no column '" + name + "'; cntr measure --help lists them");
}

Columns chosenBy(const MeasureOptions& options) {
  Columns chosen;
  for (const std::string& name : options.columns)
    chosen.push_back(columnNamed(CLI::detail::trim_copy(name), "--columns"));
  if (!chosen.empty()) {
    const Column* unit = columnNamed("unit", "--unit");
    if (!options.measuring.unit.empty() &&
        std::find(chosen.begin(), chosen.end(), unit) == chosen.end())
      chosen.push_back(unit);
    return chosen;
  }
  for (const Column& column : allColumns()) {
    const bool isFile = std::string(column.name) == "file" && options.input.files.size() > 1;
    if (options.all || !options.rows.isTable() || column.isStandard || isFile)
      chosen.push_back(&column);
  }
  return chosen;
}

/// The column to sort by and the order.
struct Sorting {
  const Column* column;
  RowOrder order;
};

std::optional<Sorting> sortingOf(const MeasureOptions& options) {
  if (options.sort.empty()) return std::nullopt;
  const std::size_t colon = options.sort.find(':');
  const std::string order = colon == std::string::npos ? "asc" : options.sort.substr(colon + 1);
  if (order != "asc" && order != "desc") {
    throw CLI::ValidationError("--sort", "'" + order + "' is neither asc nor desc");
  }
  return Sorting{columnNamed(options.sort.substr(0, colon), "--sort"), {order == "desc"}};
}

std::vector<std::string> namesOf(const Columns& columns) {
  std::vector<std::string> names;
  for (const Column* column : columns) names.emplace_back(column->name);
  return names;
}

/// The chosen columns, followed by the one to sort by.
Columns filledBy(const MeasureOptions& options) {
  Columns columns = chosenBy(options);
  if (const auto sorting = sortingOf(options)) columns.push_back(sorting->column);
  return columns;
}

std::unique_ptr<RowWriter> rowsFor(const MeasureOptions& options, Session& session) {
  auto rows = makeRows(options.rows, session.out, namesOf(chosenBy(options)),
                       options.columns.empty() ? EmptyColumns::eLeftOut : EmptyColumns::eKept,
                       session.console.outStyle);
  const auto sorting = sortingOf(options);
  return sorting ? makeSorted(std::move(rows), sorting->order) : std::move(rows);
}

MeasuringOptions measuringOf(const MeasureOptions& options) {
  MeasuringOptions measuring = options.measuring;
  if (options.isStrict) measuring.filling = table::Filling::eLeftOut;
  return measuring;
}

/// Measures features into rows: one for each, even if it is bad.
class Measuring : public RowAnswerer {
 public:
  Measuring(const MeasureOptions& options, Session& session)
      : RowAnswerer(rowsFor(options, session)),
        filler_(filledBy(options), measuringOf(options)),
        byParts_(options.byParts) {}

 protected:
  /// All rows are answered before the first is written, so that a feature with a bad part has a
  /// single row, that of the feature.
  std::vector<Row> rowsOf(const Origin& origin, const Feature& feature,
                          std::string& /*complaint*/) const override {
    const auto& parts = feature.geometry.parts;
    std::vector<Row> rows{filler_.measured({origin.file, feature, std::nullopt}, parts)};
    for (std::size_t k = 0; byParts_ && parts.size() > 1 && k < parts.size(); ++k)
      rows.push_back(filler_.measured({origin.file, feature, k + 1}, {parts[k]}));
    return rows;
  }

  Row unanswered(const Origin& origin, const Feature& feature,
                 const std::string& why) const override {
    return filler_.unanswered({origin.file, feature, std::nullopt}, why);
  }

 private:
  ColumnFiller filler_;
  bool byParts_;
};

void measure(const MeasureOptions& options, Session& session) {
  Measuring measuring(options, session);
  Inputs inputs = options.input.inputs();
  printRows(inputs, session, measuring);
}

std::string measureHelp() {
  std::ostringstream text;
  text << "Columns (* shown by default; all of them with --all, --json, --jsonl and --csv):\n";
  for (const Column& column : allColumns()) {
    const std::string name = std::string(column.isStandard ? "* " : "  ") + column.name;
    text << "  " << name << std::string(25 - std::min<std::size_t>(name.size(), 24), ' ')
         << column.meaning << '\n';
  }
  text << "\n"
          "Lengths and positions are in the unit of the coordinates, areas in its square\n"
          "and second moments in its fourth power. --scale gives the length of that unit\n"
          "in another one, whose name --unit shows in the column 'unit'.\n\n"
          "Area, centre, moments and what follows from them are those of the set that a\n"
          "feature fills: all points around which the outline of some part winds, but none\n"
          "of that part's holes. Rings may touch themselves and each other. Where they\n"
          "cross or cover an area twice, the note says so; --strict leaves these measures\n"
          "out.\n\n"
          "There is a row for every feature; one that cannot be measured has a note, and is\n"
          "reported on standard error. A table leaves out columns in which no row has an\n"
          "answer. --jsonl and --csv write each row as soon as it is known, unless rows\n"
          "have to be sorted.\n\n"
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
  const auto options = std::make_shared<MeasureOptions>();
  CLI::App& command = *app.add_subcommand("measure", "Measure every outline");
  addInputs(command, options->input);
  addRowFormats(command, options->rows);
  addNames(command, "--columns", options->columns, "Show these columns, in this order");
  command.add_flag("--all", options->all, "Show all columns")->excludes("--columns");
  command.add_option("--sort", options->sort, "Sort by COLUMN; COLUMN:desc puts the largest first")
      ->type_name("COLUMN");
  addScale(command, options->measuring.scale, "Length of one unit of the coordinates");
  command.add_option("--unit", options->measuring.unit, "Unit of that length, such as mm")
      ->type_name("NAME");
  addHoles(command, options->measuring.withHoles);
  command.add_flag("--parts", options->byParts,
                   "Add a row for each part of a feature that has\n"
                   "several");
  command.add_flag("--strict", options->isStrict,
                   "Leave out areas, centres and moments of outlines\n"
                   "that cross or overlap");
  command.footer(measureHelp());
  command.callback([options, &session] { measure(*options, session); });
}

}  // namespace tool
