// SPDX-License-Identifier: MIT

#include <tools/run/orderedwork.h>

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

/// Jobs are handed on in batches, so that short ones have little overhead.
constexpr std::size_t mostJobsInBatch = 64;
constexpr std::size_t mostBytesInBatch = std::size_t{1} << 16U;
constexpr std::size_t batchesForEachWorker = 4;
/// How often `idle` runs while nothing is ready.
constexpr std::chrono::milliseconds patience{100};

struct Batch {
  std::vector<std::unique_ptr<Job>> jobs;
  /// What stopped the jobs or the producer; thrown after the jobs that remain.
  std::exception_ptr failure;
  bool isDone = false;
};

using BatchHandle = std::shared_ptr<Batch>;

/// Thrown in the producer when no more jobs are wanted.
struct Stopped {};

void work(Batch& batch) {
  auto job = batch.jobs.begin();
  try {
    for (; job != batch.jobs.end(); ++job) (*job)->work();
  } catch (...) {
    batch.failure = std::current_exception();
    batch.jobs.erase(job, batch.jobs.end());
  }
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

  /// The next batch in order, once it is done; null at the end.
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

class BatchingQueue : public JobQueue {
 public:
  explicit BatchingQueue(Belt& belt) : belt_(belt) {}

  void add(std::unique_ptr<Job> job, std::size_t size) override {
    batch_->jobs.push_back(std::move(job));
    size_ += size;
    if (batch_->jobs.size() >= mostJobsInBatch || size_ >= mostBytesInBatch) flush();
  }

  void flush() override {
    if (batch_->jobs.empty()) return;
    belt_.put(std::exchange(batch_, std::make_shared<Batch>()));
    size_ = 0;
  }

 private:
  Belt& belt_;
  BatchHandle batch_ = std::make_shared<Batch>();
  std::size_t size_ = 0;
};

/// A failure takes its place after what was produced before it.
void produceAll(Belt& belt, const std::function<void(JobQueue&)>& produce) {
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
    if (failure) belt.put(std::make_shared<Batch>(Batch{{}, failure, true}));
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
    for (const auto& job : batch->jobs) job->finish();
    if (batch->failure) std::rethrow_exception(batch->failure);
  }
}

/// Threads that are joined, whatever happens.
class Crew {
 public:
  explicit Crew(Belt& belt) : belt_(belt) {}
  ~Crew() {
    belt_.stop();
    for (std::thread& thread : threads_) thread.join();
  }
  Crew(const Crew&) = delete;
  Crew& operator=(const Crew&) = delete;

  template <class Function>
  void start(Function function) {
    threads_.emplace_back(std::move(function));
  }

 private:
  Belt& belt_;
  std::vector<std::thread> threads_;
};

}  // namespace

void runInOrder(unsigned workers, const std::function<void(JobQueue&)>& produce,
                const std::function<void()>& idle) {
  Belt belt(batchesForEachWorker * workers);
  Crew crew(belt);
  crew.start([&belt, &produce] { produceAll(belt, produce); });
  for (unsigned k = 0; k < workers; ++k) crew.start([&belt] { workAll(belt); });
  finishAll(belt, idle);
}

}  // namespace tool
