// SPDX-License-Identifier: MIT
//
// Records and registration of the classes in archive_test_objects.h.

#include "archive_test_objects.h"

#include <tests/platform/archive_bytes.h>

qc_Instantiator testNode::sExemplar(typeid(testNode), &testNode::make);
qc_Instantiator testOther::sExemplar(typeid(testOther), &testOther::make);
qc_Instantiator testOwner::sExemplar(typeid(testOwner), &testOwner::make);
qc_Instantiator testDerived::sExemplar(typeid(testDerived), &testDerived::make);
qc_Instantiator testBox::sExemplar(typeid(testBox), &testBox::make);

namespace {

void transferVersion(qcArchive& archive, const char* source) {
  unsigned char version = 0;
  archive || version;
  if (version != 0) throw qcArchive::UnknownVersion(source, 0);
}

}  // namespace

std::string newNode(const std::string& id) { return fromHex(id + "000000 08000000 'testNode'"); }

void testNode::dispatchSerialize(qcArchive& archive) {
  if (haveVisited(this, sizeof(*this))) return;
  transferVersion(archive, "testNode");
  qcPersistent::dispatchSerialize(archive);
  archive || value;
  qcPersistent* above = parent;
  serializePointer(archive, this, above);
  parent = dynamic_cast<testNode*>(above);
  archive || children;
  setVisited(this, sizeof(*this));
}

void testOther::dispatchSerialize(qcArchive& archive) {
  if (haveVisited(this, sizeof(*this))) return;
  transferVersion(archive, "testOther");
  qcPersistent::dispatchSerialize(archive);
  setVisited(this, sizeof(*this));
}

void testOwner::dispatchSerialize(qcArchive& archive) {
  if (haveVisited(this, sizeof(*this))) return;
  archive || value;
  qcPersistent* owned = child.get();
  serializePointer(archive, this, owned);
  if (archive.isLoading()) child.reset(dynamic_cast<testOwner*>(owned));
  setVisited(this, sizeof(*this));
}

void testBase::dispatchSerialize(qcArchive& archive) {
  if (haveVisited(this, sizeof(*this))) return;
  transferVersion(archive, "testBase");
  qcPersistent::dispatchSerialize(archive);
  archive || number;
  setVisited(this, sizeof(*this));
}

void testDerived::dispatchSerialize(qcArchive& archive) {
  if (haveVisited(this, sizeof(*this))) return;
  transferVersion(archive, "testDerived");
  testBase::dispatchSerialize(archive);
  archive || extra;
  setVisited(this, sizeof(*this));
}

void testBox::dispatchSerialize(qcArchive& archive) {
  if (haveVisited(this, sizeof(*this))) return;
  archive || content;
  setVisited(this, sizeof(*this));
}
