// SPDX-License-Identifier: MIT
//
// A long text of JSON, of which only a window is in memory: the value that is being looked at, and
// what was read along with it.

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

  /// The next character that is not blank, which stays to be read; 0 at the end.
  char next();
  /// Passes over the next character that is not blank if it is this one.
  bool skip(char c);
  /// Throws FileError, naming the place, when it is another one.
  void expect(char c);

  /// The next value. What it is is known by its first character alone; it need not be JSON. The
  /// view lasts until the next call. Throws FileError when the text ends before it.
  std::string_view value();

  /// Where the next character is.
  TextPlace place();
  [[noreturn]] void refuse(const std::string& what);

  /// How far the text has been read, in what is kept.
  std::size_t position() const noexcept { return at_; }
  /// What has been kept.
  const std::string& kept() const noexcept { return text_; }
  /// What has been read needs not be kept any longer.
  void release() noexcept { isKept_ = false; }

 private:
  /// Reads on; false at the end. Drops what comes before `begin`, which it moves, unless it is
  /// kept.
  bool more(std::size_t& begin);
  void countLines(std::size_t end);

  Source& source_;
  const std::size_t step_;
  std::string text_;
  std::size_t at_ = 0;
  bool isKept_ = true;
  /// How far lines have been counted, the number of the line there, and how many of its bytes come
  /// before.
  std::size_t counted_ = 0;
  std::size_t line_ = 1;
  std::size_t before_ = 0;
};

}  // namespace formats
