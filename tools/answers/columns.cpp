// SPDX-License-Identifier: MIT

#include <tools/answers/columns.h>

#include <cmath>
#include <string_view>

namespace tool {

namespace {

Cell file(const RowSubject& subject) { return subject.file; }
Cell feature(const RowSubject& subject) { return subject.feature.number; }
Cell part(const RowSubject& subject) { return subject.part ? Cell(*subject.part) : Cell(); }
Cell label(const RowSubject& subject) { return labelCell(subject.feature.label); }
Cell id(const RowSubject& subject) {
  return subject.feature.id ? Cell(*subject.feature.id) : Cell();
}

constexpr std::string_view noteName = "note";

std::vector<Column> makeColumns() {
  std::vector<Column> columns{
      {"file", "name of the file", false, file, nullptr},
      {"feature", "number of the feature in its file, from 1", true, feature, nullptr},
      {"part", "number of the part, from 1, with --parts; none for the feature as a whole", true,
       part, nullptr},
      {"label", "the property `label`", true, label, nullptr},
      {"id", "the id of the feature", true, id, nullptr},
      {"unit", "the unit of lengths, as --unit names it", true, nullptr, nullptr}};
  for (const table::Measure& measure : table::allMeasures())
    columns.push_back({measure.name, measure.meaning, measure.isStandard, nullptr, &measure});
  return columns;
}

std::vector<qcRings> withoutHoles(const std::vector<qcRings>& parts) {
  std::vector<qcRings> outlines;
  outlines.reserve(parts.size());
  for (const qcRings& part : parts) outlines.push_back({part.outline, {}});
  return outlines;
}

}  // namespace

const std::vector<Column>& allColumns() {
  static const std::vector<Column> columns = makeColumns();
  return columns;
}

ColumnFiller::ColumnFiller(std::vector<const Column*> columns, MeasuringOptions options)
    : columns_(std::move(columns)), options_(std::move(options)) {
  for (const Column* column : columns_) {
    if (column->measure != nullptr) needs_ |= column->measure->needs;
  }
}

Row ColumnFiller::measured(const RowSubject& subject, const std::vector<qcRings>& parts) const {
  const bool closed = subject.feature.geometry.closed;
  const table::Facts facts =
      options_.withHoles ? table::factsOf({parts, closed}, needs_, options_.filling)
                         : table::factsOf({withoutHoles(parts), closed}, needs_, options_.filling);
  Row row;
  for (const Column* column : columns_) {
    row.push_back(column->measure == nullptr ? nameOf(*column, subject) : answer(*column, facts));
  }
  return row;
}

Row ColumnFiller::unanswered(const RowSubject& subject, const std::string& why) const {
  Row row;
  for (const Column* column : columns_) {
    row.push_back(column->measure == nullptr ? nameOf(*column, subject)
                  : column->name == noteName ? Cell(why)
                                             : Cell());
  }
  return row;
}

Cell ColumnFiller::answer(const Column& column, const table::Facts& facts) const {
  Cell cell = column.measure->answer(facts);
  const double* number = std::get_if<double>(&cell);
  if (number == nullptr || column.measure->power == 0) return cell;
  return numberCell(*number * std::pow(options_.scale, column.measure->power));
}

Cell ColumnFiller::nameOf(const Column& column, const RowSubject& subject) const {
  if (column.nameOf != nullptr) return column.nameOf(subject);
  return options_.unit.empty() ? Cell() : Cell(options_.unit);
}

}  // namespace tool
