// SPDX-License-Identifier: MIT
//
// The subcommands, one source file each. Every function adds its command to the command line; the
// command runs when the command line is parsed.

#pragma once

#include <tools/run/session.h>

namespace CLI {
class App;
}

namespace tool {

void addMeasure(CLI::App& app, Session& session);
void addQuery(CLI::App& app, Session& session);
void addRepair(CLI::App& app, Session& session);
void addCombine(CLI::App& app, Session& session);
void addOffset(CLI::App& app, Session& session);
void addSimplify(CLI::App& app, Session& session);
void addCompare(CLI::App& app, Session& session);
void addDraw(CLI::App& app, Session& session);
void addConvert(CLI::App& app, Session& session);

}  // namespace tool
