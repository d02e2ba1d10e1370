// SPDX-License-Identifier: MIT
//
// Work done on several threads and finished in the order of the input.

#pragma once

#include <functional>
#include <memory>

namespace tool {

/// A piece of work and its result.
class Job {
 public:
  virtual ~Job() = default;
  /// Called once, on any thread.
  virtual void work() = 0;
  /// Called once after work(), even if that has thrown, in the order of the jobs, on the thread
  /// that called runInOrder().
  virtual void finish() = 0;
};

/// Takes the jobs.
class JobQueue {
 public:
  virtual ~JobQueue() = default;
  /// Waits while too much is in progress.
  virtual void add(std::unique_ptr<Job> job) = 0;
};

/// Runs `produce` on a thread of its own, works on the jobs that it adds on `workers` other
/// threads, and finishes them on this one. `idle` runs here whenever the next job is not ready yet.
/// A limited number of jobs is in progress at a time.
///
/// Handing over a job takes a lock, so a job should have some work to do. An exception thrown by
/// any of these functions is thrown here, in its place in the order, after the job that threw it
/// has been finished; no later job is finished.
void runInOrder(unsigned workers, const std::function<void(JobQueue&)>& produce,
                const std::function<void()>& idle);

}  // namespace tool
