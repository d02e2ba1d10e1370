// SPDX-License-Identifier: MIT
//
// Options that several subcommands share.

#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <tools/report/rows.h>
#include <tools/run/features.h>
#include <tools/run/session.h>

namespace tool {

/// FILE...: standard input if none is given.
void addFiles(CLI::App& command, std::vector<std::string>& files);

/// An option that takes one list of names, separated by commas.
CLI::Option* addNames(CLI::App& command, const std::string& option, std::vector<std::string>& names,
                      const std::string& meaning);

/// An option that takes the name of a format.
CLI::Option* addFormat(CLI::App& command, const std::string& option, std::string& format,
                       const std::string& meaning);

/// --from.
void addFrom(CLI::App& command, std::string& format);
/// --holes and --no-holes.
void addHoles(CLI::App& command, bool& withHoles);

/// --jobs.
void addJobs(CLI::App& command, unsigned& jobs);

/// --where, --min-area and --min-vertices.
struct FilterOptions {
  std::vector<std::string> conditions;
  std::string minArea;
  std::string minVertices;

  /// Null if no condition is given.
  std::function<bool(const formats::Feature&)> filter() const;
};

void addFilter(CLI::App& command, FilterOptions& options);

/// A positive number.
CLI::Option* addScale(CLI::App& command, double& scale, const std::string& meaning);

/// FILE..., --from, --jobs, and the options of filters.
struct InputOptions {
  std::vector<std::string> files;
  std::string from;
  FilterOptions filter;
  unsigned jobs = 1;

  Inputs inputs() const;
};

void addInputs(CLI::App& command, InputOptions& options);

/// --json, --jsonl and --csv, of which at most one may be given; a table otherwise.
struct RowOptions {
  bool json = false;
  bool jsonLines = false;
  bool csv = false;

  bool isTable() const noexcept { return !json && !jsonLines && !csv; }
};

void addRowFormats(CLI::App& command, RowOptions& options);

std::unique_ptr<RowWriter> makeRows(const RowOptions& options, std::ostream& out,
                                    const std::vector<std::string>& columns,
                                    EmptyColumns emptyColumns, const Style& style);

}  // namespace tool
