// SPDX-License-Identifier: MIT
//
// Work on several threads that is finished in the order of the input.

#pragma once

#include <cstddef>
#include <functional>
#include <memory>

namespace tool {

/// A piece of work, and what comes of it.
class Job {
 public:
  virtual ~Job() = default;
  /// Called once, on any thread.
  virtual void work() = 0;
  /// Called once after work(), in the order of the jobs, on the thread that called runInOrder().
  virtual void finish() = 0;
};

/// Takes the jobs.
class JobQueue {
 public:
  virtual ~JobQueue() = default;
  /// `size` is roughly how many bytes the job takes. Waits while too much is in progress.
  virtual void add(std::unique_ptr<Job> job, std::size_t size) = 0;
  /// Passes on what has been added, to be worked on at once: nothing more may come for a while.
  virtual void flush() = 0;
};

/// Runs `produce` on a thread of its own, works on the jobs that it adds on `workers` other
/// threads, and finishes them on this one. `idle` runs here whenever the next job is not ready yet.
/// A limited number of jobs is in progress at a time.
///
/// Whatever any of them throws is thrown here, in its place in the order; no job after it is
/// finished.
void runInOrder(unsigned workers, const std::function<void(JobQueue&)>& produce,
                const std::function<void()>& idle);

}  // namespace tool
