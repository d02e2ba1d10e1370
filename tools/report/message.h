// SPDX-License-Identifier: MIT
//
// The messages of the library's exceptions, for users.

#pragma once

#include <string>

#include <platform/core/exception.h>

namespace tool {

/// The message without the name of the exception at the start of what().
inline std::string messageOf(const qcException& error) {
  constexpr const char* separator = ": ";
  const std::string text = error.what();
  const std::size_t end = text.find(separator);
  return end == std::string::npos ? text : text.substr(end + 2);
}

}  // namespace tool
