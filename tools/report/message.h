// SPDX-License-Identifier: MIT
//
// What the library's exceptions say, for people.

#pragma once

#include <string>

#include <platform/core/exception.h>

namespace tool {

/// Without the name of the exception, which what() begins with.
inline std::string messageOf(const qcException& error) {
  constexpr const char* separator = ": ";
  const std::string text = error.what();
  const std::size_t end = text.find(separator);
  return end == std::string::npos ? text : text.substr(end + 2);
}

}  // namespace tool
