// SPDX-License-Identifier: MIT
//
// The bytes of the plain values: angles, vectors, matrices, transforms. The basic types are in
// archive_test.cpp.

#include <platform/core/archive.h>

#include <cmath>
#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <platform/core/xform.h>
#include <tests/platform/archive_bytes.h>

namespace {

TEST(AngleArchiveTest, AnglesAreOneDoubleAndStepsOneByte) {
  EXPECT_EQ(hexOf(qcRadian(-2.5)), "00 00 00 00 00 00 04 c0");
  EXPECT_EQ(hexOf(qcDegree(-2.5)), "00 00 00 00 00 00 04 c0");
  EXPECT_EQ(hexOf(qcAngle8(0xa5)), "a5");
  EXPECT_EQ(loadedFrom<qcRadian>("00 00 00 00 00 00 04 c0"), qcRadian(-2.5));
  EXPECT_EQ(loadedFrom<qcDegree>("00 00 00 00 00 00 04 c0"), qcDegree(-2.5));
  EXPECT_EQ(loadedFrom<qcAngle8>("a5"), qcAngle8(0xa5));
}

TEST(AngleArchiveTest, NothingIsNormalised) {
  EXPECT_EQ(loadedFrom<qcDegree>(hexOf(qcDegree(-7200.0))), qcDegree(-7200.0));
  EXPECT_EQ(hexOf(loadedFrom<qcRadian>("01 00 00 00 00 00 f8 7f")), "01 00 00 00 00 00 f8 7f");
}

TEST(VectorArchiveTest, IsXThenY) {
  qcVector<2> v(1.0, -2.0);
  EXPECT_EQ(storedHex([&](qcArchive& archive) { archive || v; }),
            "00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 c0");
  qcVector<2> loaded;
  loadHex("00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 c0",
          [&](qcArchive& archive) { archive || loaded; });
  EXPECT_EQ(loaded, v);
}

TEST(VectorArchiveTest, EveryBitSurvives) {
  // A negative NaN with a payload, and negative zero.
  const char* const hex = "ef cd ab 00 00 00 f8 ff 00 00 00 00 00 00 00 80";
  qcVector<2> loaded;
  loadHex(hex, [&](qcArchive& archive) { archive || loaded; });
  EXPECT_EQ(storedHex([&](qcArchive& archive) { archive || loaded; }), hex);
  EXPECT_TRUE(std::isnan(loaded.x()));
  EXPECT_TRUE(std::signbit(loaded.y()));
}

TEST(VectorArchiveTest, HalfAVectorChangesNothing) {
  qcVector<2> loaded(7.0, 8.0);
  const auto load = [&](qcArchive& archive) { archive || loaded; };
  EXPECT_THROW(loadHex("00 00 00 00 00 00 f0 3f 00 00", load), qcArchive::Truncated);
  EXPECT_EQ(loaded, qcVector<2>(7.0, 8.0));
}

TEST(MatrixArchiveTest, IsFourElementsByRows) {
  qcMatrix<2> m(1.0, -2.0, 0.5, 4.0);
  const char* const hex =
      "00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 c0 "
      "00 00 00 00 00 00 e0 3f 00 00 00 00 00 00 10 40";
  EXPECT_EQ(storedHex([&](qcArchive& archive) { archive || m; }), hex);
  qcMatrix<2> loaded;
  loadHex(hex, [&](qcArchive& archive) { archive || loaded; });
  EXPECT_EQ(loaded, m);
}

TEST(MatrixArchiveTest, LoadingRecomputesTheDeterminant) {
  qcMatrix<2> stale(1, 2, 3, 4);
  stale.element(0, 0, 11.0);
  const std::string bytes = storedBytes([&](qcArchive& archive) { archive || stale; });
  EXPECT_EQ(stale.det(), -2.0) << "storing leaves the matrix alone";
  qcMatrix<2> loaded;
  loadBytes(bytes, [&](qcArchive& archive) { archive || loaded; });
  EXPECT_EQ(loaded.det(), 38.0);
}

TEST(XformArchiveTest, IsMatrixThenTranslation) {
  const char* const hex =
      "00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 40 "
      "00 00 00 00 00 00 00 00 00 00 00 00 00 00 f0 3f "
      "00 00 00 00 00 00 24 40 00 00 00 00 00 00 34 40";
  qcXform<2> shear(qcMatrix<2>(1, 2, 0, 1), {10, 20});
  EXPECT_EQ(storedHex([&](qcArchive& archive) { archive || shear; }), hex);
  qcXform<2> loaded;
  loadHex(hex, [&](qcArchive& archive) { archive || loaded; });
  EXPECT_EQ(loaded, shear);
}

}  // namespace
