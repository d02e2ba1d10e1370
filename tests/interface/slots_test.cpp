// SPDX-License-Identifier: MIT
//
// The order of virtual functions in their tables, which programs compiled against the libraries
// rely on. Read from pointers to members, which hold it in the Itanium C++ ABI.

#include <cstring>
#include <vector>

#include <cntr/regionst.h>
#include <gtest/gtest.h>

#include "probes.h"

#if defined(__x86_64__) && defined(__GXX_ABI_VERSION)

namespace {

/// The place of a virtual function in its table; a destructor takes two.
template <class Class, class Signature>
std::size_t slot(Signature Class::*function) {
  std::size_t offset = 0;
  std::memcpy(&offset, &function, sizeof(offset));
  EXPECT_EQ(offset % sizeof(void*), 1U) << "not a virtual function";
  return (offset - 1) / sizeof(void*);
}

using Slots = std::vector<std::size_t>;

TEST(SlotsTest, ArchivableObjectsHaveDestructorRecordAndHooks) {
  EXPECT_EQ((Slots{slot<qcPersistent>(&PersistentProbe::dispatchSerialize),
                   slot(&qcPersistent::reInit), slot(&qcPersistent::loadSimple)}),
            (Slots{2, 3, 4}));
}

struct ExceptionProbe : qcException {
  using qcException::dispatchSerialize;
};

// what() of std::exception has slot 2.
TEST(SlotsTest, ExceptionsHaveRecordNumberAndRethrow) {
  EXPECT_EQ((Slots{slot<qcException>(&ExceptionProbe::dispatchSerialize),
                   slot(&qcException::errorNumber), slot(&qcException::suicideAndRethrow)}),
            (Slots{3, 4, 5}));
}

// Between draw() and serialize_() is dispatchSerialize(), which qcPersistent introduces.
TEST(SlotsTest, ContoursHavePointsClosednessDrawingRecordAndHooks) {
  EXPECT_EQ((Slots{slot<qcContour, void(const std::vector<qcVector<2>>&)>(&qcContour::points),
                   slot<qcContour, bool() const>(&qcContour::isClosed),
                   slot<qcContour, void(bool)>(&qcContour::isClosed), slot(&qcContour::draw),
                   slot<qcContour>(&ContourProbe::serialize_),
                   slot<qcContour>(&ContourProbe::makeDataConsistentWithPoints),
                   slot<qcContour>(&ContourProbe::makePointsConsistentWithData),
                   slot<qcContour>(&ContourProbe::cleanCacheInfo)}),
            (Slots{2, 3, 4, 5, 7, 8, 9, 10}));
}

// The contour is a virtual base, so a region's table begins anew. Drawing without a mode, which the
// region introduces, stands where it is declared, among the functions that replace the contour's.
TEST(SlotsTest, RegionsHaveClosednessDrawingWithoutModeRecordAndHook) {
  EXPECT_EQ(
      (Slots{slot<qcRegion, bool() const>(&qcRegion::isClosed),
             slot<qcRegion, void(bool)>(&qcRegion::isClosed),
             slot<qcRegion, void(qcUITablet&, const qcColor&, const qcUITablet::Layers&) const>(
                 &qcRegion::draw),
             slot<qcRegion>(&RegionProbe::serialize_),
             slot<qcRegion>(&RegionProbe::cleanCacheInfo)}),
      (Slots{2, 3, 4, 6, 7}));
}

TEST(SlotsTest, SetsHaveRecordAndHooks) {
  EXPECT_EQ((Slots{slot<qcRegionSet>(&SetProbe::serialize_),
                   slot<qcRegionSet>(&SetProbe::makeDataConsistentWithPoints),
                   slot<qcRegionSet>(&SetProbe::makePointsConsistentWithData),
                   slot<qcRegionSet>(&SetProbe::cleanCacheInfo)}),
            (Slots{3, 4, 5, 6}));
}

}  // namespace

#endif
