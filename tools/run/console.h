// SPDX-License-Identifier: MIT
//
// The streams to which the program writes, and what they are connected to.

#pragma once

#include <iosfwd>

#include <tools/report/style.h>

namespace tool {

struct Console {
  std::ostream& out;
  std::ostream& messages;
  bool outIsTerminal = false;
  bool messagesAreTerminal = false;
  Style outStyle = Style();
  Style messageStyle = Style();
};

/// Standard output and standard error. Coloured if they are terminals, unless the environment
/// variable NO_COLOR is not empty or TERM says that the terminal is dumb.
Console standardConsole();

}  // namespace tool
