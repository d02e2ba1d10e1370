// SPDX-License-Identifier: MIT
//
// Archivable classes for the tests of the archive, each for one way in which objects refer to each
// other. They are in no namespace, so that their names in the bytes are short.

#pragma once

#include <memory>
#include <string>
#include <vector>

#include <platform/core/archive.h>
#include <platform/core/handle.h>

#include "live_count.h"

/// Reached through handles; holds others through handles and knows its parent.
/// Record: version, qcPersistent, value, parent (raw pointer), list of children.
class testNode : public virtual qcPersistent, public virtual qcRepBase {
 public:
  explicit testNode(unsigned long v = 0) : value(v) {}

  /// Makes `child` a child of this node.
  void add(const qcPtrHandle<testNode>& child) { children.push_back(child); }

  unsigned long value;
  testNode* parent = nullptr;
  std::vector<qcPtrHandle<testNode>> children;

 protected:
  void dispatchSerialize(qcArchive& archive) override;

 private:
  static qcPersistent* make() { return new testNode; }
  static qc_Instantiator sExemplar;
  LiveCount count_;
};

/// The bytes of a pointer to a testNode that is new in the archive, up to its record: the id (two
/// digits) and the name of the class.
std::string newNode(const std::string& id);

/// Another class that handles can hold. Record: version, qcPersistent.
class testOther : public virtual qcPersistent, public virtual qcRepBase {
 protected:
  void dispatchSerialize(qcArchive& archive) override;

 private:
  static qcPersistent* make() { return new testOther; }
  static qc_Instantiator sExemplar;
  LiveCount count_;
};

/// Not reference counted: owns its child through a raw pointer. Record: value, child.
class testOwner : public virtual qcPersistent {
 public:
  explicit testOwner(unsigned long v = 0) : value(v) {}

  unsigned long value;
  std::unique_ptr<testOwner> child;

 protected:
  void dispatchSerialize(qcArchive& archive) override;

 private:
  static qcPersistent* make() { return new testOwner; }
  static qc_Instantiator sExemplar;
  LiveCount count_;
};

/// A class and its base, both with a record. Base record: version, qcPersistent, number. Derived:
/// version, base record, extra.
class testBase : public virtual qcPersistent {
 public:
  unsigned long number = 0;

 protected:
  void dispatchSerialize(qcArchive& archive) override;
};

class testDerived : public virtual testBase, public virtual qcRepBase {
 public:
  unsigned long extra = 0;

 protected:
  void dispatchSerialize(qcArchive& archive) override;

 private:
  static qcPersistent* make() { return new testDerived; }
  static qc_Instantiator sExemplar;
  LiveCount count_;
};

/// Holds an object by value. Record: the object.
class testBox : public virtual qcPersistent, public virtual qcRepBase {
 public:
  testDerived content;

 protected:
  void dispatchSerialize(qcArchive& archive) override;

 private:
  static qcPersistent* make() { return new testBox; }
  static qc_Instantiator sExemplar;
};

/// Gives test code access to what only derived classes can reach.
class testAccess : public qcPersistent {
 public:
  static void transferPointer(qcArchive& archive, qcPersistent*& pointer) {
    serializePointer(archive, nullptr, pointer);
  }
  static bool isVisited(const void* object, std::size_t size) { return haveVisited(object, size); }
};
