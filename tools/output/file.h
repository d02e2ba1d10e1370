// SPDX-License-Identifier: MIT
//
// Files that are written whole or not at all.

#pragma once

#include <iosfwd>
#include <string>

namespace tool {

/// Writes `text` to a file that appears, or replaces an older one, only when all of it is there: it
/// is written beside it and renamed. What is no regular file, such as a pipe or a device, is
/// written to directly. Throws FileError with the system's reason, and leaves nothing behind.
void writeFile(const std::string& file, const std::string& text);

/// The same; "-" is `out`.
void writeFileOr(std::ostream& out, const std::string& file, const std::string& text);

}  // namespace tool
