// SPDX-License-Identifier: MIT

#include <algorithm>
#include <iterator>
#include <ostream>

#include <tools/report/numbers.h>
#include <tools/report/printable.h>
#include <tools/report/rows.h>

namespace tool {

namespace {

constexpr const char* gap = "  ";

/// A column with its texts.
struct Column {
  std::vector<std::string> texts;
  std::size_t width = 0;
  bool isText = false;
};

std::string plainText(const Cell& cell) {
  if (const bool* answer = std::get_if<bool>(&cell)) return *answer ? "yes" : "no";
  if (const std::size_t* count = std::get_if<std::size_t>(&cell)) return std::to_string(*count);
  if (const std::string* text = std::get_if<std::string>(&cell)) return printable(*text);
  return "-";
}

/// The number of characters that a terminal shows: of bytes that begin a character in UTF-8.
std::size_t widthOf(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
  }));
}

std::vector<std::string> alignedIn(const std::vector<Row>& rows, std::size_t column) {
  std::vector<double> numbers;
  for (const Row& row : rows) {
    if (const double* number = std::get_if<double>(&row[column])) numbers.push_back(*number);
  }
  return alignedNumbers(numbers);
}

Column layOut(const std::string& heading, const std::vector<Row>& rows, std::size_t index) {
  const std::vector<std::string> numbers = alignedIn(rows, index);
  auto number = numbers.begin();
  Column column{{heading}, 0, false};
  for (const Row& row : rows) {
    const Cell& cell = row[index];
    column.isText |= std::holds_alternative<std::string>(cell);
    column.texts.push_back(std::holds_alternative<double>(cell) ? *number++ : plainText(cell));
  }
  for (const std::string& text : column.texts) column.width = std::max(column.width, widthOf(text));
  return column;
}

/// Texts are aligned to the left, everything else to the right; nothing follows the last text of a
/// line.
std::string padded(const Column& column, std::size_t line, bool isLast) {
  const std::string& text = column.texts[line];
  const std::string padding(column.width - widthOf(text), ' ');
  if (!column.isText) return padding + text;
  return isLast ? text : text + padding;
}

class Table : public RowWriter {
 public:
  Table(std::ostream& out, std::vector<std::string> columns, EmptyColumns emptyColumns,
        const Style& style)
      : out_(out), columns_(std::move(columns)), emptyColumns_(emptyColumns), style_(style) {}

  PreparedRows prepare(std::vector<Row> rows) const override { return {std::move(rows), ""}; }

  void write(PreparedRows rows) override {
    rows_.insert(rows_.end(), std::make_move_iterator(rows.rows.begin()),
                 std::make_move_iterator(rows.rows.end()));
  }

  bool isStreaming() const override { return false; }

  void finish() override {
    if (rows_.empty()) return;
    std::vector<Column> shown;
    for (std::size_t k = 0; k < columns_.size(); ++k) {
      if (isShown(k)) shown.push_back(layOut(columns_[k], rows_, k));
    }
    for (std::size_t line = 0; line <= rows_.size(); ++line) print(shown, line);
  }

 private:
  bool isShown(std::size_t column) const {
    return emptyColumns_ == EmptyColumns::eKept ||
           !std::all_of(rows_.begin(), rows_.end(),
                        [column](const Row& row) { return isEmpty(row[column]); });
  }

  void print(const std::vector<Column>& columns, std::size_t line) {
    for (std::size_t k = 0; k < columns.size(); ++k) {
      const bool isLast = k + 1 == columns.size();
      const std::string text = padded(columns[k], line, isLast);
      out_ << (line == 0 ? style_.heading(text) : text) << (isLast ? "\n" : gap);
    }
  }

  std::ostream& out_;
  std::vector<std::string> columns_;
  EmptyColumns emptyColumns_;
  Style style_;
  std::vector<Row> rows_;
};

}  // namespace

std::unique_ptr<RowWriter> makeTable(std::ostream& out, std::vector<std::string> columns,
                                     EmptyColumns emptyColumns, const Style& style) {
  return std::make_unique<Table>(out, std::move(columns), emptyColumns, style);
}

}  // namespace tool
