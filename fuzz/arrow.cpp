// SPDX-License-Identifier: MIT
//
// Fuzz target: Arrow columns of any structure. Buffers are as large as the lengths demand, each in
// a block of its own; everything else may be wrong. Whatever is not refused must come back from
// Arrow.

#include <array>

#include <cntr/contourdefs.h>
#include <cntrtable/arrowmaking.h>
#include <cntrtable/geoarrow.h>

#include "input.h"
#include "outlines.h"

namespace {

using fuzz::Input;

constexpr std::array formats{"+l", "+L",   "+w:2", "+s", "g",   "z",
                             "Z",  "+w:3", "+w:4", "f",  "+w:", ""};
constexpr std::array extensions{"",
                                "geoarrow.polygon",
                                "geoarrow.multipolygon",
                                "geoarrow.linestring",
                                "geoarrow.multilinestring",
                                "geoarrow.wkb",
                                "geoarrow.point"};
constexpr std::array names{"x", "y", "z"};
/// Beyond all offsets that never decrease.
constexpr std::size_t wkbBytes = 1024;

std::size_t childrenOf(const std::string& format, Input& input) {
  if (format == "+s") return 2 + input.below(3);
  return format.starts_with("+") ? 1 : 0;
}

/// Few items, or a length that no array has.
std::int64_t drawLength(Input& input) {
  const std::size_t length = input.below(64);
  if (length == 63) return static_cast<std::int64_t>(input.bits(8) | 0x7000000000000000U);
  return static_cast<std::int64_t>(length % 24);
}

/// A block of its own, exactly as long as its bytes.
table::ArrowBuffer drawBytes(Input& input, std::size_t size) {
  std::vector<std::uint8_t> bytes(size);
  for (std::uint8_t& byte : bytes) byte = input.byte();
  return table::bufferOf(std::move(bytes));
}

template <class T>
table::ArrowBuffer drawOffsets(Input& input, std::size_t count) {
  std::vector<T> offsets(count);
  T last = 0;
  for (T& offset : offsets) {
    const std::uint8_t step = input.byte();
    offset = static_cast<T>(last + (step < 250 ? step % 6 : -step));
    last = offset;
  }
  return table::bufferOf(std::move(offsets));
}

std::vector<table::ArrowBuffer> drawBuffers(Input& input, const std::string& format,
                                            std::size_t items) {
  std::vector<table::ArrowBuffer> buffers;
  buffers.push_back(input.below(4) == 0 ? drawBytes(input, (items + 7) / 8) : nullptr);
  if (format == "+l" || format == "z")
    buffers.push_back(drawOffsets<std::int32_t>(input, items + 1));
  if (format == "+L" || format == "Z")
    buffers.push_back(drawOffsets<std::int64_t>(input, items + 1));
  if (format == "g") buffers.push_back(drawBytes(input, items * sizeof(double)));
  if (format == "z" || format == "Z") buffers.push_back(drawBytes(input, wkbBytes));
  return buffers;
}

/// As its format demands, except for some of its numbers and pointers.
qcArrowColumn drawColumn(Input& input, int depth) {
  const std::string format = formats[input.below(depth > 4 ? 5 : formats.size())];
  std::vector<qcArrowSchema> schemas;
  std::vector<qcArrowArray> arrays;
  for (std::size_t left = depth > 4 ? 0 : childrenOf(format, input); left > 0; --left) {
    qcArrowColumn child = drawColumn(input, depth + 1);
    schemas.push_back(std::move(child.schema));
    arrays.push_back(std::move(child.array));
  }
  const char* const extension = depth == 0 ? extensions[input.below(extensions.size())] : "";
  const char* const name = names[input.below(names.size())];
  const std::int64_t length = drawLength(input);
  const std::int64_t offset = input.below(4) == 0 ? drawLength(input) : 0;
  constexpr std::int64_t most = 64;
  const bool isSound = length >= 0 && length < most && offset >= 0 && offset < most;
  const std::size_t items = isSound ? static_cast<std::size_t>(length + offset) : 0;
  std::vector<table::ArrowBuffer> buffers = drawBuffers(input, format, items);
  const std::int64_t nulls = static_cast<std::int64_t>(input.below(8)) - 2;
  qcArrowColumn column{
      table::makeArrowSchema({format, name, extension}, std::move(schemas)),
      table::makeArrowArray(length, nulls > 1 ? 0 : nulls, std::move(buffers), std::move(arrays))};
  column.array->offset = offset;
  switch (input.below(32)) {
    case 0:
      --column.array->n_buffers;
      break;
    case 1:
      column.array->buffers[0] = nullptr;
      break;
    case 2:
      column.array->buffers = nullptr;
      break;
    case 3:
      column.array->children = nullptr;
      break;
    case 4:
      column.schema->children = nullptr;
      break;
    case 5:
      column.schema->n_children = 0;
      break;
    case 6:
      column.array->n_children = 0;
      break;
    case 7:
      if (column.array->n_children > 0) qcArrowArray(column.array->children[0]);
      break;
    case 8:
      if (column.array->n_children > 0) column.array->children[0] = nullptr;
      break;
    default:
      break;
  }
  return column;
}

void (*releaseUncounted)(ArrowArray*) = nullptr;
int releases = 0;

void countRelease(ArrowArray* array) {
  ++releases;
  array->release = releaseUncounted;
  array->release(array);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input({data, size});
  qcArrowColumn column = drawColumn(input, 0);
  releases = 0;
  releaseUncounted = column.array->release;
  column.array->release = countRelease;
  try {
    const qcOutlines outlines = qf_FromArrow(column.schema.get(), column.array.get());
    fuzz::examine(outlines);
    for (const auto coordinates :
         {qcArrowCoordinates::eInterleaved, qcArrowCoordinates::eSeparated}) {
      qcArrowColumn again = qf_ToArrow(outlines, qcArrowLayout::eFitting, coordinates);
      fuzz::requireSame(qf_FromArrow(again.schema.get(), again.array.get()), outlines,
                        "what has been written and read again");
    }
  } catch (const qcContourDefs::BadParams&) {
  }
  fuzz::require(releases == 1, "an array is released once");
  return 0;
}
