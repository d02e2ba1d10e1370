// SPDX-License-Identifier: MIT
//
// A thread whose sequence of random indices starts afresh.

#pragma once

#include <thread>

/// Runs `work` on it, to its end.
template <class Work>
void onFreshThread(Work work) {
  std::thread thread(work);
  thread.join();
}
