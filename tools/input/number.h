// SPDX-License-Identifier: MIT
//
// Numbers in text files, with a decimal point whatever the locale.

#pragma once

#include <string_view>

namespace tool {

/// The whole text as a finite number. Throws FeatureError, naming the text, for any other.
double finiteNumber(std::string_view text);

}  // namespace tool
