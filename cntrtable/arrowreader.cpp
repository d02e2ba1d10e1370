// SPDX-License-Identifier: MIT
//
// Reads Arrow columns of features. Levels are counted from the column itself, 0, inwards. Each is
// checked before it is read: what it states about itself, then the offsets into the next one.

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include <cntrtable/geoarrow.h>
#include <cntrtable/outlinecolumns.h>
#include <cntrtable/refusal.h>
#include <cntrtable/wkb.h>

using table::quoted;
using table::refuse;

namespace {

using Offsets = std::vector<std::int64_t>;

constexpr std::size_t deepest = 3;
/// Sums and products of a few lengths below this are numbers of 64 bits.
constexpr std::int64_t longestArray = std::numeric_limits<std::int64_t>::max() / 64;

std::string placeOf(std::size_t level) { return "level " + std::to_string(level); }

// Schemas

void requireSchema(const ArrowSchema* schema, std::size_t level) {
  if (schema == nullptr || schema->release == nullptr || schema->format == nullptr)
    refuse(placeOf(level) + ": the schema is missing or released");
  if (schema->dictionary != nullptr) refuse(placeOf(level) + ": dictionaries are not read");
}

const ArrowSchema& childOf(const ArrowSchema& schema, std::int64_t child, std::size_t level) {
  if (schema.children == nullptr)
    refuse(placeOf(level) + ": the children of the schema are missing");
  const ArrowSchema* const found = schema.children[child];
  requireSchema(found, level + 1);
  return *found;
}

void requireOneChild(const ArrowSchema& schema, std::size_t level) {
  if (schema.n_children == 1) return;
  refuse(placeOf(level) + ": the schema has " + std::to_string(schema.n_children) +
         " children instead of 1");
}

/// The value of a key in Arrow's list of metadata: a number of pairs, then length and text of each.
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

bool isList(const ArrowSchema& schema) {
  const std::string_view format = schema.format;
  return format == "+l" || format == "+L";
}

bool isBinary(const ArrowSchema& schema) {
  const std::string_view format = schema.format;
  return format == "z" || format == "Z";
}

bool isBinaryView(const ArrowSchema& schema) { return std::string_view(schema.format) == "vz"; }

bool hasLargeOffsets(const ArrowSchema& schema) {
  return std::string_view(schema.format).find_first_of("LZ") != std::string_view::npos;
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

// Arrays

/// Checks what an array states about itself.
void requireArray(const ArrowArray* array, std::size_t level, std::int64_t buffers,
                  std::int64_t children) {
  const auto refuseHere = [level](const std::string& why) { refuse(placeOf(level) + ": " + why); };
  if (array == nullptr || array->release == nullptr) refuseHere("the array is missing or released");
  if (array->length < 0) refuseHere("the length is " + std::to_string(array->length));
  if (array->offset < 0) refuseHere("the offset is " + std::to_string(array->offset));
  if (array->length > longestArray || array->offset > longestArray - array->length)
    refuseHere("the array is longer than any memory");
  if (array->null_count < -1 || array->null_count > array->length)
    refuseHere("the number of nulls is " + std::to_string(array->null_count));
  if (array->n_buffers != buffers) {
    refuseHere("the array has " + std::to_string(array->n_buffers) + " buffers instead of " +
               std::to_string(buffers));
  }
  if (array->n_children != children) {
    refuseHere("the array has " + std::to_string(array->n_children) + " children instead of " +
               std::to_string(children));
  }
  if (array->buffers == nullptr) refuseHere("the list of buffers is missing");
  if (children > 0 && array->children == nullptr) refuseHere("the list of children is missing");
  if (array->null_count > 0 && array->buffers[0] == nullptr)
    refuseHere("there are nulls, but nothing tells which");
}

bool isNullAt(const ArrowArray& array, std::int64_t index) {
  if (array.null_count == 0 || array.buffers[0] == nullptr) return false;
  const std::int64_t place = array.offset + index;
  const auto byte = static_cast<const std::uint8_t*>(array.buffers[0])[place / 8];
  return ((unsigned{byte} >> (place % 8)) & 1U) == 0U;
}

void requireNoNulls(const ArrowArray& array, std::int64_t begin, std::int64_t end,
                    std::size_t level) {
  for (std::int64_t i = begin; i < end; ++i)
    if (isNullAt(array, i)) refuse(placeOf(level) + ": item " + std::to_string(i) + " is null");
}

std::vector<bool> nullsOf(const ArrowArray& array) {
  std::vector<bool> nulls;
  if (array.null_count == 0 || array.buffers[0] == nullptr) return nulls;
  for (std::int64_t i = 0; i < array.length; ++i) nulls.push_back(isNullAt(array, i));
  return nulls;
}

/// Offsets `begin` to `end` of a list, at any address.
template <class T>
Offsets loaded(const void* buffer, std::int64_t begin, std::int64_t end) {
  std::vector<T> raw(static_cast<std::size_t>(end - begin + 1));
  std::memcpy(raw.data(), static_cast<const std::byte*>(buffer) + begin * std::int64_t{sizeof(T)},
              raw.size() * sizeof(T));
  return {raw.begin(), raw.end()};
}

/// Where the items `begin` to `end` of a list begin and end; `available` is the number of the items
/// that they consist of.
Offsets offsetsOf(const ArrowSchema& schema, const ArrowArray& array, std::int64_t begin,
                  std::int64_t end, std::int64_t available, std::size_t level) {
  if (begin == end) return {0};
  const void* const buffer = array.buffers[1];
  if (buffer == nullptr) refuse(placeOf(level) + ": there are no offsets");
  Offsets offsets = hasLargeOffsets(schema)
                        ? loaded<std::int64_t>(buffer, array.offset + begin, array.offset + end)
                        : loaded<std::int32_t>(buffer, array.offset + begin, array.offset + end);
  table::requireOffsets(offsets, placeOf(level) + ":", available, "items");
  return offsets;
}

// Coordinates

/// Vertices in a row: in the memory of the column, or in a list of their own.
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

/// Vertices from numbers in turn: x, y, and whatever else there is for each vertex.
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
  for (std::int64_t i = 0; i < schema.n_children; ++i) {
    const ArrowSchema& child = childOf(schema, i, level);
    if (child.name != nullptr && child.name == name) return i;
  }
  refuse(placeOf(level) + ": the coordinates have no " + std::string(name));
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
  return std::string_view(schema.format) == "+s"
             ? separated(schema, array, begin, end, level)
             : interleaved(schema, owner, array, begin, end, level);
}

/// Two to four numbers in turn, or a struct of x and y, and perhaps z and m.
void requireCoordinates(const ArrowSchema& schema, const ArrowArray* array, std::size_t level) {
  const std::string_view format = schema.format;
  const bool isStruct = format == "+s";
  if (!isStruct && format != "+w:2" && format != "+w:3" && format != "+w:4")
    refuse(placeOf(level) + ": the format " + quoted(format) + " is not that of coordinates");
  if (!isStruct) requireOneChild(schema, level);
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
  while (isList(*levels.coordinates)) {
    const std::size_t level = levels.lists.size();
    if (level == deepest) refuse("lists are nested more than 3 deep");
    requireOneChild(*levels.coordinates, level);
    levels.lists.push_back(levels.coordinates);
    levels.coordinates = &childOf(*levels.coordinates, 0, level);
  }
  return levels;
}

qcOutlines readLists(const ArrowSchema& schema, const std::string& name,
                     const std::shared_ptr<const qcArrowArray>& owner) {
  const Levels levels = levelsOf(schema);
  if (levels.lists.empty())
    refuse("the format " + quoted(schema.format) + " is not that of outlines");
  const ListLayout layout = layoutOf(name, levels.lists.size());
  const ArrowArray* array = &**owner;
  std::vector<Offsets> offsets;
  std::int64_t begin = 0;
  std::int64_t end = array->length;
  for (std::size_t level = 0; level < levels.lists.size(); ++level) {
    requireArray(array, level, 2, 1);
    if (level > 0) requireNoNulls(*array, begin, end, level);
    const ArrowArray* const items = array->children[0];
    if (items == nullptr || items->length < 0)
      refuse(placeOf(level + 1) + ": the array is missing or its length is negative");
    offsets.push_back(offsetsOf(*levels.lists[level], *array, begin, end, items->length, level));
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
      table::columnsOf(arrays, std::move(vertices.owner), nullsOf(**owner)));
}

using Bytes = std::span<const std::byte>;

/// The values of a binary column, one after the other.
class JoinedValues {
 public:
  JoinedValues(const ArrowSchema& schema, const ArrowArray& array) {
    requireArray(&array, 0, 3, 0);
    offsets_ = offsetsOf(schema, array, 0, array.length, longestArray, 0);
    bytes_ = static_cast<const std::byte*>(array.buffers[2]);
    if (bytes_ == nullptr && offsets_.front() < offsets_.back())
      refuse("level 0: there are no bytes");
  }

  Bytes operator()(std::int64_t index) const {
    const auto place = static_cast<std::size_t>(index);
    const auto size = static_cast<std::size_t>(offsets_[place + 1] - offsets_[place]);
    return size == 0 ? Bytes() : Bytes(bytes_ + offsets_[place], size);
  }

 private:
  Offsets offsets_;
  const std::byte* bytes_;
};

/// The values of a column of binary views. A view has 16 bytes: the size of the value, then either
/// up to 12 bytes of it, or its first 4, the number of the buffer that holds it, and where.
class ViewedValues {
 public:
  explicit ViewedValues(const ArrowArray& array)
      : array_(array), buffers_(std::max(array.n_buffers, otherBuffers) - otherBuffers) {
    requireArray(&array, 0, buffers_ + otherBuffers, 0);
    if (array.length > 0 && array.buffers[1] == nullptr) refuse("level 0: there are no views");
    if (buffers_ > 0 && array.buffers[array.n_buffers - 1] == nullptr)
      refuse("level 0: there are no sizes of buffers");
  }

  Bytes operator()(std::int64_t index) const {
    const std::byte* const view =
        static_cast<const std::byte*>(array_.buffers[1]) + (array_.offset + index) * viewSize;
    const std::int64_t size = numberAt(view, 0);
    if (size < 0) refuseView(index, "has the size " + std::to_string(size));
    if (size <= longestInside) return {view + 4, static_cast<std::size_t>(size)};
    const std::int64_t buffer = numberAt(view, 8);
    const std::int64_t begin = numberAt(view, 12);
    if (buffer < 0 || buffer >= buffers_)
      refuseView(index,
                 "is in buffer " + std::to_string(buffer) + " of " + std::to_string(buffers_));
    if (begin < 0 || begin + size > sizeOf(buffer)) {
      refuseView(index, "has the bytes " + std::to_string(begin) + " to " +
                            std::to_string(begin + size) + " of " + std::to_string(sizeOf(buffer)));
    }
    const auto* const bytes = static_cast<const std::byte*>(array_.buffers[2 + buffer]);
    if (bytes == nullptr) refuse("level 0: there are no bytes");
    return {bytes + begin, static_cast<std::size_t>(size)};
  }

 private:
  /// The buffers of nulls, views and sizes.
  static constexpr std::int64_t otherBuffers = 3;
  static constexpr std::int64_t viewSize = 16;
  static constexpr std::int64_t longestInside = 12;

  [[noreturn]] static void refuseView(std::int64_t index, const std::string& why) {
    refuse("level 0: item " + std::to_string(index) + " " + why);
  }

  static std::int64_t numberAt(const std::byte* view, std::size_t place) {
    std::int32_t number = 0;
    std::memcpy(&number, view + place, sizeof number);
    return number;
  }

  std::int64_t sizeOf(std::int64_t buffer) const {
    std::int64_t size = 0;
    std::memcpy(&size,
                static_cast<const std::byte*>(array_.buffers[array_.n_buffers - 1]) +
                    buffer * std::int64_t{sizeof size},
                sizeof size);
    return size;
  }

  const ArrowArray& array_;
  std::int64_t buffers_;
};

/// A feature of each value.
template <class Values>
qcOutlines readBinary(const ArrowArray& array, const Values& values) {
  std::vector<qcWkbValue> found(static_cast<std::size_t>(array.length));
  for (std::int64_t i = 0; i < array.length; ++i)
    if (!isNullAt(array, i)) found[static_cast<std::size_t>(i)] = values(i);
  return qf_FromWkb(found);
}

qcOutlines readColumn(const ArrowSchema& schema, qcArrowArray&& array) {
  const std::string name = metadataOf(schema, "ARROW:extension:name");
  if (!isBinary(schema) && !isBinaryView(schema))
    return readLists(schema, name, std::make_shared<const qcArrowArray>(std::move(array)));
  if (!name.empty() && name != "geoarrow.wkb" && name != "ogc.wkb")
    refuse("a column of " + quoted(name) + " has no outlines");
  if (isBinaryView(schema)) return readBinary(*array, ViewedValues(*array));
  return readBinary(*array, JoinedValues(schema, *array));
}

// Streams

void requireSuccess(int code, qcArrowStream& stream) {
  if (code == 0) return;
  const char* const why =
      stream->get_last_error == nullptr ? nullptr : stream->get_last_error(stream.get());
  refuse("the stream failed with code " + std::to_string(code) +
         (why == nullptr ? "" : ": " + quoted(why)));
}

qcOutlines joined(const std::vector<qcOutlines>& lists) {
  if (lists.size() == 1) return lists.front();
  qcOutlinesBuilder builder;
  for (const qcOutlines& list : lists)
    for (std::size_t i = 0; i < list.size(); ++i) builder.add(list, i);
  return builder.finish();
}

}  // namespace

qcOutlines qf_FromArrow(const ArrowSchema* schema, ArrowArray* array) {
  if (array == nullptr || array->release == nullptr)
    refuse("level 0: the array is missing or released");
  qcArrowArray owned(array);
  requireSchema(schema, 0);
  return readColumn(*schema, std::move(owned));
}

qcOutlines qf_FromArrow(ArrowArrayStream* stream) {
  if (stream == nullptr || stream->release == nullptr) refuse("the stream is missing or released");
  qcArrowStream owned(stream);
  if (owned->get_schema == nullptr || owned->get_next == nullptr)
    refuse("the stream is not complete");
  qcArrowSchema schema;
  requireSuccess(owned->get_schema(owned.get(), schema.get()), owned);
  requireSchema(schema.get(), 0);
  std::vector<qcOutlines> lists;
  while (true) {
    qcArrowArray array;
    requireSuccess(owned->get_next(owned.get(), array.get()), owned);
    if (array->release == nullptr) return joined(lists);
    lists.push_back(readColumn(*schema, std::move(array)));
  }
}
