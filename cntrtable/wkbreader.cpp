// SPDX-License-Identifier: MIT
//
// Reads well-known binary. Bytes are taken from the front and never beyond the end; whatever a
// count announces must fit into the remaining bytes before room is made for it.

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>

#include <cntrtable/wkb.h>

namespace {

constexpr int mostNested = 16;
/// A vertex takes at least this many bytes.
constexpr std::size_t vertexSize = 2 * sizeof(double);

enum WkbType : std::uint32_t {
  eLineString = 2,
  ePolygon = 3,
  eMultiLineString = 5,
  eMultiPolygon = 6,
  eCollection = 7
};

/// Why a value is not a feature.
class WkbProblem : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

std::string nameOf(std::uint32_t type) {
  constexpr std::array<const char*, 18> names{
      "geometry",          "point",        "linestring",   "polygon",        "multipoint",
      "multilinestring",   "multipolygon", "collection",   "circularstring", "compoundcurve",
      "curvepolygon",      "multicurve",   "multisurface", "curve",          "surface",
      "polyhedralsurface", "tin",          "triangle"};
  return type < names.size() ? names[type] : "geometry of type " + std::to_string(type);
}

class WkbReader {
 public:
  WkbReader(std::span<const std::byte> bytes, qcOutlinesBuilder& builder)
      : bytes_(bytes), builder_(builder) {}

  void read() {
    geometry(0);
    if (position_ < bytes_.size())
      fail("WKB has " + std::to_string(bytes_.size() - position_) + " bytes behind its geometry");
    builder_.endFeature(kind_);
  }

 private:
  /// What a geometry begins with.
  struct Header {
    std::size_t place;
    bool isSwapped;
    std::uint32_t type;
    /// Coordinates of a vertex: 2 to 4.
    std::size_t dimensions;
  };

  [[noreturn]] static void fail(const std::string& why) { throw WkbProblem(why); }

  std::span<const std::byte> take(std::size_t count) {
    const std::size_t left = bytes_.size() - position_;
    if (count > left) {
      fail("WKB ends at byte " + std::to_string(bytes_.size()) + ", " +
           std::to_string(count - left) + " too early");
    }
    const auto taken = bytes_.subspan(position_, count);
    position_ += count;
    return taken;
  }

  template <class T>
  T number(bool isSwapped) {
    std::array<std::byte, sizeof(T)> raw{};
    const auto bytes = take(raw.size());
    std::copy(bytes.begin(), bytes.end(), raw.begin());
    if (isSwapped) std::reverse(raw.begin(), raw.end());
    return std::bit_cast<T>(raw);
  }

  /// A count of items that take at least `smallest` bytes each.
  std::size_t count(const Header& header, std::size_t smallest) {
    const std::size_t place = position_;
    const auto things = number<std::uint32_t>(header.isSwapped);
    if (things > (bytes_.size() - position_) / smallest) {
      fail("WKB counts " + std::to_string(things) + " at byte " + std::to_string(place) +
           ", more than its bytes can hold");
    }
    return things;
  }

  Header header() {
    Header header{position_, false, 0, 2};
    const auto order = std::to_integer<unsigned>(take(1).front());
    if (order > 1) {
      fail("WKB has " + std::to_string(order) + " at byte " + std::to_string(header.place) +
           ", where the byte order 0 or 1 should be");
    }
    header.isSwapped = (order == 1) != (std::endian::native == std::endian::little);
    auto type = number<std::uint32_t>(header.isSwapped);
    constexpr std::uint32_t hasZ = 0x80000000U;
    constexpr std::uint32_t hasM = 0x40000000U;
    constexpr std::uint32_t hasReference = 0x20000000U;
    if ((type & hasZ) != 0U) ++header.dimensions;
    if ((type & hasM) != 0U) ++header.dimensions;
    if ((type & hasReference) != 0U) take(sizeof(std::uint32_t));
    type &= ~(hasZ | hasM | hasReference);
    // ISO has 1000 for Z, 2000 for M, 3000 for both.
    if (header.dimensions == 2 && type < 4000) {
      header.dimensions += type < 1000 ? 0U : type < 3000 ? 1U : 2U;
      type %= 1000;
    }
    header.type = type;
    return header;
  }

  void geometry(int depth) {
    const Header top = header();
    switch (top.type) {
      case eLineString:
        line(top);
        break;
      case ePolygon:
        polygon(top);
        break;
      case eMultiLineString:
      case eMultiPolygon:
        members(top);
        break;
      case eCollection:
        collection(top, depth);
        break;
      default:
        fail("a " + nameOf(top.type) + " is neither outline nor line");
    }
  }

  void members(const Header& top) {
    const bool isAreas = top.type == eMultiPolygon;
    for (std::size_t left = count(top, headerSize); left > 0; --left) {
      const Header member = header();
      if (member.type != (isAreas ? ePolygon : eLineString)) {
        fail("WKB has a " + nameOf(member.type) + " in a " + nameOf(top.type) + " at byte " +
             std::to_string(member.place));
      }
      if (isAreas) {
        polygon(member);
      } else {
        line(member);
      }
    }
  }

  void collection(const Header& top, int depth) {
    if (depth == mostNested)
      fail("WKB has collections more than " + std::to_string(mostNested) + " deep");
    for (std::size_t left = count(top, headerSize); left > 0; --left) geometry(depth + 1);
  }

  void line(const Header& header) {
    const std::size_t vertices = vertexCount(header);
    if (vertices == 0) return;
    be(qcOutlineKind::eLines);
    takeVertices(header, vertices);
    builder_.endPart();
  }

  void polygon(const Header& header) {
    const std::size_t rings = count(header, sizeof(std::uint32_t));
    if (rings > 0) be(qcOutlineKind::eAreas);
    for (std::size_t i = 0; i < rings; ++i) {
      takeVertices(header, vertexCount(header));
      builder_.leaveOutRepeated();
    }
    builder_.endPart();
  }

  std::size_t vertexCount(const Header& header) {
    return count(header, header.dimensions * sizeof(double));
  }

  void takeVertices(const Header& header, std::size_t vertices) {
    const std::span<double> place = builder_.addRing(vertices);
    if (!header.isSwapped && header.dimensions == 2) {
      const auto bytes = take(place.size_bytes());
      if (!bytes.empty()) std::memcpy(place.data(), bytes.data(), bytes.size());
      return;
    }
    for (std::size_t i = 0; i < vertices; ++i) {
      place[2 * i] = number<double>(header.isSwapped);
      place[2 * i + 1] = number<double>(header.isSwapped);
      take((header.dimensions - 2) * sizeof(double));
    }
  }

  void be(qcOutlineKind kind) {
    if (kind_ != qcOutlineKind::eNothing && kind_ != kind)
      fail("outlines and lines together are no single shape");
    kind_ = kind;
  }

  /// Byte order and type.
  static constexpr std::size_t headerSize = 5;

  std::span<const std::byte> bytes_;
  qcOutlinesBuilder& builder_;
  std::size_t position_ = 0;
  qcOutlineKind kind_ = qcOutlineKind::eNothing;
};

void addFeature(std::span<const std::byte> value, qcOutlinesBuilder& builder) {
  try {
    WkbReader(value, builder).read();
  } catch (const WkbProblem& problem) {
    builder.failFeature(problem.what());
  }
}

}  // namespace

qcOutlines qf_FromWkb(std::span<const qcWkbValue> values) {
  qcOutlinesBuilder builder;
  std::size_t bytes = 0;
  for (const qcWkbValue& value : values) bytes += value ? value->size() : 0;
  builder.reserve(bytes / vertexSize);
  for (const qcWkbValue& value : values) {
    if (!value) {
      builder.failFeature("null");
    } else if (value->empty()) {
      builder.failFeature("empty");
    } else {
      addFeature(*value, builder);
    }
  }
  return builder.finish();
}
