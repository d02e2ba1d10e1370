// SPDX-License-Identifier: MIT
//
// A long JSON text, value by value.

#pragma once

#include <string>
#include <string_view>

#include <cntrformats/textwindow.h>

namespace formats {

class Window : public TextWindow {
 public:
  using TextWindow::TextWindow;

  /// The next character that is not blank, without consuming it; 0 at the end.
  char next();
  /// Consumes the next character that is not blank if it is `c`.
  bool skip(char c);
  /// The same, but throws FileError, naming the place, when it is a different character.
  void expect(char c);

  /// The next value. Its kind is recognised only by its first character; it need not be valid JSON.
  /// The view lasts until the next call. Throws FileError when the text ends before it.
  std::string_view value();

  [[noreturn]] void refuse(const std::string& what);
};

}  // namespace formats
