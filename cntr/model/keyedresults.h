// SPDX-License-Identifier: MIT
//
// Results remembered by an argument: a small map with a bound. A single one lies in the map itself,
// because many shapes are asked once. Most hold four results and are a sorted list; a long one
// keeps the order of its results in a Ranking (ranking.h), where the one to drop is found by its
// place and a new one takes its rank in O(log n).

#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include <cntr/model/randomindex.h>
#include <cntr/model/ranking.h>
#include <platform/core/angle.h>
#include <platform/core/xform.h>

namespace cntr::model {

/// The order of keys, and whether a key is free of NaN: a key with NaN equals nothing, so it is
/// neither looked up nor stored.
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
/// `capacity`; after that it replaces one chosen at random, counted in key order.
template <class Key, class Value, class KeyOrder>
class KeyedResults {
 public:
  /// The result remembered for `key`, or null.
  const Value* find(const Key& key) const {
    if (only_) return isFor(*only_, key) ? &only_->second : nullptr;
    if (results_.empty() || !KeyOrder::isNumber(key)) return nullptr;
    const std::size_t rank = rankOf(key);
    if (rank == results_.size()) return nullptr;
    const Result& result = results_[isLong() ? order_.at(rank) : rank];
    return KeyOrder()(key, result.first) ? nullptr : &result.second;
  }

  /// REQUIRES: there is no result for `key`; capacity >= 0.
  void remember(const Key& key, const Value& value, long capacity) {
    if (!KeyOrder::isNumber(key)) return;
    if (size() == 0) {
      only_.emplace(key, value);
      return;
    }
    if (only_) {
      results_.push_back(*only_);
      only_.reset();
    }
    const bool isFull = static_cast<long>(results_.size()) > capacity;
    if (isLong() || (results_.size() == longestSorted && !isFull)) {
      rememberInLong({key, value}, isFull);
      return;
    }
    if (isFull) results_.erase(results_.begin() + offset(randomIndexBelow(results_.size())));
    results_.emplace(results_.begin() + offset(rankOf(key)), key, value);
  }

  std::size_t size() const noexcept { return only_ ? 1 : results_.size(); }

 private:
  using Result = std::pair<Key, Value>;

  static bool isFor(const Result& result, const Key& key) {
    return KeyOrder::isNumber(key) && !KeyOrder()(result.first, key) &&
           !KeyOrder()(key, result.first);
  }

  static std::ptrdiff_t offset(std::size_t index) { return static_cast<std::ptrdiff_t>(index); }

  bool isLong() const noexcept { return order_.size() > 0; }

  /// The number of keys before `key`.
  std::size_t rankOf(const Key& key) const {
    const auto isBefore = [&](const Result& result) { return KeyOrder()(result.first, key); };
    if (isLong()) {
      return order_.countWhile([&](Ranking::Item item) { return isBefore(results_[item]); });
    }
    return static_cast<std::size_t>(
        std::partition_point(results_.begin(), results_.end(), isBefore) - results_.begin());
  }

  void rememberInLong(const Result& result, bool isFull) {
    if (!isLong()) startOrder();
    auto item = static_cast<Ranking::Item>(results_.size());
    if (isFull) {
      item = order_.erase(randomIndexBelow(results_.size()));
      results_[item] = result;
    } else {
      order_.makeRoomFor(results_.size() + 1);
      results_.push_back(result);
    }
    order_.insert(rankOf(result.first), item);
  }

  /// Starts with the order of a sorted list.
  void startOrder() {
    order_.makeRoomFor(results_.size());
    for (Ranking::Item item = 0; item < results_.size(); ++item) order_.insert(item, item);
  }

  /// Inserting into a sorted list of this length takes about as long as into an ordered one.
  static constexpr std::size_t longestSorted = 64;

  /// While there is one alone.
  std::optional<Result> only_;
  /// In ascending order of the keys up to longestSorted of them, in any order beyond that.
  std::vector<Result> results_;
  /// The ascending order of the keys, by place in results_. Empty while these are sorted.
  Ranking order_;
};

}  // namespace cntr::model
