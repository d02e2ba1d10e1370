// SPDX-License-Identifier: MIT
//
// The records of regions and region sets, byte by byte (docs/archive.md), what is shared, and input
// that no archive would have written.

#include <cstdint>

#include <cntr/regionst.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "region_fixtures.h"

namespace {

using namespace fixtures;
using testing::IsEmpty;

/// A region whose numbers are easy to read in bytes: (0, 0), (2, 0), (0, 2).
Points triangle() { return {{0, 0}, {2, 0}, {0, 2}}; }

const std::string twoHex = " 00000000 00000040";
const std::string zeroHex = " 00000000 00000000";

/// The record of a closed contour of the triangle with a label and a capacity of 3.
std::string contourRecord(const std::string& label) {
  return "01 00 " + label + " 01 00 03000000" + zeroHex + zeroHex + twoHex + zeroHex + zeroHex +
         twoHex + " 03000000";
}

std::string regionRecord(const std::string& label, const std::string& holes) {
  return "01 " + contourRecord(label) + " 00 " + holes;
}

std::string newRegion(const std::string& id) { return id + " 08000000 'qcRegion' "; }

/// A region of version 0: the old base, three vertices, a byte that is dropped, a capacity of 7 and
/// the closed flag.
std::string oldRegion(const std::string& base = "00 00") {
  return "00 " + base + " 00 03000000" + zeroHex + zeroHex + twoHex + zeroHex + zeroHex + twoHex +
         " aa 07000000 01";
}

const std::string noHoles = "00000000";

template <class Object>
void load(const std::string& text, Object& object) {
  loadHex(text, [&](qcArchive& archive) { archive || object; });
}

/// The UnknownVersion that loading `object` from `text` throws, as "source line".
template <class Object>
std::string unknownVersionOf(const std::string& text, Object& object) {
  try {
    load(text, object);
  } catch (const qcArchive::UnknownVersion& error) {
    return error.source() + (" " + std::to_string(error.line()));
  }
  return "no UnknownVersion was thrown";
}

/// The message with which loading `object` from `text` is refused as BadFormat.
template <class Object>
std::wstring badFormatOf(const std::string& text, Object& object) {
  try {
    load(text, object);
  } catch (const qcArchive::BadFormat& error) {
    return error.message();
  }
  return L"no BadFormat was thrown";
}

TEST(RegionArchiveTest, ARegionIsItsContourAndAListOfHoles) {
  qcRegion region(triangle(), keep);
  region.label(5);
  EXPECT_EQ(hexOf(region), toHex(fromHex(regionRecord("05000000", noHoles))));
}

TEST(RegionArchiveTest, HolesAreStoredThroughHandles) {
  const Handle hole = handle(triangle());
  qcRegion region = regionWith(square(-9, -9, 30), {hole, hole});
  region.points(triangle());
  EXPECT_EQ(hexOf(region), toHex(fromHex(regionRecord(
                               "00000000", "02000000 " + newRegion("01000000") +
                                               regionRecord("00000000", noHoles) + " 01000000"))));
}

TEST(RegionArchiveTest, TheExampleOfTheDocumentIsStored) {
  qcRegion region = regionWith(triangle(), {handle({})});
  EXPECT_EQ(hexOf(region),
            toHex(fromHex(regionRecord("00000000", "01000000 " + newRegion("01000000") +
                                                       "010100 00000000 01 0000000000 03000000 "
                                                       "00 00000000"))));
  qcRegion old(square(0, 0, 1), keep);
  load("00 00 00 00 00000000 00 03000000 01", old);
  EXPECT_THAT(old.points(), IsEmpty());
}

TEST(RegionArchiveTest, ARegionRefusedAmidItsHolesHasTheLoadedBoundary) {
  qcRegion region = squareWithHole();
  EXPECT_EQ(region.area(true), 96.0);
  EXPECT_THROW(load(regionRecord("00000000", "01000000 07000000"), region), qcArchive::BadFormat);
  EXPECT_EQ(region.points(), triangle());
  EXPECT_EQ(region.holes().size(), 1U);
  EXPECT_EQ(region.area(false), 2.0);
}

TEST(RegionArchiveTest, ARegionThroughAHandleIsNamed) {
  Handle region = handle(triangle());
  EXPECT_EQ(hexOf(region),
            toHex(fromHex(newRegion("01000000") + regionRecord("00000000", noHoles))));
}

TEST(RegionArchiveTest, TheStoredFlagOfAnOpenContourIsKept) {
  qcRegion region(qcContour(triangle(), false, 0), keep);
  std::string expected = regionRecord("00000000", noHoles);
  expected.replace(expected.find("00000000 01 00") + 9, 2, "00");
  EXPECT_EQ(hexOf(region), toHex(fromHex(expected)));
  qcRegion loaded;
  load(expected, loaded);
  EXPECT_TRUE(loaded.isClosed());
  EXPECT_EQ(hexOf(loaded), toHex(fromHex(expected)));
}

TEST(RegionArchiveTest, ALoadedRegionIsThatWhichWasStored) {
  qcRegion stored =
      regionWith(square(0, 0, 10),
                 {handle(square(1, 1, 3), {handle(square(2, 2, 1))}), handle(square(6, 6, 1))});
  stored.label(4000000000);
  stored.cachedVectorSize(9);
  qcRegion loaded(square(50, 50, 1), keep);
  loaded.holes(Handles{handle(square(60, 60, 1))});
  load(hexOf(stored), loaded);
  EXPECT_EQ(loaded.points(), stored.points());
  EXPECT_EQ(loaded.label(), 4000000000U);
  EXPECT_EQ(loaded.cachedVectorSize(), 9);
  ASSERT_EQ(loaded.holes().size(), 2U);
  EXPECT_EQ(loaded.holes()[0]->points(), square(1, 1, 3));
  ASSERT_EQ(loaded.holes()[0]->holes().size(), 1U);
  EXPECT_EQ(loaded.holes()[0]->holes()[0]->points(), square(2, 2, 1));
  EXPECT_EQ(loaded.holes()[1]->points(), square(6, 6, 1));
}

TEST(RegionArchiveTest, AnEmptyRegionLoads) {
  qcRegion stored;
  qcRegion loaded = squareWithHole();
  load(hexOf(stored), loaded);
  EXPECT_THAT(loaded.points(), IsEmpty());
  EXPECT_THAT(loaded.holes(), IsEmpty());
}

TEST(RegionArchiveTest, LoadingForgetsTheAnswers) {
  qcRegion region = squareWithHole();
  EXPECT_EQ(region.area(false), 100.0);
  EXPECT_EQ(region.area(true), 96.0);
  EXPECT_EQ(region.length(), 40.0);
  load(regionRecord("00000000", noHoles), region);
  EXPECT_EQ(region.area(false), 2.0);
  EXPECT_EQ(region.area(true), 2.0);
  EXPECT_NE(region.length(), 40.0);
}

TEST(RegionArchiveTest, StoringKeepsTheAnswersAndSendsNoNotice) {
  qcRegion region = squareWithHole();
  EXPECT_NE(region.centerOfMass(true), qcVector<2>());
  EXPECT_EQ(noticesOf(region, [&] { hexOf(region); }), 0U);
  EXPECT_EQ(region.centerOfMass(true), qcVector<2>());
}

TEST(RegionArchiveTest, HolesAreNotCheckedWhenTheyAreLoaded) {
  qcRegion stored(square(50, 50, 1), keep);
  stored.holes(Handles{handle(square(8, 8, 4))});
  stored.points(square(0, 0, 10));
  qcRegion loaded;
  load(hexOf(stored), loaded);
  EXPECT_EQ(loaded.holes().size(), 1U);
}

TEST(RegionArchiveTest, AHoleOfAnotherClassLoadsAsNull) {
  qcPtrHandle<qcContour> contour(new qcContour(triangle(), true, 0));
  const std::string asHandle = hexOf(contour);
  qcRegion region;
  load(regionRecord("00000000", "01000000 ") + " " + asHandle, region);
  ASSERT_EQ(region.holes().size(), 1U);
  EXPECT_FALSE(region.holes()[0]);
  EXPECT_THROW(region.area(true), qcBadPointer);
  EXPECT_EQ(region.area(false), 2.0);
}

TEST(RegionArchiveTest, ARegionLoadsThroughAHandleToItsContour) {
  qcPtrHandle<qcContour> stored(new qcRegion(squareWithHole()));
  qcPtrHandle<qcContour> loaded;
  load(hexOf(stored), loaded);
  const auto* region = dynamic_cast<const qcRegion*>(loaded.get());
  ASSERT_NE(region, nullptr);
  EXPECT_EQ(region->holes().size(), 1U);
}

TEST(RegionArchiveTest, TheSameRegionTwiceIsWrittenOnce) {
  qcRegion region(triangle(), keep);
  EXPECT_EQ(storedHex([&](qcArchive& archive) { archive || region || region; }), hexOf(region));
}

TEST(RegionArchiveTest, HolesSharedByRegionsAndSetsComeBackShared) {
  const Handle hole = handle(square(3, 3, 1));
  qcRegion first = regionWith(square(0, 0, 10), {hole});
  Handle second = handle(square(2, 2, 9), {hole, handle(square(7, 7, 1))});
  qcRegionSet set({second, hole, second}, keep);
  const std::string bytes =
      storedBytes([&](qcArchive& archive) { archive || first || second || set; });
  qcRegion loadedFirst;
  Handle loadedSecond;
  qcRegionSet loadedSet(Handles(), keep);
  loadBytes(bytes,
            [&](qcArchive& archive) { archive || loadedFirst || loadedSecond || loadedSet; });
  ASSERT_EQ(loadedFirst.holes().size(), 1U);
  ASSERT_EQ(loadedSet.regions().size(), 3U);
  EXPECT_EQ(loadedSecond->holes()[0], loadedFirst.holes()[0]);
  EXPECT_EQ(loadedSet.regions()[1], loadedFirst.holes()[0]);
  EXPECT_EQ(loadedSet.regions()[0], loadedSecond);
  EXPECT_EQ(loadedSet.regions()[2], loadedSecond);
  EXPECT_FALSE(loadedSecond->holes()[1] == loadedSecond->holes()[0]);
}

TEST(RegionArchiveTest, SharedHolesOutliveTheArchive) {
  Handle loaded;
  {
    Handle stored = handle(square(0, 0, 10), {handle(square(3, 3, 1))});
    load(hexOf(stored), loaded);
  }
  EXPECT_EQ(loaded->area(true), 99.0);
}

TEST(RegionArchiveTest, LaterVersionsAreRefused) {
  qcRegion region;
  std::string record = regionRecord("00000000", noHoles);
  for (const char* version : {"02", "03", "ff"}) {
    EXPECT_EQ(unknownVersionOf(record.replace(0, 2, version), region), "cntr/region 819");
  }
}

TEST(RegionArchiveTest, VersionsOfThePartsAreChecked) {
  qcRegion region;
  const std::string record = regionRecord("00000000", noHoles);
  EXPECT_EQ(unknownVersionOf(std::string(record).replace(3, 2, "02"), region), "cntr/contour 904");
  EXPECT_EQ(unknownVersionOf(std::string(record).replace(6, 2, "01"), region), "qcPersistent 0");
  const std::size_t list = record.size() - noHoles.size() - 3;
  EXPECT_EQ(unknownVersionOf(std::string(record).replace(list, 2, "01"), region), " 0");
}

TEST(RegionArchiveTest, ARecordOfVersion0LoadsWithoutLabelAndHoles) {
  qcRegion region = squareWithHole();
  region.label(77);
  EXPECT_EQ(region.area(true), 96.0);
  load(oldRegion(), region);
  EXPECT_EQ(region.points(), triangle());
  EXPECT_EQ(region.label(), 0U);
  EXPECT_EQ(region.cachedVectorSize(), 7);
  EXPECT_TRUE(region.isClosed());
  EXPECT_THAT(region.holes(), IsEmpty());
  EXPECT_EQ(region.area(true), 2.0);
}

TEST(RegionArchiveTest, TheClosedFlagOfVersion0IsKeptForLaterRecords) {
  qcRegion region;
  std::string open = oldRegion();
  open.replace(open.size() - 2, 2, "00");
  load(open, region);
  EXPECT_TRUE(region.isClosed());
  std::string expected = regionRecord("00000000", noHoles);
  expected.replace(expected.find("00000000 01 00") + 9, 2, "00");
  expected.replace(expected.rfind("03000000"), 8, "07000000");
  EXPECT_EQ(hexOf(region), toHex(fromHex(expected)));
}

TEST(RegionArchiveTest, ThePartsOfVersion0AreChecked) {
  qcRegion region;
  EXPECT_EQ(unknownVersionOf(oldRegion("01 00"), region), "cntr/region 809");
  EXPECT_EQ(unknownVersionOf(oldRegion("00 01"), region), "qcPersistent 0");
  std::string list = oldRegion();
  EXPECT_EQ(unknownVersionOf(list.replace(9, 2, "05"), region), " 0");
  std::string capacity = oldRegion();
  capacity.replace(capacity.size() - 11, 8, "ffffffff");
  EXPECT_NE(badFormatOf(capacity, region).find(L"a negative cachedVectorSize"), std::wstring::npos);
}

TEST(RegionArchiveTest, EveryRecordOfVersion0CarriesItsOwnBase) {
  qcRegion first;
  qcRegion second;
  loadHex(oldRegion() + oldRegion(), [&](qcArchive& archive) { archive || first || second; });
  EXPECT_EQ(first.points(), triangle());
  EXPECT_EQ(second.points(), triangle());
}

TEST(RegionArchiveTest, ARegionOfVersion0LoadsThroughAHandle) {
  Handle region;
  load(newRegion("01000000") + oldRegion(), region);
  ASSERT_TRUE(region);
  EXPECT_EQ(region->points(), triangle());
}

TEST(RegionArchiveTest, AContourOfVersion0InARegionLoads) {
  qcRegion region;
  load("01 " + oldRegion() + " 00 " + noHoles, region);
  EXPECT_EQ(region.points(), triangle());
  EXPECT_EQ(region.cachedVectorSize(), 7);
}

/// Stores and loads itself as a given version.
class VersionedRegion : public qcRegion {
 public:
  VersionedRegion(const Points& points, unsigned char version)
      : qcContour(points, true, 0), version_(version) {}

 protected:
  void dispatchSerialize(qcArchive& archive) override { serialize_(archive, version_); }

 private:
  unsigned char version_;
};

TEST(RegionArchiveTest, Version0IsNotStored) {
  VersionedRegion old(triangle(), 0);
  try {
    hexOf(old);
    FAIL() << "version 0 was stored";
  } catch (const qcArchive::UnknownVersion& error) {
    EXPECT_STREQ(error.source(), "cntr/region");
    EXPECT_EQ(error.line(), 819);
  }
  VersionedRegion current(triangle(), 1);
  EXPECT_EQ(hexOf(current), toHex(fromHex(contourRecord("00000000") + " 00 " + noHoles)));
  VersionedRegion later(triangle(), 2);
  EXPECT_THROW(hexOf(later), qcArchive::UnknownVersion);
}

TEST(RegionArchiveTest, ANegativeCapacityIsRefused) {
  std::string record = regionRecord("00000000", noHoles);
  record.replace(record.rfind("03000000"), 8, "ffffffff");
  qcRegion region = squareWithHole();
  EXPECT_NE(badFormatOf(record, region).find(L"a negative cachedVectorSize"), std::wstring::npos);
}

TEST(RegionArchiveTest, AHoleThatIsTheRegionItselfIsRefused) {
  Handle region;
  const std::string ring = newRegion("01000000") + regionRecord("00000000", "01000000 01000000");
  EXPECT_NE(badFormatOf(ring, region).find(L"a handle leads back into an object that contains it"),
            std::wstring::npos);
  EXPECT_FALSE(region);
}

TEST(RegionArchiveTest, AHoleThatIsAnAncestorIsRefused) {
  Handle region;
  const std::string ring =
      newRegion("01000000") +
      regionRecord("00000000", "01000000 " + newRegion("02000000") +
                                   regionRecord("00000000", "01000000 01000000"));
  EXPECT_NE(badFormatOf(ring, region).find(L"a handle leads back into an object that contains it"),
            std::wstring::npos);
}

TEST(RegionArchiveTest, ARingOfHolesCannotBeStored) {
  const qcPtrHandle<qcRegion> outer(new qcRegion(square(0, 0, 10), keep));
  const qcPtrHandle<qcRegion> inner(new qcRegion(square(1, 1, 1), keep));
  outer->holes(Handles{inner});
  inner->holes(Handles{outer});
  Handle stored = outer;
  EXPECT_THROW(hexOf(stored), qcArchive::BadFormat);
  inner->holes(Handles());
}

/// Holes in holes, `levels` deep, the outermost first.
std::string nestedHoles(unsigned levels) {
  std::string bytes;
  for (unsigned id = 1; id <= levels; ++id) {
    unsigned long number = id;
    bytes += storedBytes([&](qcArchive& archive) { archive || number; });
    bytes += fromHex("08000000 'qcRegion' ") + fromHex("01 " + contourRecord("00000000") + " 00");
    bytes += fromHex(id < levels ? "01000000" : "00000000");
  }
  return bytes;
}

TEST(RegionArchiveTest, TwoHundredLevelsOfHolesLoad) {
  Handle region;
  loadBytes(nestedHoles(200), [&](qcArchive& archive) { archive || region; });
  int levels = 0;
  for (const qcRegion* hole = region.get(); hole != nullptr; ++levels) {
    hole = hole->holes().empty() ? nullptr : hole->holes()[0].get();
  }
  EXPECT_EQ(levels, 200);
  EXPECT_EQ(hexOf(region), toHex(nestedHoles(200)));
}

TEST(RegionArchiveTest, ThreeHundredLevelsOfHolesAreRefused) {
  Handle region;
  try {
    loadBytes(nestedHoles(300), [&](qcArchive& archive) { archive || region; });
    FAIL() << "300 levels were loaded";
  } catch (const qcArchive::BadFormat& error) {
    EXPECT_NE(error.message().find(L"nested too deep"), std::wstring::npos);
  }
  EXPECT_FALSE(region);
}

TEST(RegionArchiveTest, CountsAreNotTrusted) {
  qcRegion region;
  EXPECT_THROW(load(regionRecord("00000000", "ffffffff"), region), qcArchive::Truncated);
  EXPECT_THROW(load(regionRecord("00000000", "ffffffff 00000000 00000000"), region),
               qcArchive::Truncated);
  EXPECT_THROW(load("01 01 00 00000000 01 00 ffffffff" + zeroHex, region), qcArchive::Truncated);
}

TEST(RegionSetArchiveTest, ASetIsAListOfRegionsAndACapacity) {
  const Handle region = handle(triangle());
  qcRegionSet set({region, Handle(), region}, keep);
  set.cachedVectorSize(6);
  EXPECT_EQ(hexOf(set),
            toHex(fromHex("01 00 00 03000000 " + newRegion("01000000") +
                          regionRecord("00000000", noHoles) + " 00000000 01000000 06000000")));
}

TEST(RegionSetArchiveTest, ASetThroughAHandleIsNamed) {
  qcPtrHandle<qcRegionSet> set(new qcRegionSet(Handles(), keep));
  EXPECT_EQ(hexOf(set),
            toHex(fromHex("01000000 0b000000 'qcRegionSet' 01 00 00 00000000 03000000")));
  qcPtrHandle<qcRegionSet> loaded;
  load(hexOf(set), loaded);
  ASSERT_TRUE(loaded);
  EXPECT_THAT(loaded->regions(), IsEmpty());
}

TEST(RegionSetArchiveTest, ALoadedSetIsThatWhichWasStored) {
  qcRegionSet stored({handle(square(0, 0, 2)), handle(triangle(), {handle(square(50, 50, 1))})},
                     keep);
  stored.cachedVectorSize(11);
  qcRegionSet loaded({handle(square(5, 5, 5))}, keep);
  load(hexOf(stored), loaded);
  EXPECT_TRUE(loaded == stored);
  EXPECT_EQ(loaded.cachedVectorSize(), 11);
  EXPECT_EQ(loaded.regions()[1]->holes().size(), 1U);
}

TEST(RegionSetArchiveTest, LoadingForgetsTheAnswers) {
  qcRegionSet set({handle(square(0, 0, 2))}, keep);
  EXPECT_EQ(set.area(true), 4.0);
  EXPECT_EQ(set.encloseRect(qcXform<2>::I).lr(), qcVector<2>(2, 2));
  qcRegionSet stored({handle(square(0, 0, 3))}, keep);
  load(hexOf(stored), set);
  EXPECT_EQ(set.area(true), 9.0);
  EXPECT_EQ(set.encloseRect(qcXform<2>::I).lr(), qcVector<2>(3, 3));
}

TEST(RegionSetArchiveTest, ARecordOfVersion0KeepsTheCapacity) {
  qcRegionSet set(Handles(), keep);
  set.cachedVectorSize(9);
  load("00 00 00 01000000 " + newRegion("01000000") + regionRecord("00000000", noHoles), set);
  EXPECT_EQ(set.cachedVectorSize(), 9);
  ASSERT_EQ(set.regions().size(), 1U);
  EXPECT_EQ(set.regions()[0]->points(), triangle());
}

TEST(RegionSetArchiveTest, LaterVersionsAreRefused) {
  qcRegionSet set(Handles(), keep);
  EXPECT_EQ(unknownVersionOf("02 00 00 00000000 03000000", set), "cntr/regionst 479");
  EXPECT_EQ(unknownVersionOf("ff", set), "cntr/regionst 479");
}

TEST(RegionSetArchiveTest, VersionsOfThePartsAreChecked) {
  qcRegionSet set(Handles(), keep);
  EXPECT_EQ(unknownVersionOf("01 01 00 00000000 03000000", set), "qcPersistent 0");
  EXPECT_EQ(unknownVersionOf("01 00 01 00000000 03000000", set), " 0");
}

/// Stores itself as version 0.
class OldSet : public qcRegionSet {
 public:
  OldSet() : qcRegionSet(Handles(), keep) {}

 protected:
  void dispatchSerialize(qcArchive& archive) override { serialize_(archive, 0); }
};

TEST(RegionSetArchiveTest, Version0IsStoredWithoutItsCapacity) {
  OldSet set;
  EXPECT_EQ(hexOf(set), "00 00 00 00 00 00");
}

TEST(RegionSetArchiveTest, ANegativeCapacityIsRefused) {
  qcRegionSet set({handle(square(0, 0, 2))}, keep);
  EXPECT_NE(badFormatOf("01 00 00 00000000 ffffffff", set).find(L"a negative cachedVectorSize"),
            std::wstring::npos);
}

TEST(RegionSetArchiveTest, ARefusedLoadLeavesTheSetAsItWas) {
  qcRegionSet set({handle(square(0, 0, 2))}, keep);
  set.cachedVectorSize(7);
  EXPECT_THROW(load("01 00 00 02000000 00000000 05000000", set), qcArchive::BadFormat);
  EXPECT_THROW(load("01 00 00 01000000 00000000 ffffffff", set), qcArchive::BadFormat);
  ASSERT_EQ(set.regions().size(), 1U);
  EXPECT_EQ(set.cachedVectorSize(), 7);
  EXPECT_EQ(set.area(true), 4.0);
}

TEST(RegionSetArchiveTest, TheExampleOfTheDocumentIsStored) {
  qcRegionSet set(Handles(1), keep);
  EXPECT_EQ(hexOf(set), toHex(fromHex("01 00 00 01000000 00000000 03000000")));
}

TEST(RegionSetArchiveTest, ARegionOfAnotherClassLoadsAsNull) {
  qcPtrHandle<qcContour> contour(new qcContour(triangle(), true, 0));
  qcRegionSet set(Handles(), keep);
  load("01 00 00 01000000 " + hexOf(contour) + " 03000000", set);
  ASSERT_EQ(set.regions().size(), 1U);
  EXPECT_FALSE(set.regions()[0]);
  EXPECT_THROW(set.area(true), qcBadPointer);
}

TEST(RegionSetArchiveTest, CountsAreNotTrusted) {
  qcRegionSet set(Handles(), keep);
  EXPECT_THROW(load("01 00 00 ffffffff 00000000", set), qcArchive::Truncated);
}

/// Everything that can be loaded: a region by value, one of version 0, a handle and a set, with
/// shared holes.
struct Everything {
  qcRegion region;
  qcRegion old;
  Handle shared;
  qcRegionSet set{Handles(), keep};

  void transfer(qcArchive& archive) { archive || region || shared || set; }

  static std::string bytes() {
    Everything all;
    const Handle hole = handle(triangle());
    all.region = regionWith(square(-9, -9, 30), {hole});
    all.shared = handle(square(-5, -5, 20), {hole, handle(square(8, 8, 1))});
    all.set.regions(Handles{all.shared, hole}, keep);
    return storedBytes([&](qcArchive& archive) { all.transfer(archive); }) + fromHex(oldRegion());
  }
};

enum class Outcome { eLoaded, eTruncated, eRefused };

/// Loads everything and asks what was loaded; any outcome that Outcome does not name fails the
/// test.
Outcome loadAndAsk(const std::string& bytes) {
  Everything all;
  try {
    loadBytes(bytes, [&](qcArchive& archive) {
      all.transfer(archive);
      archive || all.old;
    });
  } catch (const qcArchive::Truncated&) {
    return Outcome::eTruncated;
  } catch (const qcArchive::Errors&) {
    return Outcome::eRefused;
  }
  const auto ask = [](const qcRegion& region) {
    if (region.points().size() < 3) return;
    region.inside(region.points()[0], false);
    region.isSelfIntersecting();
    EXPECT_FALSE(region.area(false) < 0.0);
  };
  ask(all.region);
  ask(all.old);
  for (const Handle& region : all.set.regions()) {
    if (region) ask(*region);
  }
  return Outcome::eLoaded;
}

TEST(RegionArchiveDamageTest, TheUndamagedBytesLoad) {
  EXPECT_EQ(loadAndAsk(Everything::bytes()), Outcome::eLoaded);
}

TEST(RegionArchiveDamageTest, EveryShorterInputIsTruncated) {
  const std::string bytes = Everything::bytes();
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_EQ(loadAndAsk(bytes.substr(0, size)), Outcome::eTruncated) << size;
  }
}

TEST(RegionArchiveDamageTest, EveryChangedByteLoadsCleanlyOrIsRefused) {
  const std::string bytes = Everything::bytes();
  int refused = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    for (const int change : {0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80, 0xff}) {
      std::string damaged = bytes;
      damaged[i] = static_cast<char>(damaged[i] ^ change);
      if (loadAndAsk(damaged) != Outcome::eLoaded) ++refused;
    }
  }
  EXPECT_GT(refused, 500);
}

TEST(RegionArchiveDamageTest, EveryRepeatedOrMissingByteLoadsCleanlyOrIsRefused) {
  const std::string bytes = Everything::bytes();
  int refused = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (loadAndAsk(std::string(bytes).erase(i, 1)) != Outcome::eLoaded) ++refused;
    if (loadAndAsk(std::string(bytes).insert(i, 1, bytes[i])) != Outcome::eLoaded) ++refused;
  }
  EXPECT_GT(refused, 500);
}

TEST(RegionArchiveDamageTest, ARegionThatFailedToLoadCanBeLoadedAgain) {
  qcRegion region = squareWithHole();
  const std::string record = regionRecord("00000000", noHoles);
  EXPECT_THROW(load(record.substr(0, record.size() - 2), region), qcArchive::Truncated);
  load(record, region);
  EXPECT_EQ(region.points(), triangle());
  EXPECT_EQ(region.area(true), 2.0);
}

}  // namespace
