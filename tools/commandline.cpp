// SPDX-License-Identifier: MIT

#include <tools/commandline.h>

#include <CLI/CLI.hpp>
#include <string>

#include <tools/commands/commands.h>
#include <tools/run/features.h>

namespace tool {

namespace {

/// Help goes to `out` and is all well; everything else that ends the parsing is wrong usage.
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
  app.set_help_all_flag("--help-all", "Print the help of all subcommands and exit");
  addMeasure(app, session);
  addQuery(app, session);
  addRepair(app, session);
  addCombine(app, session);
  addOffset(app, session);
  addDraw(app, session);
  addConvert(app, session);
}

}  // namespace

int run(int argc, const char* const* argv, const Console& console) {
  Session session(console);
  CLI::App app("Measures, asks, repairs, combines, draws and converts outlines in images.");
  addCommands(app, session);
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
