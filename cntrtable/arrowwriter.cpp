// SPDX-License-Identifier: MIT
//
// Writes features as Arrow columns.

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <cntrtable/arrowattributes.h>
#include <cntrtable/arrowmaking.h>
#include <cntrtable/geoarrow.h>
#include <cntrtable/refusal.h>
#include <cntrtable/wkb.h>

using table::ArrowValidity;
using table::bufferOf;
using table::makeArrowArray;
using table::makeArrowSchema;
using table::makeList;

namespace {

constexpr const char* columnName = "geometry";

/// The kinds of features that occur, null ones left out.
struct Kinds {
  bool areas = false;
  bool lines = false;
  bool severalParts = false;
};

Kinds kindsOf(const qcOutlines& outlines) {
  Kinds kinds;
  for (std::size_t i = 0; i < outlines.size(); ++i) {
    kinds.areas = kinds.areas || outlines.kind(i) == qcOutlineKind::eAreas;
    kinds.lines = kinds.lines || outlines.kind(i) == qcOutlineKind::eLines;
    kinds.severalParts = kinds.severalParts || outlines.parts(i) > 1;
  }
  return kinds;
}

qcArrowLayout fittingLayout(const qcOutlines& outlines) {
  const Kinds kinds = kindsOf(outlines);
  if (kinds.areas && kinds.lines) return qcArrowLayout::eWkb;
  if (kinds.lines)
    return kinds.severalParts ? qcArrowLayout::eMultiLineString : qcArrowLayout::eLineString;
  return kinds.severalParts ? qcArrowLayout::eMultiPolygon : qcArrowLayout::ePolygon;
}

struct WrittenLayout {
  const char* name;
  qcOutlineKind kind;
  bool holdsSeveralParts;
};

WrittenLayout writtenAs(qcArrowLayout layout) {
  switch (layout) {
    case qcArrowLayout::ePolygon:
      return {"geoarrow.polygon", qcOutlineKind::eAreas, false};
    case qcArrowLayout::eMultiPolygon:
      return {"geoarrow.multipolygon", qcOutlineKind::eAreas, true};
    case qcArrowLayout::eLineString:
      return {"geoarrow.linestring", qcOutlineKind::eLines, false};
    case qcArrowLayout::eMultiLineString:
      return {"geoarrow.multilinestring", qcOutlineKind::eLines, true};
    default:
      table::refuse("there is no such layout");
  }
}

void requireToFit(const qcOutlines& outlines, const WrittenLayout& layout) {
  for (std::size_t i = 0; i < outlines.size(); ++i) {
    if (outlines.kind(i) == qcOutlineKind::eNothing) continue;
    const std::string subject = "feature " + std::to_string(i);
    if (outlines.kind(i) != layout.kind) {
      table::refuse(subject + " is made of " +
                    (layout.kind == qcOutlineKind::eAreas ? "lines" : "areas") +
                    ", which is not for " + layout.name);
    }
    if (!layout.holdsSeveralParts && outlines.parts(i) > 1) {
      table::refuse(subject + " has " + std::to_string(outlines.parts(i)) +
                    " parts, which is not for " + layout.name);
    }
  }
}

/// Which features are not null.
ArrowValidity validityOf(const qcOutlines& outlines) {
  std::vector<std::uint8_t> bitmap = table::makeBitmap(outlines.size());
  for (std::size_t i = 0; i < outlines.size(); ++i)
    if (outlines.kind(i) != qcOutlineKind::eNothing) table::setBit(bitmap, i);
  return table::makeArrowValidity(std::move(bitmap), outlines.size());
}

qcArrowColumn numbersNamed(const char* name, std::vector<double>&& numbers) {
  const auto length = static_cast<std::int64_t>(numbers.size());
  return {makeArrowSchema({"g", name, ""}, {}),
          makeArrowArray(length, 0, {nullptr, bufferOf(std::move(numbers))}, {})};
}

qcArrowColumn interleavedColumn(std::vector<double>&& coordinates) {
  const auto length = static_cast<std::int64_t>(coordinates.size() / 2);
  qcArrowColumn numbers = numbersNamed("xy", std::move(coordinates));
  return {makeArrowSchema({"+w:2", "vertices", ""}, table::listOf(std::move(numbers.schema))),
          makeArrowArray(length, 0, {nullptr}, table::listOf(std::move(numbers.array)))};
}

qcArrowColumn separatedColumn(const std::vector<double>& coordinates) {
  const std::size_t length = coordinates.size() / 2;
  std::vector<double> x(length);
  std::vector<double> y(length);
  for (std::size_t i = 0; i < length; ++i) {
    x[i] = coordinates[2 * i];
    y[i] = coordinates[2 * i + 1];
  }
  std::vector<qcArrowColumn> numbers = table::listOf(numbersNamed("x", std::move(x)));
  numbers.push_back(numbersNamed("y", std::move(y)));
  return table::makeStruct({"+s", "vertices", ""}, length, {}, std::move(numbers));
}

/// Offsets of items of items.
std::vector<std::int64_t> through(const std::vector<std::int64_t>& outer,
                                  const std::vector<std::int64_t>& inner) {
  std::vector<std::int64_t> offsets;
  offsets.reserve(outer.size());
  for (const std::int64_t offset : outer)
    offsets.push_back(inner[static_cast<std::size_t>(offset)]);
  return offsets;
}

qcArrowColumn listsOf(const qcOutlines& outlines, const WrittenLayout& layout,
                      qcArrowCoordinates coordinates) {
  requireToFit(outlines, layout);
  qcRaggedArrays arrays = outlines.toRagged();
  qcArrowColumn column = coordinates == qcArrowCoordinates::eInterleaved
                             ? interleavedColumn(std::move(arrays.coordinates))
                             : separatedColumn(arrays.coordinates);
  const table::ArrowKind whole{"", columnName, layout.name, true};
  const bool isAreas = layout.kind == qcOutlineKind::eAreas;
  ArrowValidity validity = validityOf(outlines);
  if (!isAreas && !layout.holdsSeveralParts) {
    return makeList(whole, std::move(validity),
                    through(through(arrays.features, arrays.parts), arrays.rings),
                    std::move(column));
  }
  const std::string ringsName = isAreas ? "rings" : "linestrings";
  column = makeList({"", ringsName, ""}, {}, std::move(arrays.rings), std::move(column));
  if (!isAreas || !layout.holdsSeveralParts) {
    return makeList(whole, std::move(validity), through(arrays.features, arrays.parts),
                    std::move(column));
  }
  column = makeList({"", "polygons", ""}, {}, std::move(arrays.parts), std::move(column));
  return makeList(whole, std::move(validity), std::move(arrays.features), std::move(column));
}

qcArrowColumn wkbColumn(const qcOutlines& outlines) {
  std::vector<std::byte> bytes;
  std::vector<std::int64_t> offsets{0};
  for (std::size_t i = 0; i < outlines.size(); ++i) {
    if (outlines.kind(i) != qcOutlineKind::eNothing) {
      const std::vector<std::byte> value = qf_ToWkb(outlines, i);
      bytes.insert(bytes.end(), value.begin(), value.end());
    }
    offsets.push_back(static_cast<std::int64_t>(bytes.size()));
  }
  ArrowValidity validity = validityOf(outlines);
  const auto length = static_cast<std::int64_t>(outlines.size());
  const char* const format = table::needsLargeOffsets(offsets) ? "Z" : "z";
  return {makeArrowSchema({format, columnName, "geoarrow.wkb", true}, {}),
          makeArrowArray(length, validity.nulls,
                         {std::move(validity.bitmap), table::offsetBuffer(std::move(offsets)),
                          bufferOf(std::move(bytes))},
                         {})};
}

}  // namespace

qcArrowColumn qf_ToArrow(const qcOutlines& outlines, qcArrowLayout layout,
                         qcArrowCoordinates coordinates) {
  if (layout == qcArrowLayout::eFitting) layout = fittingLayout(outlines);
  if (layout == qcArrowLayout::eWkb) return wkbColumn(outlines);
  return listsOf(outlines, writtenAs(layout), coordinates);
}

qcArrowColumn qf_ToArrowTable(const qcOutlines& outlines, qcArrowLayout layout,
                              qcArrowCoordinates coordinates) {
  std::vector<qcArrowColumn> columns;
  columns.push_back(qf_ToArrow(outlines, layout, coordinates));
  table::addAttributeColumns(table::attributesOf(outlines), columns);
  return table::makeStruct({"+s", "", ""}, outlines.size(), {}, std::move(columns));
}
