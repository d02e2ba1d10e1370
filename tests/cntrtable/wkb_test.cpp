// SPDX-License-Identifier: MIT
//
// Well-known binary: geometries of either byte order, and values that are damaged on purpose.

#include <cntrtable/wkb.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>

#include <testing/shapes/shapes.h>

#include "refused.h"
#include "rings.h"

namespace {

using Bytes = std::vector<std::byte>;
using Feature = std::vector<qcRings>;

constexpr std::uint32_t hasZ = 0x80000000U;
constexpr std::uint32_t hasReference = 0x20000000U;

/// Writes values by hand.
class Hand {
 public:
  explicit Hand(std::endian order = std::endian::little) : order_(order) {}

  Hand& byte(unsigned value) {
    bytes_.push_back(static_cast<std::byte>(value));
    return *this;
  }
  Hand& count(std::uint32_t value) { return put(value); }
  Hand& header(std::uint32_t type) {
    return byte(order_ == std::endian::little ? 1 : 0).count(type);
  }
  Hand& numbers(std::initializer_list<double> values) {
    for (const double value : values) put(value);
    return *this;
  }
  Hand& bytes(const Bytes& more) {
    bytes_.insert(bytes_.end(), more.begin(), more.end());
    return *this;
  }
  const Bytes& done() const { return bytes_; }

 private:
  template <class T>
  Hand& put(T value) {
    auto raw = std::bit_cast<std::array<std::byte, sizeof(T)>>(value);
    if (order_ != std::endian::native) std::reverse(raw.begin(), raw.end());
    bytes_.insert(bytes_.end(), raw.begin(), raw.end());
    return *this;
  }

  std::endian order_;
  Bytes bytes_;
};

qcOutlines readValue(const Bytes& value) {
  // At the end of a block of its own, so that a sanitizer notices reads beyond it.
  const Bytes exact(value.begin(), value.end());
  const qcWkbValue only(exact);
  return qf_FromWkb({&only, 1});
}

std::string problemOf(const Bytes& value) {
  const qcOutlines outlines = readValue(value);
  EXPECT_EQ(outlines.size(), 1U);
  EXPECT_EQ(outlines.kind(0) == qcOutlineKind::eNothing, !outlines.problem(0).empty());
  return outlines.problem(0);
}

Bytes triangleBytes(std::endian order = std::endian::little) {
  return Hand(order).header(3).count(1).count(4).numbers({20, 0, 30, 0, 20, 5, 20, 0}).done();
}

qcOutlines outlinesOf(const Feature& feature) {
  qcOutlinesBuilder builder;
  builder.addAreas(feature);
  return builder.finish();
}

TEST(Wkb, OfAPolygonIsReadInEitherByteOrder) {
  for (const std::endian order : {std::endian::little, std::endian::big}) {
    const qcOutlines outlines = readValue(triangleBytes(order));
    EXPECT_EQ(outlines.kind(0), qcOutlineKind::eAreas);
    EXPECT_EQ(outlines.feature(0), (Feature{{triangle, {}}}));
  }
}

TEST(Wkb, MayLeaveRingsOpen) {
  const Bytes open = Hand().header(3).count(1).count(3).numbers({20, 0, 30, 0, 20, 5}).done();
  EXPECT_EQ(readValue(open).feature(0), (Feature{{triangle, {}}}));
}

TEST(Wkb, OfALineKeepsItsLastVertex) {
  const Bytes line = Hand().header(2).count(3).numbers({1, 2, 3, 4, 1, 2}).done();
  const qcOutlines outlines = readValue(line);
  EXPECT_EQ(outlines.kind(0), qcOutlineKind::eLines);
  EXPECT_EQ(outlines.feature(0), (Feature{{{{1, 2}, {3, 4}, {1, 2}}, {}}}));
}

TEST(Wkb, HasMembersOfTheirOwnByteOrders) {
  const Bytes both = Hand()
                         .header(6)
                         .count(2)
                         .bytes(triangleBytes(std::endian::big))
                         .bytes(triangleBytes())
                         .done();
  EXPECT_EQ(readValue(both).feature(0), (Feature{{triangle, {}}, {triangle, {}}}));
}

TEST(Wkb, LosesZAndMAndTheSpatialReference) {
  for (const std::uint32_t type : {1002U, 2002U, hasZ | 2U, 0x40000000U | 2U}) {
    const Bytes line = Hand().header(type).count(2).numbers({1, 2, 9, 3, 4, 9}).done();
    EXPECT_EQ(readValue(line).feature(0), (Feature{{{{1, 2}, {3, 4}}, {}}})) << type;
  }
  for (const std::uint32_t type : {3002U, 0xC0000000U | 2U}) {
    const Bytes line = Hand().header(type).count(2).numbers({1, 2, 9, 8, 3, 4, 9, 8}).done();
    EXPECT_EQ(readValue(line).feature(0), (Feature{{{{1, 2}, {3, 4}}, {}}})) << type;
  }
  const Bytes located = Hand()
                            .header(hasReference | hasZ | 2U)
                            .count(4326)
                            .count(2)
                            .numbers({1, 2, 9, 3, 4, 9})
                            .done();
  EXPECT_EQ(readValue(located).feature(0), (Feature{{{{1, 2}, {3, 4}}, {}}}));
}

TEST(Wkb, OfCollectionsHasTheMembersAsParts) {
  const Bytes inner = Hand().header(7).count(1).bytes(triangleBytes()).done();
  const Bytes outer =
      Hand().header(7).count(2).bytes(inner).bytes(triangleBytes(std::endian::big)).done();
  EXPECT_EQ(readValue(outer).feature(0), (Feature{{triangle, {}}, {triangle, {}}}));
}

TEST(Wkb, OfLinesAndAreasTogetherIsNothing) {
  const Bytes line = Hand().header(2).count(2).numbers({1, 2, 3, 4}).done();
  const Bytes mixed = Hand().header(7).count(2).bytes(triangleBytes()).bytes(line).done();
  EXPECT_EQ(problemOf(mixed), "outlines and lines together are no single shape");
}

TEST(Wkb, OfNothingIsEmpty) {
  for (const std::uint32_t type : {2U, 3U, 5U, 6U, 7U})
    EXPECT_EQ(problemOf(Hand().header(type).count(0).done()), "empty") << type;
  EXPECT_EQ(problemOf(Hand().header(3).count(1).count(0).done()), "empty");
  EXPECT_EQ(problemOf({}), "empty");
}

TEST(Wkb, SkipsEmptyMembers) {
  const Bytes empty = Hand().header(3).count(0).done();
  const Bytes both = Hand().header(6).count(2).bytes(empty).bytes(triangleBytes()).done();
  EXPECT_EQ(readValue(both).feature(0), (Feature{{triangle, {}}}));
  const Bytes line = Hand().header(2).count(2).numbers({1, 2, 3, 4}).done();
  const Bytes lines =
      Hand().header(5).count(2).bytes(Hand().header(2).count(0).done()).bytes(line).done();
  EXPECT_EQ(readValue(lines).parts(0), 1U);
}

TEST(Wkb, OfOtherGeometriesIsNothing) {
  EXPECT_EQ(problemOf(Hand().header(1).numbers({1, 2}).done()),
            "a point is neither outline nor line");
  EXPECT_EQ(problemOf(Hand().header(4).count(0).done()),
            "a multipoint is neither outline nor line");
  EXPECT_EQ(problemOf(Hand().header(1017).count(0).done()),
            "a triangle is neither outline nor line");
  EXPECT_EQ(problemOf(Hand().header(18).count(0).done()),
            "a geometry of type 18 is neither outline nor line");
  EXPECT_EQ(problemOf(Hand().header(4003).count(0).done()),
            "a geometry of type 4003 is neither outline nor line");
  const Bytes line = Hand().header(2).count(2).numbers({1, 2, 3, 4}).done();
  EXPECT_EQ(problemOf(Hand().header(6).count(1).bytes(line).done()),
            "WKB has a linestring in a multipolygon at byte 9");
}

TEST(Wkb, CutShortAnywhereIsNothing) {
  const Bytes whole = Hand().header(6).count(1).bytes(triangleBytes(std::endian::big)).done();
  EXPECT_EQ(problemOf(whole), "");
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_NE(problemOf(cut), "") << size;
  }
  EXPECT_EQ(problemOf(Hand().header(3).byte(1).done()), "WKB ends at byte 6, 3 too early");
}

TEST(Wkb, ThatGoesOnBehindItsGeometryIsNothing) {
  EXPECT_EQ(problemOf(Hand().bytes(triangleBytes()).byte(0).byte(0).done()),
            "WKB has 2 bytes behind its geometry");
}

TEST(Wkb, WithCountsThatItsBytesCannotHoldIsNothing) {
  constexpr std::uint32_t huge = 0xFFFFFFFFU;
  EXPECT_EQ(problemOf(Hand().header(2).count(huge).numbers({1, 2}).done()),
            "WKB counts 4294967295 at byte 5, more than its bytes can hold");
  EXPECT_EQ(problemOf(Hand().header(3).count(huge).done()),
            "WKB counts 4294967295 at byte 5, more than its bytes can hold");
  EXPECT_EQ(problemOf(Hand().header(7).count(2).count(0).byte(0).done()),
            "WKB counts 2 at byte 5, more than its bytes can hold");
  EXPECT_EQ(problemOf(Hand().header(3).count(1).count(2).numbers({1, 2, 3}).done()),
            "WKB counts 2 at byte 9, more than its bytes can hold");
}

TEST(Wkb, NestedWithoutEndIsNothing) {
  const auto nested = [](int depth) {
    Hand hand;
    for (int i = 0; i < depth; ++i) hand.header(7).count(1);
    return hand.bytes(triangleBytes()).done();
  };
  EXPECT_EQ(problemOf(nested(16)), "");
  EXPECT_EQ(problemOf(nested(17)), "WKB has collections more than 16 deep");
  EXPECT_EQ(problemOf(nested(100000)), "WKB has collections more than 16 deep");
}

TEST(Wkb, WithAnotherByteOrderIsNothing) {
  EXPECT_EQ(problemOf(Hand().byte(2).done()),
            "WKB has 2 at byte 0, where the byte order 0 or 1 should be");
}

TEST(Wkb, ThatIsDamagedLeavesItsNeighboursAlone) {
  const Bytes good = triangleBytes();
  const Bytes cut(good.begin(), good.end() - 1);
  const std::array<qcWkbValue, 4> values{good, cut, std::nullopt, good};
  const qcOutlines outlines = qf_FromWkb(values);
  ASSERT_EQ(outlines.size(), 4U);
  EXPECT_EQ(outlines.feature(0), outlines.feature(3));
  EXPECT_EQ(outlines.problem(1), "WKB counts 4 at byte 9, more than its bytes can hold");
  EXPECT_EQ(outlines.problem(2), "null");
}

TEST(Wkb, IsWrittenAsItIsRead) {
  EXPECT_EQ(qf_ToWkb(outlinesOf({{triangle, {}}}), 0), triangleBytes());
  EXPECT_EQ(qf_ToWkb(outlinesOf({{triangle, {}}}), 0, std::endian::big),
            triangleBytes(std::endian::big));
  EXPECT_EQ(qf_ToWkb(outlinesOf({{triangle, {}}, {triangle, {}}}), 0),
            Hand().header(6).count(2).bytes(triangleBytes()).bytes(triangleBytes()).done());
  qcOutlinesBuilder builder;
  builder.addLines({{{1, 2}, {3, 4}}});
  builder.addLines({{{1, 2}, {3, 4}}, {{5, 6}, {7, 8}}});
  const qcOutlines lines = builder.finish();
  const Bytes first = Hand().header(2).count(2).numbers({1, 2, 3, 4}).done();
  const Bytes second = Hand().header(2).count(2).numbers({5, 6, 7, 8}).done();
  EXPECT_EQ(qf_ToWkb(lines, 0), first);
  EXPECT_EQ(qf_ToWkb(lines, 1), Hand().header(5).count(2).bytes(first).bytes(second).done());
}

TEST(Wkb, OfARingWithoutVerticesHasNone) {
  EXPECT_EQ(
      qf_ToWkb(outlinesOf({{triangle, {{}}}}), 0),
      Hand().header(3).count(2).count(4).numbers({20, 0, 30, 0, 20, 5, 20, 0}).count(0).done());
}

TEST(Wkb, OfAnyFeatureComesBackWithTheSameBits) {
  shapes::Random random(11);
  for (int i = 0; i < 200; ++i) {
    Feature feature(1 + random.below(3));
    for (qcRings& part : feature) {
      const std::size_t holes = random.below(3);
      part.outline = shapes::gridWalk(random, 1 + random.below(9));
      for (std::size_t k = 0; k < holes; ++k)
        part.holes.push_back(shapes::gridWalk(random, 1 + random.below(9)));
    }
    const auto order = random.chance(0.5) ? std::endian::little : std::endian::big;
    EXPECT_EQ(readValue(qf_ToWkb(outlinesOf(feature), 0, order)).feature(0), feature);
  }
}

TEST(Wkb, OfNothingIsNotWritten) {
  qcOutlinesBuilder builder;
  builder.failFeature("no reason");
  const qcOutlines outlines = builder.finish();
  EXPECT_EQ(refusalOf([&] { qf_ToWkb(outlines, 0); }), "feature 0 has no geometry: no reason");
}

}  // namespace
