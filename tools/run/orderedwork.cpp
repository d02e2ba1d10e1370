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

constexpr std::size_t jobsForEachWorker = 4;
/// How often `idle` runs while nothing is ready.
constexpr std::chrono::milliseconds patience{100};

struct Task {
  /// Null when there is only a failure.
  std::unique_ptr<Job> job;
  /// What stopped the job or the producer.
  std::exception_ptr failure;
  bool isDone = false;
};

using TaskHandle = std::shared_ptr<Task>;

/// Thrown in the producer when no more jobs are wanted.
struct Stopped {};

void work(Task& task) {
  try {
    task.job->work();
  } catch (...) {
    task.failure = std::current_exception();
  }
}

/// The tasks in progress, in order; shared by all threads.
class Belt {
 public:
  explicit Belt(std::size_t capacity) : capacity_(capacity) {}

  /// Waits for room. Throws Stopped.
  void put(const TaskHandle& task) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return inOrder_.size() < capacity_ || isStopped_; });
    if (isStopped_) throw Stopped();
    inOrder_.push_back(task);
    if (!task->isDone) waiting_.push_back(task);
    changed_.notify_all();
  }

  /// No more tasks will be put.
  void close() {
    const std::lock_guard lock(mutex_);
    isClosed_ = true;
    changed_.notify_all();
  }

  /// No more tasks are wanted.
  void stop() {
    const std::lock_guard lock(mutex_);
    isStopped_ = true;
    waiting_.clear();
    changed_.notify_all();
  }

  /// The next task to work on; null when there will be no more.
  TaskHandle takeWaiting() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return !waiting_.empty() || isClosed_ || isStopped_; });
    if (waiting_.empty()) return nullptr;
    TaskHandle task = waiting_.front();
    waiting_.pop_front();
    return task;
  }

  void markDone(Task& task) {
    const std::lock_guard lock(mutex_);
    task.isDone = true;
    changed_.notify_all();
  }

  /// The next task in order, once it is done; null at the end.
  TaskHandle takeDone(const std::function<void()>& idle) {
    std::unique_lock lock(mutex_);
    while (!isNextKnown()) {
      lock.unlock();
      idle();
      lock.lock();
      changed_.wait_for(lock, patience, [this] { return isNextKnown(); });
    }
    if (inOrder_.empty()) return nullptr;
    TaskHandle task = inOrder_.front();
    inOrder_.pop_front();
    changed_.notify_all();
    return task;
  }

 private:
  bool isNextKnown() const { return inOrder_.empty() ? isClosed_ : inOrder_.front()->isDone; }

  const std::size_t capacity_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<TaskHandle> inOrder_;
  std::deque<TaskHandle> waiting_;
  bool isClosed_ = false;
  bool isStopped_ = false;
};

class BeltQueue : public JobQueue {
 public:
  explicit BeltQueue(Belt& belt) : belt_(belt) {}

  void add(std::unique_ptr<Job> job) override {
    belt_.put(std::make_shared<Task>(Task{std::move(job), nullptr, false}));
  }

 private:
  Belt& belt_;
};

/// A failure takes its place after what was produced before it.
void produceAll(Belt& belt, const std::function<void(JobQueue&)>& produce) {
  try {
    BeltQueue queue(belt);
    std::exception_ptr failure;
    try {
      produce(queue);
    } catch (const Stopped&) {
      throw;
    } catch (...) {
      failure = std::current_exception();
    }
    if (failure) belt.put(std::make_shared<Task>(Task{nullptr, failure, true}));
  } catch (const Stopped&) {  // NOLINT(bugprone-empty-catch)
  }
  belt.close();
}

void workAll(Belt& belt) {
  while (const TaskHandle task = belt.takeWaiting()) {
    work(*task);
    belt.markDone(*task);
  }
}

void finishAll(Belt& belt, const std::function<void()>& idle) {
  while (const TaskHandle task = belt.takeDone(idle)) {
    if (task->job != nullptr) task->job->finish();
    if (task->failure) std::rethrow_exception(task->failure);
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
  Belt belt(jobsForEachWorker * workers);
  Crew crew(belt);
  crew.start([&belt, &produce] { produceAll(belt, produce); });
  for (unsigned k = 0; k < workers; ++k) crew.start([&belt] { workAll(belt); });
  finishAll(belt, idle);
}

}  // namespace tool
