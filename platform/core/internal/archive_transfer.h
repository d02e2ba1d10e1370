// SPDX-License-Identifier: MIT
//
// Internal: one object on its way through an archive. Transfers nest as objects do; the innermost
// one of a thread tells qcPersistent::haveVisited() which archive and which object are meant.
// What is remembered afterwards is in archive_memory.h.

#pragma once

#include <cstdint>

#include <platform/core/archive.h>
#include <platform/core/internal/archive_memory.h>

/// What a thread knows of its archives. Trivial, so that objects may still be destroyed along with
/// the thread's other thread-local objects.
struct qc_ArchiveThread {
  /// All archives made on this thread, linked.
  qcArchive* archives = nullptr;
  /// The transfer in progress.
  qc_ArchiveTransfer* transfer = nullptr;
};
extern constinit thread_local qc_ArchiveThread qc_archiveThread;

/// Lives as long as the record of `owner` is being transferred.
class qc_ArchiveTransfer {
 public:
  /// Throws qcArchive::BadFormat when objects are nested too deep.
  qc_ArchiveTransfer(qcArchive& archive, const qcPersistent& owner, qc_TransferMode mode);
  qc_ArchiveTransfer(const qc_ArchiveTransfer&) = delete;
  qc_ArchiveTransfer& operator=(const qc_ArchiveTransfer&) = delete;
  ~qc_ArchiveTransfer();

  /// The mode of an object that is transferred by value now.
  static qc_TransferMode modeByValue(const qcArchive& archive) noexcept;
  /// Throws qcArchive::BadFormat when objects nested `levels` deep would be nested too deep here.
  static void checkNesting(const qcArchive& archive, int levels);

  /// Marks of the object in transfer.
  bool isMarked(const void* address, std::size_t size) const;
  void mark(const void* address, std::size_t size);
  /// Forgets the marks that the object has in this mode.
  void forgetMarks() noexcept;

  /// Records that this object contains one that is itself `levels` deep.
  void contains(int levels) noexcept;
  /// How many objects are nested in each other here, this one included.
  int levels() const noexcept { return levels_; }

 private:
  qcArchive& archive_;
  const qcPersistent& owner_;
  qc_TransferMode mode_;
  /// The transfer around this one, in the same archive and on the same thread.
  qc_ArchiveTransfer* outer_;
  qc_ArchiveTransfer* previous_;
  int depth_;
  int levels_ = 1;
  int exceptions_;
  std::uint64_t start_;
};
