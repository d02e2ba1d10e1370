// SPDX-License-Identifier: MIT
//
// cntr measure: a row of measures for every feature, and for every part of a feature that has
// several.

#include <algorithm>
#include <memory>
#include <sstream>

#include <tools/commands/commands.h>
#include <tools/commands/options.h>
#include <tools/measures.h>
#include <tools/output/rows.h>

namespace tool {

namespace {

struct Options {
  std::vector<std::string> files;
  std::vector<std::string> columns;
  bool all = false;
  bool json = false;
  bool withHoles = true;
};

using Measures = std::vector<const Measure*>;

Measures chosenByName(const std::vector<std::string>& names) {
  Measures chosen;
  for (const std::string& name : names) {
    const auto all = allMeasures();
    const auto found = std::find_if(
        all.begin(), all.end(), [&name](const Measure& measure) { return measure.name == name; });
    if (found == all.end()) {
      throw CLI::ValidationError(
          "--columns", "there is no column '" + name + "'; cntr measure --help lists them");
    }
    chosen.push_back(&*found);
  }
  return chosen;
}

Measures chosenBy(const Options& options) {
  if (!options.columns.empty()) return chosenByName(options.columns);
  Measures chosen;
  for (const Measure& measure : allMeasures()) {
    const bool isFile = std::string(measure.name) == "file" && options.files.size() > 1;
    if (options.all || options.json || measure.isStandard || isFile) chosen.push_back(&measure);
  }
  return chosen;
}

std::unique_ptr<RowWriter> makeWriter(const Options& options, const Measures& measures,
                                      std::ostream& out) {
  std::vector<std::string> names;
  for (const Measure* measure : measures) names.emplace_back(measure->name);
  if (options.json) return makeJsonRows(out, names);
  return makeTable(out, names,
                   options.columns.empty() ? EmptyColumns::eLeftOut : EmptyColumns::eKept);
}

Row answer(const Measures& measures, const Measured& measured) {
  Row row;
  for (const Measure* measure : measures) row.push_back(measure->answer(measured));
  return row;
}

/// The feature as a whole, then its parts if there are several. All of them are answered before the
/// first is written, so that a feature with a bad part leaves no rows behind.
std::vector<Row> answers(const Measures& measures, const Document& document, const Feature& feature,
                         bool withHoles) {
  const Subject whole(feature.geometry, withHoles);
  std::vector<Row> rows{answer(measures, {document.name, feature, std::nullopt, whole})};
  const auto& [closed, parts] = feature.geometry;
  for (std::size_t k = 0; parts.size() > 1 && k < parts.size(); ++k) {
    const Subject part({closed, {parts[k]}}, withHoles);
    rows.push_back(answer(measures, {document.name, feature, k + 1, part}));
  }
  return rows;
}

void measure(const Options& options, Session& session) {
  const Measures measures = chosenBy(options);
  const auto writer = makeWriter(options, measures, session.out);
  forEachFeature(options.files, session.diagnostics,
                 [&](const Document& document, const Feature& feature) {
                   for (Row& row : answers(measures, document, feature, options.withHoles)) {
                     writer->write(std::move(row));
                   }
                 });
  writer->finish();
}

std::string help() {
  std::ostringstream text;
  text << "Columns (* shown by default; all of them with --all and --json):\n";
  for (const Measure& measure : allMeasures()) {
    const std::string name = std::string(measure.isStandard ? "* " : "  ") + measure.name;
    text << "  " << name << std::string(25 - std::min<std::size_t>(name.size(), 24), ' ')
         << measure.meaning << '\n';
  }
  text << "\nLengths are in the unit of the coordinates, areas in its square, second moments in "
          "its\n"
          "fourth power. A table leaves out columns in which no row has an answer.\n\n"
          "Examples:\n"
          "  cntr measure samples/coins.geojson\n"
          "  cntr measure --json samples/coins.geojson | jq '.[] | select(.roundness < 0.8)'\n"
          "  cntr measure --columns label,area,diameter,ellipse_residual samples/coins.geojson";
  return text.str();
}

}  // namespace

void addMeasure(CLI::App& app, Session& session) {
  const auto options = std::make_shared<Options>();
  CLI::App& command = *app.add_subcommand("measure", "Measure every outline");
  addFiles(command, options->files);
  addJson(command, options->json);
  addNames(command, "--columns", options->columns, "Show these columns, in this order");
  command.add_flag("--all", options->all, "Show all columns")->excludes("--columns");
  addHoles(command, options->withHoles);
  command.footer(help());
  command.callback([options, &session] { measure(*options, session); });
}

}  // namespace tool
