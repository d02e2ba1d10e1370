// SPDX-License-Identifier: MIT
//
// qcPersistent, the base of everything that can be stored in an archive, and qc_Instantiator, which
// registers a class so that an archive can create objects of it. The archive is in archive.h.

#pragma once

#include <cstddef>
#include <string>
#include <typeinfo>

#include <platform/export.h>

/// @addtogroup archives
/// @{

class qcArchive;

/// Base of every archivable object: its record, its change notices, and the marks that keep an
/// object from being written twice when it is reached twice.
///
/// Change notices: a class sends one (mutating_()) whenever its content or a remembered answer
/// changes; while tracking is on, notices are counted. Tracking is off in a new object.
///
/// Virtual functions are declared in the order of their slots: add new ones at the end.
class QCPLATFORM_EXPORT qcPersistent {
 public:
  /// Tells the archives of this thread that the object is gone, so that another object at the same
  /// address is not mistaken for it.
  virtual ~qcPersistent();

 protected:
  /// Stores or loads the object's record: called by the archive, and by derived classes for their
  /// base record. The record of qcPersistent itself is one version byte, 0; loading any other
  /// throws qcArchive::UnknownVersion naming "qcPersistent", line 0.
  virtual void dispatchSerialize(qcArchive& archive);

 public:
  /// Hook for classes that must rebuild something after a load: called by the archive when it has
  /// loaded the object, by value or through a pointer. Does nothing here.
  virtual void reInit();
  /// Transfers the object's own record through `archive`, whether or not the object has been
  /// transferred before, and nothing else (no reInit()).
  virtual void loadSimple(qcArchive& archive);

  /// True while change notices are counted.
  bool isTracking() const noexcept { return isTracking_; }
  /// Switches the counting of change notices; the count is kept.
  void isTracking(bool track) noexcept { isTracking_ = track; }
  /// The number of change notices sent while tracking was on. Never copied or assigned.
  unsigned long changes() const noexcept { return changes_; }

 protected:
  qcPersistent() noexcept = default;
  /// A copy starts with tracking off and no changes.
  qcPersistent(const qcPersistent&) noexcept {}
  /// Keeps the tracking flag and the count of the target.
  qcPersistent& operator=(const qcPersistent&) noexcept { return *this; }

  /// Sends a change notice; counted while tracking is on.
  void mutating_() const noexcept {
    if (isTracking_) ++changes_;
  }

  /// True when the object at `object` of `size` bytes has been marked in the archive whose transfer
  /// is in progress on this thread. False when none is.
  static bool haveVisited(const void* object, std::size_t size);
  /// Marks it; does nothing when no transfer is in progress on this thread.
  static void setVisited(const void* object, std::size_t size);
  /// Stores `pointer`, or loads into it: null, an object already transferred through a pointer, or
  /// a new one (created by its registered factory). A pointer may lead back to an object whose
  /// record is still being transferred (a parent).
  ///
  /// A loaded object that is not reference counted must be deleted by whoever received it first. A
  /// reference-counted one is kept by the archive; put it in a handle before the archive is
  /// destroyed. `owner` is the object that holds the pointer; it is not part of the record and may
  /// be null. Throws qcArchive::Errors; `pointer` is then unchanged.
  static void serializePointer(qcArchive& archive, qcPersistent* owner, qcPersistent*& pointer);

 private:
  friend class qcArchive;
  friend class qc_Record;

  bool isTracking_ = false;
  mutable unsigned long changes_ = 0;
};

/// Registers the factory of a class for the archives, for as long as the program runs. Meant for a
/// static member of the class: `static qc_Instantiator sExemplar;` initialised with
/// `qc_Instantiator X::sExemplar(typeid(X), &X::make);`. Registering a class again replaces its
/// factory.
///
/// Archives know the class by its name as written in C++ (qf_ClassName), the same on every
/// compiler. Classes may be registered on any thread at any time; no lock is taken.
class QCPLATFORM_EXPORT qc_Instantiator {
 public:
  /// Registers `make`, which returns a new object of the class `type`, made with new.
  qc_Instantiator(const std::type_info& type, qcPersistent* (*make)());
};

/// The name of a class as written in C++ without spaces, e.g. `qcContourT<qcEdgelet>`, the same on
/// every compiler.
QCPLATFORM_EXPORT std::string qf_ClassName(const std::type_info& type);

/// @}
