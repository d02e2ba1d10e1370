// SPDX-License-Identifier: MIT
//
// Pointers and handles in an archive: ids for objects that are met again, class names for objects
// that are met for the first time. The bytes are described in docs/archive.md.

#include <string>
#include <typeinfo>

#include <platform/core/archive.h>
#include <platform/core/internal/archive_transfer.h>
#include <platform/core/internal/instantiator.h>

namespace {

constexpr std::uint32_t longestClassName = 255;
constexpr std::uint64_t largestId = 0xFFFFFFFF;

/// A class name in quotes for a message. Characters that are not printable ASCII become '?'.
std::wstring quoted(const std::string& name) {
  std::wstring text = L"\"";
  for (const char c : name) text += c >= ' ' && c <= '~' ? static_cast<wchar_t>(c) : L'?';
  return text + L"\"";
}

}  // namespace

qcPersistent* qcArchive::transferShared(qcPersistent* object) {
  return transferPointer(object, PointerUse::eShared);
}

qcPersistent* qcArchive::transferPointer(qcPersistent* object, PointerUse use) {
  if (isLoading()) return loadPointer(use);
  storePointer(object, use);
  return object;
}

void qcArchive::storePointer(qcPersistent* object, PointerUse use) {
  const std::uint32_t id = object == nullptr ? 0 : memory_->idOf(*object);
  if (object != nullptr && id == 0) {
    storeNewObject(*object);
    return;
  }
  if (id != 0) checkKnownObject(id, use);
  storeNumber(id);
}

void qcArchive::storeNewObject(qcPersistent& object) {
  const qc_RegisteredClass* const type = qc_RegisteredClass::find(typeid(object));
  if (type == nullptr) {
    badFormat(L"the class " + quoted(qf_ClassName(typeid(object))) + L" is not registered");
  }
  if (type->name.size() > longestClassName) badFormat(L"the name of a class is too long");
  if (memory_->nextId() > largestId) badFormat(L"there are too many objects");
  qc_ArchiveTransfer transfer(*this, object, qc_TransferMode::ePointer);
  const auto id = static_cast<std::uint32_t>(memory_->nextId());
  memory_->add(qc_KnownObject(object));
  storeNumber(id);
  storeNumber(static_cast<std::uint32_t>(type->name.size()));
  store(type->name.data(), type->name.size());
  transferRecord(object);
  memory_->known(id).levels = transfer.levels();
}

qcPersistent* qcArchive::loadPointer(PointerUse use) {
  const std::uint32_t id = loadNumber();
  if (id == 0) return nullptr;
  if (id > memory_->nextId()) {
    badFormat(L"an object has the id " + std::to_wstring(id) + L", the next one is " +
              std::to_wstring(memory_->nextId()));
  }
  if (id == memory_->nextId()) {
    loadNewObject(id);
  } else {
    checkKnownObject(id, use);
  }
  qc_KnownObject& known = memory_->known(id);
  if (use == PointerUse::eRaw && !known.isUnderWay()) static_cast<void>(known.owned.release());
  return known.object;
}

void qcArchive::loadNewObject(std::uint32_t id) {
  const std::string name = loadClassName();
  const qc_RegisteredClass* const type = qc_RegisteredClass::find(name);
  if (type == nullptr) badFormat(L"the class " + quoted(name) + L" is not known");
  std::unique_ptr<qcPersistent> created(type->make());
  if (created == nullptr) badFormat(L"the class " + quoted(name) + L" gave no object");
  qcPersistent& object = *created;
  memory_->add(qc_KnownObject(std::move(created)));
  qc_ArchiveTransfer transfer(*this, object, qc_TransferMode::ePointer);
  transferRecord(object);
  memory_->known(id).levels = transfer.levels();
}

std::string qcArchive::loadClassName() {
  const std::uint32_t length = loadNumber();
  if (length > longestClassName) badFormat(L"the name of a class is too long");
  std::string name(length, '\0');
  load(name.data(), length);
  return name;
}

void qcArchive::checkKnownObject(std::uint32_t id, PointerUse use) {
  const qc_KnownObject& known = memory_->known(id);
  if (known.object == nullptr) badFormat(L"a pointer leads to an object that has been deleted");
  if (known.isUnderWay() && use == PointerUse::eShared) {
    badFormat(L"a handle leads back into an object that contains it");
  }
  qc_ArchiveTransfer::checkNesting(*this, known.levels);
  if (transfer_ != nullptr) transfer_->contains(known.levels);
}
