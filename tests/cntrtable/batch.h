// SPDX-License-Identifier: MIT
//
// The values of a record batch of measures.

#pragma once

#include <cntrtable/arrow.h>

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <cntrtable/measures.h>

/// A record batch as its user reads it.
class Batch {
 public:
  explicit Batch(qcArrowColumn&& column) : column_(std::move(column)) {}

  std::vector<std::string> names() const {
    std::vector<std::string> all;
    for (std::int64_t i = 0; i < column_.schema->n_children; ++i)
      all.emplace_back(column_.schema->children[i]->name);
    return all;
  }

  std::int64_t rows() const { return column_.array->length; }

  table::Value at(const std::string& name, std::size_t row) const {
    const std::size_t number = numberOf(name);
    const ArrowArray& array = *column_.array->children[number];
    const std::string format = column_.schema->children[number]->format;
    if (!bit(array.buffers[0], row)) return {};
    if (format == "g") return item<double>(array, row);
    if (format == "l") return static_cast<std::size_t>(item<std::int64_t>(array, row));
    if (format == "b") return bit(array.buffers[1], row);
    const auto begin = static_cast<std::size_t>(item<std::int64_t>(array, row));
    const auto end = static_cast<std::size_t>(item<std::int64_t>(array, row + 1));
    return std::string(static_cast<const char*>(array.buffers[2]) + begin, end - begin);
  }

  std::int64_t nulls(const std::string& name) const {
    return column_.array->children[numberOf(name)]->null_count;
  }

 private:
  std::size_t numberOf(const std::string& name) const {
    const std::vector<std::string> all = names();
    const auto found = std::find(all.begin(), all.end(), name);
    if (found == all.end()) throw std::invalid_argument(name);
    return static_cast<std::size_t>(found - all.begin());
  }

  static bool bit(const void* bitmap, std::size_t place) {
    return ((static_cast<const std::uint8_t*>(bitmap)[place / 8] >> (place % 8)) & 1) != 0;
  }

  template <class T>
  static T item(const ArrowArray& array, std::size_t row) {
    return static_cast<const T*>(array.buffers[1])[row];
  }

  qcArrowColumn column_;
};
