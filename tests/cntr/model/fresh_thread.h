// SPDX-License-Identifier: MIT
//
// A thread whose sequence of random indices starts afresh.

#pragma once

#include <thread>

/// Runs `work` on such a thread and waits for its end.
template <class Work>
void onFreshThread(Work work) {
  std::thread thread(work);
  thread.join();
}
