// SPDX-License-Identifier: MIT
//
// Archives whose every allocation fails once: nothing leaks, what was to be stored is unchanged,
// and an archive that could not finish an object accepts nothing more.

#include <memory>
#include <new>
#include <sstream>
#include <string>

#include <cntrtmpl/regionsett.h>
#include <gtest/gtest.h>
#include <platform/core/archive.h>
#include <testing/heap/fail_each.h>

#include "answers.h"

namespace {

using heap::failEachAllocation;
using ContourT = qcContourT<qcEdgelet>;
using RegionT = qcRegionT<qcEdgelet>;
using RegionSetT = qcRegionSetT<qcEdgelet>;

/// One object of each kind, by value and through handles.
struct Everything {
  Everything()
      : region(regionWithHoles()),
        set(new qcRegionSet(crossingSet())),
        contour(squareOutline({0, 0}, 5), false, 3),
        withData({{{1, 2}, 3, qcAngle8(4)}, {{5, 6}, 7, qcAngle8(8)}, {{9, 1}, 2, qcAngle8(3)}},
                 qcPtrHandle_const<qc2XformBase>(new qc2Rigid(qcDegree(10), {3, 4}))),
        setWithData(
            std::vector<qcPtrHandle<RegionT>>{qcPtrHandle<RegionT>(new RegionT(withData, 4))}),
        polygon(squareOutline({0, 0}, 5), qcPolygon::eNonZero) {}

  void transfer(qcArchive& archive) {
    archive || region || set || contour || withData || setWithData || polygon || region;
  }

  std::string stored() {
    std::ostringstream stream;
    qcStreamArchive archive(stream);
    transfer(archive);
    return stream.str();
  }

  Region region;
  qcPtrHandle<qcRegionSet> set;
  qcContour contour;
  ContourT withData;
  RegionSetT setWithData;
  qcPolygon polygon;
};

/// Runs out of memory where the stream's buffer does.
template <class Store>
void storeOrRunOut(Store store) {
  try {
    store();
  } catch (const qcArchive::WriteFailed&) {
    throw std::bad_alloc();
  }
}

TEST(ArchiveExceptionsTest, WhatIsStoredStaysAsItWas) {
  const std::string expected = Everything().stored();
  const std::size_t allocations = failEachAllocation(
      [] { return std::make_unique<Everything>(); },
      [](auto& everything) { storeOrRunOut([&] { static_cast<void>(everything->stored()); }); },
      [&](auto& everything) {
        EXPECT_EQ(everything->stored(), expected);
        expectSoundAnswers(*everything->region);
      });
  EXPECT_GT(allocations, 30U);
}

TEST(ArchiveExceptionsTest, WhatCouldNotBeLoadedCanBeLoadedAgain) {
  const std::string bytes = Everything().stored();
  const auto load = [&](auto& everything) {
    std::istringstream stream(bytes);
    qcStreamArchive archive(stream);
    everything->transfer(archive);
  };
  const std::size_t allocations =
      failEachAllocation([] { return std::make_unique<Everything>(); }, load,
                         [&](auto& everything) {
                           expectSoundAnswers(*everything->region);
                           expectSoundAnswers(*everything->set);
                           expectSoundAnswers(everything->contour);
                           load(everything);
                           EXPECT_EQ(everything->stored(), bytes);
                         });
  EXPECT_GT(allocations, 60U);
}

TEST(ArchiveExceptionsTest, AnArchiveThatCouldNotFinishAnObjectTakesNothingMore) {
  const std::string whole = Everything().stored();
  bool hasStopped = false;
  for (std::size_t number = 1;; ++number) {
    Everything everything;
    std::ostringstream stream;
    qcStreamArchive archive(stream);
    const bool failed = heap::runsOutOfMemory(
        number, heap::Failing::eOne, [&] { storeOrRunOut([&] { everything.transfer(archive); }); });
    if (!failed) break;
    try {
      archive || everything.polygon;
      // Nothing of the object had been written: what is there can be read.
      std::istringstream in(stream.str());
      qcStreamArchive loading(in);
    } catch (const qcArchive::WriteFailed&) {
      hasStopped = true;
    }
  }
  EXPECT_TRUE(hasStopped);
}

}  // namespace
