// SPDX-License-Identifier: MIT
//
// Nesting of transfers and the marks of the object in transfer; see archive_transfer.h.

#include <platform/core/internal/archive_transfer.h>

#include <algorithm>
#include <exception>

constinit thread_local qc_ArchiveThread qc_archiveThread;

qc_ArchiveTransfer::qc_ArchiveTransfer(qcArchive& archive, const qcPersistent& owner,
                                       qc_TransferMode mode)
    : archive_(archive),
      owner_(owner),
      mode_(mode),
      outer_(archive.transfer_),
      previous_(qc_archiveThread.transfer),
      depth_(outer_ == nullptr ? 1 : outer_->depth_ + 1),
      exceptions_(std::uncaught_exceptions()),
      start_(archive.position_) {
  checkNesting(archive, 1);
  archive_.transfer_ = this;
  qc_archiveThread.transfer = this;
}

qc_ArchiveTransfer::~qc_ArchiveTransfer() {
  archive_.transfer_ = outer_;
  qc_archiveThread.transfer = previous_;
  if (outer_ != nullptr) outer_->contains(levels_);
  const bool failed = std::uncaught_exceptions() > exceptions_;
  if (failed && archive_.isStoring() && archive_.position_ != start_) archive_.isBroken_ = true;
}

qc_TransferMode qc_ArchiveTransfer::modeByValue(const qcArchive& archive) noexcept {
  const qc_ArchiveTransfer* const around = archive.transfer_;
  const bool inPointer = around != nullptr && around->mode_ != qc_TransferMode::eByValue;
  return inPointer ? qc_TransferMode::eByValueInPointer : qc_TransferMode::eByValue;
}

void qc_ArchiveTransfer::checkNesting(const qcArchive& archive, int levels) {
  const int depth = archive.transfer_ == nullptr ? 0 : archive.transfer_->depth_;
  if (depth + levels > qcArchive::maxNesting) archive.badFormat(L"objects are nested too deep");
}

bool qc_ArchiveTransfer::isMarked(const void* address, std::size_t size) const {
  return archive_.memory_->isMarked(owner_, {address, size, mode_});
}

void qc_ArchiveTransfer::mark(const void* address, std::size_t size) {
  archive_.memory_->mark(owner_, {address, size, mode_});
}

void qc_ArchiveTransfer::forgetMarks() noexcept { archive_.memory_->forgetMarks(owner_, mode_); }

void qc_ArchiveTransfer::contains(int levels) noexcept { levels_ = std::max(levels_, levels + 1); }
