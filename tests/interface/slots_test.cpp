// SPDX-License-Identifier: MIT
//
// The order of virtual functions in their tables, which programs compiled against the libraries
// rely on. Read from pointers to members, which hold it in the Itanium C++ ABI.

#include <cstring>
#include <vector>

#include <cntr/regionst.h>
#include <gtest/gtest.h>

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

struct Persistent : qcPersistent {
  using qcPersistent::dispatchSerialize;
};

TEST(SlotsTest, ArchivableObjectsHaveDestructorRecordAndHooks) {
  EXPECT_EQ((Slots{slot<qcPersistent>(&Persistent::dispatchSerialize), slot(&qcPersistent::reInit),
                   slot(&qcPersistent::loadSimple)}),
            (Slots{2, 3, 4}));
}

struct Exception : qcException {
  using qcException::dispatchSerialize;
};

// what() of std::exception has slot 2.
TEST(SlotsTest, ExceptionsHaveRecordNumberAndRethrow) {
  EXPECT_EQ((Slots{slot<qcException>(&Exception::dispatchSerialize),
                   slot(&qcException::errorNumber), slot(&qcException::suicideAndRethrow)}),
            (Slots{3, 4, 5}));
}

struct Contour : qcContour {
  using qcContour::cleanCacheInfo;
  using qcContour::makeDataConsistentWithPoints;
  using qcContour::makePointsConsistentWithData;
  using qcContour::serialize_;
};

// Between draw() and serialize_() is dispatchSerialize(), which qcPersistent introduces.
TEST(SlotsTest, ContoursHavePointsClosednessDrawingRecordAndHooks) {
  EXPECT_EQ((Slots{slot<qcContour, void(const std::vector<qcVector<2>>&)>(&qcContour::points),
                   slot<qcContour, bool() const>(&qcContour::isClosed),
                   slot<qcContour, void(bool)>(&qcContour::isClosed), slot(&qcContour::draw),
                   slot<qcContour>(&Contour::serialize_),
                   slot<qcContour>(&Contour::makeDataConsistentWithPoints),
                   slot<qcContour>(&Contour::makePointsConsistentWithData),
                   slot<qcContour>(&Contour::cleanCacheInfo)}),
            (Slots{2, 3, 4, 5, 7, 8, 9, 10}));
}

struct Region : qcRegion {
  using qcRegion::cleanCacheInfo;
  using qcRegion::serialize_;
};

// The contour is a virtual base, so a region's table begins anew. Drawing without a mode, which the
// region introduces, stands where it is declared, among the functions that replace the contour's.
TEST(SlotsTest, RegionsHaveClosednessDrawingWithoutModeRecordAndHook) {
  EXPECT_EQ(
      (Slots{slot<qcRegion, bool() const>(&qcRegion::isClosed),
             slot<qcRegion, void(bool)>(&qcRegion::isClosed),
             slot<qcRegion, void(qcUITablet&, const qcColor&, const qcUITablet::Layers&) const>(
                 &qcRegion::draw),
             slot<qcRegion>(&Region::serialize_), slot<qcRegion>(&Region::cleanCacheInfo)}),
      (Slots{2, 3, 4, 6, 7}));
}

struct Set : qcRegionSet {
  using qcRegionSet::cleanCacheInfo;
  using qcRegionSet::makeDataConsistentWithPoints;
  using qcRegionSet::makePointsConsistentWithData;
  using qcRegionSet::serialize_;
};

TEST(SlotsTest, SetsHaveRecordAndHooks) {
  EXPECT_EQ((Slots{slot<qcRegionSet>(&Set::serialize_),
                   slot<qcRegionSet>(&Set::makeDataConsistentWithPoints),
                   slot<qcRegionSet>(&Set::makePointsConsistentWithData),
                   slot<qcRegionSet>(&Set::cleanCacheInfo)}),
            (Slots{3, 4, 5, 6}));
}

}  // namespace

#endif
