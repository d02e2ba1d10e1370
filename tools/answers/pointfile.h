// SPDX-License-Identifier: MIT
//
// Lists of points to ask about, as spreadsheets and numpy write them.

#pragma once

#include <string>
#include <vector>

#include <tools/answers/questions.h>

namespace tool {

/// The points of a text file, one per line: "x,y" or "id,x,y", or in the order of a first line with
/// the names x, y and perhaps id, in upper or lower case. Fields are separated by commas,
/// semicolons, or tabs and blanks. Blank lines and whatever follows # are ignored. Points without
/// an id are numbered from 1.
///
/// Throws formats::FileError when the file cannot be read or holds no points, and for the first
/// line that is not a point.
std::vector<NamedPoint> readPoints(const std::string& file);

}  // namespace tool
