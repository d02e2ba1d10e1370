// SPDX-License-Identifier: MIT
//
// Work on several threads that is finished in the order of the input.

#pragma once

#include <functional>
#include <memory>

namespace tool {

/// A piece of work, and what comes of it.
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
/// Handing a job on takes a lock: a job should have some work to do. Whatever any of them throws is
/// thrown here, in its place in the order, after the job that threw it has been finished; no job
/// after it is.
void runInOrder(unsigned workers, const std::function<void(JobQueue&)>& produce,
                const std::function<void()>& idle);

}  // namespace tool
