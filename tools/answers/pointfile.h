// SPDX-License-Identifier: MIT
//
// Lists of points to ask about, as spreadsheets and numpy write them.

#pragma once

#include <string>
#include <vector>

#include <tools/answers/questions.h>

namespace tool {

/// The points of a text file, one to a line: "x,y" or "id,x,y", or what a first line with the names
/// x, y and perhaps id says, in capital or small letters. Fields are separated by commas,
/// semicolons, or tabs and blanks. Blank lines and what follows # are left out. Points without an
/// id are numbered from 1.
///
/// Throws formats::FileError when the file cannot be read or holds no points, and for the first
/// line that is none.
std::vector<NamedPoint> readPoints(const std::string& file);

}  // namespace tool
