// SPDX-License-Identifier: MIT

#include <tools/run/console.h>

#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <string_view>

namespace tool {

namespace {

std::string_view environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? std::string_view() : value;
}

}  // namespace

Console standardConsole() {
  const bool mayColour = environment("NO_COLOR").empty() && environment("TERM") != "dumb";
  const bool outIsTerminal = isatty(STDOUT_FILENO) != 0;
  const bool messagesAreTerminal = isatty(STDERR_FILENO) != 0;
  return {std::cout,
          std::cerr,
          outIsTerminal,
          messagesAreTerminal,
          Style(outIsTerminal && mayColour),
          Style(messagesAreTerminal && mayColour)};
}

}  // namespace tool
