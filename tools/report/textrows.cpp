// SPDX-License-Identifier: MIT
//
// Rows as text that does not depend on other rows: JSON and CSV.

#include <nlohmann/json.hpp>
#include <ostream>

#include <cntrformats/fields.h>
#include <cntrformats/number.h>
#include <tools/report/rows.h>

namespace tool {

using namespace formats;

namespace {

using Json = nlohmann::ordered_json;

Json toJson(const Cell& cell) {
  if (isEmpty(cell)) return nullptr;
  if (const bool* answer = std::get_if<bool>(&cell)) return *answer;
  if (const std::size_t* count = std::get_if<std::size_t>(&cell)) return *count;
  if (const double* number = std::get_if<double>(&cell)) return *number;
  return std::get<std::string>(cell);
}

std::string toCsv(const Cell& cell) {
  if (isEmpty(cell)) return "";
  if (const bool* answer = std::get_if<bool>(&cell)) return *answer ? "true" : "false";
  if (const std::size_t* count = std::get_if<std::size_t>(&cell)) return std::to_string(*count);
  if (const double* number = std::get_if<double>(&cell)) return allDigits(*number);
  return csvField(std::get<std::string>(cell));
}

std::string objectOf(const std::vector<std::string>& columns, const Row& row) {
  Json object = Json::object();
  for (std::size_t k = 0; k < columns.size(); ++k) object[columns[k]] = toJson(row[k]);
  return object.dump(-1, ' ', false, Json::error_handler_t::replace);
}

class JsonRows : public RowWriter {
 public:
  JsonRows(std::ostream& out, std::vector<std::string> columns)
      : out_(out), columns_(std::move(columns)) {}

  PreparedRows prepare(std::vector<Row> rows) const override {
    std::string text;
    for (const Row& row : rows) text.append(separator).append(objectOf(columns_, row));
    return {{}, text};
  }

  void write(PreparedRows rows) override {
    if (rows.text.empty()) return;
    if (!hasRows_) rows.text.front() = '[';
    out_ << rows.text;
    hasRows_ = true;
  }

  void finish() override { out_ << (hasRows_ ? "\n]\n" : "[]\n"); }
  bool isStreaming() const override { return true; }

 private:
  /// Precedes each row; for the first, a bracket takes the place of the comma.
  static constexpr const char* separator = ",\n";

  std::ostream& out_;
  std::vector<std::string> columns_;
  bool hasRows_ = false;
};

/// Rows as lines of text, each independent of the others.
class LineRows : public RowWriter {
 public:
  explicit LineRows(std::ostream& out) : out_(out) {}

  PreparedRows prepare(std::vector<Row> rows) const override {
    std::string text;
    for (const Row& row : rows) text.append(lineOf(row)).append(1, '\n');
    return {{}, text};
  }

  void write(PreparedRows rows) override { out_ << rows.text; }
  void finish() override {}
  bool isStreaming() const override { return true; }

 protected:
  virtual std::string lineOf(const Row& row) const = 0;

 private:
  std::ostream& out_;
};

class JsonLines : public LineRows {
 public:
  JsonLines(std::ostream& out, std::vector<std::string> columns)
      : LineRows(out), columns_(std::move(columns)) {}

 protected:
  std::string lineOf(const Row& row) const override { return objectOf(columns_, row); }

 private:
  std::vector<std::string> columns_;
};

class CsvRows : public LineRows {
 public:
  CsvRows(std::ostream& out, const std::vector<std::string>& columns) : LineRows(out) {
    out << csvLine(Row(columns.begin(), columns.end())) << '\n';
  }

 protected:
  std::string lineOf(const Row& row) const override { return csvLine(row); }

 private:
  static std::string csvLine(const Row& row) {
    std::string text;
    for (const Cell& cell : row) text.append(&cell == row.data() ? "" : ",").append(toCsv(cell));
    return text;
  }
};

}  // namespace

std::unique_ptr<RowWriter> makeJsonRows(std::ostream& out, std::vector<std::string> columns) {
  return std::make_unique<JsonRows>(out, std::move(columns));
}

std::unique_ptr<RowWriter> makeJsonLines(std::ostream& out, std::vector<std::string> columns) {
  return std::make_unique<JsonLines>(out, std::move(columns));
}

std::unique_ptr<RowWriter> makeCsvRows(std::ostream& out, const std::vector<std::string>& columns) {
  return std::make_unique<CsvRows>(out, columns);
}

}  // namespace tool
