// SPDX-License-Identifier: MIT
//
// Each row has its own places in the columns, and blocks of rows do not share a byte of a bitmap,
// so that threads never conflict.

#include <cntrtable/measuring.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <cntrtable/arrowmaking.h>
#include <cntrtable/blocks.h>
#include <cntrtable/measures.h>
#include <cntrtable/refusal.h>

using table::bufferOf;
using table::makeArrowArray;
using table::makeArrowSchema;
using table::Measure;
using table::ValueType;

namespace {

constexpr const char* noteName = "note";

/// The answers of one measure.
struct AnswerColumn {
  AnswerColumn(const Measure& measure_, std::size_t rows)
      : measure(&measure_), validity(table::makeBitmap(rows)) {
    switch (measure->type) {
      case ValueType::eNumber:
        numbers.resize(rows);
        break;
      case ValueType::eCount:
        counts.resize(rows);
        break;
      case ValueType::eYesOrNo:
        flags = table::makeBitmap(rows);
        break;
      case ValueType::eText:
        texts.resize(rows);
        break;
    }
  }

  void set(std::size_t row, const table::Value& value) {
    if (std::holds_alternative<std::monostate>(value)) return;
    table::setBit(validity, row);
    switch (measure->type) {
      case ValueType::eNumber:
        numbers[row] = std::get<double>(value);
        break;
      case ValueType::eCount:
        counts[row] = static_cast<std::int64_t>(std::get<std::size_t>(value));
        break;
      case ValueType::eYesOrNo:
        if (std::get<bool>(value)) table::setBit(flags, row);
        break;
      case ValueType::eText:
        texts[row] = std::make_unique<std::string>(std::get<std::string>(value));
        break;
    }
  }

  const Measure* measure;
  /// A bit for each row that has an answer.
  std::vector<std::uint8_t> validity;
  // One of these, by the type of the measure.
  std::vector<double> numbers;
  std::vector<std::int64_t> counts;
  std::vector<std::uint8_t> flags;
  /// Only for the rows that have one, which are few.
  std::vector<std::unique_ptr<std::string>> texts;
};

const Measure& measureAskedFor(const std::string& name) {
  const Measure* const found = table::measureNamed(name);
  if (found == nullptr) table::refuse("there is no measure " + table::quoted(name));
  return *found;
}

/// The columns asked for, and the note at the end.
std::vector<AnswerColumn> columnsFor(std::span<const std::string> names, std::size_t rows) {
  std::vector<AnswerColumn> columns;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const Measure& measure = measureAskedFor(names[i]);
    if (std::find(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(i), names[i]) !=
        names.begin() + static_cast<std::ptrdiff_t>(i)) {
      table::refuse("the measure " + table::quoted(names[i]) + " is asked for twice");
    }
    if (names[i] != noteName) columns.emplace_back(measure, rows);
  }
  columns.emplace_back(measureAskedFor(noteName), rows);
  return columns;
}

/// Why there are not enough vertices; empty when there are enough.
std::string shortageOf(const qcOutlines& outlines, std::size_t feature) {
  const bool isAreas = outlines.kind(feature) == qcOutlineKind::eAreas;
  const std::size_t fewest = isAreas ? 3 : 2;
  const std::size_t parts = outlines.parts(feature);
  for (std::size_t part = 0; part < parts; ++part) {
    for (std::size_t i = 0; i < outlines.rings(feature, part); ++i) {
      const std::size_t count = outlines.ring(feature, part, i).size() / 2;
      if (count >= fewest) continue;
      const std::string place = parts > 1 ? "part " + std::to_string(part + 1) + ", " : "";
      const std::string ring = !isAreas ? "line" : i == 0 ? "outline" : "hole " + std::to_string(i);
      return place + ring + " has " + std::to_string(count) + (count == 1 ? " point" : " points") +
             ", but needs " + std::to_string(fewest);
    }
  }
  return "";
}

/// Prefetches the vertices of a feature's first outline, or its first kilobytes, while another
/// feature is measured.
void fetchVertices(const qcOutlines& outlines, std::size_t feature) {
  if (outlines.parts(feature) == 0 || outlines.rings(feature, 0) == 0) return;
  constexpr std::size_t ofLine = 64 / sizeof(double);
  constexpr std::size_t most = 32 * ofLine;
  const std::span<const double> numbers = outlines.ring(feature, 0, 0);
  for (std::size_t i = 0; i < std::min(numbers.size(), most); i += ofLine)
    __builtin_prefetch(&numbers[i]);
}

class Measurement {
 public:
  Measurement(const qcOutlines& outlines, std::span<const std::string> names)
      : outlines_(outlines), columns_(columnsFor(names, outlines.size())), isOk_(outlines.size()) {
    for (const AnswerColumn& column : columns_) needs_ |= column.measure->needs;
  }

  void run(unsigned threads) {
    table::forBlocks(outlines_.size(), threads, [this](std::size_t begin, std::size_t end) {
      Memory memory;
      for (std::size_t row = begin; row < end; ++row) {
        if (row + 2 < end) fetchVertices(outlines_, row + 2);
        measure(row, memory);
      }
    });
  }

  qcArrowColumn batch() &&;

 private:
  /// Memory that one feature after the other can use.
  struct Memory {
    cntr::sets::LoneRing ring;
    std::vector<table::Value> values;
  };

  void measure(std::size_t row, Memory& memory) {
    if (outlines_.kind(row) == qcOutlineKind::eNothing) {
      fail(row, outlines_.problem(row));
      return;
    }
    try {
      if (!answerQuickly(row, memory)) answer(row, memory);
    } catch (const qcException& error) {
      fail(row, table::messageIn(error));
    }
  }

  /// False where a closer look is needed.
  bool answerQuickly(std::size_t row, Memory& memory) {
    if ((needs_ & ~table::quickNeeds) != 0U || outlines_.kind(row) != qcOutlineKind::eAreas ||
        outlines_.parts(row) != 1 || outlines_.rings(row, 0) != 1)
      return false;
    const auto facts = table::quickFactsOf(outlines_.ring(row, 0, 0), needs_, memory.ring);
    if (facts) answer(row, *facts, memory.values);
    return facts.has_value();
  }

  void answer(std::size_t row, Memory& memory) {
    const std::string shortage = shortageOf(outlines_, row);
    if (!shortage.empty()) {
      fail(row, shortage);
      return;
    }
    const bool isAreas = outlines_.kind(row) == qcOutlineKind::eAreas;
    const std::vector<qcRings> parts = outlines_.feature(row);
    answer(row, table::factsOf({parts, isAreas}, needs_, table::Filling::eMeasured), memory.values);
  }

  /// Stores all answers or, when one of them throws, none.
  void answer(std::size_t row, const table::Facts& facts, std::vector<table::Value>& values) {
    values.clear();
    for (const AnswerColumn& column : columns_) values.push_back(column.measure->answer(facts));
    for (std::size_t i = 0; i < columns_.size(); ++i) columns_[i].set(row, values[i]);
    isOk_[row] = 1;
  }

  void fail(std::size_t row, const std::string& why) { columns_.back().set(row, why); }

  const qcOutlines& outlines_;
  /// The last one is the note.
  std::vector<AnswerColumn> columns_;
  table::Needs needs_ = table::eCounts;
  std::vector<std::uint8_t> isOk_;
};

qcArrowColumn textColumn(const char* name, const std::vector<std::unique_ptr<std::string>>& texts) {
  table::TextColumn column(texts.size());
  for (const std::unique_ptr<std::string>& text : texts)
    column.add(text ? std::optional<std::string_view>(*text) : std::nullopt);
  return std::move(column).named(name);
}

qcArrowColumn columnOf(AnswerColumn&& column, std::size_t rows) {
  const char* const name = column.measure->name;
  if (column.measure->type == ValueType::eText) return textColumn(name, column.texts);
  const bool isCount = column.measure->type == ValueType::eCount;
  const bool isNumber = column.measure->type == ValueType::eNumber;
  const std::int64_t nulls = table::countZeros(column.validity, rows);
  table::ArrowBuffer values = isCount    ? bufferOf(std::move(column.counts))
                              : isNumber ? bufferOf(std::move(column.numbers))
                                         : bufferOf(std::move(column.flags));
  return {makeArrowSchema({isCount    ? "l"
                           : isNumber ? "g"
                                      : "b",
                           name, "", true},
                          {}),
          makeArrowArray(static_cast<std::int64_t>(rows), nulls,
                         {bufferOf(std::move(column.validity)), std::move(values)}, {})};
}

qcArrowColumn statusColumn(const std::vector<std::uint8_t>& isOk) {
  table::TextColumn texts(isOk.size());
  for (const std::uint8_t ok : isOk) texts.add(ok != 0 ? "ok" : "failed");
  return std::move(texts).named("status");
}

qcArrowColumn Measurement::batch() && {
  const std::size_t rows = outlines_.size();
  std::vector<qcArrowColumn> columns;
  for (AnswerColumn& column : columns_) {
    if (&column == &columns_.back()) columns.push_back(statusColumn(isOk_));
    columns.push_back(columnOf(std::move(column), rows));
  }
  return table::makeStruct({"+s", "", ""}, rows, {}, std::move(columns));
}

}  // namespace

qcArrowColumn qf_Measure(const qcOutlines& outlines, std::span<const std::string> columns,
                         unsigned threads) {
  Measurement measurement(outlines, columns);
  measurement.run(threads);
  return std::move(measurement).batch();
}
