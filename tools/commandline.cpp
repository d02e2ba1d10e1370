// SPDX-License-Identifier: MIT

#include <tools/commandline.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include <tools/commands/commands.h>
#include <tools/report/printable.h>
#include <tools/run/features.h>

namespace tool {

namespace {

/// Help goes to standard output and counts as success; everything else that ends the parsing is
/// wrong usage.
int explain(const CLI::App& app, const CLI::ParseError& error, Session& session) {
  return app.exit(error, session.out, session.messages) == 0 ? eAllWell : eUnusable;
}

std::string explanation(const CLI::App*, const CLI::Error& error) {
  return std::string("cntr: ") + error.what() + "\nTry 'cntr --help'.\n";
}

void addCommands(CLI::App& app, Session& session) {
  app.name("cntr");
  app.require_subcommand(1);
  app.failure_message(explanation);
  app.set_version_flag("--version", "cntr " CNTR_VERSION);
  app.add_flag_callback(
      "--verbose", [&session] { session.diagnostics.listAll(); },
      "List all features with problems, not only the\n"
      "first five of a file");
  app.fallthrough();
  app.set_help_all_flag("--help-all", "Print the help of all subcommands and exit");
  addMeasure(app, session);
  addQuery(app, session);
  addRepair(app, session);
  addCombine(app, session);
  addOffset(app, session);
  addSimplify(app, session);
  addCompare(app, session);
  addDraw(app, session);
  addConvert(app, session);
}

/// How many letters must be inserted, deleted or replaced to turn one word into the other.
std::size_t distance(const std::string& a, const std::string& b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (const char letter : a) {
    std::size_t diagonal = row[0]++;
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t changed = diagonal + (letter == b[j] ? 0U : 1U);
      diagonal = row[j + 1];
      row[j + 1] = std::min({changed, row[j] + 1, diagonal + 1});
    }
  }
  return row.back();
}

/// Why the first argument is not a command; empty when it is a command or an option.
std::string refusalOfCommand(const CLI::App& app, const std::string& name) {
  constexpr std::size_t farthest = 2;
  if (name.empty() || name.front() == '-') return "";
  const auto commands = app.get_subcommands([](const CLI::App*) { return true; });
  const auto nearest = std::min_element(
      commands.begin(), commands.end(), [&name](const CLI::App* a, const CLI::App* b) {
        return distance(a->get_name(), name) < distance(b->get_name(), name);
      });
  const std::string likely = (*nearest)->get_name();
  if (likely == name) return "";
  const std::string question =
      distance(likely, name) <= farthest ? "; did you mean '" + likely + "'?" : "";
  return "there is no command '" + name + "'" + question;
}

}  // namespace

int run(int argc, const char* const* argv, const Console& console) {
  Session session(console);
  CLI::App app(
      "Measures, queries, repairs, combines, offsets, simplifies, compares, draws and\n"
      "converts outlines.");
  addCommands(app, session);
  const std::string refusal = argc > 1 ? refusalOfCommand(app, argv[1]) : "";
  if (!refusal.empty()) {
    session.messages << "cntr: " << printable(refusal) << "\nTry 'cntr --help'.\n";
    return eUnusable;
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return explain(app, error, session);
  } catch (const StandardOutputError&) {  // NOLINT(bugprone-empty-catch): reported below.
  }
  if (!session.out.flush()) session.diagnostics.badFile("standard output", "cannot be written");
  return session.diagnostics.status();
}

}  // namespace tool
