// SPDX-License-Identifier: MIT

#include <nlohmann/json.hpp>
#include <ostream>

#include <tools/output/rows.h>

namespace tool {

namespace {

using Json = nlohmann::ordered_json;

Json toJson(const Cell& cell) {
  if (isEmpty(cell)) return nullptr;
  if (const bool* answer = std::get_if<bool>(&cell)) return *answer;
  if (const std::size_t* count = std::get_if<std::size_t>(&cell)) return *count;
  if (const double* number = std::get_if<double>(&cell)) return *number;
  return std::get<std::string>(cell);
}

class JsonRows : public RowWriter {
 public:
  JsonRows(std::ostream& out, std::vector<std::string> columns)
      : out_(out), columns_(std::move(columns)) {}

  void write(Row row) override {
    Json object = Json::object();
    for (std::size_t k = 0; k < columns_.size(); ++k) object[columns_[k]] = toJson(row[k]);
    out_ << (hasRows_ ? ",\n" : "[\n")
         << object.dump(-1, ' ', false, Json::error_handler_t::replace);
    hasRows_ = true;
  }

  void finish() override { out_ << (hasRows_ ? "\n]\n" : "[]\n"); }

 private:
  std::ostream& out_;
  std::vector<std::string> columns_;
  bool hasRows_ = false;
};

}  // namespace

std::unique_ptr<RowWriter> makeJsonRows(std::ostream& out, std::vector<std::string> columns) {
  return std::make_unique<JsonRows>(out, std::move(columns));
}

}  // namespace tool
