// SPDX-License-Identifier: MIT
//
// Thread-local slots and thread-exit functions: both live in one state object per thread, whose
// destructor is the end of the thread as far as this file is concerned.

#include <platform/core/thread.h>

#include <atomic>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#if defined(__MINGW32__)
#include <pthread.h>
#endif

namespace {

struct ExitFunction {
  void (*function)(const qcThreadID& thread, void* context);
  void* context;
};

struct ThreadState {
  ThreadState() noexcept;
  ThreadState(const ThreadState&) = delete;
  ThreadState& operator=(const ThreadState&) = delete;
  ~ThreadState();

  std::unordered_map<std::uint64_t, void*> values;
  std::vector<ExitFunction> exitFunctions;
};

// These outlive the state: slots may still be read while other thread_local objects are destroyed.
constinit thread_local ThreadState* stateOfThread = nullptr;
constinit thread_local bool hasEnded = false;

constinit std::atomic<std::uint64_t> nextSlot{0};

ThreadState::ThreadState() noexcept { stateOfThread = this; }

ThreadState::~ThreadState() {
  stateOfThread = this;
  while (!exitFunctions.empty()) {
    const ExitFunction last = exitFunctions.back();
    exitFunctions.pop_back();
    last.function(qfGetCurrentThreadID(), last.context);
  }
  stateOfThread = nullptr;
  hasEnded = true;
}

#if defined(__MINGW32__)

// On this platform the memory of thread_local objects may be freed, or reused, before they are
// destroyed.
class StateKey {
 public:
  StateKey() { pthread_key_create(&key_, &StateKey::end); }
  StateKey(const StateKey&) = delete;
  StateKey& operator=(const StateKey&) = delete;
  /// The end of the first thread.
  ~StateKey() { end(pthread_getspecific(key_)); }

  void own(ThreadState* state) { pthread_setspecific(key_, state); }

 private:
  static void end(void* state) { delete static_cast<ThreadState*>(state); }

  pthread_key_t key_{};
};

void deleteAtEndOfThread(std::unique_ptr<ThreadState> state) {
  static StateKey key;
  key.own(state.release());
}

#else

void deleteAtEndOfThread(std::unique_ptr<ThreadState> state) {
  thread_local std::unique_ptr<ThreadState> owned;
  owned = std::move(state);
}

#endif

/// Null when the thread has ended.
ThreadState* makeState() {
  if (stateOfThread == nullptr && !hasEnded) deleteAtEndOfThread(std::make_unique<ThreadState>());
  return stateOfThread;
}

}  // namespace

qc_ThreadLocal::qc_ThreadLocal() : slot_(nextSlot++) {}

qc_ThreadLocal::~qc_ThreadLocal() {
  if (stateOfThread != nullptr) stateOfThread->values.erase(slot_);
}

void* qc_ThreadLocal::OSValue() const noexcept {
  if (stateOfThread == nullptr) return nullptr;
  const auto found = stateOfThread->values.find(slot_);
  return found == stateOfThread->values.end() ? nullptr : found->second;
}

void qc_ThreadLocal::OSValue(void* value) {
  if (ThreadState* const state = makeState()) state->values[slot_] = value;
}

void qcThreadID::NotCurrentThread::suicideAndRethrow() { qf_DeleteAndThrowCopy(this); }

void qcThreadID::atexit(void (*function)(const qcThreadID& thread, void* context),
                        void* context) const {
  if (*this != qfGetCurrentThreadID()) throw NotCurrentThread();
  if (ThreadState* const state = makeState()) state->exitFunctions.push_back({function, context});
}

qcThreadID qfGetCurrentThreadID() noexcept { return qcThreadID(std::this_thread::get_id()); }
