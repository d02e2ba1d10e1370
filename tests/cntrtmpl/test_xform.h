// SPDX-License-Identifier: MIT
//
// A transform that counts what is done to transforms of its class, and whose inversion fails when
// told to.

#pragma once

#include <platform/core/xform.h>

/// Moves points by an offset.
class testXform : public qc2XformBase {
 public:
  testXform() { ++alive; }
  explicit testXform(const qcVector<2>& offset) : offset_(offset) { ++alive; }
  testXform(const testXform& other)
      : qcPersistent(other), qcRepBase(other), qc2XformBase(other), offset_(other.offset_) {
    ++alive;
  }
  testXform& operator=(const testXform&) = default;
  ~testXform() override { --alive; }

  qcVector<2> mapPoint(const qcVector<2>& point) const override { return point + offset_; }
  bool isLinear() const override { return true; }
  qcXform<2> linearXform() const override { return {qcMatrix<2>(), offset_}; }
  qcPtrHandle<qc2XformBase> clone() const override;
  qcPtrHandle<qc2XformBase> composeBase(const qc2XformBase& other) const override;
  /// Throws qcMathError::Singular as long as `failures` are left.
  qcPtrHandle<qc2XformBase> inverseBase() const override;

  static inline int alive = 0;
  static inline int clones = 0;
  /// Calls of inverseBase(), those that failed included.
  static inline int inversions = 0;
  /// This many of the next inversions fail.
  static inline int failures = 0;
  static void resetCounts() { clones = inversions = failures = 0; }

 protected:
  void dispatchSerialize(qcArchive& archive) override;

 private:
  static qcPersistent* make() { return new testXform; }
  static qc_Instantiator sExemplar;

  qcVector<2> offset_;
};
