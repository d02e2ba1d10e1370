// SPDX-License-Identifier: MIT
//
// The frame that all records share, for the dispatchSerialize functions of archivable classes.
// What a record is: persistent.h; the encoding: archive.h.

#pragma once

#include <platform/core/archive.h>
#include <platform/core/persistent.h>

/// @addtogroup archives
/// @{

/// Transfers records. A friend of qcPersistent, whose marks and own record it needs.
class qc_Record {
 public:
  /// The whole record of a class with one version: a version byte 0, the qcPersistent record, then
  /// `values` in order. Loading any other version throws qcArchive::UnknownVersion naming
  /// `className`, line 0.
  template <class Object, class... Values>
  static void transfer(qcArchive& archive, Object& object, const char* className,
                       Values&... values) {
    transferOnce(archive, object, 0, [&](unsigned char version) {
      checkVersion(version, className);
      transferBody(archive, object, values...);
    });
  }

  /// Nothing when `object` has been visited; else a version byte (`currentVersion` when storing),
  /// handed to `body(version)` for the rest of the record, after which the object counts as
  /// visited.
  template <class Object, class Body>
  static void transferOnce(qcArchive& archive, Object& object, unsigned char currentVersion,
                           Body body) {
    if (qcPersistent::haveVisited(&object, sizeof(Object))) return;
    unsigned char version = currentVersion;
    archive || version;
    body(version);
    qcPersistent::setVisited(&object, sizeof(Object));
  }

  /// What follows the version byte: the qcPersistent record, then `values` in order.
  template <class... Values>
  static void transferBody(qcArchive& archive, qcPersistent& object, Values&... values) {
    object.qcPersistent::dispatchSerialize(archive);
    static_cast<void>((archive || ... || values));
  }

  /// Throws qcArchive::UnknownVersion naming `className`, line 0, unless the version is 0.
  static void checkVersion(unsigned char version, const char* className) {
    if (version != 0) throw qcArchive::UnknownVersion(className, 0);
  }
};

/// @}
