// SPDX-License-Identifier: MIT
//
// Rows of answers, written as a table for the eye or as JSON for programs.

#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include <tools/output/cell.h>

namespace tool {

using Row = std::vector<Cell>;

/// Takes rows one by one; each has a cell for every column.
class RowWriter {
 public:
  virtual ~RowWriter() = default;
  virtual void write(Row row) = 0;
  /// To be called once, after the last row.
  virtual void finish() = 0;
};

/// What a table does with columns that hold nothing in any row.
enum class EmptyColumns { eKept, eLeftOut };

/// Writes an aligned table when it is finished: six digits of the largest number in each column,
/// "-" for nothing.
std::unique_ptr<RowWriter> makeTable(std::ostream& out, std::vector<std::string> columns,
                                     EmptyColumns emptyColumns);

/// Writes a JSON array of objects at once, one object to a line, numbers with all their digits,
/// null for nothing.
std::unique_ptr<RowWriter> makeJsonRows(std::ostream& out, std::vector<std::string> columns);

}  // namespace tool
