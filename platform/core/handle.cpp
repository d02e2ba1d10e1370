// SPDX-License-Identifier: MIT
//
// The two functions that are not inline: the destructor that anchors qcRepBase, and the deletion of
// what the last handle leaves behind.

#include <platform/core/handle.h>

#include <memory>
#include <vector>

namespace {

/// The deletions that one dropped handle causes on this thread.
struct Deletions {
  int depth = 0;
  /// Objects that nothing refers to any more.
  std::vector<std::unique_ptr<const qcRepBase>> waiting;
};

/// Those under way, or null.
constinit thread_local Deletions* deletions = nullptr;

}  // namespace

qcRepBase::~qcRepBase() = default;

void qc_PtrHandleBase_RepAccessor::destroy(const qcRepBase* rep) noexcept {
  constexpr int deepest = 64;
  std::unique_ptr<const qcRepBase> last(rep);
  if (deletions == nullptr) {
    Deletions mine;
    deletions = &mine;
    last.reset();
    while (!mine.waiting.empty()) {
      last = std::move(mine.waiting.back());
      mine.waiting.pop_back();
      last.reset();
    }
    deletions = nullptr;
    return;
  }
  if (deletions->depth == deepest) {
    try {
      deletions->waiting.push_back(std::move(last));
      return;
    } catch (const std::bad_alloc&) {  // no memory to postpone it: delete it right here
    }
  }
  ++deletions->depth;
  last.reset();
  --deletions->depth;
}
