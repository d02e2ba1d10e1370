// SPDX-License-Identifier: MIT
//
// SVG pictures as PNG files, by librsvg: what a viewer shows of the one is in the other. The
// library is loaded when a PNG file is to be written, since it would make every start of the
// program slow.

#pragma once

#include <iosfwd>
#include <string>

namespace tool {

/// Throws FileError where no PNG file can be written: the program was built without librsvg, or it
/// is not installed.
void requirePng();

/// Writes the picture as large as it says it is. Throws FileError when it cannot be drawn, or not
/// as PNG.
void writePng(std::ostream& out, const std::string& svg);

}  // namespace tool
