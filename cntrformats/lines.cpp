// SPDX-License-Identifier: MIT

#include <cntrformats/lines.h>

#include <algorithm>

namespace formats {

Lines::Lines(Source& source) : stream_(&source) { stream_.exceptions(std::ios::badbit); }

bool Lines::next(std::string& text) {
  if (!std::getline(stream_, text)) return false;
  if (!text.empty() && text.back() == '\r') text.pop_back();
  number_ = following_++;
  return true;
}

bool Lines::nextRecord(std::string& text) {
  if (!std::getline(stream_, text, recordSeparator)) return false;
  number_ = following_;
  following_ += static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
  return true;
}

bool isBlank(const std::string& text) {
  return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

}  // namespace formats
