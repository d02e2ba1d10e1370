// SPDX-License-Identifier: MIT
//
// Reads Arrow columns and tables of features.

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include <cntrtable/arrowattributes.h>
#include <cntrtable/arrowbytes.h>
#include <cntrtable/arrowchecks.h>
#include <cntrtable/geoarrow.h>
#include <cntrtable/outlinecolumns.h>
#include <cntrtable/refusal.h>
#include <cntrtable/wkb.h>

using table::childOf;
using table::placeOf;
using table::quoted;
using table::refuse;
using table::requireArray;
using table::requireNoNulls;

namespace {

using Offsets = std::vector<std::int64_t>;

constexpr std::size_t deepest = 3;

// Schemas

/// The value of a key in Arrow's metadata: the number of pairs, then the lengths and texts of keys
/// and values.
std::string metadataOf(const ArrowSchema& schema, std::string_view key) {
  const char* place = schema.metadata;
  if (place == nullptr) return "";
  const auto number = [&place] {
    std::int32_t value = 0;
    std::memcpy(&value, place, sizeof value);
    place += sizeof value;
    if (value < 0) refuse("the metadata of the schema have a negative length");
    return value;
  };
  const auto text = [&place, &number] {
    const auto length = static_cast<std::size_t>(number());
    const std::string_view found(place, length);
    place += length;
    return found;
  };
  for (std::int32_t left = number(); left > 0; --left) {
    const std::string_view name = text();
    const std::string_view value = text();
    if (name == key) return std::string(value);
  }
  return "";
}

struct ListLayout {
  const char* name;
  std::size_t depth;
  qcOutlineKind kind;
};

constexpr std::array<ListLayout, 4> listLayouts{
    {{"geoarrow.linestring", 1, qcOutlineKind::eLines},
     {"geoarrow.polygon", 2, qcOutlineKind::eAreas},
     {"geoarrow.multipolygon", 3, qcOutlineKind::eAreas},
     {"geoarrow.multilinestring", 2, qcOutlineKind::eLines}}};

/// The layout of lists nested this deep around coordinates.
ListLayout layoutOf(const std::string& name, std::size_t depth) {
  const auto* const found =
      std::find_if(listLayouts.begin(), listLayouts.end(), [&](const ListLayout& layout) {
        return name.empty() ? layout.depth == depth : layout.name == name;
      });
  if (found == listLayouts.end()) refuse("a column of " + quoted(name) + " has no outlines");
  if (found->depth != depth) {
    refuse(name + " is " + std::to_string(found->depth) + " lists deep, not " +
           std::to_string(depth));
  }
  return *found;
}

// Coordinates

/// Consecutive vertices: in the memory of the column, or in a list of their own.
struct Vertices {
  std::span<const double> coordinates;
  std::shared_ptr<const void> owner;
};

Vertices ownVertices(std::vector<double>&& numbers) {
  const auto owned = std::make_shared<const std::vector<double>>(std::move(numbers));
  return {*owned, owned};
}

/// The buffer of an array of numbers, from its first one on. It may be misaligned.
const std::byte* numbersOf(const ArrowSchema& schema, const ArrowArray* array, std::int64_t length,
                           std::size_t level) {
  if (std::string_view(schema.format) != "g") {
    refuse(placeOf(level) + ": the format is " + quoted(schema.format) +
           " instead of 'g', 64-bit floating point numbers");
  }
  requireArray(array, level, 2, 0);
  if (array->length < length) {
    refuse(placeOf(level) + ": there are " + std::to_string(array->length) +
           " numbers instead of " + std::to_string(length));
  }
  if (length > 0 && array->buffers[1] == nullptr) refuse(placeOf(level) + ": there are no numbers");
  if (length == 0) return nullptr;
  return static_cast<const std::byte*>(array->buffers[1]) +
         array->offset * std::int64_t{sizeof(double)};
}

bool isAligned(const std::byte* numbers) {
  return reinterpret_cast<std::uintptr_t>(numbers) % alignof(double) == 0;
}

/// Vertices from interleaved numbers: x, y, and whatever else each vertex has.
Vertices interleaved(const ArrowSchema& schema, const std::shared_ptr<const qcArrowArray>& owner,
                     const ArrowArray& array, std::int64_t begin, std::int64_t end,
                     std::size_t level) {
  const std::int64_t dimensions = std::string_view(schema.format).back() - '0';
  const std::byte* const all = numbersOf(childOf(schema, 0, level), array.children[0],
                                         (array.offset + array.length) * dimensions, level + 1);
  requireNoNulls(array, begin, end, level);
  const std::int64_t first = (array.offset + begin) * dimensions;
  requireNoNulls(*array.children[0], first, (array.offset + end) * dimensions, level + 1);
  const auto count = static_cast<std::size_t>(end - begin);
  if (count == 0) return ownVertices({});
  const std::byte* const numbers = all + first * std::int64_t{sizeof(double)};
  if (dimensions == 2 && isAligned(numbers)) {
    const auto* const aligned = static_cast<const double*>(static_cast<const void*>(numbers));
    return {{aligned, 2 * count}, owner};
  }
  std::vector<double> copy(2 * count);
  const std::size_t stride = static_cast<std::size_t>(dimensions) * sizeof(double);
  for (std::size_t i = 0; i < count; ++i)
    std::memcpy(&copy[2 * i], numbers + i * stride, 2 * sizeof(double));
  return ownVertices(std::move(copy));
}

std::int64_t coordinateNamed(const ArrowSchema& schema, std::string_view name, std::size_t level) {
  const std::int64_t child = table::childNamed(schema, name);
  if (child < 0) refuse(placeOf(level) + ": the coordinates have no " + std::string(name));
  return child;
}

/// Vertices from a struct with x and y.
Vertices separated(const ArrowSchema& schema, const ArrowArray& array, std::int64_t begin,
                   std::int64_t end, std::size_t level) {
  requireNoNulls(array, begin, end, level);
  const auto count = static_cast<std::size_t>(end - begin);
  std::vector<double> copy(2 * count);
  std::size_t place = 0;
  for (const std::string_view name : {"x", "y"}) {
    const std::int64_t child = coordinateNamed(schema, name, level);
    const std::byte* const numbers = numbersOf(*schema.children[child], array.children[child],
                                               array.offset + array.length, level + 1);
    requireNoNulls(*array.children[child], array.offset + begin, array.offset + end, level + 1);
    for (std::size_t i = 0; i < count; ++i) {
      const auto index = array.offset + begin + static_cast<std::int64_t>(i);
      std::memcpy(&copy[2 * i + place], numbers + index * std::int64_t{sizeof(double)},
                  sizeof(double));
    }
    ++place;
  }
  return ownVertices(std::move(copy));
}

Vertices verticesOf(const ArrowSchema& schema, const std::shared_ptr<const qcArrowArray>& owner,
                    const ArrowArray& array, std::int64_t begin, std::int64_t end,
                    std::size_t level) {
  return table::isStruct(schema) ? separated(schema, array, begin, end, level)
                                 : interleaved(schema, owner, array, begin, end, level);
}

/// Two to four interleaved numbers, or a struct of x and y, and perhaps z and m.
void requireCoordinates(const ArrowSchema& schema, const ArrowArray* array, std::size_t level) {
  const std::string_view format = schema.format;
  const bool isStruct = table::isStruct(schema);
  if (!isStruct && format != "+w:2" && format != "+w:3" && format != "+w:4")
    refuse(placeOf(level) + ": the format " + quoted(format) + " is not that of coordinates");
  if (!isStruct) table::requireOneChild(schema, level);
  if (isStruct && (schema.n_children < 2 || schema.n_children > 4)) {
    refuse(placeOf(level) + ": the coordinates have " + std::to_string(schema.n_children) +
           " parts instead of x and y");
  }
  requireArray(array, level, 1, isStruct ? schema.n_children : 1);
}

// Columns

/// The lists of a column from the outside in, and the coordinates in them.
struct Levels {
  std::vector<const ArrowSchema*> lists;
  const ArrowSchema* coordinates = nullptr;
};

Levels levelsOf(const ArrowSchema& schema) {
  Levels levels;
  levels.coordinates = &schema;
  while (table::isList(*levels.coordinates)) {
    const std::size_t level = levels.lists.size();
    if (level == deepest) refuse("lists are nested more than 3 deep");
    table::requireOneChild(*levels.coordinates, level);
    levels.lists.push_back(levels.coordinates);
    levels.coordinates = &childOf(*levels.coordinates, 0, level);
  }
  return levels;
}

std::vector<bool> nullsOf(const ArrowArray& array) {
  std::vector<bool> nulls;
  if (array.null_count == 0 || array.buffers[0] == nullptr) return nulls;
  for (std::int64_t i = 0; i < array.length; ++i) nulls.push_back(table::isNullAt(array, i));
  return nulls;
}

qcOutlines readLists(const ArrowSchema& schema, const std::string& name, const ArrowArray& column,
                     const std::shared_ptr<const qcArrowArray>& owner) {
  const Levels levels = levelsOf(schema);
  if (levels.lists.empty())
    refuse("the format " + quoted(schema.format) + " is not that of outlines");
  const ListLayout layout = layoutOf(name, levels.lists.size());
  const ArrowArray* array = &column;
  std::vector<Offsets> offsets;
  std::int64_t begin = 0;
  std::int64_t end = array->length;
  for (std::size_t level = 0; level < levels.lists.size(); ++level) {
    requireArray(array, level, 2, 1);
    if (level > 0) requireNoNulls(*array, begin, end, level);
    const ArrowArray* const items = array->children[0];
    if (items == nullptr || items->length < 0)
      refuse(placeOf(level + 1) + ": the array is missing or its length is negative");
    offsets.push_back(
        table::offsetsOf(*levels.lists[level], *array, begin, end, items->length, level));
    begin = offsets.back().front();
    end = offsets.back().back();
    for (std::int64_t& offset : offsets.back()) offset -= begin;
    array = items;
  }
  const std::size_t innermost = levels.lists.size();
  requireCoordinates(*levels.coordinates, array, innermost);
  Vertices vertices = verticesOf(*levels.coordinates, owner, *array, begin, end, innermost);

  qcRaggedOutlines arrays;
  arrays.kind = layout.kind;
  arrays.coordinates = vertices.coordinates;
  arrays.rings = offsets.back();
  if (layout.depth > 1) arrays.features = offsets.front();
  if (layout.depth > 2) arrays.parts = offsets[1];
  return table::OutlineColumns::asOutlines(
      table::columnsOf(arrays, std::move(vertices.owner), nullsOf(column)));
}

/// The features of a column; `owner` keeps its buffers alive.
qcOutlines readGeometry(const ArrowSchema& schema, const ArrowArray& array,
                        const std::shared_ptr<const qcArrowArray>& owner) {
  const std::string name = metadataOf(schema, "ARROW:extension:name");
  if (!table::isBinary(schema)) return readLists(schema, name, array, owner);
  if (!name.empty() && name != "geoarrow.wkb" && name != "ogc.wkb")
    refuse("a column of " + quoted(name) + " has no outlines");
  return qf_FromWkb(table::bytesOf(schema, array));
}

// Streams

void requireSuccess(int code, qcArrowStream& stream) {
  if (code == 0) return;
  const char* const why =
      stream->get_last_error == nullptr ? nullptr : stream->get_last_error(stream.get());
  refuse("the stream failed with code " + std::to_string(code) +
         (why == nullptr ? "" : ": " + quoted(why)));
}

/// Reads columns of one type, or tables, one after the other.
class ColumnReader {
 public:
  explicit ColumnReader(const ArrowSchema& schema) : schema_(schema) {
    if (!table::isStruct(schema)) return;
    geometry_ = table::childNamed(schema, "geometry");
    if (geometry_ < 0) refuse("the table has no column 'geometry'");
  }

  void take(qcArrowArray&& array) {
    const auto owner = std::make_shared<const qcArrowArray>(std::move(array));
    if (geometry_ < 0) {
      lists_.push_back(readGeometry(schema_, **owner, owner));
    } else {
      requireArray(&**owner, 0, 1, schema_.n_children);
      requireNoNulls(**owner, 0, (*owner)->length, 0);
      takeTable(owner);
    }
  }

  /// The outlines of all that has been taken. To be called once.
  qcOutlines outlines() {
    const qcOutlines all =
        lists_.size() == 1
            ? lists_.front()
            : table::OutlineColumns::asOutlines(table::OutlineColumns::joined(lists_));
    return geometry_ < 0 ? all : table::withAttributes(all, std::move(attributes_));
  }

 private:
  void takeTable(const std::shared_ptr<const qcArrowArray>& owner) {
    lists_.push_back(table::inColumn("geometry", [&] {
      return readGeometry(childOf(schema_, geometry_, 0), table::childWindow(**owner, geometry_, 0),
                          owner);
    }));
    table::appendAttributes(schema_, **owner, attributes_);
  }

  const ArrowSchema& schema_;
  /// The number of the geometry column of a table, -1 for a single column.
  std::int64_t geometry_ = -1;
  std::vector<qcOutlines> lists_;
  table::Attributes attributes_;
};

}  // namespace

qcOutlines qf_FromArrow(const ArrowSchema* schema, ArrowArray* array) {
  if (array == nullptr || array->release == nullptr)
    refuse("level 0: the array is missing or released");
  qcArrowArray owned(array);
  table::requireSchema(schema, 0);
  ColumnReader reader(*schema);
  reader.take(std::move(owned));
  return reader.outlines();
}

qcOutlines qf_FromArrow(ArrowArrayStream* stream) {
  if (stream == nullptr || stream->release == nullptr) refuse("the stream is missing or released");
  qcArrowStream owned(stream);
  if (owned->get_schema == nullptr || owned->get_next == nullptr)
    refuse("the stream is not complete");
  qcArrowSchema schema;
  requireSuccess(owned->get_schema(owned.get(), schema.get()), owned);
  table::requireSchema(schema.get(), 0);
  ColumnReader reader(*schema);
  while (true) {
    qcArrowArray array;
    requireSuccess(owned->get_next(owned.get(), array.get()), owned);
    if (array->release == nullptr) return reader.outlines();
    reader.take(std::move(array));
  }
}
