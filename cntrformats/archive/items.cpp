// SPDX-License-Identifier: MIT

#include <cntrformats/archive/items.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

namespace formats {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view head = "QCAR\1\0\0\0\0"sv;

/// No item has fewer bytes, and none has more bytes before its vertices.
constexpr std::size_t leastItem = 30;
constexpr std::size_t vertexSize = 16;

/// Takes the fields of an item one after the other. REQUIRES: the bytes suffice.
class Fields {
 public:
  explicit Fields(std::string_view bytes) : at_(bytes.data()) {}

  std::uint8_t byte() { return static_cast<std::uint8_t>(*at_++); }
  std::uint32_t number() {
    const std::uint32_t low = byte() | static_cast<std::uint32_t>(byte()) << 8U;
    return low | static_cast<std::uint32_t>(byte()) << 16U |
           static_cast<std::uint32_t>(byte()) << 24U;
  }
  std::string_view bytes(std::size_t count) {
    at_ += count;
    return {at_ - count, count};
  }
  std::size_t passedSince(std::string_view bytes) const {
    return static_cast<std::size_t>(at_ - bytes.data());
  }

 private:
  const char* at_;
};

/// The number of remembered answers, which is signed.
bool isCapacity(std::uint32_t number) { return std::in_range<std::int32_t>(number); }

bool readKind(Fields& fields, ArchiveItem::Kind& kind) {
  const std::uint32_t length = fields.number();
  if (length > "qcRegionSet"sv.size()) return false;
  const std::string_view name = fields.bytes(length);
  if (name == "qcRegion"sv) {
    kind = ArchiveItem::Kind::eRegion;
  } else if (name == "qcContour"sv) {
    kind = ArchiveItem::Kind::eContour;
  } else if (name == "qcRegionSet"sv) {
    kind = ArchiveItem::Kind::eRegionSet;
  } else {
    return false;
  }
  return true;
}

Found readContour(std::string_view bytes, Fields& fields, ArchiveItem& item) {
  const bool isRegion = item.kind == ArchiveItem::Kind::eRegion;
  if (isRegion && fields.byte() != 1) return Found::eOther;
  if (fields.byte() != 1 || fields.byte() != 0) return Found::eOther;
  item.label = fields.number();
  const std::uint8_t closed = fields.byte();
  if (closed > 1 || fields.byte() != 0) return Found::eOther;
  item.isClosed = isRegion || closed == 1;
  const std::uint64_t vertices = fields.number();
  const std::uint64_t behind = isRegion ? 9 : 4;
  if (bytes.size() - fields.passedSince(bytes) < vertices * vertexSize + behind)
    return Found::eBeginning;
  item.vertices = fields.bytes(vertices * vertexSize);
  if (!isCapacity(fields.number())) return Found::eOther;
  if (isRegion && fields.byte() != 0) return Found::eOther;
  item.listed = isRegion ? fields.number() : 0;
  item.size = fields.passedSince(bytes);
  return Found::eWhole;
}

Found readSet(std::string_view bytes, Fields& fields, ArchiveItem& item) {
  if (fields.byte() != 1 || fields.byte() != 0 || fields.byte() != 0) return Found::eOther;
  item.listed = fields.number();
  item.size = fields.passedSince(bytes);
  return Found::eWhole;
}

}  // namespace

Found readArchiveHead(std::string_view bytes, std::uint32_t& count) {
  if (!bytes.starts_with(head)) return Found::eOther;
  count = Fields(bytes.substr(head.size())).number();
  return Found::eWhole;
}

Found readItem(std::string_view bytes, ArchiveItem& item) {
  if (bytes.size() < leastItem) return Found::eBeginning;
  Fields fields(bytes);
  item.id = fields.number();
  if (!readKind(fields, item.kind)) return Found::eOther;
  return item.kind == ArchiveItem::Kind::eRegionSet ? readSet(bytes, fields, item)
                                                    : readContour(bytes, fields, item);
}

Found readEndOfSet(std::string_view bytes) {
  if (bytes.size() < endOfSetSize) return Found::eBeginning;
  return isCapacity(Fields(bytes).number()) ? Found::eWhole : Found::eOther;
}

Points verticesOf(const ArchiveItem& item) {
  static_assert(std::is_standard_layout_v<qcVector<2>> && sizeof(qcVector<2>) == vertexSize);
  Points points(item.vertices.size() / vertexSize);
  if (points.empty()) return points;
  auto* const doubles = reinterpret_cast<unsigned char*>(points.data());
  std::memcpy(doubles, item.vertices.data(), item.vertices.size());
  if constexpr (std::endian::native == std::endian::big) {
    for (std::size_t i = 0; i < item.vertices.size(); i += 8)
      std::reverse(doubles + i, doubles + i + 8);
  }
  return points;
}

}  // namespace formats
