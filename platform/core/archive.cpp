// SPDX-License-Identifier: MIT
//
// qcArchive: its exceptions, the bytes of plain values, and objects by value. Pointers are in
// archive_pointers.cpp, lists in archive_lists.cpp, the stream behind it in streamarchive.cpp.

#include <platform/core/archive.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <utility>

#include <platform/core/internal/archive_transfer.h>

static_assert(sizeof(double) == 8 && std::numeric_limits<double>::is_iec559);

namespace {

/// `cntr/contour line 904`: the description of an UnknownVersion.
std::wstring describeCheck(const char* source, int line) {
  if (source == nullptr) return L"a record of a version that is not known";
  std::wstring text(source, source + std::strlen(source));
  if (line != 0) text += L" line " + std::to_wstring(line);
  return text;
}

/// Reverses the bytes of each of `count` doubles.
void swapBytes(unsigned char* bytes, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) std::reverse(bytes + 8 * i, bytes + 8 * i + 8);
}

constexpr bool isLittleEndian = std::endian::native == std::endian::little;
static_assert(isLittleEndian || std::endian::native == std::endian::big);

}  // namespace

qcArchive::UnknownVersion::UnknownVersion(const char* source, int line)
    : Errors(describeCheck(source, line).c_str()),
      source_(source == nullptr ? "" : source),
      line_(line) {}

// Programs on Windows look for it in the DLL, which would not contain it otherwise.
constexpr int qcArchive::maxNesting;  // NOLINT(readability-redundant-declaration)

void qcArchive::Errors::suicideAndRethrow() { qf_DeleteAndThrowCopy(this); }
void qcArchive::UnknownVersion::suicideAndRethrow() { qf_DeleteAndThrowCopy(this); }
void qcArchive::BadFormat::suicideAndRethrow() { qf_DeleteAndThrowCopy(this); }
void qcArchive::Truncated::suicideAndRethrow() { qf_DeleteAndThrowCopy(this); }
void qcArchive::ValueTooLarge::suicideAndRethrow() { qf_DeleteAndThrowCopy(this); }
void qcArchive::WriteFailed::suicideAndRethrow() { qf_DeleteAndThrowCopy(this); }

qcArchive::qcArchive(Direction direction)
    : direction_(direction),
      memory_(std::make_unique<qc_ArchiveMemory>()),
      next_(std::exchange(qc_archiveThread.archives, this)) {}

qcArchive::~qcArchive() {
  // Off the list first: objects that are destroyed along with memory_ need not be forgotten.
  qcArchive** link = &qc_archiveThread.archives;
  while (*link != nullptr && *link != this) link = &(*link)->next_;
  if (*link == this) *link = next_;
}

std::wstring qcArchive::atPosition(const std::wstring& text) const {
  return L"at byte " + std::to_wstring(itemStart_) + L": " + text;
}

void qcArchive::badFormat(const std::wstring& what) const {
  throw BadFormat(atPosition(what).c_str());
}

void qcArchive::store(const void* bytes, std::size_t count) {
  if (isBroken_) {
    throw WriteFailed(atPosition(L"an earlier failure left an object incomplete").c_str());
  }
  isBroken_ = true;
  storeBytes(bytes, count);
  isBroken_ = false;
  position_ += count;
  itemStart_ = position_;
}

void qcArchive::load(void* bytes, std::size_t count) {
  itemStart_ = position_;
  loadBytes(bytes, count);
  position_ += count;
}

void qcArchive::storeNumber(std::uint32_t number) {
  std::array<unsigned char, 4> bytes{};
  for (unsigned char& byte : bytes) {
    byte = static_cast<unsigned char>(number & 0xFFU);
    number >>= 8U;
  }
  store(bytes.data(), bytes.size());
}

std::uint32_t qcArchive::loadNumber() {
  std::array<unsigned char, 4> bytes{};
  load(bytes.data(), bytes.size());
  std::uint32_t number = 0;
  for (std::size_t i = bytes.size(); i-- > 0;) number = (number << 8U) | bytes[i];
  return number;
}

qcArchive& operator||(qcArchive& archive, unsigned char& value) {
  if (archive.isStoring()) {
    archive.store(&value, 1);
  } else {
    archive.load(&value, 1);
  }
  return archive;
}

qcArchive& qcArchive::operator||(bool& value) {
  unsigned char byte = isStoring() && value ? 1 : 0;  // a variable to load may hold anything
  *this || byte;
  if (byte > 1) badFormat(L"a truth value is neither 0 nor 1");
  value = byte == 1;
  return *this;
}

qcArchive& qcArchive::operator||(long& value) {
  if (isLoading()) {
    value = static_cast<std::int32_t>(loadNumber());
    return *this;
  }
  if (!std::in_range<std::int32_t>(value)) {
    throw ValueTooLarge(atPosition(std::to_wstring(value) + L" needs more than 32 bits").c_str());
  }
  storeNumber(static_cast<std::uint32_t>(value));
  return *this;
}

qcArchive& qcArchive::operator||(unsigned long& value) {
  if (isLoading()) {
    value = loadNumber();
    return *this;
  }
  if (!std::in_range<std::uint32_t>(value)) {
    throw ValueTooLarge(atPosition(std::to_wstring(value) + L" needs more than 32 bits").c_str());
  }
  storeNumber(static_cast<std::uint32_t>(value));
  return *this;
}

qcArchive& qcArchive::operator||(double& value) {
  transferDoubles(&value, 1);
  return *this;
}

void qcArchive::transferDoubles(double* values, std::size_t count) {
  if constexpr (isLittleEndian) {
    if (isStoring()) {
      store(values, 8 * count);
    } else {
      load(values, 8 * count);
    }
    return;
  }
  std::array<unsigned char, 4096> block;
  for (std::size_t done = 0; done < count;) {
    const std::size_t part = std::min(count - done, block.size() / 8);
    if (isStoring()) {
      std::memcpy(block.data(), values + done, 8 * part);
      swapBytes(block.data(), part);
      store(block.data(), 8 * part);
    } else {
      load(block.data(), 8 * part);
      swapBytes(block.data(), part);
      std::memcpy(values + done, block.data(), 8 * part);
    }
    done += part;
  }
}

qcArchive& qcArchive::operator||(qcPersistent& object) {
  const qc_ArchiveTransfer transfer(*this, object, qc_ArchiveTransfer::modeByValue(*this));
  transferRecord(object);
  return *this;
}

void qcArchive::transferRecord(qcPersistent& object) {
  object.dispatchSerialize(*this);
  if (isLoading()) object.reInit();
}

void qcArchive::forget(const qcPersistent& object) noexcept {
  memory_->forgetMarks(object);
  if (isStoring()) memory_->forgetId(object);
}

void qcArchive::objectDied(const qcPersistent& object) noexcept { memory_->objectDied(object); }
