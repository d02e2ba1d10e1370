// SPDX-License-Identifier: MIT
//
// The marks and the pointer table of an archive; see archive_memory.h.

#include <platform/core/internal/archive_memory.h>

#include <algorithm>
#include <utility>

qc_KnownObject::qc_KnownObject(std::unique_ptr<qcPersistent> loaded) noexcept
    : object(loaded.get()), owned(std::move(loaded)) {
  reference = qcPtrHandle<qcRepBase>(dynamic_cast<qcRepBase*>(owned.get()));
  if (reference) static_cast<void>(owned.release());
}

bool qc_ArchiveMemory::isMarked(const qcPersistent& owner, const qc_VisitedMark& mark) const {
  const auto found = marks_.find(&owner);
  if (found == marks_.end()) return false;
  return std::find(found->second.begin(), found->second.end(), mark) != found->second.end();
}

void qc_ArchiveMemory::mark(const qcPersistent& owner, const qc_VisitedMark& mark) {
  if (!isMarked(owner, mark)) marks_[&owner].push_back(mark);
}

void qc_ArchiveMemory::forgetMarks(const qcPersistent& owner, qc_TransferMode mode) noexcept {
  const auto found = marks_.find(&owner);
  if (found == marks_.end()) return;
  std::erase_if(found->second, [mode](const qc_VisitedMark& mark) { return mark.mode == mode; });
}

std::uint32_t qc_ArchiveMemory::idOf(const qcPersistent& object) const {
  const auto found = ids_.find(&object);
  return found == ids_.end() ? 0 : found->second;
}

void qc_ArchiveMemory::add(qc_KnownObject object) {
  // Reserve room first, so that no failure leaves an id without its object.
  if (known_.size() == known_.capacity()) known_.reserve(2 * known_.size() + 1);
  ids_[object.object] = static_cast<std::uint32_t>(nextId());
  known_.push_back(std::move(object));
}

void qc_ArchiveMemory::objectDied(const qcPersistent& object) noexcept {
  forgetMarks(object);
  const auto found = ids_.find(&object);
  if (found == ids_.end()) return;
  qc_KnownObject& dead = known(found->second);
  dead.object = nullptr;
  static_cast<void>(dead.owned.release());
  ids_.erase(found);
}
