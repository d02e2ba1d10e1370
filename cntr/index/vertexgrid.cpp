// SPDX-License-Identifier: MIT

#include <cntr/index/vertexgrid.h>

#include <algorithm>
#include <bit>
#include <limits>

namespace cntr::index {

namespace {

using Limits = std::numeric_limits<std::int64_t>;

/// Rounds half away from zero, saturating; NaN goes to cell 0.
std::int64_t roundToCell(double value) noexcept {
  constexpr double beyond = 9223372036854775808.0;
  const double shifted = value < 0.0 ? value - 0.5 : value + 0.5;
  if (shifted >= beyond) return Limits::max();
  if (shifted <= -beyond) return Limits::min();
  return shifted == shifted ? static_cast<std::int64_t>(shifted) : 0;
}

/// The cell numbers centre - 1 .. centre + 1 that exist.
struct Neighbours {
  explicit Neighbours(std::int64_t centre) noexcept
      : first(centre == Limits::min() ? centre : centre - 1),
        count(centre == Limits::min() || centre == Limits::max() ? 2 : 3) {}
  std::int64_t last() const noexcept { return first + (count - 1); }

  std::int64_t first;
  int count;
};

/// Bits for blocks per slot of the hash table; a power of two.
constexpr std::size_t bitsPerSlot = 4;
constexpr std::size_t bitsPerWord = 64;

/// A power of two.
std::size_t slotsFor(std::size_t vertices) { return std::bit_ceil(vertices + vertices / 2 + 1); }
std::size_t wordsFor(std::size_t slots) {
  return std::max<std::size_t>(slots * bitsPerSlot / bitsPerWord, 1);
}

/// Blocks of 4 by 4 cells.
VertexGrid::Cell blockOf(const VertexGrid::Cell& cell) noexcept {
  return {cell.x >> 2U, cell.y >> 2U};
}

/// Two rounds: cell numbers may all be multiples of a large power of two.
std::size_t hashOf(const VertexGrid::Cell& cell) noexcept {
  std::uint64_t hash = static_cast<std::uint64_t>(cell.x) * 0x9E3779B97F4A7C15U;
  hash ^= static_cast<std::uint64_t>(cell.y) + (hash >> 29U);
  hash *= 0xBF58476D1CE4E5B9U;
  hash ^= hash >> 32U;
  hash *= 0x94D049BB133111EBU;
  return static_cast<std::size_t>(hash ^ (hash >> 32U));
}

}  // namespace

VertexGrid::Cell VertexGrid::cellOf(const qcVector<2>& p, double tolerance) noexcept {
  const double scale = 1.0 / tolerance;
  return {roundToCell(p.x() * scale), roundToCell(p.y() * scale)};
}

VertexGrid::VertexGrid(std::span<const qcVector<2>> points, double tolerance)
    : tolerance_(tolerance),
      occupied_(wordsFor(slotsFor(points.size()))),
      slots_(slotsFor(points.size())),
      indices_(points.size()) {
  countVertices(points);
  fillCells(points);
}

std::size_t VertexGrid::slotOf(const Cell& cell) const noexcept {
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hashOf(cell) & mask;
  while (slots_[slot].count != 0 && slots_[slot].cell != cell) slot = (slot + 1) & mask;
  return slot;
}

void VertexGrid::countVertices(std::span<const qcVector<2>> points) {
  for (const qcVector<2>& p : points) {
    const Cell cell = cellOf(p, tolerance_);
    Slot& slot = slots_[slotOf(cell)];
    if (slot.count == 0) occupyBlockOf(cell);
    slot.cell = cell;
    ++slot.count;
  }
}

void VertexGrid::occupyBlockOf(const Cell& cell) noexcept {
  const std::size_t bit = hashOf(blockOf(cell)) & (occupied_.size() * bitsPerWord - 1);
  occupied_[bit / bitsPerWord] |= std::uint64_t{1} << (bit % bitsPerWord);
}

bool VertexGrid::mayHoldVertex(const Cell& first, const Cell& last) const noexcept {
  const Cell low = blockOf(first);
  const Cell high = blockOf(last);
  for (std::int64_t x = low.x; x <= high.x; ++x) {
    for (std::int64_t y = low.y; y <= high.y; ++y) {
      const std::size_t bit = hashOf({x, y}) & (occupied_.size() * bitsPerWord - 1);
      if ((occupied_[bit / bitsPerWord] >> (bit % bitsPerWord) & 1U) != 0) return true;
    }
  }
  return false;
}

void VertexGrid::fillCells(std::span<const qcVector<2>> points) {
  std::uint32_t end = 0;
  for (Slot& slot : slots_) {
    slot.first = end;
    end += slot.count;
  }
  // While a cell fills, `first` is where its next vertex goes; at the end all are moved back.
  for (std::size_t i = 0; i < points.size(); ++i) {
    Slot& slot = slots_[slotOf(cellOf(points[i], tolerance_))];
    indices_[slot.first++] = static_cast<int>(i);
  }
  for (Slot& slot : slots_) slot.first -= slot.count;
}

std::vector<int> VertexGrid::near(std::span<const qcVector<2>> points, const qcVector<2>& p) const {
  std::vector<int> result;
  const Cell centre = cellOf(p, tolerance_);
  const Neighbours columns(centre.x);
  const Neighbours rows(centre.y);
  if (!mayHoldVertex({columns.first, rows.first}, {columns.last(), rows.last()})) return result;
  for (int column = 0; column < columns.count; ++column) {
    for (int row = 0; row < rows.count; ++row) {
      const Slot& slot = slots_[slotOf({columns.first + column, rows.first + row})];
      for (std::uint32_t k = 0; k < slot.count; ++k) {
        const int i = indices_[slot.first + k];
        if (points[static_cast<std::size_t>(i)].distance(p) < tolerance_) result.push_back(i);
      }
    }
  }
  return result;
}

}  // namespace cntr::index
