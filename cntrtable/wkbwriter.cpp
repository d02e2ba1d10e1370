// SPDX-License-Identifier: MIT
//
// Writes well-known binary.

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>

#include <cntrtable/refusal.h>
#include <cntrtable/wkb.h>

namespace {

class WkbWriter {
 public:
  WkbWriter(const qcOutlines& outlines, std::size_t feature, std::endian order)
      : outlines_(outlines),
        feature_(feature),
        order_(order),
        isAreas_(outlines.kind(feature) == qcOutlineKind::eAreas) {}

  std::vector<std::byte> written() && {
    const std::size_t parts = outlines_.parts(feature_);
    if (parts > 1) {
      header(isAreas_ ? multiPolygon : multiLineString);
      count(parts);
    }
    for (std::size_t i = 0; i < parts; ++i) part(i);
    return std::move(bytes_);
  }

 private:
  static constexpr std::uint32_t lineString = 2;
  static constexpr std::uint32_t polygon = 3;
  static constexpr std::uint32_t multiLineString = 5;
  static constexpr std::uint32_t multiPolygon = 6;

  template <class T>
  void number(T value) {
    auto raw = std::bit_cast<std::array<std::byte, sizeof(T)>>(value);
    if (order_ != std::endian::native) std::reverse(raw.begin(), raw.end());
    bytes_.insert(bytes_.end(), raw.begin(), raw.end());
  }

  void count(std::size_t things) {
    if (things > std::numeric_limits<std::uint32_t>::max())
      table::refuse("WKB cannot count to " + std::to_string(things));
    number(static_cast<std::uint32_t>(things));
  }

  void header(std::uint32_t type) {
    bytes_.push_back(order_ == std::endian::little ? std::byte{1} : std::byte{0});
    number(type);
  }

  void part(std::size_t part) {
    const std::size_t rings = outlines_.rings(feature_, part);
    header(isAreas_ ? polygon : lineString);
    if (isAreas_) count(rings);
    for (std::size_t i = 0; i < rings; ++i) ring(outlines_.ring(feature_, part, i));
  }

  void ring(std::span<const double> coordinates) {
    const bool repeats = isAreas_ && !coordinates.empty();
    count(coordinates.size() / 2 + (repeats ? 1 : 0));
    for (const double coordinate : coordinates) number(coordinate);
    if (!repeats) return;
    number(coordinates[0]);
    number(coordinates[1]);
  }

  const qcOutlines& outlines_;
  std::size_t feature_;
  std::endian order_;
  bool isAreas_;
  std::vector<std::byte> bytes_;
};

}  // namespace

std::vector<std::byte> qf_ToWkb(const qcOutlines& outlines, std::size_t feature,
                                std::endian order) {
  if (outlines.kind(feature) == qcOutlineKind::eNothing) {
    table::refuse("feature " + std::to_string(feature) +
                  " has no geometry: " + outlines.problem(feature));
  }
  return WkbWriter(outlines, feature, order).written();
}
