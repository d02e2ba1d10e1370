// SPDX-License-Identifier: MIT
//
// Thread-local slots that can be made at run time, and functions that run when a thread ends.

#pragma once

#include <cstddef>
#include <cstdint>
#include <thread>

#include <platform/core/exception.h>

/// One pointer for each thread, null until the thread sets it. Slots are independent; the slot of a
/// destroyed qc_ThreadLocal is never seen by a later one.
class QCPLATFORM_EXPORT qc_ThreadLocal {
 public:
  qc_ThreadLocal();
  qc_ThreadLocal(const qc_ThreadLocal&) = delete;
  qc_ThreadLocal& operator=(const qc_ThreadLocal&) = delete;
  ~qc_ThreadLocal();

  /// This thread's pointer; null when it was never set, and once the thread's end has passed its
  /// thread-exit functions.
  void* OSValue() const noexcept;
  /// Sets this thread's pointer. The slot does not own what it points to.
  void OSValue(void* value);

 private:
  std::size_t slot_;
  std::uint64_t generation_;
};

/// Names a thread.
class QCPLATFORM_EXPORT qcThreadID {
 public:
  /// Thrown when a thread-exit function is asked for a thread that is not the calling one.
  class QCPLATFORM_EXPORT NotCurrentThread : public qcException {
   public:
    void suicideAndRethrow() override;
  };

  explicit qcThreadID(std::thread::id id) noexcept : id_(id) {}

  /// Runs `function(thread, context)` on this thread when it ends; the last one registered runs
  /// first. Thread-local slots can still be read and set then. Throws NotCurrentThread unless this
  /// is the calling thread's ID.
  void atexit(void (*function)(const qcThreadID& thread, void* context), void* context) const;

  bool operator==(const qcThreadID&) const noexcept = default;

 private:
  std::thread::id id_;
};

/// The calling thread's ID.
QCPLATFORM_EXPORT qcThreadID qfGetCurrentThreadID() noexcept;
