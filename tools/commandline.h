// SPDX-License-Identifier: MIT
//
// The command line: picks the subcommand and turns failures into an exit status.

#pragma once

#include <tools/run/console.h>

namespace tool {

/// Runs the program. Returns its exit status, see diagnostics.h.
int run(int argc, const char* const* argv, const Console& console);

}  // namespace tool
