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

  /// The next character that is not blank, which is not consumed; 0 at the end.
  char next();
  /// Consumes the next character that is not blank if it is `c`.
  bool skip(char c);
  /// The same, but throws FileError, naming the place, when it is another one.
  void expect(char c);

  /// The next value. Its kind is known by its first character alone; it need not be valid JSON. The
  /// view lasts until the next call. Throws FileError when the text ends before it.
  std::string_view value();

  [[noreturn]] void refuse(const std::string& what);
};

}  // namespace formats
