// SPDX-License-Identifier: MIT
//
// What commands that print rows have in common: each feature has at least one, even if it is bad.

#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <tools/report/rows.h>
#include <tools/run/features.h>

namespace tool {

/// An answerer whose answers are rows.
class RowAnswerer : public Answerer {
 public:
  explicit RowAnswerer(std::unique_ptr<RowWriter> rows) : rows_(std::move(rows)) {}

  Answer answer(const Origin& origin, formats::Feature feature) const override;
  Answer answerUnreadable(const Origin& origin, const formats::Feature& feature) const override;
  void write(Answer answer) override { rows_->write(std::move(answer.rows)); }

  bool isStreaming() const { return rows_->isStreaming(); }
  void finish() { rows_->finish(); }

 protected:
  // Called on any thread.

  /// The rows of a feature. Flaws that do not prevent an answer go into `complaint`. Throws
  /// FeatureError, or an exception of the library, when there is no answer.
  virtual std::vector<Row> rowsOf(const Origin& origin, const formats::Feature& feature,
                                  std::string& complaint) const = 0;
  /// A row that holds only the reason.
  virtual Row unanswered(const Origin& origin, const formats::Feature& feature,
                         const std::string& why) const = 0;

 private:
  std::unique_ptr<RowWriter> rows_;
};

/// Prints the rows of all features of the inputs.
void printRows(Inputs& inputs, Session& session, RowAnswerer& answerer);

}  // namespace tool
