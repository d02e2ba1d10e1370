// SPDX-License-Identifier: MIT
//
// The three structures by which programs hand columns to each other in memory, as the Arrow C data
// and C stream interfaces define them for everybody to copy, and owners that release them once.
// Arrow is not linked.

#pragma once

#include <cstdint>
#include <utility>

#ifndef ARROW_C_DATA_INTERFACE
#define ARROW_C_DATA_INTERFACE

#define ARROW_FLAG_DICTIONARY_ORDERED 1
#define ARROW_FLAG_NULLABLE 2
#define ARROW_FLAG_MAP_KEYS_SORTED 4

extern "C" {

/// What the values of a column are.
struct ArrowSchema {
  const char* format;
  const char* name;
  const char* metadata;
  std::int64_t flags;
  std::int64_t n_children;
  struct ArrowSchema** children;
  struct ArrowSchema* dictionary;
  void (*release)(struct ArrowSchema*);
  void* private_data;
};

/// The values of a column.
struct ArrowArray {
  std::int64_t length;
  std::int64_t null_count;
  std::int64_t offset;
  std::int64_t n_buffers;
  std::int64_t n_children;
  const void** buffers;
  struct ArrowArray** children;
  struct ArrowArray* dictionary;
  void (*release)(struct ArrowArray*);
  void* private_data;
};

}  // extern "C"

#endif  // ARROW_C_DATA_INTERFACE

#ifndef ARROW_C_STREAM_INTERFACE
#define ARROW_C_STREAM_INTERFACE

extern "C" {

/// Columns of one type that come one after the other.
struct ArrowArrayStream {
  int (*get_schema)(struct ArrowArrayStream*, struct ArrowSchema* out);
  int (*get_next)(struct ArrowArrayStream*, struct ArrowArray* out);
  const char* (*get_last_error)(struct ArrowArrayStream*);
  void (*release)(struct ArrowArrayStream*);
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
  qcArrowOwner(qcArrowOwner&& other) noexcept : qcArrowOwner(&other.held_) {}
  qcArrowOwner& operator=(qcArrowOwner&& other) noexcept {
    std::swap(held_, other.held_);
    return *this;
  }
  ~qcArrowOwner() {
    if (held_.release != nullptr) held_.release(&held_);
  }

  T* get() noexcept { return &held_; }
  T& operator*() noexcept { return held_; }
  const T& operator*() const noexcept { return held_; }
  T* operator->() noexcept { return &held_; }
  const T* operator->() const noexcept { return &held_; }

  /// Hands the structure over: whoever has `place` must release it.
  void moveTo(T* place) noexcept {
    *place = held_;
    held_.release = nullptr;
  }

 private:
  T held_{};
};

using qcArrowSchema = qcArrowOwner<ArrowSchema>;
using qcArrowArray = qcArrowOwner<ArrowArray>;
using qcArrowStream = qcArrowOwner<ArrowArrayStream>;

/// A column, or a record batch (a column of structs), with the type of its values.
struct qcArrowColumn {
  qcArrowSchema schema;
  qcArrowArray array;
};
