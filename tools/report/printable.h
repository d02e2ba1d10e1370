// SPDX-License-Identifier: MIT
//
// Texts from files in a form that a terminal can show.

#pragma once

#include <string>

namespace tool {

/// The text with every control character, of ASCII or of U+0080 to U+009F, written as its code,
/// \\x1b or \\u009b, so that the contents of a file cannot move the cursor or change colours.
std::string printable(const std::string& text);

}  // namespace tool
