// SPDX-License-Identifier: MIT
//
// What testXform counts, and its record.

#include "test_xform.h"

#include <platform/core/archive.h>

qc_Instantiator testXform::sExemplar(typeid(testXform), &testXform::make);

qcPtrHandle<qc2XformBase> testXform::clone() const {
  ++clones;
  return qcPtrHandle<qc2XformBase>(new testXform(*this));
}

qcPtrHandle<qc2XformBase> testXform::composeBase(const qc2XformBase& other) const {
  return qcPtrHandle<qc2XformBase>(new qc2XformLinear(linearXform() * other.linearXform()));
}

qcPtrHandle<qc2XformBase> testXform::inverseBase() const {
  ++inversions;
  if (failures > 0) {
    --failures;
    throw qcMathError::Singular();
  }
  return qcPtrHandle<qc2XformBase>(new testXform(-offset_));
}

void testXform::dispatchSerialize(qcArchive& archive) {
  if (haveVisited(this, sizeof(*this))) return;
  archive || offset_;
  setVisited(this, sizeof(*this));
}
