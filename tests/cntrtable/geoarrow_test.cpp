// SPDX-License-Identifier: MIT
//
// Arrow columns of features: in every layout there and back, sliced, misaligned and null, damaged
// on purpose, and released once.

#include <cntrtable/geoarrow.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <functional>
#include <limits>

#include <cntrtable/arrowmaking.h>
#include <cntrtable/wkb.h>

#include "countedarray.h"
#include "readback.h"
#include "refused.h"
#include "rings.h"

namespace {

using Feature = std::vector<qcRings>;

constexpr auto interleaved = qcArrowCoordinates::eInterleaved;
constexpr auto separated = qcArrowCoordinates::eSeparated;

qcOutlines polygons() {
  qcOutlinesBuilder builder;
  builder.addAreas({{square, {hole}}});
  builder.failFeature("null");
  builder.addAreas({{triangle, {}}});
  return builder.finish();
}

qcOutlines multipolygons() {
  qcOutlinesBuilder builder;
  builder.addAreas({{triangle, {}}});
  builder.addAreas({{square, {hole}}, {triangle, {}}});
  builder.failFeature("null");
  return builder.finish();
}

qcOutlines lines() {
  qcOutlinesBuilder builder;
  builder.failFeature("null");
  builder.addLines({square});
  builder.addLines({hole});
  return builder.finish();
}

qcOutlines multilines() {
  qcOutlinesBuilder builder;
  builder.addLines({square, triangle});
  builder.failFeature("null");
  builder.addLines({hole});
  return builder.finish();
}

qcOutlines mixed() {
  qcOutlinesBuilder builder;
  builder.addLines({square, triangle});
  builder.failFeature("null");
  builder.addAreas({{square, {hole}}, {triangle, {}}});
  return builder.finish();
}

std::string formatsOf(const ArrowSchema& schema) {
  std::string formats = schema.format;
  for (std::int64_t i = 0; i < schema.n_children; ++i)
    formats += " " + formatsOf(*schema.children[i]);
  return formats;
}

/// The name of the extension of a schema without other metadata.
std::string extensionOf(const ArrowSchema& schema) {
  if (schema.metadata == nullptr) return "";
  std::array<std::int32_t, 2> counts{};
  std::memcpy(counts.data(), schema.metadata, sizeof counts);
  const char* const key = schema.metadata + sizeof counts;
  EXPECT_EQ(counts[0], 1);
  EXPECT_EQ(std::string(key, static_cast<std::size_t>(counts[1])), "ARROW:extension:name");
  std::int32_t size = 0;
  std::memcpy(&size, key + counts[1], sizeof size);
  return {key + counts[1] + sizeof size, static_cast<std::size_t>(size)};
}

/// The names of all levels, each with its extension and with "?" if there may be nulls.
std::string namesOf(const ArrowSchema& schema) {
  const std::string extension = extensionOf(schema);
  EXPECT_EQ(schema.flags & ~std::int64_t{ARROW_FLAG_NULLABLE}, 0);
  std::string names = schema.name + std::string(schema.flags != 0 ? "?" : "") +
                      (extension.empty() ? "" : "=" + extension);
  for (std::int64_t i = 0; i < schema.n_children; ++i) names += " " + namesOf(*schema.children[i]);
  return names;
}

/// The message about a column of polygons that has been damaged; it is released nevertheless.
std::string refusalOfDamaged(const std::function<void(ArrowSchema&, ArrowArray&)>& damage,
                             qcArrowLayout layout = qcArrowLayout::ePolygon,
                             qcArrowCoordinates coordinates = interleaved) {
  qcArrowColumn column = qf_ToArrow(polygons(), layout, coordinates);
  CountedArray counted(std::move(column.array));
  damage(*column.schema, *counted.get());
  const std::string refusal = refusalOf([&] { qf_FromArrow(column.schema.get(), counted.get()); });
  EXPECT_EQ(counted.releases(), 1);
  EXPECT_EQ(counted.get()->release, nullptr);
  return refusal;
}

/// A column of binary views, as Arrow's newer producers write it.
class ViewColumn {
 public:
  /// Appends a value, in a buffer of its own if it is too long for its view.
  void add(const std::vector<std::byte>& value) {
    const std::size_t place = views_.size();
    views_.resize(place + 16);
    put(place, static_cast<std::int32_t>(value.size()));
    if (value.size() <= 12) {
      std::copy(value.begin(), value.end(),
                views_.begin() + static_cast<std::ptrdiff_t>(place) + 4);
      return;
    }
    put(place + 8, static_cast<std::int32_t>(buffers_.size()));
    buffers_.push_back(value);
  }

  /// Overwrites a number of a view.
  void put(std::size_t place, std::int32_t number) {
    std::memcpy(&views_[place], &number, sizeof number);
  }

  /// Reads the values after the first `offset`.
  qcOutlines read(std::int64_t offset = 0) const {
    std::vector<std::int64_t> sizes;
    std::vector<table::ArrowBuffer> all{nullptr, table::bufferOf(std::vector(views_))};
    for (const auto& buffer : buffers_) {
      sizes.push_back(static_cast<std::int64_t>(buffer.size()));
      all.push_back(table::bufferOf(std::vector(buffer)));
    }
    all.push_back(table::bufferOf(std::move(sizes)));
    qcArrowSchema schema = table::makeArrowSchema({"vz", "geometry", ""}, {});
    qcArrowArray array =
        table::makeArrowArray(static_cast<std::int64_t>(views_.size() / 16), 0, std::move(all), {});
    array->offset = offset;
    array->length -= offset;
    return qf_FromArrow(schema.get(), array.get());
  }

  std::string refusal() const {
    return refusalOf([this] { read(); });
  }

 private:
  std::vector<std::byte> views_;
  std::vector<std::vector<std::byte>> buffers_;
};

TEST(GeoArrow, ReadsBinaryViewsOfAnySize) {
  const qcOutlines outlines = polygons();
  ViewColumn column;
  column.add(qf_ToWkb(outlines, 2));
  column.add({});
  column.add({std::byte{1}, std::byte{3}});
  column.add(qf_ToWkb(outlines, 0));
  const qcOutlines read = column.read();
  ASSERT_EQ(read.size(), 4U);
  EXPECT_EQ(read.feature(0), outlines.feature(2));
  EXPECT_EQ(read.problem(1), "empty");
  EXPECT_EQ(read.problem(2), "WKB ends at byte 2, 3 too early");
  EXPECT_EQ(read.feature(3), outlines.feature(0));
  EXPECT_EQ(column.read(3).feature(0), outlines.feature(0));
  EXPECT_EQ(ViewColumn().read().size(), 0U);
}

TEST(GeoArrow, RefusesBinaryViewsOfWhatIsNotThere) {
  const std::vector<std::byte> value = qf_ToWkb(polygons(), 2);
  ViewColumn column;
  column.add(value);
  EXPECT_EQ(column.refusal(), "");
  const auto damaged = [&](std::size_t place, std::int32_t number) {
    ViewColumn copy = column;
    copy.put(place, number);
    return copy.refusal();
  };
  EXPECT_EQ(damaged(0, -1), "level 0: item 0 has the size -1");
  EXPECT_EQ(damaged(0, 78), "level 0: item 0 has the bytes 0 to 78 of 77");
  EXPECT_EQ(damaged(8, 1), "level 0: item 0 is in buffer 1 of 1");
  EXPECT_EQ(damaged(8, -1), "level 0: item 0 is in buffer -1 of 1");
  EXPECT_EQ(damaged(12, 1), "level 0: item 0 has the bytes 1 to 78 of 77");
  EXPECT_EQ(damaged(12, -1), "level 0: item 0 has the bytes -1 to 76 of 77");
  qcArrowSchema schema = table::makeArrowSchema({"vz", "geometry", ""}, {});
  qcArrowArray array = table::makeArrowArray(1, 0, {nullptr, nullptr}, {});
  EXPECT_EQ(refusalOf([&] { qf_FromArrow(schema.get(), array.get()); }),
            "level 0: the array has 2 buffers instead of 3");
  array = table::makeArrowArray(1, 0, {nullptr, nullptr, nullptr}, {});
  array->n_buffers = std::numeric_limits<std::int64_t>::min();
  EXPECT_EQ(refusalOf([&] { qf_FromArrow(schema.get(), array.get()); }),
            "level 0: the array has -9223372036854775808 buffers instead of 3");
  array = table::makeArrowArray(1, 0, {nullptr, nullptr, nullptr}, {});
  EXPECT_EQ(refusalOf([&] { qf_FromArrow(schema.get(), array.get()); }),
            "level 0: there are no views");
}

TEST(GeoArrow, OfEachLayoutComesBack) {
  struct Case {
    qcOutlines outlines;
    qcArrowLayout layout;
    const char* interleavedFormats;
    const char* separatedFormats;
  };
  const std::vector<Case> cases{
      {polygons(), qcArrowLayout::ePolygon, "+l +l +w:2 g", "+l +l +s g g"},
      {polygons(), qcArrowLayout::eMultiPolygon, "+l +l +l +w:2 g", "+l +l +l +s g g"},
      {multipolygons(), qcArrowLayout::eMultiPolygon, "+l +l +l +w:2 g", "+l +l +l +s g g"},
      {lines(), qcArrowLayout::eLineString, "+l +w:2 g", "+l +s g g"},
      {lines(), qcArrowLayout::eMultiLineString, "+l +l +w:2 g", "+l +l +s g g"},
      {multilines(), qcArrowLayout::eMultiLineString, "+l +l +w:2 g", "+l +l +s g g"},
      {mixed(), qcArrowLayout::eWkb, "z", "z"},
      {polygons(), qcArrowLayout::eWkb, "z", "z"}};
  for (const Case& one : cases) {
    for (const qcArrowCoordinates coordinates : {interleaved, separated}) {
      qcArrowColumn column = qf_ToArrow(one.outlines, one.layout, coordinates);
      EXPECT_EQ(formatsOf(*column.schema),
                coordinates == interleaved ? one.interleavedFormats : one.separatedFormats);
      EXPECT_STREQ(column.schema->name, "geometry");
      EXPECT_EQ(column.array->null_count, 1);
      expectSame(readBack(column), one.outlines);
    }
  }
}

TEST(GeoArrow, HasALayoutThatFits) {
  const auto formatOf = [](const qcOutlines& outlines) {
    return formatsOf(*qf_ToArrow(outlines).schema);
  };
  EXPECT_EQ(formatOf(polygons()), "+l +l +w:2 g");
  EXPECT_EQ(formatOf(multipolygons()), "+l +l +l +w:2 g");
  EXPECT_EQ(formatOf(lines()), "+l +w:2 g");
  EXPECT_EQ(formatOf(multilines()), "+l +l +w:2 g");
  EXPECT_EQ(formatOf(mixed()), "z");
  EXPECT_EQ(formatOf(qcOutlines()), "+l +l +w:2 g");
}

TEST(GeoArrow, NamesItsLevels) {
  const auto names = [](qcArrowLayout layout, qcArrowCoordinates coordinates) {
    return namesOf(*qf_ToArrow(qcOutlines(), layout, coordinates).schema);
  };
  EXPECT_EQ(names(qcArrowLayout::ePolygon, interleaved),
            "geometry?=geoarrow.polygon rings vertices xy");
  EXPECT_EQ(names(qcArrowLayout::eMultiPolygon, separated),
            "geometry?=geoarrow.multipolygon polygons rings vertices x y");
  EXPECT_EQ(names(qcArrowLayout::eLineString, separated),
            "geometry?=geoarrow.linestring vertices x y");
  EXPECT_EQ(names(qcArrowLayout::eMultiLineString, interleaved),
            "geometry?=geoarrow.multilinestring linestrings vertices xy");
  EXPECT_EQ(names(qcArrowLayout::eWkb, interleaved), "geometry?=geoarrow.wkb");
}

TEST(GeoArrow, CountsTheItemsOfEachLevel) {
  for (const qcArrowCoordinates coordinates : {interleaved, separated}) {
    const qcArrowColumn column =
        qf_ToArrow(multipolygons(), qcArrowLayout::eMultiPolygon, coordinates);
    const ArrowArray* level = &*column.array;
    for (const std::int64_t length : {3, 3, 4, 17, coordinates == interleaved ? 34 : 17}) {
      EXPECT_EQ(level->length, length);
      if (level->n_children > 0) level = level->children[0];
    }
  }
}

TEST(GeoArrow, HasNoBitmapWithoutNulls) {
  for (const qcArrowLayout layout : {qcArrowLayout::ePolygon, qcArrowLayout::eWkb}) {
    const qcArrowColumn column = qf_ToArrow(polygons().slice(0, 1), layout);
    EXPECT_EQ(column.array->buffers[0], nullptr);
    EXPECT_EQ(column.array->null_count, 0);
  }
}

TEST(GeoArrow, HasLargeOffsetsOnlyIfTheyMustBe) {
  constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
  const auto listOf = [](std::int64_t last) {
    qcArrowColumn nulls{table::makeArrowSchema({"n", "", ""}, {}),
                        table::makeArrowArray(last, last, {}, {})};
    return table::makeList({"", "", ""}, {}, {0, last}, std::move(nulls));
  };
  const qcArrowColumn small = listOf(most);
  EXPECT_EQ(formatsOf(*small.schema), "+l n");
  EXPECT_EQ(static_cast<const std::int32_t*>(small.array->buffers[1])[1], most);
  const qcArrowColumn large = listOf(most + 1);
  EXPECT_EQ(formatsOf(*large.schema), "+L n");
  EXPECT_EQ(static_cast<const std::int64_t*>(large.array->buffers[1])[1], most + 1);
}

TEST(GeoArrow, RefusesFeaturesThatTheLayoutCannotHold) {
  EXPECT_EQ(refusalOf([] { qf_ToArrow(multipolygons(), qcArrowLayout::ePolygon); }),
            "feature 1 has 2 parts, which is not for geoarrow.polygon");
  EXPECT_EQ(refusalOf([] { qf_ToArrow(mixed(), qcArrowLayout::eMultiPolygon); }),
            "feature 0 is made of lines, which is not for geoarrow.multipolygon");
  EXPECT_EQ(refusalOf([] { qf_ToArrow(mixed(), qcArrowLayout::eMultiLineString); }),
            "feature 2 is made of areas, which is not for geoarrow.multilinestring");
  EXPECT_EQ(refusalOf([] { qf_ToArrow(multilines(), qcArrowLayout::eLineString); }),
            "feature 0 has 2 parts, which is not for geoarrow.linestring");
  EXPECT_EQ(refusalOf([] { qf_ToArrow(polygons(), static_cast<qcArrowLayout>(6)); }),
            "there is no such layout");
}

TEST(GeoArrow, OfNoFeaturesComesBack) {
  for (const qcArrowLayout layout :
       {qcArrowLayout::ePolygon, qcArrowLayout::eMultiPolygon, qcArrowLayout::eLineString,
        qcArrowLayout::eMultiLineString, qcArrowLayout::eWkb}) {
    qcArrowColumn column = qf_ToArrow(qcOutlines(), layout);
    EXPECT_EQ(readBack(column).size(), 0U);
  }
}

/// A column written by hand, as the interface describes it.
TEST(GeoArrow, IsReadFromStructuresAsTheInterfaceDescribesThem) {
  static int releases = 0;
  releases = 0;
  const auto releaseSchema = [](ArrowSchema* released) { released->release = nullptr; };
  const auto releaseChild = [](ArrowArray* released) { released->release = nullptr; };
  const auto release = [](ArrowArray* released) {
    ++releases;
    released->release = nullptr;
  };
  std::string metadata;
  const auto addNumber = [&metadata](std::int32_t number) {
    metadata.append(reinterpret_cast<const char*>(&number), sizeof number);
  };
  addNumber(2);
  addNumber(3);
  metadata += "key";
  addNumber(0);
  addNumber(20);
  metadata += "ARROW:extension:name";
  addNumber(19);
  metadata += "geoarrow.linestring";

  alignas(8) const double coordinates[] = {1, 2, 3, 4, 5, 6, 7, 8, 1, 2};
  const std::int64_t offsets[] = {0, 2, 2, 5};
  const std::uint8_t validity[] = {0x05};

  ArrowSchema number{"g", "xy", nullptr, 0, 0, nullptr, nullptr, releaseSchema, nullptr};
  ArrowSchema* numberPlace[] = {&number};
  ArrowSchema vertex{"+w:2", "", nullptr, 0, 1, numberPlace, nullptr, releaseSchema, nullptr};
  ArrowSchema* vertexPlace[] = {&vertex};
  const ArrowSchema schema{"+L",        "geometry", metadata.data(), 2,      1,
                           vertexPlace, nullptr,    releaseSchema,   nullptr};

  const void* numberBuffers[] = {nullptr, coordinates};
  ArrowArray numbers{10, 0, 0, 2, 0, numberBuffers, nullptr, nullptr, releaseChild, nullptr};
  ArrowArray* numbersPlace[] = {&numbers};
  const void* vertexBuffers[] = {nullptr};
  ArrowArray vertices{5, 0, 0, 1, 1, vertexBuffers, numbersPlace, nullptr, releaseChild, nullptr};
  ArrowArray* verticesPlace[] = {&vertices};
  const void* buffers[] = {validity, offsets};
  ArrowArray array{3, -1, 0, 2, 1, buffers, verticesPlace, nullptr, release, nullptr};
  {
    const qcOutlines outlines = qf_FromArrow(&schema, &array);
    EXPECT_EQ(array.release, nullptr);
    ASSERT_EQ(outlines.size(), 3U);
    EXPECT_EQ(outlines.feature(0), (Feature{{{{1, 2}, {3, 4}}, {}}}));
    EXPECT_EQ(outlines.problem(1), "null");
    EXPECT_EQ(outlines.feature(2), (Feature{{{{5, 6}, {7, 8}, {1, 2}}, {}}}));
    EXPECT_EQ(outlines.ring(0, 0, 0).data(), coordinates);
    EXPECT_EQ(releases, 0);
  }
  EXPECT_EQ(releases, 1);
}

TEST(GeoArrow, SharesInterleavedCoordinatesUntilTheLastOutlinesAreGone) {
  qcArrowColumn column = qf_ToArrow(polygons());
  const auto* const coordinates =
      static_cast<const double*>(column.array->children[0]->children[0]->children[0]->buffers[1]);
  CountedArray counted(std::move(column.array));
  {
    qcOutlines outlines = qf_FromArrow(column.schema.get(), counted.get());
    const qcOutlines slice = outlines.slice(2, 1);
    EXPECT_EQ(outlines.ring(0, 0, 0).data(), coordinates);
    outlines = qcOutlines();
    EXPECT_EQ(counted.releases(), 0);
    EXPECT_EQ(slice.ring(0, 0, 0).data(), coordinates + 18);
    EXPECT_EQ(slice.feature(0), (Feature{{triangle, {}}}));
  }
  EXPECT_EQ(counted.releases(), 1);
}

TEST(GeoArrow, IsReleasedAtOnceWhenItIsCopied) {
  qcArrowColumn column = qf_ToArrow(polygons(), qcArrowLayout::ePolygon, separated);
  CountedArray counted(std::move(column.array));
  const qcOutlines outlines = qf_FromArrow(column.schema.get(), counted.get());
  EXPECT_EQ(counted.releases(), 1);
  expectSame(outlines, polygons());
}

TEST(GeoArrow, IsCopiedWhereItIsMisaligned) {
  qcArrowColumn column = qf_ToArrow(polygons());
  const auto misaligned = [](const void*& buffer, std::size_t size) {
    std::vector<std::byte> bytes(size + 1);
    std::memcpy(bytes.data() + 1, buffer, size);
    buffer = bytes.data() + 1;
    return bytes;
  };
  ArrowArray& rings = *column.array->children[0];
  const auto features = misaligned(column.array->buffers[1], 4 * sizeof(std::int32_t));
  const auto vertices = misaligned(rings.buffers[1], 4 * sizeof(std::int32_t));
  const auto coordinates =
      misaligned(rings.children[0]->children[0]->buffers[1], 26 * sizeof(double));
  const qcOutlines outlines = readBack(column);
  expectSame(outlines, polygons());
  const double* const copy = outlines.ring(0, 0, 0).data();
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(copy) % alignof(double), 0U);
}

TEST(GeoArrow, OfSlicesHasTheirFeatures) {
  for (const auto& [outlines, layout] : {std::pair(multipolygons(), qcArrowLayout::eMultiPolygon),
                                         std::pair(polygons(), qcArrowLayout::ePolygon),
                                         std::pair(lines(), qcArrowLayout::eLineString),
                                         std::pair(multilines(), qcArrowLayout::eMultiLineString),
                                         std::pair(mixed(), qcArrowLayout::eWkb)}) {
    for (const qcArrowCoordinates coordinates : {interleaved, separated}) {
      for (std::size_t first = 0; first <= 3; ++first) {
        for (std::size_t count = 0; first + count <= 3; ++count) {
          qcArrowColumn column = qf_ToArrow(outlines, layout, coordinates);
          column.array->offset = static_cast<std::int64_t>(first);
          column.array->length = static_cast<std::int64_t>(count);
          column.array->null_count = -1;
          expectSame(readBack(column), outlines.slice(first, count));
        }
      }
    }
  }
}

TEST(GeoArrow, CountsFromTheOffsetsOfItsItems) {
  for (const qcArrowCoordinates coordinates : {interleaved, separated}) {
    // All vertices in one list: those of the hole are 4 to 6, those of the triangle 7 to 9.
    qcOutlinesBuilder builder;
    builder.addLines({square});
    builder.addLines({hole});
    builder.addLines({triangle});
    qcArrowColumn column = qf_ToArrow(builder.finish(), qcArrowLayout::eLineString, coordinates);
    ArrowArray& vertices = *column.array->children[0];
    vertices.offset = 2;
    vertices.length = 7;
    const std::array<std::int32_t, 4> offsets{1, 2, 4, 7};
    column.array->buffers[1] = offsets.data();
    ArrowArray& numbers = *vertices.children[0];
    if (coordinates == interleaved) {
      numbers.offset = 2;
      numbers.length = 18;
    } else {
      for (const int i : {0, 1}) {
        vertices.children[i]->offset = 1;
        vertices.children[i]->length = 9;
      }
    }
    const qcOutlines outlines = readBack(column);
    ASSERT_EQ(outlines.size(), 3U);
    EXPECT_EQ(outlines.feature(0), (Feature{{{{1, 1}}, {}}}));
    EXPECT_EQ(outlines.feature(1), (Feature{{{{1, 2}, {2, 2}}, {}}}));
    EXPECT_EQ(outlines.feature(2), (Feature{{triangle, {}}}));
  }
}

TEST(GeoArrow, LosesZAndM) {
  for (const char* const format : {"+w:3", "+w:4"}) {
    const auto dimensions = static_cast<std::size_t>(format[3] - '0');
    std::vector<double> numbers;
    for (const qcVector<2>& p : triangle) {
      numbers.insert(numbers.end(), {p.x(), p.y()});
      numbers.resize(numbers.size() + dimensions - 2, 9.0);
    }
    qcOutlinesBuilder builder;
    builder.addLines({triangle});
    qcArrowColumn column = qf_ToArrow(builder.finish());
    column.schema->children[0]->format = format;
    ArrowArray& items = *column.array->children[0]->children[0];
    items.length = static_cast<std::int64_t>(numbers.size());
    items.buffers[1] = numbers.data();
    EXPECT_EQ(readBack(column).feature(0), (Feature{{triangle, {}}}));
  }
}

TEST(GeoArrow, WithoutANameGoesByItsDepth) {
  const auto unnamed = [](const qcOutlines& outlines) {
    qcArrowColumn column = qf_ToArrow(outlines);
    column.schema->metadata = nullptr;
    return readBack(column);
  };
  expectSame(unnamed(polygons()), polygons());
  expectSame(unnamed(multipolygons()), multipolygons());
  expectSame(unnamed(lines()), lines());
  expectSame(unnamed(mixed()), mixed());
  EXPECT_EQ(unnamed(multilines()).kind(0), qcOutlineKind::eAreas);
}

TEST(GeoArrow, TakesTheVerticesOfARowThatIsNullForNothing) {
  qcArrowColumn column = qf_ToArrow(polygons());
  const std::uint8_t none = 0;
  column.array->buffers[0] = &none;
  column.array->null_count = 3;
  const qcOutlines outlines = readBack(column);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(outlines.problem(i), "null");
    EXPECT_EQ(outlines.parts(i), 0U);
  }
}

TEST(GeoArrow, OfEmptyFeaturesIsEmpty) {
  qcArrowColumn column = qf_ToArrow(polygons());
  column.array->null_count = 0;
  EXPECT_EQ(readBack(column).problem(1), "empty");
  column = qf_ToArrow(mixed());
  column.array->null_count = 0;
  EXPECT_EQ(readBack(column).problem(1), "empty");
}

TEST(GeoArrow, OfBrokenWkbHasAProblemInThatRow) {
  qcArrowColumn column = qf_ToArrow(mixed());
  std::vector<std::int32_t> offsets(4);
  std::memcpy(offsets.data(), column.array->buffers[1], 16);
  ++offsets[0];
  column.array->buffers[1] = offsets.data();
  const qcOutlines outlines = readBack(column);
  EXPECT_EQ(outlines.problem(0), "WKB has 5 at byte 0, where the byte order 0 or 1 should be");
  EXPECT_EQ(outlines.feature(2), mixed().feature(2));
}

TEST(GeoArrow, RefusesOffsetsThatGoBackwardsOrBeyond) {
  const auto withOffsets = [](std::array<std::int32_t, 4> offsets, bool isOfRings) {
    return refusalOfDamaged([&](ArrowSchema&, ArrowArray& array) {
      (isOfRings ? *array.children[0] : array).buffers[1] = offsets.data();
    });
  };
  EXPECT_EQ(withOffsets({0, 5, 9, 13}, true), "");
  EXPECT_EQ(withOffsets({0, 5, 4, 13}, true), "level 1: offset 2 is 4, less than 5 before it");
  EXPECT_EQ(withOffsets({0, 5, 9, 14}, true), "level 1: offset 3 is 14, but there are 13 items");
  EXPECT_EQ(withOffsets({-1, 5, 9, 13}, true), "level 1: offset 0 is -1, which is negative");
  EXPECT_EQ(withOffsets({0, 2, 1, 3}, false), "level 0: offset 2 is 1, less than 2 before it");
  EXPECT_EQ(withOffsets({0, 2, 2, 4}, false), "level 0: offset 3 is 4, but there are 3 items");
}

TEST(GeoArrow, RefusesWhatContradictsItself) {
  const auto refusal = [](auto damage) {
    return refusalOfDamaged([&](ArrowSchema&, ArrowArray& array) { damage(array); });
  };
  EXPECT_EQ(refusal([](ArrowArray& a) { a.length = -3; }), "level 0: the length is -3");
  EXPECT_EQ(refusal([](ArrowArray& a) { a.offset = -1; }), "level 0: the offset is -1");
  EXPECT_EQ(refusal([](ArrowArray& a) { a.offset = std::numeric_limits<std::int64_t>::max(); }),
            "level 0: the array is longer than any memory");
  EXPECT_EQ(refusal([](ArrowArray& a) { a.length = std::numeric_limits<std::int64_t>::max(); }),
            "level 0: the array is longer than any memory");
  EXPECT_EQ(refusal([](ArrowArray& a) { a.null_count = -2; }),
            "level 0: the number of nulls is -2");
  EXPECT_EQ(refusal([](ArrowArray& a) { a.null_count = 4; }), "level 0: the number of nulls is 4");
  EXPECT_EQ(refusal([](ArrowArray& a) { a.buffers[0] = nullptr; }),
            "level 0: there are nulls, but nothing tells which");
  EXPECT_EQ(refusal([](ArrowArray& a) { a.n_buffers = 1; }),
            "level 0: the array has 1 buffers instead of 2");
  EXPECT_EQ(refusal([](ArrowArray& a) { a.buffers[1] = nullptr; }),
            "level 0: there are no offsets");
  EXPECT_EQ(refusal([](ArrowArray& a) { a.n_children = 0; }),
            "level 0: the array has 0 children instead of 1");
  EXPECT_EQ(refusal([](ArrowArray& a) { a.children = nullptr; }),
            "level 0: the list of children is missing");
  EXPECT_EQ(refusal([](ArrowArray& a) { a.buffers = nullptr; }),
            "level 0: the list of buffers is missing");
  EXPECT_EQ(refusal([](ArrowArray& a) { a.children[0]->length = -1; }),
            "level 1: the array is missing or its length is negative");
  EXPECT_EQ(refusal([](ArrowArray& a) { a.children[0]->children[0]->length = 12; }),
            "level 1: offset 3 is 13, but there are 12 items");
  EXPECT_EQ(refusal([](ArrowArray& a) { a.children[0]->children[0]->children[0]->length = 25; }),
            "level 3: there are 25 numbers instead of 26");
  EXPECT_EQ(refusal([](ArrowArray& a) { a.children[0]->children[0]->offset = 1; }),
            "level 3: there are 26 numbers instead of 28");
  EXPECT_EQ(
      refusal([](ArrowArray& a) { a.children[0]->children[0]->children[0]->buffers[1] = nullptr; }),
      "level 3: there are no numbers");
}

TEST(GeoArrow, RefusesItemsThatAreReleasedOrMissing) {
  qcArrowColumn column = qf_ToArrow(polygons());
  const qcArrowArray taken(column.array->children[0]);
  EXPECT_EQ(refusalOf([&] { readBack(column); }), "level 1: the array is missing or released");
  EXPECT_EQ(refusalOf([&] { readBack(column); }), "level 0: the array is missing or released");
  EXPECT_EQ(refusalOf([&] { qf_FromArrow(column.schema.get(), nullptr); }),
            "level 0: the array is missing or released");
}

TEST(GeoArrow, RefusesNullsWithinAFeature) {
  const std::array<std::uint8_t, 4> bitmap{0xFB, 0xFF, 0xFF, 0xFF};
  const auto refusal = [&](auto place, qcArrowCoordinates coordinates) {
    return refusalOfDamaged(
        [&](ArrowSchema&, ArrowArray& array) {
          ArrowArray& items = place(array);
          items.buffers[0] = bitmap.data();
          items.null_count = -1;
        },
        qcArrowLayout::ePolygon, coordinates);
  };
  const auto rings = [](ArrowArray& a) -> ArrowArray& { return *a.children[0]; };
  const auto vertices = [](ArrowArray& a) -> ArrowArray& { return *a.children[0]->children[0]; };
  const auto numbers = [](ArrowArray& a) -> ArrowArray& {
    return *a.children[0]->children[0]->children[0];
  };
  EXPECT_EQ(refusal(rings, interleaved), "level 1: item 2 is null");
  EXPECT_EQ(refusal(vertices, interleaved), "level 2: item 2 is null");
  EXPECT_EQ(refusal(numbers, interleaved), "level 3: item 2 is null");
  EXPECT_EQ(refusal(vertices, separated), "level 2: item 2 is null");
  EXPECT_EQ(refusal(numbers, separated), "level 3: item 2 is null");
}

TEST(GeoArrow, RefusesOtherFormats) {
  const auto refusal = [](auto damage, qcArrowCoordinates coordinates = interleaved) {
    return refusalOfDamaged([&](ArrowSchema& schema, ArrowArray&) { damage(schema); },
                            qcArrowLayout::ePolygon, coordinates);
  };
  EXPECT_EQ(refusal([](ArrowSchema& s) { s.format = "vu"; }),
            "the format 'vu' is not that of outlines");
  EXPECT_EQ(refusal([](ArrowSchema& s) { s.format = nullptr; }),
            "level 0: the schema is missing or released");
  EXPECT_EQ(refusal([](ArrowSchema& s) { s.children[0]->format = "+w:2"; }),
            "geoarrow.polygon is 2 lists deep, not 1");
  EXPECT_EQ(refusal([](ArrowSchema& s) { s.children[0]->children[0]->format = "+w:1"; }),
            "level 2: the format '+w:1' is not that of coordinates");
  EXPECT_EQ(refusal([](ArrowSchema& s) { s.children[0]->children[0]->children[0]->format = "f"; }),
            "level 3: the format is 'f' instead of 'g', 64-bit floating point numbers");
  EXPECT_EQ(refusal([](ArrowSchema& s) { s.n_children = 2; }),
            "level 0: the schema has 2 children instead of 1");
  EXPECT_EQ(refusal([](ArrowSchema& s) { s.children = nullptr; }),
            "level 0: the children of the schema are missing");
  EXPECT_EQ(refusal([](ArrowSchema& s) { s.dictionary = &s; }),
            "level 0: dictionaries are not read");
  EXPECT_EQ(refusal([](ArrowSchema& s) { s.children[0]->children[0]->children[1]->name = "Y"; },
                    separated),
            "level 2: the coordinates have no y");
  EXPECT_EQ(refusal([](ArrowSchema& s) { s.children[0]->children[0]->n_children = 5; }, separated),
            "level 2: the coordinates have 5 parts instead of x and y");
}

TEST(GeoArrow, RefusesColumnsOfOtherGeometries) {
  const auto named = [](const char* extension, std::string format) {
    const qcArrowSchema schema = table::makeArrowSchema({std::move(format), "", extension}, {});
    return refusalOfDamaged([&](ArrowSchema& s, ArrowArray&) { s.metadata = schema->metadata; });
  };
  EXPECT_EQ(named("geoarrow.multipoint", "+l"),
            "a column of 'geoarrow.multipoint' has no outlines");
  EXPECT_EQ(named("geoarrow.multipolygon", "+l"), "geoarrow.multipolygon is 3 lists deep, not 2");
}

TEST(GeoArrow, RefusesListsThatAreTooDeep) {
  qcArrowSchema schema = table::makeArrowSchema({"g", "", ""}, {});
  for (int i = 0; i < 4; ++i) {
    std::vector<qcArrowSchema> items;
    items.push_back(std::move(schema));
    schema = table::makeArrowSchema({"+l", "", ""}, std::move(items));
  }
  qcArrowArray array = table::makeArrowArray(0, 0, {nullptr, nullptr}, {});
  EXPECT_EQ(refusalOf([&] { qf_FromArrow(schema.get(), array.get()); }),
            "lists are nested more than 3 deep");
}

TEST(GeoArrow, IsReleasedWithoutASchema) {
  qcArrowColumn column = qf_ToArrow(polygons());
  CountedArray counted(std::move(column.array));
  EXPECT_EQ(refusalOf([&] { qf_FromArrow(nullptr, counted.get()); }),
            "level 0: the schema is missing or released");
  EXPECT_EQ(counted.releases(), 1);
}

/// A stream of columns that counts how often it is released.
class Chunks {
 public:
  Chunks(qcArrowLayout layout, const std::vector<qcOutlines>& lists, std::size_t failing = 99)
      : failing_(failing) {
    for (const qcOutlines& list : lists) columns_.push_back(qf_ToArrow(list, layout));
    stream_.private_data = this;
    stream_.get_schema = [](ArrowArrayStream* stream, ArrowSchema* out) {
      selfOf(stream).columns_.front().schema.moveTo(out);
      return 0;
    };
    stream_.get_next = [](ArrowArrayStream* stream, ArrowArray* out) {
      Chunks& self = selfOf(stream);
      if (self.next_ == self.failing_) return 5;
      if (self.next_ < self.columns_.size()) self.columns_[self.next_].array.moveTo(out);
      ++self.next_;
      return 0;
    };
    stream_.get_last_error = [](ArrowArrayStream*) { return "the wire was cut"; };
    stream_.release = [](ArrowArrayStream* stream) {
      ++selfOf(stream).releases_;
      stream->release = nullptr;
    };
  }
  Chunks(const Chunks&) = delete;
  Chunks& operator=(const Chunks&) = delete;

  ArrowArrayStream* get() { return &stream_; }
  int releases() const { return releases_; }
  const qcArrowColumn& column(std::size_t number) const { return columns_[number]; }

 private:
  static Chunks& selfOf(ArrowArrayStream* stream) {
    return *static_cast<Chunks*>(stream->private_data);
  }

  std::vector<qcArrowColumn> columns_;
  std::size_t failing_;
  std::size_t next_ = 0;
  int releases_ = 0;
  ArrowArrayStream stream_{};
};

TEST(GeoArrow, OfAStreamHasAllColumnsOneBehindTheOther) {
  Chunks chunks(qcArrowLayout::eMultiPolygon, {polygons(), qcOutlines(), multipolygons()});
  const qcOutlines outlines = qf_FromArrow(chunks.get());
  EXPECT_EQ(chunks.releases(), 1);
  EXPECT_EQ(chunks.get()->release, nullptr);
  ASSERT_EQ(outlines.size(), 6U);
  expectSame(outlines.slice(0, 3), polygons());
  expectSame(outlines.slice(3, 3), multipolygons());
}

TEST(GeoArrow, OfAStreamSharesTheCoordinatesOfAllColumns) {
  for (const std::size_t count : {1U, 3U}) {
    Chunks chunks(qcArrowLayout::ePolygon, std::vector<qcOutlines>(count, polygons()));
    std::vector<const void*> places;
    for (std::size_t i = 0; i < count; ++i)
      places.push_back(chunks.column(i).array->children[0]->children[0]->children[0]->buffers[1]);
    const qcOutlines outlines = qf_FromArrow(chunks.get());
    for (std::size_t i = 0; i < count; ++i)
      EXPECT_EQ(static_cast<const void*>(outlines.ring(3 * i, 0, 0).data()), places[i]) << i;
  }
}

TEST(GeoArrow, OfAStreamKeepsItsColumnsAsLongAsOneOfTheirFeatures) {
  Chunks chunks(qcArrowLayout::ePolygon, {polygons(), polygons()});
  qcOutlines outlines = qf_FromArrow(chunks.get());
  const std::vector<std::size_t> last{5};
  const qcOutlines slice = outlines.slice(3, 1);
  const qcOutlines selected = outlines.selected(last);
  outlines = qcOutlines();
  EXPECT_EQ(slice.feature(0), polygons().feature(0));
  EXPECT_EQ(selected.feature(0), polygons().feature(2));
}

TEST(GeoArrow, RefusesStreamsThatFail) {
  Chunks chunks(qcArrowLayout::ePolygon, {polygons(), polygons()}, 1);
  EXPECT_EQ(refusalOf([&] { qf_FromArrow(chunks.get()); }),
            "the stream failed with code 5: 'the wire was cut'");
  EXPECT_EQ(chunks.releases(), 1);
  EXPECT_EQ(refusalOf([&] { qf_FromArrow(chunks.get()); }), "the stream is missing or released");
  Chunks incomplete(qcArrowLayout::ePolygon, {polygons()});
  incomplete.get()->get_next = nullptr;
  EXPECT_EQ(refusalOf([&] { qf_FromArrow(incomplete.get()); }), "the stream is not complete");
  EXPECT_EQ(incomplete.releases(), 1);
}

}  // namespace
