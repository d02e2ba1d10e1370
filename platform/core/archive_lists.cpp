// SPDX-License-Identifier: MIT
//
// Lists in an archive: their frame, and lists of points in blocks. The general list is a template
// in archive.h.

#include <algorithm>
#include <utility>

#include <platform/core/archive.h>

namespace {

/// Room is reserved for this many bytes even when nothing is known about the input.
constexpr std::size_t leastRoom = 4096;
/// Loaded at once: so few that the newly added zeros are still in the cache when they are
/// overwritten.
constexpr std::size_t pointsPerBlock = 2048;

static_assert(std::is_standard_layout_v<qcVector<2>>, "its bytes are those of its two doubles");

void transferPoints(qcArchive& archive, qcVector<2>* points, std::size_t count) {
  archive.transferDoubles(reinterpret_cast<double*>(points), 2 * count);
}

/// Reserves room for what the input really holds, but for at least twice what has arrived, and
/// never for more than was announced.
void makeRoom(const qcArchive& archive, std::vector<qcVector<2>>& points, std::size_t announced) {
  const std::size_t arrived = points.size();
  const std::size_t expected = archive.roomFor(announced - arrived, sizeof(qcVector<2>));
  points.reserve(std::max(arrived + expected, std::min(2 * arrived, announced)));
}

void loadPoints(qcArchive& archive, std::vector<qcVector<2>>& points, std::size_t count) {
  points.clear();
  while (points.size() < count) {
    const std::size_t arrived = points.size();
    if (arrived == points.capacity() || arrived == 0) makeRoom(archive, points, count);
    const std::size_t block =
        std::min({pointsPerBlock, points.capacity() - arrived, count - arrived});
    points.resize(arrived + block);
    transferPoints(archive, &points[arrived], block);
  }
}

}  // namespace

std::size_t qcArchive::roomFor(std::size_t remaining, std::size_t bytesEach) const {
  const std::size_t known = std::max(bytesAtHand(), leastRoom) / bytesEach;
  return std::min(remaining, std::max<std::size_t>(known, 1));
}

std::size_t qf_TransferListHead(qcArchive& archive, std::size_t count) {
  if (!std::in_range<std::uint32_t>(count)) {
    throw qcArchive::ValueTooLarge(L"a list has more elements than 32 bits can count");
  }
  unsigned char version = 0;
  archive || version;
  if (version != 0) throw qcArchive::UnknownVersion(nullptr, 0);
  auto announced = static_cast<unsigned long>(count);
  archive || announced;
  return announced;
}

qcArchive& operator||(qcArchive& archive, std::vector<qcVector<2>>& points) {
  const std::size_t count = qf_TransferListHead(archive, points.size());
  if (archive.isLoading()) {
    loadPoints(archive, points, count);
  } else {
    transferPoints(archive, points.data(), count);
  }
  return archive;
}
