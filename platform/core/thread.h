// SPDX-License-Identifier: MIT
//
// Thread-local slots created at run time, and functions that run when a thread ends.

#pragma once

#include <cstdint>
#include <thread>

#include <platform/core/exception.h>

/// @addtogroup objects
/// @{

/// One pointer for each thread, null until the thread sets it. Slots are independent; the slot of a
/// destroyed qc_ThreadLocal is never reused.
class QCPLATFORM_EXPORT qc_ThreadLocal {
 public:
  qc_ThreadLocal();
  qc_ThreadLocal(const qc_ThreadLocal&) = delete;
  qc_ThreadLocal& operator=(const qc_ThreadLocal&) = delete;
  ~qc_ThreadLocal();

  /// This thread's pointer; null when it was never set, and after the thread-exit functions have
  /// run.
  void* OSValue() const noexcept;
  /// Sets this thread's pointer. The slot does not own what it points to. Ignored after the
  /// thread-exit functions have run.
  void OSValue(void* value);

 private:
  /// Never reused.
  std::uint64_t slot_;
};

/// Identifies a thread.
class QCPLATFORM_EXPORT qcThreadID {
 public:
  /// Thrown when a thread-exit function is registered for a thread other than the calling one.
  class QCPLATFORM_EXPORT NotCurrentThread : public qcException {
   public:
    void suicideAndRethrow() override;
  };

  /// Identifies the thread with this standard id.
  explicit qcThreadID(std::thread::id id) noexcept : id_(id) {}

  /// Runs `function(thread, context)` on this thread when it ends (on the first thread: when the
  /// program exits); the last one registered runs first. Thread-local slots can still be read and
  /// set then, and more functions registered; they run too. Functions registered even later, while
  /// the thread's own thread_local objects are destroyed, are not run. A function must not throw.
  /// Throws NotCurrentThread unless this is the calling thread's ID.
  /// REQUIRES: function is not null.
  void atexit(void (*function)(const qcThreadID& thread, void* context), void* context) const;

  /// True for the same thread.
  bool operator==(const qcThreadID&) const noexcept = default;

 private:
  std::thread::id id_;
};

/// The calling thread's ID.
QCPLATFORM_EXPORT qcThreadID qfGetCurrentThreadID() noexcept;

/// @}
