// SPDX-License-Identifier: MIT
//
// Internal: what an archive remembers of the objects that it has met. Marks say which records by
// value are done; the pointer table gives objects their ids. The archive is in archive.h, the
// transfers that ask here in archive_transfer.h.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include <platform/core/handle.h>
#include <platform/core/persistent.h>

/// How a record came to be transferred. Marks of one mode are not seen in another, so that an
/// object that is reached by value and through a pointer is transferred in full once for each.
enum class qc_TransferMode : unsigned char { eByValue, ePointer, eByValueInPointer };

/// A record that is done: the part of an object at `address` of `size` bytes.
struct qc_VisitedMark {
  const void* address;
  std::size_t size;
  qc_TransferMode mode;
  bool operator==(const qc_VisitedMark&) const noexcept = default;
};

/// An object that has an id. Of a stored object only the address is kept. A loaded one is kept
/// alive: by a reference when it is counted, else by ownership until someone claims it.
struct qc_KnownObject {
  explicit qc_KnownObject(qcPersistent& stored) noexcept : object(&stored) {}
  explicit qc_KnownObject(std::unique_ptr<qcPersistent> loaded) noexcept;

  bool isUnderWay() const noexcept { return levels == 0; }

  /// Null once the object has been destroyed.
  qcPersistent* object;
  std::unique_ptr<qcPersistent> owned;
  qcPtrHandle<qcRepBase> reference;
  /// How many objects are nested in each other here, itself included; 0 while it is being
  /// transferred.
  int levels = 0;
};

class qc_ArchiveMemory {
 public:
  /// Marks belong to an owner, the object that is being transferred. The records of its bases have
  /// other addresses and sizes; their marks belong to it, too.
  bool isMarked(const qcPersistent& owner, const qc_VisitedMark& mark) const;
  void mark(const qcPersistent& owner, const qc_VisitedMark& mark);
  void forgetMarks(const qcPersistent& owner) noexcept { marks_.erase(&owner); }
  void forgetMarks(const qcPersistent& owner, qc_TransferMode mode) noexcept;

  /// The id that the next new object gets; ids count from 1.
  std::uint64_t nextId() const noexcept { return known_.size() + 1; }
  /// The id of an object that is alive; 0 when it has none.
  std::uint32_t idOf(const qcPersistent& object) const;
  /// REQUIRES: 0 < id < nextId().
  qc_KnownObject& known(std::uint32_t id) noexcept { return known_[id - 1]; }
  /// Gives the object the next id.
  void add(qc_KnownObject object);
  /// Lets the object have another id next time.
  void forgetId(const qcPersistent& object) noexcept { ids_.erase(&object); }
  /// From now on the object's id refers to nothing.
  void objectDied(const qcPersistent& object) noexcept;

 private:
  std::unordered_map<const qcPersistent*, std::vector<qc_VisitedMark>> marks_;
  std::unordered_map<const qcPersistent*, std::uint32_t> ids_;
  std::vector<qc_KnownObject> known_;
};
