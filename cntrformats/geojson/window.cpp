// SPDX-License-Identifier: MIT

#include <cntrformats/geojson/window.h>

#include <algorithm>

#include <cntrformats/errors.h>
#include <cntrformats/json.h>

namespace formats {

char Window::next() {
  for (;;) {
    const std::size_t blanks =
        std::min(kept().find_first_not_of(" \t\r\n", position()), kept().size()) - position();
    pass(blanks);
    if (position() < kept().size()) return kept()[position()];
    if (!more()) return '\0';
  }
}

bool Window::skip(char c) {
  if (next() != c) return false;
  pass(1);
  return true;
}

void Window::expect(char c) {
  if (!skip(c)) refuse(std::string("'") + c + "' expected");
}

std::string_view Window::value() {
  if (next() == '\0') refuse("a value expected, not the end");
  std::size_t end = position();
  ValueEnd scanner;
  while (!scanner.find(kept(), end)) {
    const std::size_t begin = position();
    const bool isMore = more();
    end -= begin - position();
    if (!isMore) refuse("the value that begins here does not end");
  }
  if (end == position()) refuse("a value expected");
  const std::string_view found = kept().substr(position(), end - position());
  pass(found.size());
  return found;
}

void Window::refuse(const std::string& what) {
  const TextPlace place = this->place();
  throw FileError("not JSON: line " + std::to_string(place.line) + ", column " +
                  std::to_string(place.column) + ": " + what);
}

}  // namespace formats
