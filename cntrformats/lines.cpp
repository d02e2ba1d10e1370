// SPDX-License-Identifier: MIT

#include <cntrformats/lines.h>

namespace formats {

Lines::Lines(Source& source) : stream_(&source) { stream_.exceptions(std::ios::badbit); }

bool Lines::next(std::string& text) {
  if (!std::getline(stream_, text)) return false;
  if (!text.empty() && text.back() == '\r') text.pop_back();
  ++number_;
  return true;
}

bool isBlank(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

}  // namespace formats
