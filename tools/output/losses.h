// SPDX-License-Identifier: MIT
//
// What the formats cannot hold.

#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include <tools/feature.h>
#include <tools/input/format.h>

namespace tool {

/// What a file of the format `to` cannot hold of the feature, in words.
std::vector<const char*> lossesOf(const Feature& feature, Format to);

/// True when the id of the feature can stand for its name in CSV.
bool csvHoldsId(const Feature& feature);

/// Counts losses, and tells of them in one sentence.
class Losses {
 public:
  void add(const std::vector<const char*>& losses) {
    for (const char* loss : losses) ++counts_[loss];
  }
  bool areNone() const noexcept { return counts_.empty(); }
  /// "CSV cannot hold holes (2), properties (5)"
  std::string account(Format to) const;

 private:
  std::map<std::string, std::size_t> counts_;
};

}  // namespace tool
