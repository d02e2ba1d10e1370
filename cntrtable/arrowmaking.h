// SPDX-License-Identifier: MIT
//
// Arrow columns made from lists: each array owns its buffers and children, and frees them when it
// is released.

#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <cntrtable/arrow.h>

namespace table {

/// The bytes of a list, kept for as long as this is.
using ArrowBuffer = std::shared_ptr<const void>;

template <class T>
ArrowBuffer bufferOf(std::vector<T>&& list) {
  const auto kept = std::make_shared<const std::vector<T>>(std::move(list));
  return {kept, kept->data()};
}

/// What a column is: its format as Arrow writes it, and the name of its extension or "".
struct ArrowKind {
  std::string format;
  std::string name;
  std::string extension;
  bool isNullable = false;
};

qcArrowSchema makeArrowSchema(ArrowKind kind, std::vector<qcArrowSchema>&& children);

/// REQUIRES: buffers and children are those that the format demands; a null buffer where none is
/// needed.
qcArrowArray makeArrowArray(std::int64_t length, std::int64_t nulls,
                            std::vector<ArrowBuffer>&& buffers,
                            std::vector<qcArrowArray>&& children);

/// A bit for each item, the lowest first; all 0.
std::vector<std::uint8_t> makeBitmap(std::size_t length);
void setBit(std::vector<std::uint8_t>& bitmap, std::size_t place);

/// How many of the first `length` bits are 0.
std::int64_t countZeros(const std::vector<std::uint8_t>& bitmap, std::size_t length);

}  // namespace table
