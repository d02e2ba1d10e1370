// SPDX-License-Identifier: MIT
//
// Options that several subcommands share.

#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace tool {

/// FILE...: standard input when none is given.
inline void addFiles(CLI::App& command, std::vector<std::string>& files) {
  files = {"-"};
  command.add_option("FILE", files, "GeoJSON files; - or none is standard input")->type_name("");
}

/// An option that takes one list of names, separated by commas.
inline CLI::Option* addNames(CLI::App& command, const std::string& option,
                             std::vector<std::string>& names, const std::string& meaning) {
  return command.add_option(option, names, meaning)
      ->delimiter(',')
      ->allow_extra_args(false)
      ->type_name("NAME,");
}

inline void addJson(CLI::App& command, bool& json) {
  command.add_flag("--json", json, "Write JSON, numbers with all their digits");
}

/// --holes and --no-holes.
inline void addHoles(CLI::App& command, bool& withHoles) {
  command.add_flag("--holes,!--no-holes", withHoles,
                   "Take holes into account (the default), or look at outlines alone");
}

}  // namespace tool
