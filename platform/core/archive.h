// SPDX-License-Identifier: MIT
//
// The archive: one operator, ||, both stores and loads, so that a class describes its record once.
//
//   std::ofstream file("part.qcar", std::ios::binary);
//   qcStreamArchive archive(file);
//   archive || contour || region;
//
// qcArchive handles the encoding (little-endian, see docs/archive.md), the objects already met and
// the pointers; qcStreamArchive moves the bytes through a standard stream.
//
// Objects by value (`archive || object`) and through handles (`archive || handle`) are kept apart:
// an object stored both ways is written in full for each, and becomes two objects when it is read
// back. Met twice in the same way, it is written once. A variable that is loaded repeatedly must be
// forgotten in between; otherwise the second load finds that it has been met before and reads
// nothing:
//
//   while (more) { archive || contour; use(contour); archive.forget(contour); }
//
// Storing local variables needs no such care: when an object is destroyed, the archives of its
// thread forget it.
//
// Hostile input is expected. Counts are not trusted, references must lead to objects already
// announced, nesting is bounded; anything malformed throws an exception derived from
// qcArchive::Errors and leaves nothing on the heap once the archive is destroyed. Storing refuses
// what loading would refuse.

#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include <platform/core/exception.h>
#include <platform/core/handle.h>
#include <platform/core/vector.h>

/// @addtogroup archives
/// @{

class qc_ArchiveMemory;
class qc_ArchiveTransfer;

/// Stores or loads values and objects. An archive is made, used and destroyed on one thread; as
/// long as it exists, the objects that it has met must be used and destroyed on that thread, too.
///
/// After a failure in the middle of an object, a storing archive accepts nothing more
/// (WriteFailed), because what would follow could not be read.
class QCPLATFORM_EXPORT qcArchive {
 public:
  /// Everything that can go wrong with an archive.
  class QCPLATFORM_EXPORT Errors : public qcExceptionWithString {
   public:
    using qcExceptionWithString::qcExceptionWithString;
    void suicideAndRethrow() override;
  };
  /// A record carries a version that its class does not know.
  class QCPLATFORM_EXPORT UnknownVersion : public Errors {
   public:
    /// `source` and `line` identify the check; null and 0 when there is none.
    UnknownVersion(const char* source, int line);
    /// Never null: an empty text when no source was named.
    const char* source() const noexcept { return source_.c_str(); }
    /// The line of the check, or 0.
    int line() const noexcept { return line_; }
    void suicideAndRethrow() override;

   private:
    std::string source_;
    int line_;
  };
  /// Bytes that no archive would have written, or an object that cannot be written.
  class QCPLATFORM_EXPORT BadFormat : public Errors {
   public:
    using Errors::Errors;
    void suicideAndRethrow() override;
  };
  /// The input ends too early.
  class QCPLATFORM_EXPORT Truncated : public Errors {
   public:
    using Errors::Errors;
    void suicideAndRethrow() override;
  };
  /// A number does not fit the width that it has in the archive.
  class QCPLATFORM_EXPORT ValueTooLarge : public Errors {
   public:
    using Errors::Errors;
    void suicideAndRethrow() override;
  };
  /// The stream behind the archive did not accept the bytes.
  class QCPLATFORM_EXPORT WriteFailed : public Errors {
   public:
    using Errors::Errors;
    void suicideAndRethrow() override;
  };

  /// How deep objects may be nested in each other, by value or through pointers.
  static constexpr int maxNesting = 256;

  qcArchive(const qcArchive&) = delete;
  qcArchive& operator=(const qcArchive&) = delete;
  virtual ~qcArchive();

  /// True when data goes from the program into the archive.
  bool isStoring() const noexcept { return direction_ == Direction::eStoring; }
  /// True when data goes from the archive into the program.
  bool isLoading() const noexcept { return direction_ == Direction::eLoading; }

  /// One byte, 0 or 1.
  qcArchive& operator||(bool& value);
  /// 32-bit two's complement. Throws ValueTooLarge for values that need more.
  qcArchive& operator||(long& value);
  /// 32 bits. Throws ValueTooLarge for values that need more.
  qcArchive& operator||(unsigned long& value);
  /// IEEE-754 64-bit, every bit kept.
  qcArchive& operator||(double& value);
  /// Stores or loads an object by value.
  qcArchive& operator||(qcPersistent& object);

  /// `count` consecutive doubles, in the format of `count` single ones but at the speed of copying.
  void transferDoubles(double* values, std::size_t count);

  /// Forgets that `object` was met, by value or (when storing) through a pointer, so that its next
  /// transfer is a full one.
  void forget(const qcPersistent& object) noexcept;

  /// Transfers a pointer; an object that is met twice is shared. The engine behind handles. Loading
  /// returns the object (null for null); the archive keeps it alive until it is itself destroyed.
  /// Throws BadFormat when a handle leads back into an object that is still being transferred: such
  /// a cycle would keep itself alive forever.
  qcPersistent* transferShared(qcPersistent* object);

  /// For how many of the `remaining` announced elements, of `bytesEach` bytes each, a loading
  /// archive should reserve room at once: bounded by the bytes that are really available.
  std::size_t roomFor(std::size_t remaining, std::size_t bytesEach) const;

 protected:
  /// The direction of an archive, fixed at its construction.
  enum class Direction { eStoring, eLoading };
  /// An archive that has met no object yet.
  explicit qcArchive(Direction direction);

  /// Takes the next `count` bytes. Throws WriteFailed.
  virtual void storeBytes(const void* bytes, std::size_t count) = 0;
  /// Delivers the next `count` bytes. Throws Truncated.
  virtual void loadBytes(void* bytes, std::size_t count) = 0;
  /// A lower bound on the number of bytes still to come; 0 when unknown.
  virtual std::size_t bytesAtHand() const = 0;

  /// The number of bytes transferred so far.
  std::uint64_t position() const noexcept { return position_; }
  /// "at byte 123: " followed by the text, the form of all messages: what is wrong with the item
  /// that starts at that byte.
  std::wstring atPosition(const std::wstring& text) const;
  /// Calls storeBytes() and counts the bytes.
  void store(const void* bytes, std::size_t count);
  /// Calls loadBytes() and counts the bytes.
  void load(void* bytes, std::size_t count);
  /// Throws BadFormat, with the position.
  [[noreturn]] void badFormat(const std::wstring& what) const;

 private:
  friend class qcPersistent;
  friend class qc_ArchiveTransfer;
  friend QCPLATFORM_EXPORT qcArchive& operator||(qcArchive& archive, unsigned char& value);

  enum class PointerUse { eShared, eRaw };

  QCPLATFORM_LOCAL void storeNumber(std::uint32_t number);
  QCPLATFORM_LOCAL std::uint32_t loadNumber();
  QCPLATFORM_LOCAL void transferRecord(qcPersistent& object);
  QCPLATFORM_LOCAL qcPersistent* transferPointer(qcPersistent* object, PointerUse use);
  QCPLATFORM_LOCAL void storePointer(qcPersistent* object, PointerUse use);
  QCPLATFORM_LOCAL void storeNewObject(qcPersistent& object);
  QCPLATFORM_LOCAL qcPersistent* loadPointer(PointerUse use);
  QCPLATFORM_LOCAL void loadNewObject(std::uint32_t id);
  QCPLATFORM_LOCAL std::string loadClassName();
  QCPLATFORM_LOCAL void checkKnownObject(std::uint32_t id, PointerUse use);
  QCPLATFORM_LOCAL void objectDied(const qcPersistent& object) noexcept;

  Direction direction_;
  /// A failure has left half an object behind: nothing may follow it.
  bool isBroken_ = false;
  std::uint64_t position_ = 0;
  /// Where the item loaded last, or the one to be stored next, starts.
  std::uint64_t itemStart_ = 0;
  std::unique_ptr<qc_ArchiveMemory> memory_;
  /// The innermost transfer in progress in this archive.
  qc_ArchiveTransfer* transfer_ = nullptr;
  /// The next archive of this thread.
  qcArchive* next_ = nullptr;
};

/// An archive in a standard stream, which must be open in binary mode and outlive the archive.
/// Starts with the bytes "QCAR", 1, 0, 0, 0: written, or checked, by the constructor.
///
/// Whatever the stream's buffer throws becomes WriteFailed or Truncated. After either, the stream's
/// state says that it failed: badbit after WriteFailed and when the buffer threw, eofbit and
/// failbit when the input ended too early. The stream's own exceptions() are not thrown.
class QCPLATFORM_EXPORT qcStreamArchive : public qcArchive {
 public:
  /// Stores. Throws WriteFailed when the stream has failed before or does not take the header.
  explicit qcStreamArchive(std::ostream& out);
  /// Loads. Throws Truncated when the stream has failed before or ends within the header, BadFormat
  /// when it does not start as an archive.
  explicit qcStreamArchive(std::istream& in);
  ~qcStreamArchive() override;

 protected:
  void storeBytes(const void* bytes, std::size_t count) override;
  void loadBytes(void* bytes, std::size_t count) override;
  std::size_t bytesAtHand() const override;

 private:
  std::ostream* out_ = nullptr;
  std::istream* in_ = nullptr;
};

/// One byte.
QCPLATFORM_EXPORT qcArchive& operator||(qcArchive& archive, unsigned char& value);

/// A shared object, or null. Loading gives a null handle when the stored object is of another
/// class.
template <class T>
qcArchive& operator||(qcArchive& archive, qcPtrHandle<T>& handle) {
  qcPersistent* const object = archive.transferShared(archive.isStoring() ? handle.get() : nullptr);
  if (archive.isLoading()) handle = qcPtrHandle<T>(dynamic_cast<T*>(object));
  return archive;
}

/// The same for a handle to a const object.
template <class T>
qcArchive& operator||(qcArchive& archive, qcPtrHandle_const<T>& handle) {
  qcPtrHandle<T> shared(const_cast<T*>(handle.get()));
  archive || shared;
  if (archive.isLoading()) handle = shared;
  return archive;
}

/// The frame of every list: a version byte 0 (loading any other throws UnknownVersion without a
/// source), then the count, which is returned.
QCPLATFORM_EXPORT std::size_t qf_TransferListHead(qcArchive& archive, std::size_t count);

/// A list: its frame, then the elements in order. A loaded list grows as its elements arrive.
template <class T>
qcArchive& operator||(qcArchive& archive, std::vector<T>& list) {
  const std::size_t count = qf_TransferListHead(archive, list.size());
  if (archive.isLoading()) list.clear();
  for (std::size_t i = 0; i < count; ++i) {
    if (archive.isLoading()) list.emplace_back();
    archive || list[i];
  }
  return archive;
}

/// A list of points, transferred in blocks.
QCPLATFORM_EXPORT qcArchive& operator||(qcArchive& archive, std::vector<qcVector<2>>& points);

/// @}
