// SPDX-License-Identifier: MIT
//
// qcPersistent: its own record, and its access to the archives of its thread. The registry of
// classes is in instantiator.cpp.

#include <platform/core/persistent.h>

#include <platform/core/archive.h>
#include <platform/core/internal/archive_transfer.h>

qcPersistent::~qcPersistent() {
  qcArchive* archive = qc_archiveThread.archives;
  for (; archive != nullptr; archive = archive->next_) archive->objectDied(*this);
}

void qcPersistent::reInit() {}

void qcPersistent::loadSimple(qcArchive& archive) {
  qc_ArchiveTransfer transfer(archive, *this, qc_ArchiveTransfer::modeByValue(archive));
  transfer.forgetMarks();
  dispatchSerialize(archive);
}

void qcPersistent::dispatchSerialize(qcArchive& archive) {
  unsigned char version = 0;
  archive || version;
  if (version != 0) throw qcArchive::UnknownVersion("qcPersistent", 0);
}

bool qcPersistent::haveVisited(const void* object, std::size_t size) {
  const qc_ArchiveTransfer* const transfer = qc_archiveThread.transfer;
  return transfer != nullptr && transfer->isMarked(object, size);
}

void qcPersistent::setVisited(const void* object, std::size_t size) {
  if (qc_archiveThread.transfer != nullptr) qc_archiveThread.transfer->mark(object, size);
}

void qcPersistent::serializePointer(qcArchive& archive, [[maybe_unused]] qcPersistent* owner,
                                    qcPersistent*& pointer) {
  pointer = archive.transferPointer(pointer, qcArchive::PointerUse::eRaw);
}
