// SPDX-License-Identifier: MIT
//
// Conditions for the selection of features: --where, --min-area and --min-vertices.

#pragma once

#include <string>
#include <vector>

#include <cntrformats/feature.h>
#include <tools/answers/columns.h>

namespace tool {

/// A measure, the label, the id or the number of a feature, compared with a number, a text, or yes
/// or no.
class Condition {
 public:
  /// Takes a text such as "roundness > 0.8", with one of > >= < <= = !=. Throws
  /// std::invalid_argument, which says what is wrong with it.
  explicit Condition(const std::string& text);

  const Column& column() const noexcept { return *column_; }
  /// An empty cell fulfils no condition.
  bool isFulfilledBy(const Cell& cell) const;

 private:
  enum class Comparison { eGreater, eNotLess, eLess, eNotGreater, eEqual, eUnequal };

  const Column* column_;
  Comparison comparison_;
  Cell value_;
};

/// Whether the feature fulfils all conditions, measured with its holes and in the unit of its
/// coordinates. A feature with a problem fulfils none; one whose measures cannot be computed
/// passes, so that it can be reported.
bool fulfilsAll(const formats::Feature& feature, const std::vector<Condition>& conditions);

}  // namespace tool
