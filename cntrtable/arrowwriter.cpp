// SPDX-License-Identifier: MIT
//
// Writes features as Arrow columns.

#include <algorithm>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <cntrtable/arrowmaking.h>
#include <cntrtable/geoarrow.h>
#include <cntrtable/refusal.h>
#include <cntrtable/wkb.h>

using table::ArrowBuffer;
using table::bufferOf;
using table::makeArrowArray;
using table::makeArrowSchema;

namespace {

constexpr const char* columnName = "geometry";

/// The kinds of features that there are, null ones left out.
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

/// Which features there are: no buffer when none is null.
struct Validity {
  ArrowBuffer bitmap;
  std::int64_t nulls = 0;
};

Validity validityOf(const qcOutlines& outlines) {
  std::vector<std::uint8_t> bitmap = table::makeBitmap(outlines.size());
  for (std::size_t i = 0; i < outlines.size(); ++i)
    if (outlines.kind(i) != qcOutlineKind::eNothing) table::setBit(bitmap, i);
  const std::int64_t nulls = table::countZeros(bitmap, outlines.size());
  if (nulls == 0) return {};
  return {bufferOf(std::move(bitmap)), nulls};
}

bool isLarge(const std::vector<std::int64_t>& offsets) {
  return offsets.back() > std::numeric_limits<std::int32_t>::max();
}

ArrowBuffer offsetBuffer(std::vector<std::int64_t>&& offsets) {
  if (isLarge(offsets)) return bufferOf(std::move(offsets));
  std::vector<std::int32_t> small(offsets.size());
  std::transform(offsets.begin(), offsets.end(), small.begin(),
                 [](std::int64_t offset) { return static_cast<std::int32_t>(offset); });
  return bufferOf(std::move(small));
}

template <class T>
std::vector<T> listOf(T only) {
  std::vector<T> list;
  list.push_back(std::move(only));
  return list;
}

qcArrowColumn numbersNamed(const char* name, std::vector<double>&& numbers) {
  const auto length = static_cast<std::int64_t>(numbers.size());
  return {makeArrowSchema({"g", name, ""}, {}),
          makeArrowArray(length, 0, {nullptr, bufferOf(std::move(numbers))}, {})};
}

qcArrowColumn interleavedColumn(std::vector<double>&& coordinates) {
  const auto length = static_cast<std::int64_t>(coordinates.size() / 2);
  qcArrowColumn numbers = numbersNamed("xy", std::move(coordinates));
  return {makeArrowSchema({"+w:2", "vertices", ""}, listOf(std::move(numbers.schema))),
          makeArrowArray(length, 0, {nullptr}, listOf(std::move(numbers.array)))};
}

qcArrowColumn separatedColumn(const std::vector<double>& coordinates) {
  const std::size_t length = coordinates.size() / 2;
  std::vector<double> x(length);
  std::vector<double> y(length);
  for (std::size_t i = 0; i < length; ++i) {
    x[i] = coordinates[2 * i];
    y[i] = coordinates[2 * i + 1];
  }
  qcArrowColumn first = numbersNamed("x", std::move(x));
  qcArrowColumn second = numbersNamed("y", std::move(y));
  std::vector<qcArrowSchema> schemas = listOf(std::move(first.schema));
  schemas.push_back(std::move(second.schema));
  std::vector<qcArrowArray> arrays = listOf(std::move(first.array));
  arrays.push_back(std::move(second.array));
  return {makeArrowSchema({"+s", "vertices", ""}, std::move(schemas)),
          makeArrowArray(static_cast<std::int64_t>(length), 0, {nullptr}, std::move(arrays))};
}

/// A column of lists, named and extended as `kind` has it, around the items.
qcArrowColumn listColumn(table::ArrowKind kind, Validity&& validity,
                         std::vector<std::int64_t>&& offsets, qcArrowColumn&& items) {
  kind.format = isLarge(offsets) ? "+L" : "+l";
  const auto length = static_cast<std::int64_t>(offsets.size()) - 1;
  return {makeArrowSchema(std::move(kind), listOf(std::move(items.schema))),
          makeArrowArray(length, validity.nulls,
                         {std::move(validity.bitmap), offsetBuffer(std::move(offsets))},
                         listOf(std::move(items.array)))};
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
  Validity validity = validityOf(outlines);
  if (!isAreas && !layout.holdsSeveralParts) {
    return listColumn(whole, std::move(validity),
                      through(through(arrays.features, arrays.parts), arrays.rings),
                      std::move(column));
  }
  const std::string ringsName = isAreas ? "rings" : "linestrings";
  column = listColumn({"", ringsName, ""}, {}, std::move(arrays.rings), std::move(column));
  if (!isAreas || !layout.holdsSeveralParts) {
    return listColumn(whole, std::move(validity), through(arrays.features, arrays.parts),
                      std::move(column));
  }
  column = listColumn({"", "polygons", ""}, {}, std::move(arrays.parts), std::move(column));
  return listColumn(whole, std::move(validity), std::move(arrays.features), std::move(column));
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
  Validity validity = validityOf(outlines);
  const auto length = static_cast<std::int64_t>(outlines.size());
  const char* const format = isLarge(offsets) ? "Z" : "z";
  return {makeArrowSchema({format, columnName, "geoarrow.wkb", true}, {}),
          makeArrowArray(length, validity.nulls,
                         {std::move(validity.bitmap), offsetBuffer(std::move(offsets)),
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
