// SPDX-License-Identifier: MIT
//
// Work on several threads whose results come out in the order of the input.

#pragma once

#include <cstddef>
#include <functional>

namespace tool {

/// What is left to do with a result on the calling thread; may be empty.
using Finish = std::function<void()>;
/// A piece of work, done once, on any thread.
using Task = std::function<Finish()>;

/// Where the tasks are handed over.
class TaskQueue {
 public:
  virtual ~TaskQueue() = default;
  /// `size` is about how many bytes it takes. Waits while too much is under way.
  virtual void add(Task task, std::size_t size) = 0;
  /// Hands over what has been added, to be worked on at once: nothing more may come for a while.
  virtual void flush() = 0;
};

/// Runs `produce` on a thread of its own, the tasks that it adds on `jobs` others, and their
/// results in the order of the tasks on this one. `idle` runs here whenever the next result is not
/// ready yet. A bounded number of tasks is under way at a time.
///
/// What any of them throws is thrown here, in its place in the order; nothing behind it is
/// finished.
void runInOrder(unsigned jobs, const std::function<void(TaskQueue&)>& produce,
                const std::function<void()>& idle);

}  // namespace tool
