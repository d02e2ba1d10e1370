// SPDX-License-Identifier: MIT
//
// Files of outlines that are known but not read, so that a message can say what they are.

#pragma once

#include <string_view>

namespace formats {

/// What the file is whose first line this is, and what helps; null when it is none of these.
const char* otherKind(std::string_view line);

}  // namespace formats
