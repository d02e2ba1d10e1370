// SPDX-License-Identifier: MIT
//
// What every command uses: the streams for answers and for messages.

#pragma once

#include <ostream>

#include <tools/run/console.h>
#include <tools/run/diagnostics.h>

namespace tool {

struct Session {
  Console console;
  std::ostream& out;
  std::ostream& messages;
  Diagnostics diagnostics;

  explicit Session(const Console& console_)
      : console(console_),
        out(console_.out),
        messages(console_.messages),
        diagnostics(console_.messages, console_.messageStyle) {}
};

}  // namespace tool
