// SPDX-License-Identifier: MIT

#include <algorithm>
#include <iterator>

#include <tools/report/rows.h>

namespace tool {

namespace {

class SortedRows : public RowWriter {
 public:
  SortedRows(std::unique_ptr<RowWriter> writer, RowOrder order)
      : writer_(std::move(writer)), order_(order) {}

  PreparedRows prepare(std::vector<Row> rows) const override { return {std::move(rows), ""}; }

  void write(PreparedRows rows) override {
    rows_.insert(rows_.end(), std::make_move_iterator(rows.rows.begin()),
                 std::make_move_iterator(rows.rows.end()));
  }

  void finish() override {
    std::stable_sort(rows_.begin(), rows_.end(),
                     [this](const Row& a, const Row& b) { return isBefore(a.back(), b.back()); });
    for (Row& row : rows_) row.pop_back();
    writer_->write(writer_->prepare(std::move(rows_)));
    writer_->finish();
  }

  bool isStreaming() const override { return false; }

 private:
  bool isBefore(const Cell& a, const Cell& b) const {
    if (isEmpty(a) || isEmpty(b)) return !isEmpty(a) && isEmpty(b);
    return order_.descending ? b < a : a < b;
  }

  std::unique_ptr<RowWriter> writer_;
  RowOrder order_;
  std::vector<Row> rows_;
};

}  // namespace

std::unique_ptr<RowWriter> makeSorted(std::unique_ptr<RowWriter> writer, RowOrder order) {
  return std::make_unique<SortedRows>(std::move(writer), order);
}

}  // namespace tool
