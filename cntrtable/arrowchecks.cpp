// SPDX-License-Identifier: MIT

#include <cntrtable/arrowchecks.h>

#include <algorithm>
#include <cstring>

#include <cntrtable/outlinecolumns.h>
#include <cntrtable/refusal.h>

namespace table {

namespace {

bool hasLargeOffsets(const ArrowSchema& schema) {
  return std::string_view(schema.format).find_first_of("LZU") != std::string_view::npos;
}

/// Offsets `begin` to `end` of a list, at any address.
template <class T>
std::vector<std::int64_t> loaded(const void* buffer, std::int64_t begin, std::int64_t end) {
  std::vector<T> raw(static_cast<std::size_t>(end - begin + 1));
  std::memcpy(raw.data(), static_cast<const std::byte*>(buffer) + begin * std::int64_t{sizeof(T)},
              raw.size() * sizeof(T));
  return {raw.begin(), raw.end()};
}

}  // namespace

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

bool isReadable(const ArrowSchema* schema) {
  return schema != nullptr && schema->release != nullptr && schema->format != nullptr &&
         schema->dictionary == nullptr;
}

std::int64_t childNamed(const ArrowSchema& schema, std::string_view name) {
  if (schema.children == nullptr) return -1;
  for (std::int64_t i = 0; i < schema.n_children; ++i) {
    const ArrowSchema* const child = schema.children[i];
    if (isReadable(child) && child->name != nullptr && child->name == name) return i;
  }
  return -1;
}

bool isList(const ArrowSchema& schema) {
  const std::string_view format = schema.format;
  return format == "+l" || format == "+L";
}

bool isStruct(const ArrowSchema& schema) { return std::string_view(schema.format) == "+s"; }

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

ArrowArray childWindow(const ArrowArray& array, std::int64_t child, std::size_t level) {
  const ArrowArray* const items = array.children[child];
  if (items == nullptr || items->release == nullptr)
    refuse(placeOf(level) + ": the array is missing or released");
  const std::int64_t end = array.offset + array.length;
  if (items->length < end) {
    refuse(placeOf(level) + ": there are " + std::to_string(items->length) + " items instead of " +
           std::to_string(end));
  }
  if (items->offset < 0 || items->offset > longestArray - end)
    refuse(placeOf(level) + ": the offset is " + std::to_string(items->offset));
  ArrowArray window = *items;
  window.offset += array.offset;
  window.length = array.length;
  // The window has at most as many nulls as items.
  if (items->null_count <= items->length)
    window.null_count = std::min(items->null_count, window.length);
  return window;
}

std::vector<std::int64_t> offsetsOf(const ArrowSchema& schema, const ArrowArray& array,
                                    std::int64_t begin, std::int64_t end, std::int64_t available,
                                    std::size_t level) {
  if (begin == end) return {0};
  const void* const buffer = array.buffers[1];
  if (buffer == nullptr) refuse(placeOf(level) + ": there are no offsets");
  std::vector<std::int64_t> offsets =
      hasLargeOffsets(schema)
          ? loaded<std::int64_t>(buffer, array.offset + begin, array.offset + end)
          : loaded<std::int32_t>(buffer, array.offset + begin, array.offset + end);
  requireOffsets(offsets, placeOf(level) + ":", available, "items");
  return offsets;
}

}  // namespace table
