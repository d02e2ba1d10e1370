// SPDX-License-Identifier: MIT

#include <cntrformats/geojson/window.h>

#include <algorithm>

#include <cntrformats/characters.h>
#include <cntrformats/errors.h>
#include <cntrformats/json.h>

namespace formats {

char Window::next() {
  for (;;) {
    at_ = std::min(text_.find_first_not_of(" \t\r\n", at_), text_.size());
    if (at_ < text_.size()) return text_[at_];
    if (!more(at_)) return '\0';
  }
}

bool Window::skip(char c) {
  if (next() != c) return false;
  ++at_;
  return true;
}

void Window::expect(char c) {
  if (!skip(c)) refuse(std::string("'") + c + "' expected");
}

std::string_view Window::value() {
  if (next() == '\0') refuse("a value expected, not the end");
  std::size_t end = at_;
  ValueEnd scanner;
  while (!scanner.find(text_, end)) {
    const std::size_t begin = at_;
    const bool isMore = more(at_);
    end -= begin - at_;
    if (!isMore) refuse("the value that begins here does not end");
  }
  if (end == at_) refuse("a value expected");
  const std::string_view found = std::string_view(text_).substr(at_, end - at_);
  at_ = end;
  return found;
}

TextPlace Window::place() {
  countLines(at_);
  return {line_, before_ + 1};
}

void Window::refuse(const std::string& what) {
  const TextPlace place = this->place();
  throw FileError("not JSON: line " + std::to_string(place.line) + ", column " +
                  std::to_string(place.column) + ": " + what);
}

bool Window::more(std::size_t& begin) {
  if (!isKept_ && begin > 0) {
    countLines(begin);
    text_.erase(0, begin);
    counted_ = 0;
    begin = 0;
  }
  return source_.appendTo(text_, step_);
}

void Window::countLines(std::size_t end) {
  const std::string_view passed = std::string_view(text_).substr(counted_, end - counted_);
  const std::size_t lines = countOf(passed, '\n');
  before_ = lines == 0 ? before_ + passed.size() : passed.size() - passed.rfind('\n') - 1;
  line_ += lines;
  counted_ = end;
}

}  // namespace formats
