// SPDX-License-Identifier: MIT
//
// Tables of Arrow: labels, problems and edge elements beside the geometry, there and back, of any
// type that can hold them, damaged on purpose, and in streams of several tables.

#include <cntrtable/arrowattributes.h>
#include <cntrtable/geoarrow.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <optional>

#include <cntrtable/arrowmaking.h>

#include "countedarray.h"
#include "readback.h"
#include "refused.h"
#include "rings.h"

namespace {

using table::ArrowValidity;
using table::bufferOf;
using table::makeArrowArray;
using table::makeArrowSchema;
using table::makeStruct;
using Columns = std::vector<qcArrowColumn>;

void addRing(qcOutlinesBuilder& builder, const Points& ring, bool withEdgelets) {
  const std::span<double> place = builder.addRing(ring.size());
  std::vector<qcEdgelet> edgelets;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    place[2 * i] = ring[i].x();
    place[2 * i + 1] = ring[i].y();
    edgelets.emplace_back(ring[i], static_cast<unsigned short>(65535 - i),
                          qcAngle8(static_cast<std::uint8_t>(255 - i)));
  }
  if (withEdgelets) builder.setEdgelets(edgelets);
}

/// A square whose hole has edge elements, a feature without geometry, and a triangle that has some.
qcOutlines labelled() {
  qcOutlinesBuilder builder;
  addRing(builder, square, false);
  addRing(builder, hole, true);
  builder.endFeature(qcOutlineKind::eAreas, 4294967295U);
  builder.failFeature("torn");
  addRing(builder, triangle, true);
  builder.endFeature(qcOutlineKind::eAreas);
  return builder.finish();
}

qcOutlines triangles(std::size_t count) {
  qcOutlinesBuilder builder;
  for (std::size_t i = 0; i < count; ++i) builder.addAreas({{triangle, {}}});
  return builder.finish();
}

std::string refusalOfTable(qcArrowColumn& column) {
  return refusalOf([&] { readBack(column); });
}

std::string namesAndFormats(const ArrowSchema& schema) {
  std::string text = std::string(schema.name) + ":" + schema.format;
  for (std::int64_t i = 0; i < schema.n_children; ++i)
    text += " " + namesAndFormats(*schema.children[i]);
  return text;
}

/// Numbers; missing ones are null.
template <class T>
qcArrowColumn numbers(const char* name, const char* format,
                      const std::vector<std::optional<T>>& values) {
  std::vector<std::uint8_t> bitmap = table::makeBitmap(values.size());
  std::vector<T> numbers;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (values[i]) table::setBit(bitmap, i);
    numbers.push_back(values[i].value_or(T{77}));
  }
  ArrowValidity validity = table::makeArrowValidity(std::move(bitmap), values.size());
  return {makeArrowSchema({format, name, ""}, {}),
          makeArrowArray(static_cast<std::int64_t>(values.size()), validity.nulls,
                         {std::move(validity.bitmap), bufferOf(std::move(numbers))}, {})};
}

using Elements = std::vector<std::optional<std::int32_t>>;

/// Edge elements whose magnitudes and angles are 32-bit integers.
qcArrowColumn elements(std::vector<std::int64_t> offsets, const Elements& magnitudes,
                       const Elements& angles) {
  Columns parts = table::listOf(numbers<std::int32_t>("angle", "i", angles));
  parts.push_back(numbers<std::int32_t>("magnitude", "i", magnitudes));
  return table::makeList({"", "edge_elements", ""}, {}, std::move(offsets),
                         makeStruct({"+s", "item", ""}, magnitudes.size(), {}, std::move(parts)));
}

/// A table of triangles and another column.
qcArrowColumn tableWith(std::size_t rows, qcArrowColumn&& column) {
  Columns columns = table::listOf(std::move(column));
  columns.push_back(qf_ToArrow(triangles(rows)));
  return makeStruct({"+s", "", ""}, rows, {}, std::move(columns));
}

qcOutlines read(qcArrowColumn&& column) {
  const auto rows = static_cast<std::size_t>(column.array->length);
  qcArrowColumn all = tableWith(rows, std::move(column));
  return readBack(all);
}

std::string refusal(qcArrowColumn&& column) {
  return refusalOf([&] { read(std::move(column)); });
}

TEST(ArrowTable, HoldsLabelsProblemsAndEdgeElementsInEachLayout) {
  for (const qcArrowLayout layout :
       {qcArrowLayout::eFitting, qcArrowLayout::eMultiPolygon, qcArrowLayout::eWkb}) {
    for (const auto coordinates :
         {qcArrowCoordinates::eInterleaved, qcArrowCoordinates::eSeparated}) {
      qcArrowColumn column = qf_ToArrowTable(labelled(), layout, coordinates);
      expectSame(readBack(column), labelled());
    }
  }
  const qcArrowColumn column = qf_ToArrowTable(labelled(), qcArrowLayout::eWkb);
  EXPECT_EQ(namesAndFormats(*column.schema),
            ":+s geometry:z label:l problem:U edge_elements:+l item:+s magnitude:S angle:C");
  const auto separated = qcArrowCoordinates::eSeparated;
  EXPECT_EQ(
      namesAndFormats(*qf_ToArrowTable(triangles(1), qcArrowLayout::ePolygon, separated).schema),
      ":+s geometry:+l rings:+l vertices:+s x:g y:g label:l");
}

TEST(ArrowTable, HasOnlyTheColumnsOfWhatThereIs) {
  EXPECT_EQ(namesAndFormats(*qf_ToArrowTable(triangles(2), qcArrowLayout::eWkb).schema),
            ":+s geometry:z label:l");
  EXPECT_EQ(namesAndFormats(*qf_ToArrowTable(labelled().slice(1, 1), qcArrowLayout::eWkb).schema),
            ":+s geometry:z label:l problem:U");
  EXPECT_EQ(namesAndFormats(*qf_ToArrowTable(qcOutlines(), qcArrowLayout::eWkb).schema),
            ":+s geometry:z label:l");
  qcArrowColumn empty = qf_ToArrowTable(qcOutlines());
  EXPECT_EQ(readBack(empty).size(), 0U);
}

TEST(ArrowTable, OfASliceHasItsRows) {
  for (const qcArrowLayout layout : {qcArrowLayout::ePolygon, qcArrowLayout::eWkb}) {
    for (std::size_t first = 0; first <= 3; ++first) {
      for (std::size_t count = 0; first + count <= 3; ++count) {
        qcArrowColumn column = qf_ToArrowTable(labelled(), layout);
        column.array->offset = static_cast<std::int64_t>(first);
        column.array->length = static_cast<std::int64_t>(count);
        expectSame(readBack(column), labelled().slice(first, count));
        column = qf_ToArrowTable(labelled().slice(first, count), layout);
        expectSame(readBack(column), labelled().slice(first, count));
      }
    }
  }
}

TEST(ArrowTable, SharesItsCoordinatesAndIsReleasedOnce) {
  qcArrowColumn column = qf_ToArrowTable(labelled());
  const ArrowArray& geometry = *column.array->children[0];
  const void* const coordinates = geometry.children[0]->children[0]->children[0]->buffers[1];
  CountedArray counted(std::move(column.array));
  {
    const qcOutlines outlines = qf_FromArrow(column.schema.get(), counted.get());
    EXPECT_EQ(static_cast<const void*>(outlines.ring(0, 0, 0).data()), coordinates);
    expectSame(outlines, labelled());
    EXPECT_EQ(counted.releases(), 0);
  }
  EXPECT_EQ(counted.releases(), 1);
}

TEST(ArrowTable, IsReleasedOnceWhenItIsRefused) {
  qcArrowColumn column = tableWith(2, numbers<std::int64_t>("label", "l", {1, -1}));
  CountedArray counted(std::move(column.array));
  EXPECT_EQ(refusalOf([&] { qf_FromArrow(column.schema.get(), counted.get()); }),
            "label in row 1 must be from 0 to 4294967295, not -1");
  EXPECT_EQ(counted.releases(), 1);
}

template <class T>
void expectLabels(const char* format) {
  constexpr T largest =
      std::numeric_limits<T>::max() < 100 ? std::numeric_limits<T>::max() : T{100};
  const qcOutlines outlines = read(numbers<T>("label", format, {T{0}, std::nullopt, largest}));
  EXPECT_EQ(outlines.label(0), 0U) << format;
  EXPECT_EQ(outlines.label(1), std::nullopt) << format;
  EXPECT_EQ(outlines.label(2), static_cast<std::uint32_t>(largest)) << format;
}

TEST(ArrowTable, HasLabelsOfAnySize) {
  expectLabels<std::int8_t>("c");
  expectLabels<std::uint8_t>("C");
  expectLabels<std::int16_t>("s");
  expectLabels<std::uint16_t>("S");
  expectLabels<std::int32_t>("i");
  expectLabels<std::uint32_t>("I");
  expectLabels<std::int64_t>("l");
  expectLabels<std::uint64_t>("L");
}

TEST(ArrowTable, RefusesLabelsThatAreOutOfRange) {
  EXPECT_EQ(refusal(numbers<std::int8_t>("label", "c", {std::int8_t{-7}})),
            "label in row 0 must be from 0 to 4294967295, not -7");
  EXPECT_EQ(refusal(numbers<std::int64_t>("label", "l", {std::nullopt, 4294967296})),
            "label in row 1 must be from 0 to 4294967295, not 4294967296");
  EXPECT_EQ(
      refusal(numbers<std::uint64_t>("label", "L", {std::numeric_limits<std::uint64_t>::max()})),
      "label in row 0 must be from 0 to 4294967295, not 18446744073709551615");
}

TEST(ArrowTable, HasEdgeElementsForAllVerticesOfARingOrNone) {
  const qcOutlines outlines =
      read(elements({0, 3, 3, 6, 9}, {1, 2, 65535, 1, std::nullopt, 3, 1, 2, 3},
                    {4, 5, 255, 4, 5, 6, 4, 5, std::nullopt}));
  const std::vector<qcEdgelet> expected{{triangle[0], 1, qcAngle8(std::uint8_t{4})},
                                        {triangle[1], 2, qcAngle8(std::uint8_t{5})},
                                        {triangle[2], 65535, qcAngle8(std::uint8_t{255})}};
  EXPECT_EQ(edgeletsOf(outlines, 0, 0, 0), expected);
  for (const std::size_t feature : {1U, 2U, 3U})
    EXPECT_TRUE(outlines.edgelets(feature, 0, 0).empty()) << feature;
}

TEST(ArrowTable, TakesListsThatAreNullForEmptyOnes) {
  qcArrowColumn column = elements({0, 3, 6}, {1, 2, -9, 4, 5, 6}, {1, 2, 3, 4, 5, 6});
  const std::uint8_t second = 2;
  column.array->buffers[0] = &second;
  column.array->null_count = -1;
  const qcOutlines outlines = read(std::move(column));
  EXPECT_TRUE(outlines.edgelets(0, 0, 0).empty());
  EXPECT_EQ(outlines.edgelets(1, 0, 0)[2].magnitude(), 6);
}

TEST(ArrowTable, TakesElementsThatAreNullForMissingOnes) {
  qcArrowColumn column = elements({0, 3, 6}, {-9, 2, 3, 4, 5, 6}, {1, 2, 3, 4, 5, 6});
  const std::uint8_t allButFirst = 0xFE;
  column.array->children[0]->buffers[0] = &allButFirst;
  column.array->children[0]->null_count = 1;
  const qcOutlines outlines = read(std::move(column));
  EXPECT_TRUE(outlines.edgelets(0, 0, 0).empty());
  EXPECT_EQ(outlines.edgelets(1, 0, 0)[0].magnitude(), 4);
}

TEST(ArrowTable, RefusesEdgeElementsThatAreOutOfRange) {
  const Elements fine{1, 2, 3};
  EXPECT_EQ(refusal(elements({0, 3}, {1, 65536, 3}, fine)),
            "edge_elements: magnitude in row 0 must be from 0 to 65535, not 65536");
  EXPECT_EQ(refusal(elements({0, 0, 3}, {1, -2, 3}, fine)),
            "edge_elements: magnitude in row 1 must be from 0 to 65535, not -2");
  EXPECT_EQ(refusal(elements({0, 3}, fine, {1, 2, 256})),
            "edge_elements: angle in row 0 must be from 0 to 255, not 256");
}

TEST(ArrowTable, RefusesEdgeElementsThatAreNotOneForEachVertex) {
  EXPECT_EQ(refusal(elements({0, 0, 2}, {1, 2}, {1, 2})),
            "feature 1 has 2 edge elements for 3 vertices");
  EXPECT_EQ(refusal(elements({0, 4}, {1, 2, 3, 4}, {1, 2, 3, 4})),
            "feature 0 has 4 edge elements for 3 vertices");
}

qcArrowColumn texts(const char* name, const std::vector<std::string>& values) {
  table::TextColumn column(values.size());
  for (const std::string& value : values) column.add(value);
  return std::move(column).named(name);
}

TEST(ArrowTable, IgnoresColumnsOfOtherTypes) {
  std::vector<qcArrowColumn> others;
  for (const char* const name : {"label", "edge_elements", "other"})
    others.push_back(texts(name, {"a", "b"}));
  for (const char* const name : {"label", "problem", "edge_elements", "other"})
    others.push_back(numbers<double>(name, "g", {1.0, 2.0}));
  others.push_back(numbers<std::int32_t>("edge_elements", "i", {1, 2}));
  others.push_back(elements({0, 1, 2}, {1, 2}, {1, 2}));
  others.back().schema->format = "+w:1";
  others.push_back(elements({0, 0, 0}, {}, {}));
  others.back().schema->name = "label";
  others.push_back(elements({0, 1, 2}, {1, 2}, {1, 2}));
  others.back().schema->children[0]->children[0]->name = "direction";
  others.push_back(elements({0, 1, 2}, {1, 2}, {1, 2}));
  others.back().schema->children[0]->children[1]->format = "f";
  others.push_back(elements({0, 1, 2}, {1, 2}, {1, 2}));
  others.back().schema->children[0]->dictionary = others.back().schema.get();
  others.push_back(numbers<std::int32_t>("label", "i", {1, 2}));
  others.back().schema->dictionary = others.front().schema.get();
  for (qcArrowColumn& other : others) {
    const qcOutlines outlines = read(std::move(other));
    expectSame(outlines, triangles(2));
  }
}

TEST(ArrowTable, SaysOnlyOfFeaturesWithoutGeometryWhatTheirProblemIs) {
  qcOutlinesBuilder builder;
  builder.addAreas({{triangle, {}}});
  builder.failFeature("null");
  builder.failFeature("null");
  Columns columns = table::listOf(qf_ToArrow(builder.finish()));
  columns.push_back(texts("problem", {"none", "torn", ""}));
  qcArrowColumn all = makeStruct({"+s", "", ""}, 3, {}, std::move(columns));
  const qcOutlines outlines = readBack(all);
  EXPECT_EQ(outlines.problem(0), "");
  EXPECT_EQ(outlines.problem(1), "torn");
  EXPECT_EQ(outlines.problem(2), "null");
}

TEST(ArrowTable, IgnoresLabelsAndEdgeElementsOfFeaturesWithoutGeometry) {
  qcOutlinesBuilder builder;
  builder.failFeature("null");
  builder.addAreas({{triangle, {}}});
  Columns columns = table::listOf(qf_ToArrow(builder.finish()));
  columns.push_back(numbers<std::int64_t>("label", "l", {7, 8}));
  columns.push_back(elements({0, 2, 5}, {9, 9, 1, 2, 3}, {9, 9, 1, 2, 3}));
  qcArrowColumn all = makeStruct({"+s", "", ""}, 2, {}, std::move(columns));
  const qcOutlines outlines = readBack(all);
  EXPECT_EQ(outlines.label(0), std::nullopt);
  EXPECT_EQ(outlines.label(1), 8U);
  EXPECT_EQ(outlines.edgelets(1, 0, 0)[0].magnitude(), 1);
}

TEST(ArrowTable, ReadsTextsOfViews) {
  qcOutlinesBuilder builder;
  builder.failFeature("null");
  Columns columns = table::listOf(qf_ToArrow(builder.finish()));
  std::vector<std::byte> view(16);
  view[0] = std::byte{12};
  std::fill(view.begin() + 4, view.end(), std::byte{'x'});
  columns.push_back({makeArrowSchema({"vu", "problem", ""}, {}),
                     makeArrowArray(1, 0, {nullptr, bufferOf(std::move(view)), nullptr}, {})});
  qcArrowColumn all = makeStruct({"+s", "", ""}, 1, {}, std::move(columns));
  EXPECT_EQ(readBack(all).problem(0), "xxxxxxxxxxxx");
}

TEST(ArrowTable, RefusesColumnsThatContradictThemselves) {
  const auto damaged = [](const char* name, auto damage) {
    qcArrowColumn column = qf_ToArrowTable(labelled());
    for (std::int64_t i = 0; i < column.schema->n_children; ++i)
      if (std::string(column.schema->children[i]->name) == name) damage(*column.array->children[i]);
    return refusalOfTable(column);
  };
  EXPECT_EQ(damaged("geometry", [](ArrowArray& a) { a.length = 2; }),
            "geometry: level 0: there are 2 items instead of 3");
  EXPECT_EQ(damaged("geometry", [](ArrowArray& a) { a.offset = -1; }),
            "geometry: level 0: the offset is -1");
  EXPECT_EQ(damaged("geometry", [](ArrowArray& a) { a.children[0]->length = -1; }),
            "geometry: level 1: the array is missing or its length is negative");
  EXPECT_EQ(damaged("label", [](ArrowArray& a) { a.length = 2; }),
            "label: level 0: there are 2 items instead of 3");
  EXPECT_EQ(damaged("label", [](ArrowArray& a) { a.null_count = 4; }),
            "label: level 0: the number of nulls is 4");
  EXPECT_EQ(damaged("label", [](ArrowArray& a) { a.buffers[1] = nullptr; }),
            "label: level 0: there are no numbers");
  EXPECT_EQ(
      damaged("label", [](ArrowArray& a) { a.offset = std::numeric_limits<std::int64_t>::max(); }),
      "label: level 0: the offset is 9223372036854775807");
  EXPECT_EQ(damaged("problem", [](ArrowArray& a) { a.n_buffers = 2; }),
            "problem: level 0: the array has 2 buffers instead of 3");
  EXPECT_EQ(damaged("problem", [](ArrowArray& a) { const qcArrowArray taken(&a); }),
            "problem: level 0: the array is missing or released");
  EXPECT_EQ(damaged("edge_elements", [](ArrowArray& a) { a.n_children = 0; }),
            "edge_elements: level 0: the array has 0 children instead of 1");
  EXPECT_EQ(damaged("edge_elements", [](ArrowArray& a) { a.children[0]->n_children = 1; }),
            "edge_elements: level 1: the array has 1 children instead of 2");
  EXPECT_EQ(damaged("edge_elements", [](ArrowArray& a) { a.children[0]->length = 9; }),
            "edge_elements: level 0: offset 3 is 10, but there are 9 items");
  EXPECT_EQ(damaged("edge_elements", [](ArrowArray& a) { a.children[0]->children[1]->length = 9; }),
            "edge_elements: level 2: there are 9 items instead of 10");
  EXPECT_EQ(damaged("edge_elements",
                    [](ArrowArray& a) { a.children[0]->children[0]->buffers[1] = nullptr; }),
            "edge_elements: level 2: there are no numbers");
}

TEST(ArrowTable, RefusesTablesThatContradictThemselves) {
  const auto damaged = [](auto damage) {
    qcArrowColumn column = qf_ToArrowTable(labelled());
    damage(*column.schema, *column.array);
    return refusalOfTable(column);
  };
  EXPECT_EQ(damaged([](ArrowSchema& s, ArrowArray&) { s.children[0]->name = "shape"; }),
            "the table has no column 'geometry'");
  EXPECT_EQ(damaged([](ArrowSchema& s, ArrowArray&) { s.children = nullptr; }),
            "the table has no column 'geometry'");
  EXPECT_EQ(damaged([](ArrowSchema& s, ArrowArray&) { s.n_children = 3; }),
            "level 0: the array has 4 children instead of 3");
  EXPECT_EQ(damaged([](ArrowSchema&, ArrowArray& a) { a.length = -1; }),
            "level 0: the length is -1");
  EXPECT_EQ(damaged([](ArrowSchema&, ArrowArray& a) { a.length = 4; }),
            "geometry: level 0: there are 3 items instead of 4");
  EXPECT_EQ(damaged([](ArrowSchema&, ArrowArray& a) { a.children[0] = nullptr; }),
            "geometry: level 0: the array is missing or released");
  static const std::uint8_t allButSecond = 0xFD;
  EXPECT_EQ(damaged([](ArrowSchema&, ArrowArray& a) {
              a.buffers[0] = &allButSecond;
              a.null_count = 1;
            }),
            "level 0: item 1 is null");
}

/// A stream of tables.
class Tables {
 public:
  explicit Tables(std::vector<qcArrowColumn>&& tables) : tables_(std::move(tables)) {
    stream_.private_data = this;
    stream_.get_schema = [](ArrowArrayStream* stream, ArrowSchema* out) {
      static_cast<Tables*>(stream->private_data)->tables_.front().schema.moveTo(out);
      return 0;
    };
    stream_.get_next = [](ArrowArrayStream* stream, ArrowArray* out) {
      Tables& self = *static_cast<Tables*>(stream->private_data);
      if (self.next_ < self.tables_.size()) self.tables_[self.next_].array.moveTo(out);
      ++self.next_;
      return 0;
    };
    stream_.release = [](ArrowArrayStream* stream) { stream->release = nullptr; };
  }
  Tables(const Tables&) = delete;
  Tables& operator=(const Tables&) = delete;

  ArrowArrayStream* get() { return &stream_; }

 private:
  std::vector<qcArrowColumn> tables_;
  std::size_t next_ = 0;
  ArrowArrayStream stream_{};
};

TEST(ArrowTable, OfAStreamGoesOnWhereTheLastOneEnded) {
  std::vector<qcArrowColumn> tables;
  for (const qcOutlines& outlines : {labelled(), labelled().slice(0, 2), labelled().slice(1, 2)})
    tables.push_back(qf_ToArrowTable(outlines));
  qcOutlinesBuilder builder;
  for (const std::size_t i : {0U, 1U, 2U, 0U, 1U, 1U, 2U}) builder.add(labelled(), i);
  Tables all(std::move(tables));
  expectSame(qf_FromArrow(all.get()), builder.finish());
}

TEST(ArrowTable, CountsTheRowsOfAWholeStream) {
  std::vector<qcArrowColumn> tables;
  for (const std::int64_t label : {1, -1})
    tables.push_back(tableWith(2, numbers<std::int64_t>("label", "l", {1, label})));
  Tables labels(std::move(tables));
  EXPECT_EQ(refusalOf([&] { qf_FromArrow(labels.get()); }),
            "label in row 3 must be from 0 to 4294967295, not -1");
  tables.clear();
  for (const std::int64_t second : {6, 5}) {
    const Elements six{1, 2, 3, 4, 5, 6};
    tables.push_back(tableWith(2, elements({0, 3, second}, six, six)));
  }
  Tables counts(std::move(tables));
  EXPECT_EQ(refusalOf([&] { qf_FromArrow(counts.get()); }),
            "feature 3 has 2 edge elements for 3 vertices");
  tables.clear();
  for (const std::int32_t fifth : {5, -5}) {
    const Elements six{1, 2, 3, 4, fifth, 6};
    tables.push_back(tableWith(2, elements({0, 3, 6}, six, six)));
  }
  Tables edges(std::move(tables));
  EXPECT_EQ(refusalOf([&] { qf_FromArrow(edges.get()); }),
            "edge_elements: magnitude in row 3 must be from 0 to 65535, not -5");
}

}  // namespace
