// SPDX-License-Identifier: MIT

#include <tools/stream/orderedwork.h>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace tool {

namespace {

/// Tasks are handed on in batches, so that short ones cost little.
constexpr std::size_t mostTasksInBatch = 64;
constexpr std::size_t mostBytesInBatch = std::size_t{1} << 16U;
constexpr std::size_t batchesForEachJob = 4;
/// How often `idle` runs while nothing is ready.
constexpr std::chrono::milliseconds patience{100};

/// Tasks, and then their results in the same order.
struct Batch {
  std::vector<Task> tasks;
  std::vector<Finish> results;
  /// What stopped the tasks, or the producer; it comes behind the results.
  std::exception_ptr failure;
  bool isDone = false;
};

using BatchHandle = std::shared_ptr<Batch>;

/// Ends the producer when nobody wants more tasks.
struct Stopped {};

void work(Batch& batch) {
  try {
    for (const Task& task : batch.tasks) batch.results.push_back(task());
  } catch (...) {
    batch.failure = std::current_exception();
  }
  batch.tasks.clear();
}

/// The batches under way, in order; shared by all threads.
class Belt {
 public:
  explicit Belt(std::size_t capacity) : capacity_(capacity) {}

  /// Waits for room. Throws Stopped.
  void put(const BatchHandle& batch) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return inOrder_.size() < capacity_ || isStopped_; });
    if (isStopped_) throw Stopped();
    inOrder_.push_back(batch);
    if (!batch->isDone) waiting_.push_back(batch);
    changed_.notify_all();
  }

  /// No more batches will be put.
  void close() {
    const std::lock_guard lock(mutex_);
    isClosed_ = true;
    changed_.notify_all();
  }

  /// No more batches are wanted.
  void stop() {
    const std::lock_guard lock(mutex_);
    isStopped_ = true;
    waiting_.clear();
    changed_.notify_all();
  }

  /// The next batch to work on; null when there will be none.
  BatchHandle takeWaiting() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return !waiting_.empty() || isClosed_ || isStopped_; });
    if (waiting_.empty()) return nullptr;
    BatchHandle batch = waiting_.front();
    waiting_.pop_front();
    return batch;
  }

  void markDone(Batch& batch) {
    const std::lock_guard lock(mutex_);
    batch.isDone = true;
    changed_.notify_all();
  }

  /// The next batch of all when it is done; null at the end.
  BatchHandle takeDone(const std::function<void()>& idle) {
    std::unique_lock lock(mutex_);
    while (!isNextKnown()) {
      lock.unlock();
      idle();
      lock.lock();
      changed_.wait_for(lock, patience, [this] { return isNextKnown(); });
    }
    if (inOrder_.empty()) return nullptr;
    BatchHandle batch = inOrder_.front();
    inOrder_.pop_front();
    changed_.notify_all();
    return batch;
  }

 private:
  bool isNextKnown() const { return inOrder_.empty() ? isClosed_ : inOrder_.front()->isDone; }

  const std::size_t capacity_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<BatchHandle> inOrder_;
  std::deque<BatchHandle> waiting_;
  bool isClosed_ = false;
  bool isStopped_ = false;
};

class BatchingQueue : public TaskQueue {
 public:
  explicit BatchingQueue(Belt& belt) : belt_(belt) {}

  void add(Task task, std::size_t size) override {
    batch_->tasks.push_back(std::move(task));
    size_ += size;
    if (batch_->tasks.size() >= mostTasksInBatch || size_ >= mostBytesInBatch) flush();
  }

  void flush() override {
    if (batch_->tasks.empty()) return;
    belt_.put(std::exchange(batch_, std::make_shared<Batch>()));
    size_ = 0;
  }

 private:
  Belt& belt_;
  BatchHandle batch_ = std::make_shared<Batch>();
  std::size_t size_ = 0;
};

/// A failure takes its place behind what was produced before it.
void produceAll(Belt& belt, const std::function<void(TaskQueue&)>& produce) {
  try {
    BatchingQueue queue(belt);
    std::exception_ptr failure;
    try {
      produce(queue);
    } catch (const Stopped&) {
      throw;
    } catch (...) {
      failure = std::current_exception();
    }
    queue.flush();
    if (failure) belt.put(std::make_shared<Batch>(Batch{{}, {}, failure, true}));
  } catch (const Stopped&) {  // NOLINT(bugprone-empty-catch)
  }
  belt.close();
}

void workAll(Belt& belt) {
  while (const BatchHandle batch = belt.takeWaiting()) {
    work(*batch);
    belt.markDone(*batch);
  }
}

void finishAll(Belt& belt, const std::function<void()>& idle) {
  while (const BatchHandle batch = belt.takeDone(idle)) {
    for (const Finish& finish : batch->results) {
      if (finish) finish();
    }
    if (batch->failure) std::rethrow_exception(batch->failure);
  }
}

/// Threads that are waited for, whatever happens.
class Crew {
 public:
  explicit Crew(Belt& belt) : belt_(belt) {}
  ~Crew() {
    belt_.stop();
    for (std::thread& thread : threads_) thread.join();
  }
  Crew(const Crew&) = delete;
  Crew& operator=(const Crew&) = delete;

  template <class Job>
  void start(Job job) {
    threads_.emplace_back(std::move(job));
  }

 private:
  Belt& belt_;
  std::vector<std::thread> threads_;
};

}  // namespace

void runInOrder(unsigned jobs, const std::function<void(TaskQueue&)>& produce,
                const std::function<void()>& idle) {
  Belt belt(batchesForEachJob * jobs);
  Crew crew(belt);
  crew.start([&belt, &produce] { produceAll(belt, produce); });
  for (unsigned k = 0; k < jobs; ++k) crew.start([&belt] { workAll(belt); });
  finishAll(belt, idle);
}

}  // namespace tool
