// SPDX-License-Identifier: MIT
//
// The three structures by which programs hand columns to each other in memory, as the Arrow C data
// and C stream interfaces define them for everybody to copy, and owners that release them once.
// Arrow is not linked.

#pragma once

#include <cstdint>
#include <utility>

/// @addtogroup tables
/// @{

#ifndef ARROW_C_DATA_INTERFACE
/// Tells other headers that ArrowSchema and ArrowArray are defined.
#define ARROW_C_DATA_INTERFACE

/// In ArrowSchema::flags: the order of the values in the dictionary means something.
#define ARROW_FLAG_DICTIONARY_ORDERED 1
/// In ArrowSchema::flags: values may be null.
#define ARROW_FLAG_NULLABLE 2
/// In ArrowSchema::flags: the keys within each map are sorted.
#define ARROW_FLAG_MAP_KEYS_SORTED 4

extern "C" {

/// What the values of a column are.
struct ArrowSchema {
  /// The type of the values, such as "g" for 64-bit floating-point numbers.
  const char* format;
  /// The name of the column; may be null.
  const char* name;
  /// Further keys and values in Arrow's binary form, such as the name of an extension; may be null.
  const char* metadata;
  /// A sum of ARROW_FLAG_ values.
  std::int64_t flags;
  /// The number of children.
  std::int64_t n_children;
  /// The types of the children: of a list its items, of a struct its fields.
  struct ArrowSchema** children;
  /// The type of the dictionary; null if the values are not encoded by one.
  struct ArrowSchema* dictionary;
  /// Frees what belongs to the structure and sets this to null: a structure whose `release` is null
  /// has been released.
  void (*release)(struct ArrowSchema*);
  /// For `release`.
  void* private_data;
};

/// The values of a column.
struct ArrowArray {
  /// The number of values.
  std::int64_t length;
  /// How many of them are null; -1 if that has not been counted.
  std::int64_t null_count;
  /// How many values of the buffers come before the first one of the column.
  std::int64_t offset;
  /// The number of buffers.
  std::int64_t n_buffers;
  /// The number of children.
  std::int64_t n_children;
  /// The bits that tell which values are not null (null if all are), then, by type, offsets and
  /// values.
  const void** buffers;
  /// The values of the children.
  struct ArrowArray** children;
  /// The values of the dictionary; null if there is none.
  struct ArrowArray* dictionary;
  /// As that of ArrowSchema.
  void (*release)(struct ArrowArray*);
  /// For `release`.
  void* private_data;
};

}  // extern "C"

#endif  // ARROW_C_DATA_INTERFACE

#ifndef ARROW_C_STREAM_INTERFACE
/// Tells other headers that ArrowArrayStream is defined.
#define ARROW_C_STREAM_INTERFACE

extern "C" {

/// Columns of one type that come one after the other.
struct ArrowArrayStream {
  /// Gives the type of all columns; returns 0, or the number of an error (errno).
  int (*get_schema)(struct ArrowArrayStream*, struct ArrowSchema* out);
  /// Gives the next column, a released one after the last; returns 0, or the number of an error.
  int (*get_next)(struct ArrowArrayStream*, struct ArrowArray* out);
  /// A text about the latest error, valid until the next call; may be null.
  const char* (*get_last_error)(struct ArrowArrayStream*);
  /// As that of ArrowSchema; columns that were handed out stay valid.
  void (*release)(struct ArrowArrayStream*);
  /// For the functions above.
  void* private_data;
};

}  // extern "C"

#endif  // ARROW_C_STREAM_INTERFACE

/// Owns one of these structures and releases it once.
template <class T>
class qcArrowOwner {
 public:
  /// A released structure, for a function to fill.
  qcArrowOwner() noexcept = default;
  /// Takes over the contents of `foreign`, which is left released.
  explicit qcArrowOwner(T* foreign) noexcept : held_(*foreign) { foreign->release = nullptr; }
  /// Takes over the contents of `other`, which is left released.
  qcArrowOwner(qcArrowOwner&& other) noexcept : qcArrowOwner(&other.held_) {}
  /// Exchanges the contents of both.
  qcArrowOwner& operator=(qcArrowOwner&& other) noexcept {
    std::swap(held_, other.held_);
    return *this;
  }
  ~qcArrowOwner() {
    if (held_.release != nullptr) held_.release(&held_);
  }

  /// The structure, released or not.
  T* get() noexcept { return &held_; }
  /// The same.
  T& operator*() noexcept { return held_; }
  /// The same.
  const T& operator*() const noexcept { return held_; }
  /// The same.
  T* operator->() noexcept { return &held_; }
  /// The same.
  const T* operator->() const noexcept { return &held_; }

  /// Hands the structure over: whoever has `place` must release it.
  void moveTo(T* place) noexcept {
    *place = held_;
    held_.release = nullptr;
  }

 private:
  T held_{};
};

/// Owns the type of a column.
using qcArrowSchema = qcArrowOwner<ArrowSchema>;
/// Owns the values of a column.
using qcArrowArray = qcArrowOwner<ArrowArray>;
/// Owns a stream.
using qcArrowStream = qcArrowOwner<ArrowArrayStream>;

/// A column, or a record batch (a column of structs), with the type of its values.
struct qcArrowColumn {
  /// The type of the values.
  qcArrowSchema schema;
  /// The values.
  qcArrowArray array;
};

/// @}
