// SPDX-License-Identifier: MIT

#include <cntrformats/passage.h>

#include <cntrformats/characters.h>

namespace formats {

TextPlace placeAfter(std::string_view text, const TextPlace& start) {
  const std::size_t lines = countOf(text, '\n');
  const std::size_t column =
      lines == 0 ? start.column + text.size() : text.size() - text.rfind('\n');
  return {start.line + lines, column};
}

TextPlace Passage::placeOf(std::size_t at) const {
  return placeAfter(text.substr(0, at), placeAfter(before, start));
}

}  // namespace formats
