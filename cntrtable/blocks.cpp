// SPDX-License-Identifier: MIT

#include <cntrtable/blocks.h>

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace table {

namespace {

/// As many bits as a cache line of 64 bytes holds, unless there are few features: threads that
/// write bitmaps would wait for each other if they wrote into the same lines.
std::size_t featuresAtOnce(std::size_t count) {
  constexpr std::size_t most = 512;
  return std::clamp(count / most * featuresInBlock, featuresInBlock, most);
}

class BlockWork {
 public:
  BlockWork(std::size_t count, const std::function<void(std::size_t, std::size_t)>& work)
      : count_(count), atOnce_(featuresAtOnce(count)), work_(work) {}

  void run(unsigned threads) {
    if (threads == 0) threads = std::max(1U, std::thread::hardware_concurrency());
    const std::size_t blocks = (count_ + featuresInBlock - 1) / featuresInBlock;
    std::vector<std::jthread> others;
    try {
      while (others.size() + 1 < std::min<std::size_t>(threads, blocks))
        others.emplace_back([this] { takeBlocks(); });
    } catch (const std::system_error&) {
      // The system gives no more threads.
    }
    takeBlocks();
    others.clear();
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  /// Takes blocks until none is left.
  void takeBlocks() noexcept {
    try {
      while (true) {
        const std::size_t begin = next_.fetch_add(atOnce_);
        if (begin >= count_) return;
        work_(begin, std::min(begin + atOnce_, count_));
      }
    } catch (...) {
      const std::lock_guard lock(failureMutex_);
      failure_ = std::current_exception();
    }
  }

  std::size_t count_;
  std::size_t atOnce_;
  const std::function<void(std::size_t, std::size_t)>& work_;
  std::atomic<std::size_t> next_ = 0;
  std::mutex failureMutex_;
  std::exception_ptr failure_;
};

}  // namespace

void forBlocks(std::size_t count, unsigned threads,
               const std::function<void(std::size_t begin, std::size_t end)>& work) {
  BlockWork(count, work).run(threads);
}

}  // namespace table
