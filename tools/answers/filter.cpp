// SPDX-License-Identifier: MIT

#include <tools/answers/filter.h>

#include <algorithm>
#include <array>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <cntrformats/errors.h>
#include <cntrformats/number.h>
#include <platform/core/exception.h>

namespace tool {

using namespace formats;

namespace {

constexpr std::string_view operatorCharacters = "<>=!";

std::string trimmed(std::string text) {
  text.erase(0, text.find_first_not_of(" \t"));
  text.erase(text.find_last_not_of(" \t") + 1);
  return text;
}

/// The columns that tell features apart, and the measures; the others depend on how they are shown.
const Column* columnNamed(const std::string& name) {
  for (const Column& column : allColumns()) {
    const std::string_view known = column.name;
    const bool isComparable =
        column.measure != nullptr || known == "feature" || known == "label" || known == "id";
    if (isComparable && known == name) return &column;
  }
  throw std::invalid_argument("there is no measure '" + name + "'; cntr measure --help lists them");
}

std::optional<double> numberIn(const Cell& cell) {
  if (const double* number = std::get_if<double>(&cell)) return *number;
  if (const std::size_t* count = std::get_if<std::size_t>(&cell))
    return static_cast<double>(*count);
  return std::nullopt;
}

Cell valueIn(const std::string& text) {
  if (text == "yes" || text == "true") return true;
  if (text == "no" || text == "false") return false;
  try {
    return finiteNumber(text);
  } catch (const FeatureError&) {
    const bool isQuoted = text.size() > 1 && text.front() == '"' && text.back() == '"';
    return isQuoted ? text.substr(1, text.size() - 2) : text;
  }
}

}  // namespace

Condition::Condition(const std::string& text) {
  constexpr std::array<std::pair<std::string_view, Comparison>, 7> comparisons{
      {{">", Comparison::eGreater},
       {">=", Comparison::eNotLess},
       {"<", Comparison::eLess},
       {"<=", Comparison::eNotGreater},
       {"=", Comparison::eEqual},
       {"==", Comparison::eEqual},
       {"!=", Comparison::eUnequal}}};
  const std::size_t begin = std::min(text.find_first_of(operatorCharacters), text.size());
  const std::size_t end = std::min(text.find_first_not_of(operatorCharacters, begin), text.size());
  const auto* const found = std::find_if(
      comparisons.begin(), comparisons.end(),
      [sign = text.substr(begin, end - begin)](const auto& known) { return known.first == sign; });
  const std::string value = trimmed(text.substr(end));
  if (found == comparisons.end() || value.empty())
    throw std::invalid_argument("'" + text + "' is not of the form 'roundness > 0.8'");
  column_ = columnNamed(trimmed(text.substr(0, begin)));
  comparison_ = found->second;
  value_ = valueIn(value);
  const bool isOrder = comparison_ != Comparison::eEqual && comparison_ != Comparison::eUnequal;
  if (isOrder && !numberIn(value_)) throw std::invalid_argument("'" + value + "' is not a number");
}

bool Condition::isFulfilledBy(const Cell& cell) const {
  if (isEmpty(cell)) return false;
  const auto number = numberIn(cell);
  const auto bound = numberIn(value_);
  if (!number || !bound) {
    const bool isEqual = cell == value_;
    return comparison_ == Comparison::eEqual ? isEqual
                                             : comparison_ == Comparison::eUnequal && !isEqual;
  }
  switch (comparison_) {
    case Comparison::eGreater:
      return *number > *bound;
    case Comparison::eNotLess:
      return *number >= *bound;
    case Comparison::eLess:
      return *number < *bound;
    case Comparison::eNotGreater:
      return *number <= *bound;
    case Comparison::eEqual:
      return *number == *bound;
    case Comparison::eUnequal:
      return *number != *bound;
  }
  return false;
}

bool fulfilsAll(const Feature& feature, const std::vector<Condition>& conditions) {
  if (!feature.problem.empty()) return false;
  std::vector<const Column*> columns;
  columns.reserve(conditions.size());
  for (const Condition& condition : conditions) columns.push_back(&condition.column());
  try {
    const Row row = ColumnFiller(columns, {}).measured({"", feature, {}}, feature.geometry.parts);
    for (std::size_t i = 0; i < conditions.size(); ++i) {
      if (!conditions[i].isFulfilledBy(row[i])) return false;
    }
    return true;
  } catch (const qcException&) {
    return true;
  }
}

}  // namespace tool
