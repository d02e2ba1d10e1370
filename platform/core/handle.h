// SPDX-License-Identifier: MIT
//
// Intrusive reference counting: qcRepBase is the counted object, qcPtrHandle<T> and
// qcPtrHandle_const<T> are the handles. Copying a handle shares the object; the last handle deletes
// it. Counts change atomically (interlocked.h), so handles to one object may be copied and dropped
// on several threads; a single handle variable may be used by only one thread at a time.

#pragma once

#include <concepts>
#include <cstddef>
#include <type_traits>
#include <utility>

#include <platform/core/exception.h>
#include <platform/core/interlocked.h>

/// @addtogroup objects
/// @{

/// Base of every object that handles can share. A copy of an object starts uncounted.
class QCPLATFORM_EXPORT qcRepBase {
 public:
  virtual ~qcRepBase();

 protected:
  qcRepBase() noexcept = default;
  /// Never copies the count.
  qcRepBase(const qcRepBase&) noexcept {}
  /// Leaves the count as it is.
  qcRepBase& operator=(const qcRepBase&) noexcept { return *this; }

 private:
  friend class qc_PtrHandleBase_RepAccessor;
  mutable std::atomic<long> references_{0};
};

/// The only class that changes the counts.
class QCPLATFORM_EXPORT qc_PtrHandleBase_RepAccessor {
 protected:
  /// Adds a reference; does nothing for null.
  static void addReference(const qcRepBase* rep) noexcept {
    if (rep != nullptr) qfInterlockedIncrement(rep->references_);
  }
  /// Drops a reference, and deletes the object with the last one.
  static void dropReference(const qcRepBase* rep) noexcept {
    if (rep != nullptr && qfInterlockedDecrement(rep->references_) == 0) destroy(rep);
  }

 private:
  /// Deletes an object and whatever is destroyed along with it, however long the chain of handles
  /// is: deep in the chain, deletions are postponed instead of nested.
  static void destroy(const qcRepBase* rep) noexcept;
};

/// What all handles to const objects share: the counted part of the object, or null.
class QCPLATFORM_EXPORT qcPtrHandleBase_const : protected qc_PtrHandleBase_RepAccessor {
 public:
  /// True when the handle holds an object.
  explicit operator bool() const noexcept { return rep_ != nullptr; }

 protected:
  qcPtrHandleBase_const() noexcept = default;
  /// Adds a reference to `rep`, which may be null.
  explicit qcPtrHandleBase_const(const qcRepBase* rep) noexcept : rep_(rep) { addReference(rep_); }
  /// Adds a reference to the object of `other`.
  qcPtrHandleBase_const(const qcPtrHandleBase_const& other) noexcept : rep_(other.rep_) {
    addReference(rep_);
  }
  /// Takes over the reference of `other`, which becomes null.
  qcPtrHandleBase_const(qcPtrHandleBase_const&& other) noexcept
      : rep_(std::exchange(other.rep_, nullptr)) {}
  qcPtrHandleBase_const& operator=(const qcPtrHandleBase_const&) = delete;
  ~qcPtrHandleBase_const() { dropReference(rep_); }

  /// Exchanges the objects; the counts do not change.
  void swap(qcPtrHandleBase_const& other) noexcept { std::swap(rep_, other.rep_); }

  /// The counted part of the object, or null.
  const qcRepBase* rep() const noexcept { return rep_; }

 private:
  const qcRepBase* rep_ = nullptr;
};

/// The same for handles that may change their object.
class QCPLATFORM_EXPORT qcPtrHandleBase : public qcPtrHandleBase_const {
 protected:
  /// The constructors of the base.
  using qcPtrHandleBase_const::qcPtrHandleBase_const;
};

/// A shared reference to an object, or null. T derives from qcRepBase.
template <class T>
class qcPtrHandle : public qcPtrHandleBase {
 public:
  /// The type of the object.
  using element_type = T;

  /// Null.
  qcPtrHandle() noexcept = default;
  /// Null, from nullptr itself: 0 is not accepted.
  template <std::same_as<std::nullptr_t> Null>
  qcPtrHandle(Null /*null*/) noexcept {}
  /// Shares `object`, which was made with new; the last handle deletes it.
  explicit qcPtrHandle(T* object) noexcept : qcPtrHandleBase(object), object_(object) {}
  /// Shares the object of `other`.
  qcPtrHandle(const qcPtrHandle&) noexcept = default;
  /// Takes over the reference of `other`, which becomes null.
  qcPtrHandle(qcPtrHandle&& other) noexcept
      : qcPtrHandleBase(std::move(other)), object_(std::exchange(other.object_, nullptr)) {}
  /// A handle to a derived class is a handle to its base.
  template <class U>
  requires std::is_convertible_v<U*, T*> qcPtrHandle(const qcPtrHandle<U>& other)
  noexcept : qcPtrHandle(other.get()) {}
  // Not one function that takes its argument by value: clang 14 leaks `handle = {}` in templates.
  /// Shares the object of `other`; deletes its own with the last reference.
  qcPtrHandle& operator=(const qcPtrHandle& other) noexcept {  // NOLINT: copies, swaps
    qcPtrHandle taken(other);
    swap(taken);
    return *this;
  }
  /// Takes over the object of `other`; deletes its own with the last reference.
  qcPtrHandle& operator=(qcPtrHandle&& other) noexcept {
    qcPtrHandle taken(std::move(other));
    swap(taken);
    return *this;
  }
  ~qcPtrHandle() = default;

  /// Exchanges the objects; the counts do not change.
  void swap(qcPtrHandle& other) noexcept {
    qcPtrHandleBase::swap(other);
    std::swap(object_, other.object_);
  }

  /// The object, or null. The handle keeps its reference.
  T* get() const noexcept { return object_; }
  /// Throws qcBadPointer on a null handle.
  T* operator->() const { return &**this; }
  /// Throws qcBadPointer on a null handle.
  T& operator*() const {
    if (object_ == nullptr) throw qcBadPointer();
    return *object_;
  }

  /// True when both share one object (or both are null).
  bool operator==(const qcPtrHandle& other) const noexcept { return object_ == other.object_; }

 private:
  T* object_ = nullptr;
};

/// A shared reference to an object that its holder may not change, or null.
template <class T>
class qcPtrHandle_const : public qcPtrHandleBase_const {
 public:
  /// The type of the object, const.
  using element_type = const T;

  /// Null.
  qcPtrHandle_const() noexcept = default;
  /// Null, from nullptr itself: 0 is not accepted.
  template <std::same_as<std::nullptr_t> Null>
  qcPtrHandle_const(Null /*null*/) noexcept {}
  /// Shares `object`, which was made with new; the last handle deletes it.
  explicit qcPtrHandle_const(const T* object) noexcept
      : qcPtrHandleBase_const(object), object_(object) {}
  /// Shares the object of `other`.
  qcPtrHandle_const(const qcPtrHandle_const&) noexcept = default;
  /// Takes over the reference of `other`, which becomes null.
  qcPtrHandle_const(qcPtrHandle_const&& other) noexcept
      : qcPtrHandleBase_const(std::move(other)), object_(std::exchange(other.object_, nullptr)) {}
  /// Shares the object of a handle that may change it.
  template <class U>
  requires std::is_convertible_v<const U*, const T*> qcPtrHandle_const(const qcPtrHandle<U>& other)
  noexcept : qcPtrHandle_const(other.get()) {}
  /// A handle to a derived class is a handle to its base.
  template <class U>
  requires std::is_convertible_v<const U*, const T*> qcPtrHandle_const(
      const qcPtrHandle_const<U>& other)
  noexcept : qcPtrHandle_const(other.get()) {}
  /// Shares the object of `other`; deletes its own with the last reference.
  qcPtrHandle_const& operator=(const qcPtrHandle_const& other) noexcept {  // NOLINT: copies, swaps
    qcPtrHandle_const taken(other);
    swap(taken);
    return *this;
  }
  /// Takes over the object of `other`; deletes its own with the last reference.
  qcPtrHandle_const& operator=(qcPtrHandle_const&& other) noexcept {
    qcPtrHandle_const taken(std::move(other));
    swap(taken);
    return *this;
  }
  ~qcPtrHandle_const() = default;

  /// Exchanges the objects; the counts do not change.
  void swap(qcPtrHandle_const& other) noexcept {
    qcPtrHandleBase_const::swap(other);
    std::swap(object_, other.object_);
  }

  /// The object, or null. The handle keeps its reference.
  const T* get() const noexcept { return object_; }
  /// Throws qcBadPointer on a null handle.
  const T* operator->() const { return &**this; }
  /// Throws qcBadPointer on a null handle.
  const T& operator*() const {
    if (object_ == nullptr) throw qcBadPointer();
    return *object_;
  }

  /// True when both share one object (or both are null).
  bool operator==(const qcPtrHandle_const& other) const noexcept {
    return object_ == other.object_;
  }

 private:
  const T* object_ = nullptr;
};

/// @}
