// SPDX-License-Identifier: MIT
//
// The bytes of the shapes that nearly all archives hold: objects of the classes qcContour, qcRegion
// and qcRegionSet, in the version written today, each preceded by a new id. They are found and read
// without making the objects; docs/archive.md describes them byte by byte.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <cntrformats/feature.h>

namespace formats {

/// The size of what an archive begins with.
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
  /// The number of objects that it lists.
  std::uint32_t listed = 0;
  /// The number of bytes that it takes.
  std::size_t size = 0;
};

/// What the bytes are.
enum class Found {
  eWhole,
  /// The beginning of something that continues after them.
  eBeginning,
  /// Anything else, which is left to the library: an object of another class, or damage.
  eOther
};

/// Reads how many shapes follow the first archiveHeadSize bytes. REQUIRES: there are as many bytes.
Found readArchiveHead(std::string_view bytes, std::uint32_t& count);

/// Reads the item with which the bytes begin; `item` is meaningless unless it is whole.
Found readItem(std::string_view bytes, ArchiveItem& item);

/// The number of bytes that end a set.
inline constexpr std::size_t endOfSetSize = 4;
/// The same for the end of a set.
Found readEndOfSet(std::string_view bytes);

Points verticesOf(const ArchiveItem& item);

}  // namespace formats
