// SPDX-License-Identifier: MIT

#include <tools/commands/options.h>

#include <algorithm>
#include <stdexcept>
#include <thread>

#include <tools/answers/filter.h>
#include <tools/commands/numberlist.h>

namespace tool {

using namespace formats;

namespace {

constexpr unsigned mostJobs = 256;

// These say why the text of an option cannot be accepted; empty when it can.

std::string refusalOfCondition(const std::string& text) {
  try {
    const Condition condition(text);
    return "";
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
}

}  // namespace

void addFiles(CLI::App& command, std::vector<std::string>& files) {
  files = {"-"};
  command.add_option("FILE", files, "Files of outlines; - or none is standard input")
      ->type_name("");
}

CLI::Option* addNames(CLI::App& command, const std::string& option, std::vector<std::string>& names,
                      const std::string& meaning) {
  return command.add_option(option, names, meaning)
      ->delimiter(',')
      ->allow_extra_args(false)
      ->type_name("NAME,");
}

CLI::Option* addFormat(CLI::App& command, const std::string& option, std::string& format,
                       const std::string& meaning) {
  std::vector<std::string> names;
  for (const Format& known : allFormats()) names.emplace_back(known.name);
  return command.add_option(option, format, meaning)
      ->check(CLI::IsMember(names))
      ->type_name("FORMAT");
}

void addFrom(CLI::App& command, std::string& format) {
  addFormat(command, "--from", format, "Format of the files, whatever their extensions");
}

void addHoles(CLI::App& command, bool& withHoles) {
  command.add_flag("--holes,!--no-holes", withHoles,
                   "Take holes into account (the default), or consider\n"
                   "outlines only");
}

void addJobs(CLI::App& command, unsigned& jobs) {
  jobs = std::clamp(std::thread::hardware_concurrency(), 1U, mostJobs);
  command.add_option("--jobs", jobs, "Worker threads; by default one for each processor")
      ->check(CLI::Range(1U, mostJobs))
      ->type_name("N");
}

std::function<bool(const Feature&)> FilterOptions::filter() const {
  std::vector<Condition> all;
  for (const std::string& text : conditions) all.emplace_back(text);
  if (!minArea.empty()) all.emplace_back("area >= " + minArea);
  if (!minVertices.empty()) all.emplace_back("vertices >= " + minVertices);
  if (all.empty()) return nullptr;
  return [all](const Feature& feature) { return fulfilsAll(feature, all); };
}

void addFilter(CLI::App& command, FilterOptions& options) {
  command
      .add_option("--where", options.conditions,
                  "Take only features that meet a condition, such as\n"
                  "'roundness > 0.8': a measure, label, id or\n"
                  "feature; >, >=, <, <=, = or !=; and a value. If\n"
                  "the option is repeated, all conditions must be met")
      ->allow_extra_args(false)
      ->check(refusalOfCondition)
      ->type_name("CONDITION");
  command.add_option("--min-area", options.minArea, "The same as --where 'area >= A'")
      ->check(refusalOfNumber)
      ->type_name("A");
  command.add_option("--min-vertices", options.minVertices, "The same as --where 'vertices >= N'")
      ->check(refusalOfNumber)
      ->type_name("N");
}

CLI::Option* addScale(CLI::App& command, double& scale, const std::string& meaning) {
  return command.add_option("--scale", scale, meaning)
      ->check(refusalOfPositive)
      ->type_name("FACTOR");
}

Inputs InputOptions::inputs() const {
  Inputs inputs;
  inputs.files = files;
  inputs.from = formatNamed(from);
  inputs.jobs = jobs;
  inputs.isWanted = filter.filter();
  return inputs;
}

void addInputs(CLI::App& command, InputOptions& options) {
  addFiles(command, options.files);
  addFrom(command, options.from);
  addFilter(command, options.filter);
  addJobs(command, options.jobs);
}

void addRowFormats(CLI::App& command, RowOptions& options) {
  CLI::App& formats = *command.add_option_group("Output", "Instead of a table:");
  formats.add_flag("--json", options.json, "Write a JSON array");
  formats.add_flag("--jsonl", options.jsonLines, "Write JSON objects, one per line");
  formats.add_flag("--csv", options.csv, "Write comma-separated values");
  formats.require_option(0, 1);
}

std::unique_ptr<RowWriter> makeRows(const RowOptions& options, std::ostream& out,
                                    const std::vector<std::string>& columns,
                                    EmptyColumns emptyColumns, const Style& style) {
  if (options.json) return makeJsonRows(out, columns);
  if (options.jsonLines) return makeJsonLines(out, columns);
  if (options.csv) return makeCsvRows(out, columns);
  return makeTable(out, columns, emptyColumns, style);
}

}  // namespace tool
