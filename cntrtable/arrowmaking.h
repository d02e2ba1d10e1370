// SPDX-License-Identifier: MIT
//
// Arrow columns made from lists: each array owns its buffers and children, and frees them when it
// is released.

#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <cntrtable/arrow.h>

namespace table {

/// The bytes of a list, which live as long as this does.
using ArrowBuffer = std::shared_ptr<const void>;

template <class List>
ArrowBuffer bufferOf(List list) {
  const auto kept = std::make_shared<const List>(std::move(list));
  return {kept, kept->data()};
}

/// The type of a column: its format as Arrow writes it, and the name of its extension or "".
struct ArrowKind {
  std::string format;
  std::string name;
  std::string extension;
  bool isNullable = false;
};

qcArrowSchema makeArrowSchema(ArrowKind kind, std::vector<qcArrowSchema>&& children);

/// REQUIRES: buffers and children are those that the format demands; a buffer that is not needed is
/// null.
qcArrowArray makeArrowArray(std::int64_t length, std::int64_t nulls,
                            std::vector<ArrowBuffer>&& buffers,
                            std::vector<qcArrowArray>&& children);

/// Makes a column of texts.
class TextColumn {
 public:
  explicit TextColumn(std::size_t rows);
  /// The text of the next row, or a null.
  void add(std::optional<std::string_view> text);
  /// REQUIRES: all rows were added.
  qcArrowColumn named(const char* name) &&;

 private:
  std::vector<std::uint8_t> validity_;
  std::vector<std::int64_t> offsets_;
  std::string characters_;
};

/// Which items are not null; no bitmap if none is null.
struct ArrowValidity {
  ArrowBuffer bitmap;
  std::int64_t nulls = 0;
};

ArrowValidity makeArrowValidity(std::vector<std::uint8_t>&& bitmap, std::size_t length);

/// A column of structs, or a record batch.
qcArrowColumn makeStruct(ArrowKind kind, std::size_t length, ArrowValidity&& validity,
                         std::vector<qcArrowColumn>&& columns);

/// A column of lists of the items, large ones if needsLargeOffsets().
qcArrowColumn makeList(ArrowKind kind, ArrowValidity&& validity,
                       std::vector<std::int64_t>&& offsets, qcArrowColumn&& items);

bool needsLargeOffsets(const std::vector<std::int64_t>& offsets);
/// Of 64 bits if they are large, otherwise of 32.
ArrowBuffer offsetBuffer(std::vector<std::int64_t>&& offsets);

/// A list of values that cannot be copied.
template <class T>
std::vector<T> listOf(T only) {
  std::vector<T> list;
  list.push_back(std::move(only));
  return list;
}

/// A bit for each item, the lowest first; all 0.
std::vector<std::uint8_t> makeBitmap(std::size_t length);
inline void setBit(std::vector<std::uint8_t>& bitmap, std::size_t place) {
  bitmap[place / 8] = static_cast<std::uint8_t>(bitmap[place / 8] | (1U << (place % 8)));
}

/// How many of the first `length` bits are 0.
std::int64_t countZeros(const std::vector<std::uint8_t>& bitmap, std::size_t length);

}  // namespace table
