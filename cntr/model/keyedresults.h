// SPDX-License-Identifier: MIT
//
// Results remembered by an argument: a small map with a bound. It is a sorted list, because most
// lists hold four results, and one chosen at random by its place is found at once in long ones.

#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include <cntr/model/randomindex.h>
#include <platform/core/angle.h>
#include <platform/core/xform.h>

namespace cntr::model {

/// Order of keys and whether a key holds something that is not a number: such a key equals nothing,
/// so it is neither looked up nor stored.
struct AngleKey {
  static bool isNumber(const qcRadian& angle) noexcept { return !std::isnan(angle.toDouble()); }
  bool operator()(const qcRadian& a, const qcRadian& b) const noexcept {
    return a.toDouble() < b.toDouble();
  }
};

/// Transforms, lexicographically by the matrix elements by rows, then the translation.
struct XformKey {
  static bool isNumber(const qcXform<2>& xform) noexcept;
  bool operator()(const qcXform<2>& a, const qcXform<2>& b) const noexcept;
};

/// Results by key, at most `capacity` + 1 of them: a new result is added while there are at most
/// `capacity`, after that it takes the place of one chosen at random, counted in key order.
template <class Key, class Value, class KeyOrder>
class KeyedResults {
 public:
  /// The result remembered for `key`, or null.
  const Value* find(const Key& key) const {
    if (!KeyOrder::isNumber(key)) return nullptr;
    const auto entry = placeOf(results_, key);
    const bool isKnown = entry != results_.end() && !KeyOrder()(key, entry->first);
    return isKnown ? &entry->second : nullptr;
  }

  /// REQUIRES: `key` is not there, capacity >= 0.
  void remember(const Key& key, const Value& value, long capacity) {
    if (!KeyOrder::isNumber(key)) return;
    if (static_cast<long>(results_.size()) > capacity) {
      const std::size_t victim = randomIndexBelow(results_.size());
      results_.erase(results_.begin() + static_cast<std::ptrdiff_t>(victim));
    }
    results_.emplace(placeOf(results_, key), key, value);
  }

  std::size_t size() const noexcept { return results_.size(); }

 private:
  using Result = std::pair<Key, Value>;

  /// The first result whose key is not before `key`.
  template <class Results>
  static auto placeOf(Results& results, const Key& key) {
    return std::lower_bound(
        results.begin(), results.end(), key,
        [](const Result& result, const Key& sought) { return KeyOrder()(result.first, sought); });
  }

  /// In ascending order of the keys.
  std::vector<Result> results_;
};

}  // namespace cntr::model
