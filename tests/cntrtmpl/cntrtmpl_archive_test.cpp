// SPDX-License-Identifier: MIT
//
// The archive records of the classes with edge elements: their bytes, their versions, what comes
// back and what does not, and input that no archive would have written. The bytes are described in
// docs/archive.md.

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <platform/display/recordingtablet.h>
#include <testing/heap/heap.h>
#include <tests/platform/archive_bytes.h>

#include "probe.h"
#include "samples.h"
#include "test_xform.h"

namespace {

using PlainHandle = qcPtrHandle_const<qcRegion>;
using Handle = qcPtrHandle_const<RegionT>;

// Doubles.
const std::string zero = "0000000000000000";
const std::string one = "000000000000f03f";
const std::string two = "0000000000000040";
const std::string three = "0000000000000840";
const std::string four = "0000000000001040";

template <class T>
std::string stored(T& object) {
  return storedBytes([&](qcArchive& archive) { archive || object; });
}

template <class T>
void load(const std::string& bytes, T& object) {
  loadBytes(bytes, [&](qcArchive& archive) { archive || object; });
}

/// The check that refuses the record, as "source line".
template <class T>
std::string refusingCheck(const std::string& bytes) {
  T object;
  try {
    load(bytes, object);
  } catch (const qcArchive::UnknownVersion& error) {
    return std::string(error.source()) + " " + std::to_string(error.line());
  }
  return "none";
}

/// `bytes` with the byte at `position` replaced.
std::string withByte(std::string bytes, std::size_t position, int value) {
  bytes.at(position) = static_cast<char>(value);
  return bytes;
}

// The contour.

/// Label 5; data at (1, 2) and (3, 4), points one to the left of them.
ContourT sampleContour() {
  const qcXform<2> oneToTheRight(qcMatrix<2>(), {1.0, 0.0});
  ContourT contour(
      {qcEdgelet({1.0, 2.0}, 200, qcAngle8(64)), qcEdgelet({3.0, 4.0}, 65535, qcAngle8(255))},
      XformHandle(new qc2XformLinear(oneToTheRight)));
  contour.label(5);
  return contour;
}

/// Versions of qcContour and qcPersistent, label, closed flag, points, cachedVectorSize.
const std::string contourPart =
    "01 00 05000000 01 00 02000000" + zero + two + two + four + "03000000";
const std::string dataPart =
    "00 02000000 00" + one + two + "c8000000 40 00" + three + four + "ffff0000 ff";
const std::string linearRecord =
    "0e000000 'qc2XformLinear' 00 00" + one + zero + zero + one + one + zero;
const std::string contourRecord =
    fromHex("01" + contourPart + dataPart + "01000000" + linearRecord);
const std::string contourRecordVersion0 = fromHex("00" + contourPart + dataPart);
/// Where the version of the list of data is.
constexpr std::size_t dataVersionAt = 1 + 48;

TEST(ContourTRecordTest, IsTheContourTheDataAndTheTransform) {
  ContourT contour = sampleContour();
  EXPECT_EQ(toHex(stored(contour)), toHex(contourRecord));
}

TEST(ContourTRecordTest, AContourWithoutTransformStoresANullPointer) {
  ContourT contour;
  EXPECT_EQ(toHex(stored(contour)),
            toHex(fromHex("01 01 00 00000000 01 00 00000000 03000000 00 00000000 00000000")));
}

TEST(ContourTRecordTest, AHandleNamesTheClassAsWrittenInCpp) {
  qcPtrHandle<ContourT> contour(new ContourT(sampleContour()));
  EXPECT_EQ(toHex(stored(contour)),
            toHex(fromHex("01000000 15000000 'qcContourT<qcEdgelet>' 01" + contourPart + dataPart +
                          "02000000" + linearRecord)));
}

TEST(ContourTRecordTest, ComesBack) {
  ContourT contour;
  load(contourRecord, contour);
  EXPECT_EQ(contour.points(), Points({{0.0, 2.0}, {2.0, 4.0}}));
  EXPECT_EQ(contour.data(), sampleContour().data());
  EXPECT_EQ(contour.label(), 5U);
  EXPECT_TRUE(contour.isClosed());
  EXPECT_EQ(contour.datum({0.0, 0.0}).position(), qcVector<2>(1.0, 0.0));
  EXPECT_EQ(contour.point(qcEdgelet()), qcVector<2>(-1.0, 0.0));
}

TEST(ContourTRecordTest, OpenContoursComeBackOpen) {
  ContourT contour = sampleContour();
  contour.isClosed(false);
  contour.cachedVectorSize(9);
  ContourT loaded;
  load(stored(contour), loaded);
  EXPECT_FALSE(loaded.isClosed());
  EXPECT_EQ(loaded.cachedVectorSize(), 9);
}

TEST(ContourTRecordTest, OtherVersionsAreRefusedByNameAndLine) {
  for (const int version : {2, 3, 255}) {
    EXPECT_EQ(refusingCheck<ContourT>(withByte(contourRecord, 0, version)), "cntrtmpl 98");
  }
  ContourT contour;
  EXPECT_THROW(
      storedBytes([&](qcArchive& archive) { Probe<ContourT>::serialize(contour, archive, 2); }),
      qcArchive::UnknownVersion);
}

TEST(ContourTRecordTest, VersionsOfItsPartsAreRefusedByTheParts) {
  EXPECT_EQ(refusingCheck<ContourT>(withByte(contourRecord, 1, 2)), "cntr/contour 904");
  EXPECT_EQ(refusingCheck<ContourT>(withByte(contourRecord, 2, 1)), "qcPersistent 0");
  EXPECT_EQ(refusingCheck<ContourT>(withByte(contourRecord, dataVersionAt, 1)), " 0");
  EXPECT_EQ(refusingCheck<ContourT>(withByte(contourRecord, dataVersionAt + 5, 1)), "qcEdgelet 0");
}

TEST(ContourTRecordTest, Version0HasNoTransformAndTheContourKeepsIts) {
  ContourT contour(edgeletsAt(squarePoints()), XformHandle(new testXform({10.0, 20.0})));
  const XformHandle before = contour.dataFromPointsXform();
  load(contourRecordVersion0, contour);
  EXPECT_TRUE(contour.dataFromPointsXform() == before);
  EXPECT_EQ(contour.points(), Points({{0.0, 2.0}, {2.0, 4.0}}));
  EXPECT_EQ(contour.data(), sampleContour().data());
}

TEST(ContourTRecordTest, Version0LeavesADefaultContourWithoutTransform) {
  ContourT contour;
  load(contourRecordVersion0, contour);
  EXPECT_FALSE(contour.dataFromPointsXform());
  EXPECT_THROW(contour.datum({}), qcBadPointer);
  EXPECT_THROW(contour.points({{9.0, 9.0}}), qcBadPointer);
  EXPECT_EQ(contour.data(), sampleContour().data());
}

TEST(ContourTRecordTest, Version0CanBeStoredByDerivedClasses) {
  ContourT contour = sampleContour();
  const std::string bytes =
      storedBytes([&](qcArchive& archive) { Probe<ContourT>::serialize(contour, archive, 0); });
  EXPECT_EQ(toHex(bytes), toHex(contourRecordVersion0.substr(1)));
}

TEST(ContourTRecordTest, BothVersionsMakeTheContourInvertItsTransformAgain) {
  testXform::resetCounts();
  ContourT contour(edgeletsAt(squarePoints()), XformHandle(new testXform({10.0, 20.0})));
  ASSERT_EQ(testXform::inversions, 1);
  load(contourRecordVersion0, contour);
  EXPECT_EQ(contour.point(qcEdgelet()), qcVector<2>(-10.0, -20.0));
  EXPECT_EQ(testXform::inversions, 2);
  load(stored(contour), contour);
  EXPECT_EQ(contour.point(qcEdgelet()), qcVector<2>(-10.0, -20.0));
  EXPECT_EQ(contour.point(qcEdgelet()), qcVector<2>(-10.0, -20.0));
  EXPECT_EQ(testXform::inversions, 3);
  load(contourRecord, contour);
  EXPECT_EQ(contour.point(qcEdgelet()), qcVector<2>(-1.0, 0.0));
}

TEST(ContourTRecordTest, StoringKeepsTheInverse) {
  testXform::resetCounts();
  ContourT contour(edgeletsAt(squarePoints()), XformHandle(new testXform({10.0, 20.0})));
  stored(contour);
  contour.point(qcEdgelet());
  EXPECT_EQ(testXform::inversions, 1);
}

TEST(ContourTRecordTest, LoadingForgetsAnswersAndSendsANotice) {
  ContourT contour(edgeletsAt(squarePoints()));
  EXPECT_EQ(contour.length(), 16.0);
  contour.isTracking(true);
  load(contourRecord, contour);
  EXPECT_EQ(contour.changes(), 1U);
  EXPECT_EQ(contour.length(), 2.0 * qcVector<2>(2.0, 2.0).len());
}

TEST(ContourTRecordTest, ARefusedLoadLeavesTheVerticesLoadedAndTheRestAsItWas) {
  const Edgelets data = edgeletsAt(squarePoints());
  ContourT contour(data);
  const XformHandle xform = contour.dataFromPointsXform();
  const std::string withoutLastByte = contourRecord.substr(0, contourRecord.size() - 1);
  EXPECT_THROW(load(withoutLastByte, contour), qcArchive::Truncated);
  EXPECT_EQ(contour.points(), Points({{0.0, 2.0}, {2.0, 4.0}}));
  EXPECT_EQ(contour.data(), data);
  EXPECT_TRUE(contour.dataFromPointsXform() == xform);
  contour.data(contour.data());
  EXPECT_EQ(contour.points(), squarePoints());
}

TEST(ContourTRecordTest, CopiesThatWereStoredTogetherStillShareTheirTransform) {
  ContourT first = sampleContour();
  ContourT copy(first);
  ContourT separate = sampleContour();
  ContourT loaded[3];
  loadBytes(storedBytes([&](qcArchive& archive) { archive || first || copy || separate; }),
            [&](qcArchive& archive) { archive || loaded[0] || loaded[1] || loaded[2]; });
  EXPECT_TRUE(loaded[0] == loaded[1]);
  EXPECT_FALSE(loaded[0] == loaded[2]);
}

TEST(ContourTRecordTest, ATransformOfAnotherClassLoadsAsNone) {
  ContourT contour;
  load(fromHex("01" + contourPart + dataPart + "01000000 07000000 'qcPoint' 00 00" + one + two),
       contour);
  EXPECT_FALSE(contour.dataFromPointsXform());
}

TEST(ContourTRecordTest, TheSameContourTwiceIsWrittenOnce) {
  ContourT contour = sampleContour();
  const std::string bytes = storedBytes([&](qcArchive& archive) { archive || contour || contour; });
  EXPECT_EQ(bytes, contourRecord);
}

// The region.

Points trianglePoints() { return {{0.0, 0.0}, {4.0, 0.0}, {0.0, 4.0}}; }
const std::string triangleList = "00 03000000" + zero + zero + four + zero + zero + four;

/// Label 7, the triangle, data with magnitudes and a transform.
RegionT sampleRegion() {
  return RegionT(edgeletsAt(trianglePoints()), XformHandle(new qc2XformLinear), 7);
}

/// Versions of qcRegionT, qcRegion, qcContour and qcPersistent, label, closed flag, points,
/// cachedVectorSize.
const std::string regionPart = "00 01 01 00 07000000 01" + triangleList + "03000000";
const std::string regionRecord = fromHex(regionPart + "00 00000000");
const std::string regionName = "14000000 'qcRegionT<qcEdgelet>'";

TEST(RegionTRecordTest, IsTheRegionAlone) {
  RegionT region = sampleRegion();
  EXPECT_EQ(toHex(stored(region)), toHex(regionRecord));
}

TEST(RegionTRecordTest, HoldsThePlainHolesAndNotThoseWithData) {
  RegionT region = sampleRegion();
  const Points small = {{1.0, 1.0}, {2.0, 1.0}, {1.0, 2.0}};
  region.qcRegion::holes({PlainHandle(new qcRegion(small, {}))});
  region.holes({Handle(new RegionT), Handle(new RegionT)});
  EXPECT_EQ(toHex(stored(region)),
            toHex(fromHex(regionPart + "00 01000000 01000000 08000000 'qcRegion'" +
                          "01 01 00 00000000 01 00 03000000" + one + one + two + one + one + two +
                          "03000000 00 00000000")));
}

TEST(RegionTRecordTest, AHandleNamesTheClassAsWrittenInCpp) {
  qcPtrHandle<RegionT> region(new RegionT(sampleRegion()));
  EXPECT_EQ(toHex(stored(region)),
            toHex(fromHex("01000000" + regionName + regionPart + "00 00000000")));
}

TEST(RegionTRecordTest, OtherVersionsAreRefusedByNameAndLine) {
  for (const int version : {1, 2, 255}) {
    EXPECT_EQ(refusingCheck<RegionT>(withByte(regionRecord, 0, version)), "cntrtmpl 186");
  }
  EXPECT_EQ(refusingCheck<RegionT>(withByte(regionRecord, 1, 2)), "cntr/region 819");
  EXPECT_EQ(refusingCheck<RegionT>(withByte(regionRecord, 2, 2)), "cntr/contour 904");
}

TEST(RegionTRecordTest, ComesBackWithPointsAndLabelAndWithoutData) {
  RegionT source = sampleRegion();
  source.holes({Handle(new RegionT)});
  qcPtrHandle<RegionT> region(new RegionT(source));
  qcPtrHandle<RegionT> loaded;
  load(stored(region), loaded);
  EXPECT_EQ(loaded->points(), trianglePoints());
  EXPECT_EQ(loaded->label(), 7U);
  EXPECT_EQ(loaded->area(true), 8.0);
  EXPECT_TRUE(loaded->data().empty());
  EXPECT_TRUE(loaded->holes().empty());
  EXPECT_EQ(loaded->dataFromPointsXform()->linearXform(), qcXform<2>::I);
}

TEST(RegionTRecordTest, LoadingLeavesDataTransformAndHolesWithDataAsTheyWere) {
  const Edgelets data = edgeletsAt(squarePoints());
  RegionT region(data, XformHandle(new testXform({1.0, 1.0})), 1);
  const XformHandle xform = region.dataFromPointsXform();
  const RegionT::Holes holes = {Handle(new RegionT)};
  region.holes(holes);
  load(regionRecord, region);
  EXPECT_EQ(region.points(), trianglePoints());
  EXPECT_EQ(region.data(), data);
  EXPECT_TRUE(region.dataFromPointsXform() == xform);
  EXPECT_EQ(region.holes(), holes);
  region.points(region.points());
  EXPECT_EQ(region.data(), bareEdgeletsAt(movedBy(trianglePoints(), {1.0, 1.0})));
}

TEST(RegionTRecordTest, LoadingForgetsAnswersAndReplacesPlainHoles) {
  RegionT region(edgeletsAt(squarePoints()), 1);
  region.qcRegion::holes({PlainHandle(new qcRegion(squarePoints({1.0, 1.0}, 1.0), {}))});
  EXPECT_EQ(region.area(true), 15.0);
  load(regionRecord, region);
  EXPECT_EQ(region.area(true), 8.0);
  EXPECT_TRUE(region.qcRegion::holes().empty());
}

TEST(RegionTRecordTest, TheSameRegionThroughDifferentHandlesIsOneObject) {
  qcPtrHandle<RegionT> region(new RegionT(sampleRegion()));
  qcPtrHandle<qcRegion> plain = region;
  qcPtrHandle<ContourT> contour = region;
  const std::string bytes =
      storedBytes([&](qcArchive& archive) { archive || plain || region || contour; });
  EXPECT_EQ(toHex(bytes),
            toHex(fromHex("01000000" + regionName + regionPart + "00 00000000 01000000 01000000")));
}

// Handles to one class, loaded as handles to another.

/// Stores `object` through a handle and loads it as a handle to `Loaded`.
template <class Loaded, class Stored>
qcPtrHandle<Loaded> loadedAs(Stored* object) {
  qcPtrHandle<Stored> handle(object);
  qcPtrHandle<Loaded> loaded;
  load(stored(handle), loaded);
  return loaded;
}

TEST(OtherClassTest, ARegionTLoadsWhereAPlainRegionOrContourIsExpected) {
  const auto region = loadedAs<qcRegion>(new RegionT(sampleRegion()));
  ASSERT_TRUE(region);
  EXPECT_NE(dynamic_cast<const RegionT*>(region.get()), nullptr);
  EXPECT_EQ(region->area(true), 8.0);
  EXPECT_TRUE(loadedAs<qcContour>(new RegionT(sampleRegion())));
  EXPECT_TRUE(loadedAs<ContourT>(new RegionT(sampleRegion())));
}

TEST(OtherClassTest, APlainRegionLoadsAsNullWhereARegionTIsExpected) {
  EXPECT_FALSE(loadedAs<RegionT>(new qcRegion(trianglePoints(), {})));
  EXPECT_FALSE(loadedAs<RegionT>(new ContourT(sampleContour())));
  EXPECT_FALSE(loadedAs<ContourT>(new qcContour(trianglePoints(), true, 0)));
}

TEST(OtherClassTest, AContourTLoadsWhereAPlainContourIsExpected) {
  const auto contour = loadedAs<qcContour>(new ContourT(sampleContour()));
  ASSERT_TRUE(contour);
  EXPECT_EQ(dynamic_cast<const ContourT&>(*contour).data(), sampleContour().data());
  EXPECT_FALSE(loadedAs<qcRegion>(new ContourT(sampleContour())));
}

TEST(OtherClassTest, ASetOfRegionTsLoadsWhereAPlainSetIsExpectedAndNotTheReverse) {
  const auto set = loadedAs<qcRegionSet>(new RegionSetT);
  EXPECT_NE(dynamic_cast<const RegionSetT*>(set.get()), nullptr);
  EXPECT_FALSE(loadedAs<RegionSetT>(
      new qcRegionSet(std::vector<PlainHandle>(), qcContourDefs::eNoIntersectionRepair)));
}

TEST(OtherClassTest, ARegionTInAPlainSetComesBackAsOne) {
  qcRegionSet set(std::vector<PlainHandle>{Handle(new RegionT(sampleRegion()))}, {});
  qcRegionSet loaded(std::vector<PlainHandle>(), {});
  load(stored(set), loaded);
  ASSERT_EQ(loaded.regions().size(), 1U);
  EXPECT_NE(dynamic_cast<const RegionT*>(loaded.regions()[0].get()), nullptr);
}

// The set.

/// The same region twice.
RegionSetT sampleSet() {
  const Handle region(new RegionT(sampleRegion()));
  return RegionSetT(RegionSetT::RegionsT{region, region});
}

const std::string regionById1 = "01000000" + regionName + regionPart + "00 00000000";
/// Versions of qcRegionSetT, qcRegionSet and qcPersistent, regions, cachedVectorSize, list of
/// regions with data.
const std::string setPart = "00 01 00 00 02000000" + regionById1 + "01000000 03000000";
const std::string setRecord = fromHex(setPart + "00 02000000 01000000 01000000");
/// Where the version of the list of regions with data is.
const std::size_t regionsTVersionAt = fromHex(setPart).size();

TEST(RegionSetTRecordTest, IsTheSetAndTheListOfRegionsWithData) {
  RegionSetT set = sampleSet();
  EXPECT_EQ(toHex(stored(set)), toHex(setRecord));
}

TEST(RegionSetTRecordTest, AHandleNamesTheClassAsWrittenInCpp) {
  qcPtrHandle<RegionSetT> set(new RegionSetT);
  EXPECT_EQ(toHex(stored(set)), toHex(fromHex("01000000 17000000 'qcRegionSetT<qcEdgelet>'"
                                              "00 01 00 00 00000000 03000000 00 00000000")));
}

TEST(RegionSetTRecordTest, ComesBackWithOneObjectInBothLists) {
  RegionSetT set;
  load(setRecord, set);
  ASSERT_EQ(set.regions().size(), 2U);
  ASSERT_EQ(set.regionsT().size(), 2U);
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_EQ(set.regions()[i].get(), static_cast<const qcRegion*>(set.regionsT()[i].get()));
  }
  EXPECT_TRUE(set.regionsT()[0] == set.regionsT()[1]);
  EXPECT_EQ(set.area(true), 16.0);
}

TEST(RegionSetTRecordTest, AnEmptySetComesBackEmpty) {
  RegionSetT empty;
  RegionSetT set = sampleSet();
  load(stored(empty), set);
  EXPECT_TRUE(set.regions().empty());
  EXPECT_TRUE(set.regionsT().empty());
}

TEST(RegionSetTRecordTest, BareRegionsAfterAddAreStoredAsObjectsOfTheirOwn) {
  RegionSetT set;
  set.add(PlainHandle(new qcRegion(trianglePoints(), {})), {});
  RegionSetT loaded;
  load(stored(set), loaded);
  ASSERT_EQ(loaded.regionsT().size(), 1U);
  EXPECT_EQ(loaded.regionsT()[0]->points(), trianglePoints());
  EXPECT_NE(loaded.regions()[0].get(), static_cast<const qcRegion*>(loaded.regionsT()[0].get()));
}

TEST(RegionSetTRecordTest, OtherVersionsAreRefusedByNameAndLine) {
  for (const int version : {1, 2, 255}) {
    EXPECT_EQ(refusingCheck<RegionSetT>(withByte(setRecord, 0, version)), "cntrtmpl 283");
  }
  RegionSetT set;
  EXPECT_THROW(
      storedBytes([&](qcArchive& archive) { Probe<RegionSetT>::serialize(set, archive, 1); }),
      qcArchive::UnknownVersion);
}

TEST(RegionSetTRecordTest, VersionsOfItsPartsAreRefusedByTheParts) {
  EXPECT_EQ(refusingCheck<RegionSetT>(withByte(setRecord, 1, 2)), "cntr/regionst 479");
  EXPECT_EQ(refusingCheck<RegionSetT>(withByte(setRecord, 3, 1)), " 0");
  EXPECT_EQ(refusingCheck<RegionSetT>(withByte(setRecord, regionsTVersionAt, 1)), " 0");
}

TEST(RegionSetTRecordTest, SerializeIsTheSetTsThroughTheBaseToo) {
  RegionSetT set;
  qcRegionSet& base = set;
  storedBytes([&](qcArchive& archive) {
    try {
      Probe<qcRegionSet>::serialize(base, archive, 9);
      ADD_FAILURE() << "version 9 was stored";
    } catch (const qcArchive::UnknownVersion& error) {
      EXPECT_EQ(error.line(), 283);
    }
  });
}

TEST(RegionSetTRecordTest, NothingIsRecomputedAfterALoad) {
  RegionSetT set = sampleSet();
  load(fromHex("00 01 00 00 00000000 03000000 00 01000000" + regionById1), set);
  EXPECT_TRUE(set.regions().empty());
  ASSERT_EQ(set.regionsT().size(), 1U);
  EXPECT_EQ(set.regionsT()[0]->points(), trianglePoints());
  EXPECT_TRUE(set.regionsT()[0]->data().empty());
}

TEST(RegionSetTRecordTest, AnElementOfAnotherClassLoadsAsNull) {
  RegionSetT set;
  load(fromHex("00 01 00 00 00000000 03000000 00 01000000 01000000 07000000 'qcPoint' 00 00" + one +
               two),
       set);
  ASSERT_EQ(set.regionsT().size(), 1U);
  EXPECT_FALSE(set.regionsT()[0]);
  EXPECT_THROW(Probe<RegionSetT>::rebuildPoints(set), qcBadPointer);
}

TEST(RegionSetTRecordTest, LoadingForgetsAnswers) {
  RegionSetT set(RegionSetT::RegionsT{Handle(new RegionT(edgeletsAt(squarePoints()), 1))});
  EXPECT_EQ(set.area(true), 16.0);
  load(fromHex("00 01 00 00 00000000 03000000 00 00000000"), set);
  EXPECT_EQ(set.area(true), 0.0);
}

TEST(RegionSetTRecordTest, ARefusedLoadLeavesThePlainRegionsLoadedAndTheListWithDataAsItWas) {
  const RegionSetT::RegionsT before = {Handle(new RegionT(edgeletsAt(squarePoints()), 1))};
  RegionSetT set(before);
  EXPECT_THROW(load(setRecord.substr(0, setRecord.size() - 1), set), qcArchive::Truncated);
  EXPECT_EQ(set.regions().size(), 2U);
  EXPECT_EQ(set.regionsT(), before);
}

TEST(RegionSetTRecordTest, TheSameSetTwiceIsWrittenOnce) {
  RegionSetT set = sampleSet();
  EXPECT_EQ(storedBytes([&](qcArchive& archive) { archive || set || set; }), setRecord);
}

// Damage.

/// Asks questions of a shape that was loaded from damaged bytes; whatever it throws must be ours.
template <class Question>
void ask(Question question) {
  try {
    question();
  } catch (const qcException&) {
  }
}

void use(ContourT& contour) {
  ask([&] { contour.point(contour.datum({1.0, 2.0})); });
  ask([&] { contour.encloseRect(qcXform<2>::I); });
  ask([&] { contour.points(contour.points()); });
}

void use(RegionT& region) {
  qcRecordingTablet tablet;
  region.draw(tablet, qcColor::red, qcUITablet::eImageLayer);
  ask([&] { region.area(true); });
  ask([&] { region.inside({1.0, 1.0}, true); });
  ask([&] { region.data(region.data()); });
}

void use(RegionSetT& set) {
  ask([&] { set.area(true); });
  ask([&] { set.isSelfIntersecting(); });
  ask([&] { set.add(PlainHandle(new qcRegion(trianglePoints(), {})), {}); });
}

enum class Outcome { eLoaded, eTruncated, eRefused };

/// Loads a shape by value and uses it when it loads; any outcome that Outcome does not name fails
/// the test.
template <class Shape>
Outcome outcomeOf(const std::string& bytes) {
  Shape shape;
  try {
    load(bytes, shape);
  } catch (const qcArchive::Truncated&) {
    return Outcome::eTruncated;
  } catch (const qcArchive::Errors&) {
    return Outcome::eRefused;
  }
  use(shape);
  return Outcome::eLoaded;
}

template <class Shape>
class DamageTest : public testing::Test {
 protected:
  static const std::string& bytes();

  /// The outcome of loading `damaged`, which must leave nothing behind.
  static Outcome outcome(const std::string& damaged) {
    const long before = heap::blocksAlive();
    const Outcome result = outcomeOf<Shape>(damaged);
    EXPECT_EQ(heap::blocksAlive(), before);
    return result;
  }
};

template <>
const std::string& DamageTest<ContourT>::bytes() {
  return contourRecord;
}

template <>
const std::string& DamageTest<RegionT>::bytes() {
  static const std::string withHole =
      fromHex(regionPart + "00 02000000" + regionById1 + "01000000");
  return withHole;
}

template <>
const std::string& DamageTest<RegionSetT>::bytes() {
  return setRecord;
}

using Shapes = testing::Types<ContourT, RegionT, RegionSetT>;
TYPED_TEST_SUITE(DamageTest, Shapes, );

TYPED_TEST(DamageTest, TheUndamagedBytesLoad) {
  EXPECT_EQ(this->outcome(this->bytes()), Outcome::eLoaded);
}

TYPED_TEST(DamageTest, EveryShorterInputIsTruncated) {
  for (std::size_t size = 0; size < this->bytes().size(); ++size) {
    ASSERT_EQ(this->outcome(this->bytes().substr(0, size)), Outcome::eTruncated) << size;
  }
}

TYPED_TEST(DamageTest, EveryChangedByteLoadsCleanlyOrIsRefused) {
  int refused = 0;
  for (std::size_t i = 0; i < this->bytes().size(); ++i) {
    for (const unsigned change : {1U, 2U, 4U, 8U, 16U, 32U, 64U, 128U, 255U}) {
      std::string damaged = this->bytes();
      damaged[i] = static_cast<char>(static_cast<unsigned char>(damaged[i]) ^ change);
      if (this->outcome(damaged) != Outcome::eLoaded) ++refused;
      ASSERT_FALSE(this->HasFailure()) << "byte " << i << " changed by " << change;
    }
  }
  EXPECT_GT(refused, 100);
}

TYPED_TEST(DamageTest, EveryRepeatedOrMissingByteLoadsCleanlyOrIsRefused) {
  for (std::size_t i = 0; i < this->bytes().size(); ++i) {
    this->outcome(std::string(this->bytes()).erase(i, 1));
    this->outcome(std::string(this->bytes()).insert(i, 1, this->bytes()[i]));
    ASSERT_FALSE(this->HasFailure()) << i;
  }
}

TEST(HostileListTest, CountsBeyondTheInputAreTruncated) {
  const std::string manyData = "01" + contourPart + "00 ffffffff 00" + one + two + "c8000000 40";
  EXPECT_EQ(outcomeOf<ContourT>(fromHex(manyData)), Outcome::eTruncated);
  EXPECT_EQ(outcomeOf<RegionSetT>(fromHex(setPart + "00 ffffffff 01000000")), Outcome::eTruncated);
}

TEST(HostileListTest, MoreDataThanPointsAreTakenAsTheyCome) {
  ContourT contour;
  const std::string noPoints = "01 01 00 05000000 01 00 00000000 03000000";
  load(fromHex(noPoints + dataPart + "00000000"), contour);
  EXPECT_TRUE(contour.points().empty());
  EXPECT_EQ(contour.data().size(), 2U);
  use(contour);
}

TEST(HostileListTest, MagnitudesOfMoreThan16BitsAreRefused) {
  ContourT contour;
  const std::string wide = "00 01000000 00" + one + two + "00000100 40";
  EXPECT_THROW(load(fromHex("01" + contourPart + wide + "00000000"), contour),
               qcArchive::ValueTooLarge);
}

}  // namespace
