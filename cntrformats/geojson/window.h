// SPDX-License-Identifier: MIT
//
// A long JSON text of which only a window is in memory: the value that is being looked at, and what
// was read along with it.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <cntrformats/geojson/parse.h>
#include <cntrformats/source.h>

namespace formats {

class Window {
 public:
  /// Reads up to `step` bytes at once. Keeps everything until release().
  Window(Source& source, std::size_t step) : source_(source), step_(step) {}

  /// The next character that is not blank, which is not consumed; 0 at the end.
  char next();
  /// Consumes the next character that is not blank if it is `c`.
  bool skip(char c);
  /// The same, but throws FileError, naming the place, when it is another one.
  void expect(char c);

  /// The next value. Its kind is known by its first character alone; it need not be valid JSON. The
  /// view lasts until the next call. Throws FileError when the text ends before it.
  std::string_view value();

  /// Where the next character is.
  TextPlace place();
  [[noreturn]] void refuse(const std::string& what);

  /// How much of the kept text has been read.
  std::size_t position() const noexcept { return at_; }
  /// The text that is kept.
  const std::string& kept() const noexcept { return text_; }
  /// From now on, what has been read need not be kept.
  void release() noexcept { isKept_ = false; }

 private:
  /// Reads more; false at the end. Drops the text before `begin` and moves `begin` accordingly,
  /// unless the text is kept.
  bool more(std::size_t& begin);
  void countLines(std::size_t end);

  Source& source_;
  const std::size_t step_;
  std::string text_;
  std::size_t at_ = 0;
  bool isKept_ = true;
  /// How far lines have been counted, the number of the line there, and how many of its bytes
  /// precede that place.
  std::size_t counted_ = 0;
  std::size_t line_ = 1;
  std::size_t before_ = 0;
};

}  // namespace formats
