// SPDX-License-Identifier: MIT
//
// The streams that the program writes to, and what they are connected to.

#pragma once

#include <iosfwd>
#include <string>

namespace tool {

/// Colours for a terminal; texts stay as they are without them.
class Style {
 public:
  explicit Style(bool hasColours = false) : hasColours_(hasColours) {}

  std::string heading(const std::string& text) const { return in("1", text); }
  std::string error(const std::string& text) const { return in("1;31", text); }
  std::string warning(const std::string& text) const { return in("1;33", text); }

 private:
  std::string in(const char* code, const std::string& text) const {
    return hasColours_ ? std::string("\x1b[") + code + "m" + text + "\x1b[0m" : text;
  }

  bool hasColours_;
};

struct Console {
  std::ostream& out;
  std::ostream& messages;
  bool outIsTerminal = false;
  bool messagesAreTerminal = false;
  Style outStyle = Style();
  Style messageStyle = Style();
};

/// Standard output and standard error. Coloured where they are terminals, unless the environment
/// says NO_COLOR (with any value but an empty one) or that the terminal is dumb.
Console standardConsole();

}  // namespace tool
