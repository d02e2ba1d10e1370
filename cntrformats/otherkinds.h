// SPDX-License-Identifier: MIT
//
// Files of outlines that are recognised but not read, so that a message can say what they are.

#pragma once

#include <string_view>

namespace formats {

/// What the file with this first line is, and what helps; null when it is none of these kinds.
const char* otherKind(std::string_view line);

}  // namespace formats
