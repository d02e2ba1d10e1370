// SPDX-License-Identifier: MIT
//
// The records of the shapes, byte by byte. The archive itself is in archive_test.cpp.

#include <platform/core/shapes.h>

#include <cmath>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include <platform/core/archive.h>
#include <tests/platform/archive_bytes.h>

#include "archive_test_objects.h"

namespace {

using Vector = qcVector<2>;

const std::string one = "00 00 00 00 00 00 f0 3f";
const std::string two = "00 00 00 00 00 00 00 40";
const std::string three = "00 00 00 00 00 00 08 40";
const std::string four = "00 00 00 00 00 00 10 40";
const std::string five = "00 00 00 00 00 00 14 40";
const std::string six = "00 00 00 00 00 00 18 40";
/// Version of the class, version of its base.
const std::string head = "00 00 ";

template <class Shape>
void expectRecord(const Shape& shape, const std::string& hex) {
  EXPECT_EQ(hexOf(shape), hex);
  EXPECT_TRUE(loadedFrom<Shape>(hex) == shape) << hex;
}

TEST(ShapeRecordTest, PointIsItsPosition) {
  expectRecord(qcPoint(Vector(1, 2)), head + one + " " + two);
}

TEST(ShapeRecordTest, LineIsPointAndDirection) {
  expectRecord(qcLine(Vector(1, 2), Vector(3, 4)),
               head + one + " " + two + " " + three + " " + four);
}

TEST(ShapeRecordTest, SegmentIsItsEnds) {
  expectRecord(qcLineSeg(Vector(4, 2), Vector(3, 1)),
               head + four + " " + two + " " + three + " " + one);
}

TEST(ShapeRecordTest, RectangleIsItsCorners) {
  expectRecord(qcRect(qcPoint(Vector(3, 2)), qcPoint(Vector(1, 4))),
               head + one + " " + two + " " + three + " " + four);
}

TEST(ShapeRecordTest, CircleIsCentreAndRadius) {
  expectRecord(qcCircle(Vector(1, 2), 3.0), head + one + " " + two + " " + three);
}

TEST(ShapeRecordTest, EllipseIsCentreRadiiAndAngles) {
  expectRecord(
      qcEllipse(qcEllipse::qcEllipseGeom{Vector(1, 2), 3.0, 4.0, qcRadian(5.0), qcRadian(6.0)}),
      head + one + " " + two + " " + three + " " + four + " " + five + " " + six);
}

TEST(ShapeRecordTest, PolygonIsFillModeAndVertexList) {
  expectRecord(qcPolygon({Vector(1, 2), Vector(3, 4)}, qcPolygon::eNonZero),
               head + "01 00 00 00 00 02 00 00 00 " + one + " " + two + " " + three + " " + four);
  expectRecord(qcPolygon(), head + "00 00 00 00 00 00 00 00 00");
}

TEST(ShapeRecordTest, PolygonRefusesOtherFillModes) {
  EXPECT_THROW(loadedFrom<qcPolygon>(head + "02 00 00 00 00 00 00 00 00"), qcArchive::BadFormat);
  EXPECT_THROW(loadedFrom<qcPolygon>(head + "ff ff ff ff 00 00 00 00 00"), qcArchive::BadFormat);
}

TEST(ShapeRecordTest, LoadedValuesAreWhatTheBytesSay) {
  const std::string payload = "ef cd ab 00 00 00 f8 ff";
  const std::string infinite = "00 00 00 00 00 00 f0 7f";
  const std::string negativeZero = "00 00 00 00 00 00 00 80";
  const std::string point = head + payload + " " + negativeZero;
  EXPECT_EQ(hexOf(loadedFrom<qcPoint>(point)), point);
  const std::string inverted = head + four + " " + infinite + " " + negativeZero + " " + payload;
  EXPECT_EQ(hexOf(loadedFrom<qcRect>(inverted)), inverted);
  const std::string circle = head + payload + " " + infinite + " " + negativeZero;
  EXPECT_EQ(hexOf(loadedFrom<qcCircle>(circle)), circle);
}

template <class Shape>
void expectOtherVersionsRefused(const std::string& name) {
  for (const char* const version : {"01", "ff"}) {
    try {
      loadedFrom<Shape>(version);
      FAIL() << name << " took version " << version;
    } catch (const qcArchive::UnknownVersion& e) {
      EXPECT_EQ(e.source(), name);
      EXPECT_EQ(e.line(), 0);
    }
  }
  EXPECT_THROW(loadedFrom<Shape>("00 01"), qcArchive::UnknownVersion) << name;
  EXPECT_THROW(loadedFrom<Shape>("00 00 00"), qcArchive::Truncated) << name;
}

TEST(ShapeRecordTest, OtherVersionsAreRefusedByName) {
  expectOtherVersionsRefused<qcPoint>("qcPoint");
  expectOtherVersionsRefused<qcLine>("qcLine");
  expectOtherVersionsRefused<qcLineSeg>("qcLineSeg");
  expectOtherVersionsRefused<qcRect>("qcRect");
  expectOtherVersionsRefused<qcCircle>("qcCircle");
  expectOtherVersionsRefused<qcEllipse>("qcEllipse");
  expectOtherVersionsRefused<qcPolygon>("qcPolygon");
}

/// Stores a shape through a pointer twice and loads both pointers.
template <class Shape>
void expectSharedThroughPointers(const Shape& shape) {
  Shape original(shape);
  const std::string bytes = storedBytes([&](qcArchive& archive) {
    for (int i = 0; i < 2; ++i) {
      qcPersistent* pointer = &original;
      testAccess::transferPointer(archive, pointer);
    }
  });
  qcPersistent* first = nullptr;
  qcPersistent* second = nullptr;
  loadBytes(bytes, [&](qcArchive& archive) {
    testAccess::transferPointer(archive, first);
    testAccess::transferPointer(archive, second);
  });
  const std::unique_ptr<qcPersistent> owner(first);
  EXPECT_EQ(second, first);
  const auto* const loaded = dynamic_cast<const Shape*>(first);
  ASSERT_NE(loaded, nullptr);
  EXPECT_TRUE(*loaded == shape);
}

TEST(ShapeRecordTest, ArchivesCanCreateEveryShape) {
  expectSharedThroughPointers(qcPoint(Vector(1, 2)));
  expectSharedThroughPointers(qcLine(Vector(1, 2), Vector(3, 4)));
  expectSharedThroughPointers(qcLineSeg(Vector(1, 2), Vector(3, 4)));
  expectSharedThroughPointers(qcRect(Vector(1, 2), Vector(3, 4)));
  expectSharedThroughPointers(qcCircle(Vector(1, 2), 3));
  expectSharedThroughPointers(qcEllipse(qcCircle(Vector(1, 2), 3)));
  expectSharedThroughPointers(qcPolygon({Vector(1, 2)}, qcPolygon::eNonZero));
}

TEST(ShapeRecordTest, PointerIsIdClassNameAndRecord) {
  qcCircle circle(Vector(1, 2), 3.0);
  const std::string hex = storedHex([&](qcArchive& archive) {
    qcPersistent* pointer = &circle;
    testAccess::transferPointer(archive, pointer);
  });
  EXPECT_EQ(hex, "01 00 00 00 08 00 00 00 " + toHex("qcCircle") + " " + head + one + " " + two +
                     " " + three);
}

TEST(ShapeRecordTest, AShapeMetTwiceIsWrittenOnce) {
  qcCircle circle(Vector(1, 2), 3.0);
  const std::string hex = storedHex([&](qcArchive& archive) { archive || circle || circle; });
  EXPECT_EQ(hex, hexOf(circle));
}

}  // namespace
