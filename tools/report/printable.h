// SPDX-License-Identifier: MIT
//
// Texts from files in a form that a terminal can show.

#pragma once

#include <string>

namespace tool {

/// The text with every control character, of ASCII or of the second block of Unicode, written as
/// its code, \\x1b or \\u009b: what a file holds cannot move a cursor or change colours.
std::string printable(const std::string& text);

}  // namespace tool
