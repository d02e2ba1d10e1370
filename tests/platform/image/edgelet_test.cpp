// SPDX-License-Identifier: MIT
//
// The edge element and its record.

#include <platform/image/edgelet.h>

#include <cmath>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include <platform/core/archive.h>
#include <tests/platform/archive_bytes.h>

namespace {

using Vector = qcVector<2>;

static_assert(std::is_trivially_copyable_v<qcEdgelet>);
static_assert(qcEdgelet().magnitude() == 0, "usable in constants");

TEST(EdgeletTest, DefaultIsNothingAtTheOrigin) {
  EXPECT_EQ(qcEdgelet().position(), Vector());
  EXPECT_EQ(qcEdgelet().magnitude(), 0);
  EXPECT_EQ(qcEdgelet().angle(), qcAngle8(0));
}

TEST(EdgeletTest, HasPositionMagnitudeAndAngle) {
  const qcEdgelet edgelet(Vector(1.5, -2), 65535, qcAngle8(64));
  EXPECT_EQ(edgelet.position(), Vector(1.5, -2));
  EXPECT_EQ(edgelet.magnitude(), 65535);
  EXPECT_EQ(edgelet.angle(), qcAngle8(64));
}

TEST(EdgeletTest, EqualityAsksAllThree) {
  const qcEdgelet edgelet(Vector(1, 2), 3, qcAngle8(4));
  EXPECT_EQ(edgelet, qcEdgelet(Vector(1, 2), 3, qcAngle8(4)));
  EXPECT_FALSE(edgelet == qcEdgelet(Vector(1, 3), 3, qcAngle8(4)));
  EXPECT_FALSE(edgelet == qcEdgelet(Vector(1, 2), 4, qcAngle8(4)));
  EXPECT_FALSE(edgelet == qcEdgelet(Vector(1, 2), 3, qcAngle8(5)));
}

const std::string positionHex = "00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 c0 ";

qcEdgelet loadedFrom(const std::string& hex) {
  qcEdgelet edgelet(Vector(7, 7), 7, qcAngle8(7));
  loadHex(hex, [&](qcArchive& archive) { archive || edgelet; });
  return edgelet;
}

TEST(EdgeletArchiveTest, RecordIsVersionPositionMagnitudeAndSteps) {
  qcEdgelet edgelet(Vector(1, -2), 0x1234, qcAngle8(0xa5));
  const std::string hex = "00 " + positionHex + "34 12 00 00 a5";
  EXPECT_EQ(storedHex([&](qcArchive& archive) { archive || edgelet; }), hex);
  EXPECT_EQ(loadedFrom(hex), edgelet);
}

TEST(EdgeletArchiveTest, OtherVersionsAreRefusedByName) {
  try {
    loadedFrom("01");
    FAIL() << "version 1 was taken";
  } catch (const qcArchive::UnknownVersion& e) {
    EXPECT_EQ(e.source(), std::string("qcEdgelet"));
    EXPECT_EQ(e.line(), 0);
  }
}

TEST(EdgeletArchiveTest, MagnitudesOfMoreThanSixteenBitsAreRefused) {
  EXPECT_EQ(loadedFrom("00 " + positionHex + "ff ff 00 00 00").magnitude(), 65535);
  EXPECT_THROW(loadedFrom("00 " + positionHex + "00 00 01 00 00"), qcArchive::ValueTooLarge);
}

TEST(EdgeletArchiveTest, HalfARecordChangesNothing) {
  const qcEdgelet before(Vector(7, 7), 7, qcAngle8(7));
  qcEdgelet edgelet = before;
  EXPECT_THROW(
      loadHex("00 " + positionHex + "34 12 00 00", [&](qcArchive& archive) { archive || edgelet; }),
      qcArchive::Truncated);
  EXPECT_EQ(edgelet, before);
}

TEST(EdgeletArchiveTest, ListsHaveOneFrame) {
  std::vector<qcEdgelet> edgelets = {qcEdgelet(Vector(1, -2), 1, qcAngle8(2)),
                                     qcEdgelet(Vector(1, -2), 3, qcAngle8(4))};
  const std::string hex =
      "00 02 00 00 00 00 " + positionHex + "01 00 00 00 02 00 " + positionHex + "03 00 00 00 04";
  EXPECT_EQ(storedHex([&](qcArchive& archive) { archive || edgelets; }), hex);
  std::vector<qcEdgelet> loaded;
  loadHex(hex, [&](qcArchive& archive) { archive || loaded; });
  EXPECT_EQ(loaded, edgelets);
}

}  // namespace
