// SPDX-License-Identifier: MIT
//
// The columns of `cntr measure`: those that name the row, and the measures of cntrtable/measures.h.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <cntrformats/feature.h>
#include <cntrtable/measures.h>
#include <tools/report/rows.h>

namespace tool {

/// What a row is about.
struct RowSubject {
  const std::string& file;
  const formats::Feature& feature;
  /// The number of the part, counted from 1; empty for a feature as a whole.
  std::optional<std::size_t> part;
};

struct Column {
  const char* name;
  const char* meaning;
  bool isStandard;
  /// Returns what a column that names the row shows; null for a measure.
  Cell (*nameOf)(const RowSubject&);
  /// Null for the columns that name the row, and for the column `unit`.
  const table::Measure* measure;
};

/// All columns in their order.
const std::vector<Column>& allColumns();

/// How measures are shown.
struct MeasuringOptions {
  /// The length of a unit of the coordinates.
  double scale = 1.0;
  /// The unit of that length; empty when none was given.
  std::string unit;
  bool withHoles = true;
  table::Filling filling = table::Filling::eMeasured;
};

/// Fills chosen columns, one row after the other. Any thread may fill rows.
class ColumnFiller {
 public:
  ColumnFiller(std::vector<const Column*> columns, MeasuringOptions options);

  /// The row of these parts: all parts of the subject or one of them. Throws what table::factsOf()
  /// throws.
  Row measured(const RowSubject& subject, const std::vector<qcRings>& parts) const;
  /// The row of a subject without answers: what names it, and the reason as its note.
  Row unanswered(const RowSubject& subject, const std::string& why) const;

 private:
  Cell answer(const Column& column, const table::Facts& facts) const;
  Cell nameOf(const Column& column, const RowSubject& subject) const;

  std::vector<const Column*> columns_;
  MeasuringOptions options_;
  table::Needs needs_ = table::eCounts;
};

}  // namespace tool
