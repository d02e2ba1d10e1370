// SPDX-License-Identifier: MIT
//
// Archives take memory for what is there, not for what they announce.

#include <sstream>
#include <string>
#include <vector>

#include <cntrtmpl/regionsett.h>
#include <gtest/gtest.h>
#include <platform/core/archive.h>
#include <testing/heap/heap.h>

namespace {

using Regions = std::vector<qcPtrHandle_const<qcRegion>>;
using Edgelets = std::vector<qcEdgelet>;

std::string header() { return {"QCAR\x01\0\0\0", 8}; }

/// A list of version 0 that announces the largest count that 32 bits can hold.
std::string endlessList(const std::string& elements) {
  return '\0' + std::string(4, '\xFF') + elements;
}

/// The most bytes in use while the archive is refused as ending too early.
template <class Value>
std::size_t peakOfRefusal(const std::string& bytes) {
  std::istringstream stream(header() + bytes);
  Value value{};
  const heap::Watch watch;
  qcStreamArchive archive(stream);
  EXPECT_THROW(archive || value, qcArchive::Truncated);
  return watch.peakBytes();
}

constexpr std::size_t firstRoom = 16384;

TEST(ArchiveMemoryTest, AnEndlessListTakesRoomForWhatIsThere) {
  for (const std::size_t count : {0U, 10U, 100000U}) {
    const std::string zeros(count * sizeof(qcVector<2>), '\0');
    EXPECT_LE(peakOfRefusal<std::vector<qcVector<2>>>(endlessList(zeros)),
              firstRoom + 4 * zeros.size());
  }
}

TEST(ArchiveMemoryTest, EndlessListsOfOtherThingsTakeRoomForWhatIsThere) {
  const std::string zeros(100000, '\0');
  // A null handle takes 4 bytes in the archive and 16 in memory, and a list grows by doubling its
  // room.
  EXPECT_LE(peakOfRefusal<Regions>(endlessList(zeros)), firstRoom + 16 * zeros.size());
  EXPECT_LE(peakOfRefusal<Edgelets>(endlessList(zeros)), firstRoom + 8 * zeros.size());
  EXPECT_LE(peakOfRefusal<std::vector<Edgelets>>(endlessList(zeros)),
            firstRoom + 16 * zeros.size());
}

TEST(ArchiveMemoryTest, ALongNameIsRefusedBeforeItIsRead) {
  std::istringstream stream(header() + std::string("\x01\0\0\0", 4) + std::string(4, '\xFF'));
  qcPtrHandle<qcRegion> region;
  const heap::Watch watch;
  qcStreamArchive archive(stream);
  EXPECT_THROW(archive || region, qcArchive::BadFormat);
  EXPECT_LE(watch.peakBytes(), firstRoom);
}

TEST(ArchiveMemoryTest, ManySmallObjectsTakeASmallMultipleOfTheirBytes) {
  std::ostringstream out;
  {
    Regions regions;
    for (int i = 0; i < 10000; ++i) {
      regions.push_back(qcPtrHandle<qcRegion>(new qcRegion));
    }
    qcStreamArchive storing(out);
    storing || regions;
  }
  const std::string bytes = out.str();
  std::istringstream in(bytes);
  Regions loaded;
  const heap::Watch watch;
  qcStreamArchive loading(in);
  loading || loaded;
  EXPECT_EQ(loaded.size(), 10000U);
  EXPECT_LE(watch.peakBytes(), 40 * bytes.size());
}

}  // namespace
