// SPDX-License-Identifier: MIT
//
// The bytes of the shapes that nearly all archives hold: objects of the classes qcContour, qcRegion
// and qcRegionSet, of the version that is written today, each behind a new id. They are found and
// read without making the objects; docs/archive.md describes them byte by byte.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <cntrformats/feature.h>

namespace formats {

/// What an archive begins with.
inline constexpr std::size_t archiveHeadSize = 13;

/// One object up to the ids of those that it lists: the holes of a region, the regions of a set.
struct ArchiveItem {
  enum class Kind { eContour, eRegion, eRegionSet };

  Kind kind = Kind::eContour;
  std::uint32_t id = 0;
  unsigned long label = 0;
  bool isClosed = true;
  /// Two numbers of 8 bytes for each vertex.
  std::string_view vertices;
  /// How many objects it lists.
  std::uint32_t listed = 0;
  /// How many bytes it takes.
  std::size_t size = 0;
};

/// What the bytes turn out to be.
enum class Found {
  eWhole,
  /// The beginning of something that goes on behind them.
  eBeginning,
  /// Anything that is left to the library, be it an object of another class or damage.
  eOther
};

/// Reads how many shapes follow the first archiveHeadSize bytes. REQUIRES: these are there.
Found readArchiveHead(std::string_view bytes, std::uint32_t& count);

/// Reads what the bytes begin with into `item`, which is meaningless unless that is whole.
Found readItem(std::string_view bytes, ArchiveItem& item);

/// How many bytes end a set.
inline constexpr std::size_t endOfSetSize = 4;
/// The same for what ends a set.
Found readEndOfSet(std::string_view bytes);

Points verticesOf(const ArchiveItem& item);

}  // namespace formats
