// SPDX-License-Identifier: MIT
//
// Shapes in an archive, read straight from their bytes: where each ends, and its feature.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <cntrformats/archive/items.h>
#include <cntrformats/feature.h>
#include <cntrformats/passage.h>

namespace formats {

/// Finds the ends of shapes, one after the other. A shape may arrive in pieces.
class ShapeEnds {
 public:
  /// Continues in a shape that begins with `shape`, which includes the bytes given the last time. A
  /// whole shape ends at size(); the next call is about the shape after it.
  Found find(std::string_view shape);
  /// How much of the shape has been passed.
  std::size_t size() const noexcept { return size_; }

 private:
  Found findNext(std::string_view rest);
  /// False if such an object is not allowed here.
  bool take(const ArchiveItem& item);

  /// The id that the next object must have.
  std::uint64_t nextId_ = 1;
  bool isWhole_ = true;
  std::size_t size_ = 0;
  bool isInSet_ = false;
  std::uint32_t regionsLeft_ = 0;
  std::uint32_t holesLeft_ = 0;
};

/// Reads a shape that ShapeEnds has found to be whole. Throws FeatureError.
void readStoredShape(const Passage& passage, Feature& feature);

}  // namespace formats
