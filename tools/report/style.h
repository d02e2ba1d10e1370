// SPDX-License-Identifier: MIT
//
// Colours for a terminal.

#pragma once

#include <string>

namespace tool {

/// Without colours, texts stay unchanged.
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

}  // namespace tool
