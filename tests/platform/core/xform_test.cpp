// SPDX-License-Identifier: MIT
//
// Transforms as values and as shared objects, and their records.

#include <platform/core/xform.h>

#include <cmath>
#include <string>
#include <type_traits>
#include <typeinfo>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <platform/core/archive.h>
#include <testing/heap/heap.h>
#include <tests/platform/archive_bytes.h>

namespace {

using Matrix = qcMatrix<2>;
using Vector = qcVector<2>;
using Xform = qcXform<2>;
using Handle = qcPtrHandle<qc2XformBase>;

static_assert(std::is_trivially_copyable_v<Xform>);
static_assert(Xform::I * Vector(3, 4) == Vector(3, 4), "usable in constants");

const Xform shear(Matrix(1, 2, 0, 1), Vector(10, 20));
const Xform stretch(Matrix(2, 0, 0, 3), Vector(-1, 5));

TEST(XformTest, DefaultIsTheIdentity) {
  EXPECT_EQ(Xform(), Xform::I);
  EXPECT_EQ(Xform::I.matrix(), Matrix());
  EXPECT_EQ(Xform::I.trans(), Vector());
}

TEST(XformTest, MapsByTheMatrixThenMoves) {
  EXPECT_EQ(Xform(Matrix(1, 2, 3, 4), Vector(5, 6)) * Vector(10, 100), Vector(215, 436));
}

TEST(XformTest, AddsTheTranslationLast) {
  // 2^53 + 1 is not a double: (e00 x + e01 y) + tx loses the 1, e00 x + (e01 y + tx) would not.
  const double big = std::ldexp(1.0, 53);
  const Xform x(Matrix(1, 1, 1, 1), Vector(1, 1));
  EXPECT_EQ(x * Vector(big, 1.0), Vector(big, big));
  EXPECT_EQ(x * Vector(1.0, big), Vector(big, big));
}

TEST(XformTest, ProductMapsByTheRightOneFirst) {
  const Vector p(7, -3);
  EXPECT_EQ((shear * stretch) * p, shear * (stretch * p));
  EXPECT_EQ((stretch * shear) * p, stretch * (shear * p));
  EXPECT_FALSE(shear * stretch == stretch * shear);
}

TEST(XformTest, InverseUndoes) {
  EXPECT_EQ(shear.inverse(), Xform(Matrix(1, -2, 0, 1), Vector(30, -20)));
  EXPECT_EQ(shear.inverse() * (shear * Vector(7, -3)), Vector(7, -3));
  EXPECT_THROW(Xform(Matrix(1, 2, 2, 4), Vector(1, 1)).inverse(), qcMathError::Singular);
}

TEST(XformTest, EqualityAsksMatrixAndTranslation) {
  EXPECT_EQ(shear, Xform(Matrix(1, 2, 0, 1), Vector(10, 20)));
  EXPECT_FALSE(shear == Xform(Matrix(1, 2, 0, 1), Vector(10, 21)));
  EXPECT_FALSE(shear == Xform(Matrix(1, 2, 0.5, 1), Vector(10, 20)));
}

TEST(XformLinearTest, DefaultIsTheIdentity) {
  EXPECT_EQ(qc2XformLinear().linearXform(), Xform::I);
  EXPECT_TRUE(qc2XformLinear().isLinear());
}

TEST(XformLinearTest, MapsAsItsValue) {
  const qc2XformLinear xform(shear);
  EXPECT_EQ(xform.linearXform(), shear);
  EXPECT_EQ(xform.mapPoint(Vector(7, -3)), shear * Vector(7, -3));
}

/// The class, not only the behaviour.
bool isLinearObject(const Handle& handle) {
  const qc2XformBase& object = *handle;
  return typeid(object) == typeid(qc2XformLinear);
}

TEST(XformLinearTest, CloneIsAnotherObjectOfTheSameValue) {
  const Handle original(new qc2XformLinear(shear));
  const Handle clone = original->clone();
  EXPECT_FALSE(clone == original);
  EXPECT_TRUE(isLinearObject(clone));
  EXPECT_EQ(clone->linearXform(), shear);
}

TEST(XformLinearTest, ComposedMapsByTheOtherFirst) {
  const Handle composed = qc2XformLinear(shear).composeBase(qc2XformLinear(stretch));
  EXPECT_EQ(composed->linearXform(), shear * stretch);
  EXPECT_EQ(composed->mapPoint(Vector(7, -3)), shear * (stretch * Vector(7, -3)));
}

TEST(XformLinearTest, ComposesWithARigidOne) {
  const qc2Rigid rigid(qcDegree(30), Vector(1, 2));
  const Handle composed = qc2XformLinear(shear).composeBase(rigid);
  EXPECT_TRUE(isLinearObject(composed));
  EXPECT_EQ(composed->linearXform(), shear * rigid.linearXform());
}

TEST(XformLinearTest, InverseUndoesOrThrows) {
  EXPECT_EQ(qc2XformLinear(shear).inverseBase()->linearXform(), shear.inverse());
  const qc2XformLinear flat(Xform(Matrix(1, 0, 0, 0), Vector()));
  EXPECT_THROW(flat.inverseBase(), qcMathError::Singular);
}

TEST(RigidTest, DefaultIsTheIdentity) {
  EXPECT_EQ(qc2Rigid().angle(), qcDegree(0.0));
  EXPECT_EQ(qc2Rigid().trans(), Vector());
  EXPECT_EQ(qc2Rigid().xform(), Xform::I);
}

TEST(RigidTest, KeepsTheAngleItWasGiven) {
  const qc2Rigid rigid(qcDegree(-725.0), Vector(3, 4));
  EXPECT_EQ(rigid.angle(), qcDegree(-725.0));
  EXPECT_EQ(rigid.trans(), Vector(3, 4));
}

TEST(RigidTest, TurnsThenMoves) {
  const qc2Rigid rigid(qcDegree(90), Vector(10, 20));
  EXPECT_TRUE(rigid.isLinear());
  EXPECT_EQ(rigid.xform(), Xform(Matrix(qcDegree(90), qcDegree(90), 1, 1), Vector(10, 20)));
  EXPECT_EQ(rigid.linearXform(), rigid.xform());
  EXPECT_EQ(rigid.mapPoint(Vector(3, 1)), rigid.xform() * Vector(3, 1));
  EXPECT_TRUE(qfRealEq(rigid.mapPoint(Vector(3, 1)), Vector(9, 23), 1e-14));
}

TEST(RigidTest, CloneIsAnotherObjectOfTheSameValue) {
  const Handle original(new qc2Rigid(qcDegree(450), Vector(1, 2)));
  const Handle clone = original->clone();
  EXPECT_FALSE(clone == original);
  const auto& rigid = dynamic_cast<const qc2Rigid&>(*clone);
  EXPECT_EQ(rigid.angle(), qcDegree(450));
  EXPECT_EQ(rigid.trans(), Vector(1, 2));
}

TEST(RigidTest, ComposedWithARigidOneAddsTheAngles) {
  const qc2Rigid first(qcDegree(300), Vector(1, 2));
  const qc2Rigid second(qcDegree(100), Vector(5, -7));
  const Handle composed = first.composeBase(second);
  const auto& rigid = dynamic_cast<const qc2Rigid&>(*composed);
  EXPECT_EQ(rigid.angle(), qcDegree(400));
  EXPECT_EQ(rigid.trans(), first.mapPoint(Vector(5, -7)));
  const Vector p(7, -3);
  EXPECT_TRUE(qfRealEq(rigid.mapPoint(p), first.mapPoint(second.mapPoint(p)), 1e-13));
}

TEST(RigidTest, ComposedWithALinearOneIsLinear) {
  const qc2Rigid rigid(qcDegree(30), Vector(1, 2));
  const Handle composed = rigid.composeBase(qc2XformLinear(shear));
  EXPECT_TRUE(isLinearObject(composed));
  EXPECT_EQ(composed->linearXform(), rigid.xform() * shear);
}

TEST(RigidTest, InverseIsRigidAndUndoes) {
  const qc2Rigid rigid(qcDegree(30), Vector(1, 2));
  const Handle inverse = rigid.inverseBase();
  EXPECT_EQ(dynamic_cast<const qc2Rigid&>(*inverse).angle(), qcDegree(-30));
  const Vector p(7, -3);
  EXPECT_TRUE(qfRealEq(inverse->mapPoint(rigid.mapPoint(p)), p, 1e-14));
  EXPECT_TRUE(qfRealEq(rigid.mapPoint(inverse->mapPoint(p)), p, 1e-14));
}

RC_GTEST_PROP(RigidTest, KeepsDistances, ()) {
  const auto number = [] { return *rc::gen::inRange(-10000, 10000) / 16.0; };
  const qc2Rigid rigid(qcDegree(number()), Vector(number(), number()));
  const Vector a(number(), number());
  const Vector b(number(), number());
  const double mapped = rigid.mapPoint(a).distance(rigid.mapPoint(b));
  RC_ASSERT(std::abs(mapped - a.distance(b)) < 1e-9);
}

const char* const shearHex =
    "00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 40 "
    "00 00 00 00 00 00 00 00 00 00 00 00 00 00 f0 3f "
    "00 00 00 00 00 00 24 40 00 00 00 00 00 00 34 40";
const char* const rigidHex =
    "00 00 00 00 00 00 3e 40 "
    "00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 c0";

TEST(XformArchiveTest, LinearRecordIsVersionBaseAndTransform) {
  qc2XformLinear stored(shear);
  const std::string hex = std::string("00 00 ") + shearHex;
  EXPECT_EQ(storedHex([&](qcArchive& archive) { archive || stored; }), hex);
  qc2XformLinear loaded;
  loadHex(hex, [&](qcArchive& archive) { archive || loaded; });
  EXPECT_EQ(loaded.linearXform(), shear);
}

TEST(XformArchiveTest, RigidRecordIsVersionBaseDegreesAndTranslation) {
  qc2Rigid stored(qcDegree(30), Vector(1, -2));
  const std::string hex = std::string("00 00 ") + rigidHex;
  EXPECT_EQ(storedHex([&](qcArchive& archive) { archive || stored; }), hex);
  qc2Rigid loaded;
  loadHex(hex, [&](qcArchive& archive) { archive || loaded; });
  EXPECT_EQ(loaded.angle(), qcDegree(30));
  EXPECT_EQ(loaded.xform(), stored.xform());
}

template <class X>
void expectUnknownVersion(const char* hex, const std::string& source) {
  X loaded;
  try {
    loadHex(hex, [&](qcArchive& archive) { archive || loaded; });
    FAIL() << source << " took version 1";
  } catch (const qcArchive::UnknownVersion& e) {
    EXPECT_EQ(e.source(), source);
    EXPECT_EQ(e.line(), 0);
  }
}

TEST(XformArchiveTest, OtherVersionsAreRefused) {
  expectUnknownVersion<qc2XformLinear>("01", "qc2XformLinear");
  expectUnknownVersion<qc2Rigid>("01", "qc2Rigid");
  expectUnknownVersion<qc2Rigid>("ff", "qc2Rigid");
  expectUnknownVersion<qc2Rigid>("00 01", "qcPersistent");
}

TEST(XformArchiveTest, HandlesShareAndKeepTheClass) {
  const Handle rigid(new qc2Rigid(qcDegree(30), Vector(1, -2)));
  Handle stored[] = {rigid, Handle(new qc2XformLinear(shear)), rigid, Handle()};
  const std::string bytes = storedBytes([&](qcArchive& archive) {
    for (Handle& handle : stored) archive || handle;
  });
  Handle loaded[4];
  loadBytes(bytes, [&](qcArchive& archive) {
    for (Handle& handle : loaded) archive || handle;
  });
  EXPECT_EQ(dynamic_cast<const qc2Rigid&>(*loaded[0]).angle(), qcDegree(30));
  EXPECT_EQ(dynamic_cast<const qc2XformLinear&>(*loaded[1]).linearXform(), shear);
  EXPECT_TRUE(loaded[2] == loaded[0]);
  EXPECT_FALSE(loaded[3]);
}

TEST(LinearXformTest, IsMadeAndFreedByItsClass) {
  if (!heap::counts) GTEST_SKIP() << "what a DLL allocates is not counted";
  const long before = heap::blocksAlive();
  void* const memory = qc2XformLinear::operator new(sizeof(qc2XformLinear));
  EXPECT_EQ(heap::blocksAlive(), before + 1);
  const qc2XformBase* const made = ::new (memory) qc2XformLinear(shear);
  EXPECT_EQ(made->linearXform(), shear);
  delete made;
  EXPECT_EQ(heap::blocksAlive(), before);
}

}  // namespace
