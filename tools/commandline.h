// SPDX-License-Identifier: MIT
//
// The command line: picks the subcommand and turns what went wrong into an exit status.

#pragma once

#include <iosfwd>

namespace tool {

/// Runs the program; answers go to `out`, messages to `messages`. Returns its exit status, see
/// diagnostics.h.
int run(int argc, const char* const* argv, std::ostream& out, std::ostream& messages);

}  // namespace tool
