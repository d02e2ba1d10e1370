// SPDX-License-Identifier: MIT
//
// The records of a contour: their bytes in both versions, by value and through handles, and what
// becomes of damaged ones. The archive itself is tested in tests/platform, the records of the
// exceptions in contourdefs_test.cpp.

#include <bit>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include <cntr/region.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <testing/shapes/shapes.h>
#include <tests/platform/archive_bytes.h>

#include <testing/twin/same.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Points = std::vector<qcVector<2>>;
using ContourHandle = qcPtrHandle<qcContour>;

// The contour of all records here: two vertices, closed, label 7, capacity 3.
const Points sampleVertices = {{1, 2}, {3, -4}};
qcContour sample() { return {sampleVertices, true, 7}; }

/// Two vertices with the frame of their list.
const std::string verticesHex =
    "00 02000000"
    " 000000000000f03f 0000000000000040"
    " 0000000000000840 00000000000010c0";
/// Version, base, label, closed, vertices, capacity.
const std::string recordHex = "01 00 07000000 01 " + verticesHex + " 03000000";
/// Version, former base with its own base, vertices, dropped byte, capacity, closed. No label.
const std::string oldRecordHex = "00 00 00 " + verticesHex + " 00 03000000 01";
/// What announces the first object of an archive as a contour.
const std::string announcementHex = "01000000 09000000 'qcContour' ";

void expectSample(const qcContour& contour, unsigned long label) {
  EXPECT_EQ(contour.points(), sampleVertices);
  EXPECT_TRUE(contour.isClosed());
  EXPECT_EQ(contour.label(), label);
  EXPECT_EQ(contour.cachedVectorSize(), 3);
}

/// A contour that stores records of a given version.
class Versioned : public qcContour {
 public:
  Versioned(const qcContour& contour, unsigned char version)
      : qcContour(contour), version_(version) {}

  using qcContour::serialize_;

 protected:
  void dispatchSerialize(qcArchive& archive) override {
    archive || version_;
    serialize_(archive, version_);
  }

 private:
  unsigned char version_;
};

TEST(ContourRecordTest, HoldsBaseLabelFlagVerticesAndCapacity) {
  qcContour contour = sample();
  EXPECT_EQ(storedBytes([&](qcArchive& archive) { archive || contour; }), fromHex(recordHex));
}

TEST(ContourRecordTest, OfAnOpenContourWithoutVerticesHasSixteenBytes) {
  qcContour contour({}, false, 0);
  contour.cachedVectorSize(0);
  EXPECT_EQ(storedHex([&](qcArchive& archive) { archive || contour; }),
            "01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00");
}

TEST(ContourRecordTest, ThroughAHandleFollowsTheIdAndTheName) {
  ContourHandle handle(new qcContour(sample()));
  EXPECT_EQ(storedBytes([&](qcArchive& archive) { archive || handle; }),
            fromHex(announcementHex + recordHex));
}

TEST(ContourRecordTest, LoadsByValue) {
  qcContour contour({{9, 9}}, false, 1);
  contour.cachedVectorSize(8);
  loadHex(recordHex, [&](qcArchive& archive) { archive || contour; });
  expectSample(contour, 7);
}

TEST(ContourRecordTest, LoadsThroughAHandle) {
  ContourHandle handle;
  loadHex(announcementHex + recordHex, [&](qcArchive& archive) { archive || handle; });
  const qcContour& contour = *handle;
  EXPECT_EQ(typeid(contour), typeid(qcContour));
  expectSample(contour, 7);
}

TEST(ContourRecordTest, LoadsIntoAHandleToConst) {
  qcPtrHandle_const<qcContour> handle;
  loadHex(announcementHex + recordHex, [&](qcArchive& archive) { archive || handle; });
  expectSample(*handle, 7);
}

TEST(ContourRecordTest, ThroughAHandleToAnotherClassIsNullAndStaysKnown) {
  qcPtrHandle<qcRegion> region(new qcRegion);
  ContourHandle contour;
  loadHex(announcementHex + recordHex + " 01000000",
          [&](qcArchive& archive) { archive || region || contour; });
  EXPECT_FALSE(region);
  expectSample(*contour, 7);
}

TEST(OldContourRecordTest, HoldsFormerBaseVerticesCapacityAndFlag) {
  Versioned contour(sample(), 0);
  EXPECT_EQ(storedBytes([&](qcArchive& archive) { archive || contour; }), fromHex(oldRecordHex));
}

TEST(OldContourRecordTest, LoadsWithLabel0) {
  qcContour contour({{9, 9}}, false, 1);
  loadHex(oldRecordHex, [&](qcArchive& archive) { archive || contour; });
  expectSample(contour, 0);
}

TEST(OldContourRecordTest, LoadsThroughAHandle) {
  ContourHandle handle;
  loadHex(announcementHex + oldRecordHex, [&](qcArchive& archive) { archive || handle; });
  expectSample(*handle, 0);
}

TEST(OldContourRecordTest, LoadsWhateverTheDroppedByteIs) {
  for (int byte = 0; byte < 256; ++byte) {
    std::string bytes = fromHex(oldRecordHex);
    bytes[bytes.size() - 6] = static_cast<char>(byte);
    qcContour contour({}, false, 1);
    loadBytes(bytes, [&](qcArchive& archive) { archive || contour; });
    expectSample(contour, 0);
  }
}

TEST(OldContourRecordTest, CarriesItsFormerBaseEveryTime) {
  Versioned first(sample(), 0);
  Versioned second(sample(), 0);
  const std::string bytes = storedBytes([&](qcArchive& archive) { archive || first || second; });
  EXPECT_EQ(bytes, fromHex(oldRecordHex + oldRecordHex));
  qcContour a({}, false, 1);
  qcContour b({}, false, 1);
  loadBytes(bytes, [&](qcArchive& archive) { archive || a || b; });
  expectSample(a, 0);
  expectSample(b, 0);
}

/// "source line" of the check that refuses a contour of these bytes.
std::string contourRefusal(const std::string& hex) {
  qcContour contour({}, true, 0);
  try {
    loadHex(hex, [&](qcArchive& archive) { archive || contour; });
  } catch (const qcArchive::UnknownVersion& error) {
    return std::string(error.source()) + " " + std::to_string(error.line());
  }
  return "loaded";
}

std::string byteHex(int byte) { return toHex(std::string(1, static_cast<char>(byte))); }

TEST(ContourVersionTest, AboveOneIsRefusedNamingTheSourceAndLine904) {
  for (int version = 2; version < 256; ++version) {
    EXPECT_EQ(contourRefusal(byteHex(version) + recordHex.substr(2)), "cntr/contour 904")
        << version;
  }
}

TEST(ContourVersionTest, OfTheFormerBaseOtherThanZeroIsRefusedNamingTheSourceAndLine894) {
  for (int version = 1; version < 256; ++version) {
    EXPECT_EQ(contourRefusal("00 " + byteHex(version) + oldRecordHex.substr(5)), "cntr/contour 894")
        << version;
  }
}

TEST(ContourVersionTest, OfThePersistentBaseOtherThanZeroIsRefusedNamingIt) {
  EXPECT_EQ(contourRefusal("01 01" + recordHex.substr(5)), "qcPersistent 0");
  EXPECT_EQ(contourRefusal("00 00 01" + oldRecordHex.substr(8)), "qcPersistent 0");
}

TEST(ContourVersionTest, OfTheListOtherThanZeroIsRefusedWithoutSourceAndLine) {
  for (int version = 1; version < 256; ++version) {
    const std::string list = byteHex(version) + verticesHex.substr(2);
    EXPECT_EQ(contourRefusal("01 00 07000000 01 " + list + " 03000000"), " 0") << version;
    EXPECT_EQ(contourRefusal("00 00 00 " + list + " 00 03000000 01"), " 0") << version;
  }
}

TEST(ContourVersionTest, AboveOneIsRefusedWhenStoringToo) {
  Versioned contour(sample(), 2);
  try {
    storedBytes([&](qcArchive& archive) { contour.serialize_(archive, 2); });
    FAIL() << "nothing was thrown";
  } catch (const qcArchive::UnknownVersion& error) {
    EXPECT_STREQ(error.source(), "cntr/contour");
    EXPECT_EQ(error.line(), 904);
    EXPECT_EQ(error.message(), L"cntr/contour line 904");
  }
}

TEST(ContourSharingTest, TwiceByValueIsWrittenOnce) {
  qcContour contour = sample();
  EXPECT_EQ(storedBytes([&](qcArchive& archive) { archive || contour || contour; }),
            fromHex(recordHex));
}

TEST(ContourSharingTest, TwiceThroughHandlesIsWrittenOnceAndIsOneObjectAgain) {
  ContourHandle first(new qcContour(sample()));
  ContourHandle second(first);
  const std::string bytes = storedBytes([&](qcArchive& archive) { archive || first || second; });
  EXPECT_EQ(bytes, fromHex(announcementHex + recordHex + " 01000000"));
  ContourHandle a;
  ContourHandle b;
  loadBytes(bytes, [&](qcArchive& archive) { archive || a || b; });
  EXPECT_EQ(a.get(), b.get());
  expectSample(*a, 7);
}

TEST(ContourSharingTest, ByValueAndThroughAHandleIsWrittenTwiceInEitherOrder) {
  ContourHandle handle(new qcContour(sample()));
  EXPECT_EQ(storedBytes([&](qcArchive& archive) { archive || *handle || handle; }),
            fromHex(recordHex + announcementHex + recordHex));
  EXPECT_EQ(storedBytes([&](qcArchive& archive) { archive || handle || *handle; }),
            fromHex(announcementHex + recordHex + recordHex));
}

TEST(ContourSharingTest, ByValueAndThroughAHandleIsTwoObjectsWhenReadBack) {
  qcContour byValue({}, false, 0);
  ContourHandle handle;
  loadHex(recordHex + announcementHex + recordHex,
          [&](qcArchive& archive) { archive || byValue || handle; });
  expectSample(byValue, 7);
  expectSample(*handle, 7);
}

TEST(ContourSharingTest, ALoopThatStoresALocalContourStoresEveryOne) {
  const std::string bytes = storedBytes([](qcArchive& archive) {
    for (unsigned long label = 0; label < 10; ++label) {
      qcContour contour({{static_cast<double>(label), 0.5}}, false, label);
      archive || contour;
    }
  });
  std::vector<unsigned long> labels;
  loadBytes(bytes, [&](qcArchive& archive) {
    for (double i = 0; i < 10; ++i) {
      qcContour contour({}, true, 99);
      archive || contour;
      EXPECT_THAT(contour.points(), ElementsAre(qcVector<2>(i, 0.5)));
      labels.push_back(contour.label());
    }
  });
  EXPECT_THAT(labels, ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9));
}

TEST(ContourSharingTest, ALoopThatStoresALocalHandleStoresEveryOne) {
  const std::string bytes = storedBytes([](qcArchive& archive) {
    for (unsigned long label = 0; label < 10; ++label) {
      ContourHandle contour(new qcContour(sampleVertices, true, label));
      archive || contour;
    }
  });
  loadBytes(bytes, [&](qcArchive& archive) {
    for (unsigned long label = 0; label < 10; ++label) {
      ContourHandle contour;
      archive || contour;
      expectSample(*contour, label);
    }
  });
}

TEST(ContourSharingTest, AVariableThatIsLoadedAgainMustBeForgottenInBetween) {
  qcContour contour({}, false, 0);
  const std::string other = "01 00 08000000" + recordHex.substr(14);
  loadHex(recordHex + other, [&](qcArchive& archive) {
    archive || contour;
    archive || contour;
    EXPECT_EQ(contour.label(), 7U);
    archive.forget(contour);
    archive || contour;
    EXPECT_EQ(contour.label(), 8U);
  });
}

TEST(ContourSharingTest, AListOfHandlesComesBackInOrder) {
  std::vector<ContourHandle> list = {ContourHandle(new qcContour(sample())), ContourHandle(),
                                     ContourHandle(new qcContour({}, false, 2))};
  list.push_back(list.front());
  const std::string bytes = storedBytes([&](qcArchive& archive) { archive || list; });
  std::vector<ContourHandle> loaded;
  loadBytes(bytes, [&](qcArchive& archive) { archive || loaded; });
  ASSERT_EQ(loaded.size(), 4U);
  expectSample(*loaded[0], 7);
  EXPECT_FALSE(loaded[1]);
  EXPECT_EQ(loaded[2]->label(), 2U);
  EXPECT_EQ(loaded[3].get(), loaded[0].get());
}

std::vector<std::uint64_t> bitsOf(const Points& points) {
  std::vector<std::uint64_t> bits;
  for (const auto& p : points) {
    bits.push_back(std::bit_cast<std::uint64_t>(p.x()));
    bits.push_back(std::bit_cast<std::uint64_t>(p.y()));
  }
  return bits;
}

qcContour storedAndLoaded(qcContour& contour) {
  const std::string bytes = storedBytes([&](qcArchive& archive) { archive || contour; });
  qcContour loaded({{9, 9}}, !contour.isClosed(), 99);
  loadBytes(bytes, [&](qcArchive& archive) { archive || loaded; });
  return loaded;
}

TEST(ContourRoundTripTest, KeepsEveryBitOfNumbersThatAreNotFinite) {
  const std::vector<std::uint64_t> bits = {
      0x7FF8000000ABCDEF,                      // NaN with a payload
      0xFFF8000000000001,                      // a negative one
      0x7FF0000000000001,                      // a signalling one
      0x7FF0000000000000, 0xFFF0000000000000,  // infinities
      0x8000000000000000, 0x0000000000000000,  // zeros
      0x0000000000000001, 0x800FFFFFFFFFFFFF,  // subnormal numbers
      0x7FEFFFFFFFFFFFFF};
  Points points;
  for (std::size_t i = 0; i < bits.size(); i += 2) {
    points.emplace_back(std::bit_cast<double>(bits[i]), std::bit_cast<double>(bits[i + 1]));
  }
  qcContour contour(points, true, 0);
  EXPECT_EQ(bitsOf(storedAndLoaded(contour).points()), bits);
}

TEST(ContourRoundTripTest, KeepsThousandsOfShapesBitForBit) {
  for (std::uint64_t seed = 0; seed < 3000; ++seed) {
    const shapes::Shape shape = shapes::any(seed, 60);
    qcContour contour(shape.points, shape.closed, static_cast<unsigned long>(seed * 1431655));
    contour.cachedVectorSize(static_cast<long>(seed * 715827));
    const qcContour loaded = storedAndLoaded(contour);
    ASSERT_EQ(bitsOf(loaded.points()), bitsOf(shape.points)) << shape.name;
    ASSERT_EQ(loaded.isClosed(), shape.closed);
    ASSERT_EQ(loaded.label(), contour.label());
    ASSERT_EQ(loaded.cachedVectorSize(), contour.cachedVectorSize());
  }
}

TEST(ContourRoundTripTest, KeepsLongContours) {
  for (const std::size_t n : {2047U, 2048U, 2049U, 100000U}) {
    qcContour contour(shapes::smoothStar(n), true, 1);
    EXPECT_TRUE(storedAndLoaded(contour) == contour) << n;
  }
}

TEST(ContourRoundTripTest, KeepsTheLargestNumbers) {
  qcContour contour({}, true, 0xFFFFFFFF);
  contour.cachedVectorSize(0x7FFFFFFF);
  const qcContour loaded = storedAndLoaded(contour);
  EXPECT_EQ(loaded.label(), 0xFFFFFFFFU);
  EXPECT_EQ(loaded.cachedVectorSize(), 0x7FFFFFFF);
}

TEST(ContourStoringTest, RefusesACapacityThatNeedsMoreThan32Bits) {
  if (sizeof(long) == 4) GTEST_SKIP() << "no capacity is too wide, as on Windows";
  qcContour contour(sampleVertices, true, 0);
  contour.cachedVectorSize(static_cast<long>(std::int64_t{1} << 31U));
  EXPECT_THROW(storedBytes([&](qcArchive& archive) { archive || contour; }),
               qcArchive::ValueTooLarge);
}

TEST(ContourStoringTest, OfAnOldRecordDoesNotAskForTheLabel) {
  Versioned contour(qcContour(sampleVertices, true, 4294967295U), 0);
  EXPECT_EQ(storedBytes([&](qcArchive& archive) { archive || contour; }), fromHex(oldRecordHex));
}

/// A contour that counts how often it was told to forget, and records what it held then.
class Forgetful : public qcContour {
 public:
  Forgetful() : qcContour({{0, 0}, {5, 0}}, false, 0) {}
  const std::vector<std::size_t>& sizes() const { return sizes_; }

 protected:
  void cleanCacheInfo() override {
    sizes_.push_back(points().size());
    qcContour::cleanCacheInfo();
  }

 private:
  std::vector<std::size_t> sizes_;
};

TEST(ContourLoadingTest, SetsThenForgetsAndSendsOneNotice) {
  for (const std::string& hex : {recordHex, oldRecordHex}) {
    Forgetful contour;
    contour.points({{0, 0}, {5, 0}, {7, 0}});
    contour.isTracking(true);
    loadHex(hex, [&](qcArchive& archive) { archive || contour; });
    EXPECT_THAT(contour.sizes(), ElementsAre(2, 2));
    EXPECT_EQ(contour.changes(), 1U);
  }
}

TEST(ContourLoadingTest, ForgetsTheAnswersOfEarlierVertices) {
  qcContour contour({{0, 0}, {5, 0}}, false, 0);
  EXPECT_EQ(contour.length(), 5.0);
  EXPECT_EQ(contour.encloseRect(qcXform<2>::I).width(), 5.0);
  loadHex(recordHex, [&](qcArchive& archive) { archive || contour; });
  EXPECT_EQ(contour.length(), qcContour(sample()).length());
  EXPECT_EQ(contour.encloseRect(qcXform<2>::I).width(), 2.0);
}

TEST(ContourLoadingTest, LeavesCopiesAsTheyAre) {
  const qcContour original({{0, 0}, {5, 0}}, false, 0);
  qcContour loaded(original);
  loadHex(recordHex, [&](qcArchive& archive) { archive || loaded; });
  expectSample(loaded, 7);
  EXPECT_THAT(original.points(), ElementsAre(qcVector<2>(0, 0), qcVector<2>(5, 0)));
}

TEST(ContourLoadingTest, IsNotWhatStoringDoes) {
  Forgetful contour;
  contour.isTracking(true);
  storedBytes([&](qcArchive& archive) { archive || contour; });
  EXPECT_THAT(contour.sizes(), IsEmpty());
  EXPECT_EQ(contour.changes(), 0U);
}

/// Expects the answers of a new contour through the same vertices.
void expectOwnAnswers(const qcContour& contour) {
  const qcContour fresh(contour.points(), contour.isClosed(), 0);
  EXPECT_TRUE(same::same(contour.length(), fresh.length()));
  if (contour.points().size() < 2) return;
  EXPECT_TRUE(same::same(contour.meanPosition(), fresh.meanPosition()));
  EXPECT_EQ(contour.extremalVertexIndex(qcRadian(1)), fresh.extremalVertexIndex(qcRadian(1)));
  EXPECT_EQ(contour.isSelfIntersecting(), fresh.isSelfIntersecting());
}

/// What damaged bytes are loaded into: a contour that has answered questions.
class DamagedContourTest : public testing::TestWithParam<std::string> {
 protected:
  static std::string undamaged() { return fromHex(GetParam()); }

  /// Loads a contour from `bytes`; true when that succeeds, false when the archive refuses them and
  /// the contour is as before. Anything else fails the test.
  static bool loads(const std::string& bytes) {
    const qcContour before({{0, 0}, {5, 0}, {5, 5}}, false, 4);
    qcContour contour(before);
    expectOwnAnswers(contour);
    try {
      loadBytes(bytes, [&](qcArchive& archive) { archive || contour; });
    } catch (const qcArchive::Errors&) {
      EXPECT_TRUE(contour == before);
      EXPECT_EQ(contour.label(), 4U);
      expectOwnAnswers(contour);
      return false;
    }
    expectOwnAnswers(contour);
    return true;
  }

  /// The same through a handle, which keeps its object when the bytes are refused.
  static bool loadsHandle(const std::string& bytes) {
    ContourHandle handle(new qcContour({{5, 5}}, false, 4));
    try {
      loadBytes(fromHex(announcementHex) + bytes, [&](qcArchive& archive) { archive || handle; });
    } catch (const qcArchive::Errors&) {
      EXPECT_EQ(handle->label(), 4U);
      return false;
    }
    expectOwnAnswers(*handle);
    return true;
  }
};

INSTANTIATE_TEST_SUITE_P(Versions, DamagedContourTest, testing::Values(oldRecordHex, recordHex),
                         [](const auto& instance) { return std::to_string(instance.index); });

TEST_P(DamagedContourTest, LoadsWithoutDamage) {
  EXPECT_TRUE(loads(undamaged()));
  EXPECT_TRUE(loadsHandle(undamaged()));
}

TEST_P(DamagedContourTest, IsRefusedWhereverItIsCutShort) {
  const std::string bytes = undamaged();
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_FALSE(loads(bytes.substr(0, size))) << size;
    EXPECT_FALSE(loadsHandle(bytes.substr(0, size))) << size;
  }
}

TEST_P(DamagedContourTest, LoadsCleanlyOrIsRefusedWhicheverByteIsChanged) {
  const std::string bytes = undamaged();
  int refused = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    for (int change = 1; change < 256; ++change) {
      std::string damaged = bytes;
      damaged[i] = static_cast<char>(damaged[i] ^ change);
      const bool loaded = loads(damaged);
      EXPECT_EQ(loadsHandle(damaged), loaded) << "byte " << i << " changed by " << change;
      if (!loaded) ++refused;
    }
  }
  EXPECT_GT(refused, 1000);
}

TEST_P(DamagedContourTest, IsRefusedWithEveryCountThatTheInputDoesNotHold) {
  const std::string twoVertices = fromHex("02000000");
  for (const char* const count : {"04000000", "00010000", "ffffff7f", "00000080", "ffffffff"}) {
    std::string bytes = undamaged();
    bytes.replace(bytes.find(twoVertices), 4, fromHex(count));
    EXPECT_FALSE(loads(bytes)) << count;
    EXPECT_FALSE(loadsHandle(bytes)) << count;
  }
}

TEST_P(DamagedContourTest, IsRefusedWithANegativeCapacity) {
  const std::string three = fromHex("03000000");
  for (const char* const capacity : {"ffffffff", "00000080", "fdffff80"}) {
    std::string bytes = undamaged();
    bytes.replace(bytes.rfind(three), 4, fromHex(capacity));
    EXPECT_FALSE(loads(bytes)) << capacity;
    EXPECT_FALSE(loadsHandle(bytes)) << capacity;
  }
}

TEST(DamagedContoursTest, SaysThatANegativeCapacityIsBadFormat) {
  qcContour contour({}, true, 0);
  try {
    loadHex("01 00 07000000 01 00 00000000 ffffffff",
            [&](qcArchive& archive) { archive || contour; });
    FAIL() << "nothing was thrown";
  } catch (const qcArchive::BadFormat& error) {
    EXPECT_EQ(error.message(), L"a negative cachedVectorSize");
  }
}

TEST_P(DamagedContourTest, IsRefusedWithAFlagThatIsNotATruthValue) {
  const std::string bytes = undamaged();
  const std::size_t flag = bytes[0] == 1 ? 6 : bytes.size() - 1;
  for (int value = 2; value < 256; ++value) {
    std::string damaged = bytes;
    damaged[flag] = static_cast<char>(value);
    EXPECT_FALSE(loads(damaged)) << value;
  }
}

TEST(DamagedContoursTest, ThroughAHandleIsRefusedWhereverTheAnnouncementIsDamaged) {
  const std::string bytes = fromHex(announcementHex + recordHex);
  for (std::size_t i = 0; i < fromHex(announcementHex).size(); ++i) {
    for (int change = 1; change < 256; ++change) {
      std::string damaged = bytes;
      damaged[i] = static_cast<char>(damaged[i] ^ change);
      ContourHandle handle;
      const auto load = [&] { loadBytes(damaged, [&](qcArchive& a) { a || handle; }); };
      const bool isNull = i == 0 && change == 1;
      if (isNull) {
        EXPECT_NO_THROW(load());
      } else {
        EXPECT_THROW(load(), qcArchive::Errors) << "byte " << i << " changed by " << change;
      }
      EXPECT_FALSE(handle);
    }
  }
}

}  // namespace
