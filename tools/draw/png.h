// SPDX-License-Identifier: MIT
//
// SVG pictures as PNG files, made by librsvg, so that both show the same. The library is loaded
// when a PNG file is to be written, since it would slow down every start of the program.

#pragma once

#include <iosfwd>
#include <string>

namespace tool {

/// Throws FileError where no PNG file can be written: the program was built without librsvg, or
/// librsvg is not installed.
void requirePng();

/// Writes the picture in the size that it states. Throws FileError when it cannot be drawn, or not
/// as PNG.
void writePng(std::ostream& out, const std::string& svg);

}  // namespace tool
