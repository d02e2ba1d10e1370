// SPDX-License-Identifier: MIT
//
// Files of outlines that are recognised but not read, so that a message can say what they are.

#pragma once

#include <string_view>

namespace formats {

/// What a file with this first line is, and what to do about it; null when it is none of these
/// kinds.
const char* otherKind(std::string_view line);

}  // namespace formats
