// SPDX-License-Identifier: MIT
//
// Refuses unusable arguments, and makes the texts of refusals.

#pragma once

#include <string>
#include <string_view>

#include <cntr/contourdefs.h>

namespace table {

/// REQUIRES: `why` is ASCII.
[[noreturn]] inline void refuse(const std::string& why) {
  throw qcContourDefs::BadParams(std::wstring(why.begin(), why.end()));
}

/// What an exception of the library says, without the name of its class.
inline std::string messageIn(const qcException& error) {
  const std::string text = error.what();
  const std::size_t end = text.find(": ");
  return end == std::string::npos ? text : text.substr(end + 2);
}

/// A foreign text as part of a message: short, in quotes, with ? for what is not printable ASCII.
inline std::string quoted(std::string_view text) {
  constexpr std::size_t longest = 40;
  std::string result = "'";
  for (const char c : text.substr(0, longest)) result += c >= ' ' && c <= '~' ? c : '?';
  return result + (text.size() > longest ? "...'" : "'");
}

}  // namespace table
