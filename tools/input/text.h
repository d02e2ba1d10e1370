// SPDX-License-Identifier: MIT
//
// Files and standard input as text.

#pragma once

#include <string>

namespace tool {

/// The whole content of a file; "-" is standard input. Throws FileError with the system's reason.
std::string readText(const std::string& file);

}  // namespace tool
