// SPDX-License-Identifier: MIT
//
// Writes SVG pictures as PNG files by librsvg, so that both look the same. The library is loaded
// only when a PNG file is to be written, since it would slow down every start of the program.

#pragma once

#include <iosfwd>
#include <string>

namespace tool {

/// Throws FileError if no PNG file can be written: the program was built without librsvg, or
/// librsvg is not installed.
void requirePng();

/// Writes the picture in the size that it states. Throws FileError when it cannot be drawn or
/// written as PNG.
void writePng(std::ostream& out, const std::string& svg);

}  // namespace tool
