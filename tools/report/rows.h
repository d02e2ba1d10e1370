// SPDX-License-Identifier: MIT
//
// Rows of answers, written as a table for users or as JSON or CSV for programs.

#pragma once

#include <iosfwd>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <tools/report/cell.h>
#include <tools/report/style.h>

namespace tool {

using Row = std::vector<Cell>;

/// The rows of one or several features, prepared as far as that is possible without the others.
struct PreparedRows {
  std::vector<Row> rows;
  std::string text;

  bool isEmpty() const { return rows.empty() && text.empty(); }
  /// Adds the following rows, which the same writer has prepared.
  void append(PreparedRows&& next) {
    rows.insert(rows.end(), std::make_move_iterator(next.rows.begin()),
                std::make_move_iterator(next.rows.end()));
    text += next.text;
  }
};

/// Takes the rows of the features in their order; each row has a cell for every column. Only
/// prepare() may be called on several threads.
class RowWriter {
 public:
  virtual ~RowWriter() = default;
  virtual PreparedRows prepare(std::vector<Row> rows) const = 0;
  virtual void write(PreparedRows rows) = 0;
  /// To be called once, after the last rows.
  virtual void finish() = 0;
  /// True when rows are written as they come and none is kept.
  virtual bool isStreaming() const = 0;
};

/// What a table does with columns that hold nothing in any row.
enum class EmptyColumns { eKept, eLeftOut };

/// Writes an aligned table at the end: six digits of the largest number in each column, "-" for an
/// empty cell.
std::unique_ptr<RowWriter> makeTable(std::ostream& out, std::vector<std::string> columns,
                                     EmptyColumns emptyColumns, const Style& style);

// These write rows as they come: numbers with all their digits, null or an empty field for an empty
// cell.

/// An array of objects, one object per line.
std::unique_ptr<RowWriter> makeJsonRows(std::ostream& out, std::vector<std::string> columns);
/// The same objects without the array.
std::unique_ptr<RowWriter> makeJsonLines(std::ostream& out, std::vector<std::string> columns);
/// Comma-separated values after a line of column names; true and false for yes and no.
std::unique_ptr<RowWriter> makeCsvRows(std::ostream& out, const std::vector<std::string>& columns);

/// How rows are sorted: by their last cell, which is not shown.
struct RowOrder {
  bool descending = false;
};

/// Keeps all rows until the end, then passes them to `writer`, sorted by their last cell, which is
/// removed. Rows in which it is empty come last; equal rows keep their order.
std::unique_ptr<RowWriter> makeSorted(std::unique_ptr<RowWriter> writer, RowOrder order);

}  // namespace tool
