// SPDX-License-Identifier: MIT
//
// Fuzz target: Arrow columns of any structure, alone or in tables with labels, problems and edge
// elements, once or as the chunks of a stream. Buffers are as large as the lengths demand, each in
// a block of its own; everything else may be wrong. Whatever is not refused must come back from
// Arrow.

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

#include <cntr/contourdefs.h>
#include <cntrtable/arrowmaking.h>
#include <cntrtable/attributes.h>
#include <cntrtable/geoarrow.h>

#include "input.h"
#include "outlines.h"

namespace {

using fuzz::Input;

constexpr std::array formats{"+l", "+L",   "+w:2", "+s", "g",   "z",
                             "Z",  "+w:3", "+w:4", "vz", "+w:", ""};
constexpr std::array extensions{"",
                                "geoarrow.polygon",
                                "geoarrow.multipolygon",
                                "geoarrow.linestring",
                                "geoarrow.multilinestring",
                                "geoarrow.wkb",
                                "geoarrow.point"};
constexpr std::array names{"x", "y", "z"};
/// Formats that labels, magnitudes and angles may have, and others.
constexpr std::array numberFormats{"S", "C", "c", "s", "i", "I", "l", "L", "g"};
constexpr std::array textFormats{"u", "U", "vu", "z"};
/// Beyond all offsets that never decrease.
constexpr std::size_t bytesOfValues = 1024;

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

/// A view of a value: a small one within it, or a place in a buffer that may not be there.
void drawView(Input& input, std::byte* view) {
  constexpr std::size_t shortest = 13;
  std::array<std::int32_t, 4> numbers{};
  const std::size_t size = input.below(256);
  numbers[0] = size == 255 ? -1 : static_cast<std::int32_t>(size);
  if (size >= shortest) {
    numbers[2] = static_cast<std::int32_t>(input.below(4)) - 1;
    numbers[3] = input.small();
  }
  std::memcpy(view, numbers.data(), sizeof numbers);
  for (std::size_t i = 0; size < shortest && i < size; ++i) view[4 + i] = std::byte{input.byte()};
}

/// The views, the buffers to which they refer, and the sizes of these, some of which are stated too
/// small.
void drawViews(Input& input, std::size_t items, std::vector<table::ArrowBuffer>& buffers) {
  constexpr std::size_t viewSize = 16;
  std::vector<std::byte> views(items * viewSize);
  for (std::size_t i = 0; i < items; ++i) drawView(input, &views[i * viewSize]);
  buffers.push_back(table::bufferOf(std::move(views)));
  std::vector<std::int64_t> sizes;
  for (std::size_t left = input.below(3); left > 0; --left) {
    const std::size_t size = input.below(256);
    buffers.push_back(drawBytes(input, size));
    const std::size_t hidden = input.below(256);
    sizes.push_back(static_cast<std::int64_t>(size) -
                    (hidden < 250 ? 0 : static_cast<std::int64_t>(hidden)));
  }
  buffers.push_back(table::bufferOf(std::move(sizes)));
}

/// 0 for formats that are not numbers.
std::size_t sizeOfNumber(const std::string& format) {
  if (format.size() != 1) return 0;
  switch (format[0]) {
    case 'c':
    case 'C':
      return 1;
    case 's':
    case 'S':
      return 2;
    case 'i':
    case 'I':
      return 4;
    case 'l':
    case 'L':
    case 'g':
      return 8;
    default:
      return 0;
  }
}

std::vector<table::ArrowBuffer> drawBuffers(Input& input, const std::string& format,
                                            std::size_t items) {
  std::vector<table::ArrowBuffer> buffers;
  buffers.push_back(input.below(4) == 0 ? drawBytes(input, (items + 7) / 8) : nullptr);
  if (format == "+l" || format == "z" || format == "u")
    buffers.push_back(drawOffsets<std::int32_t>(input, items + 1));
  if (format == "+L" || format == "Z" || format == "U")
    buffers.push_back(drawOffsets<std::int64_t>(input, items + 1));
  if (sizeOfNumber(format) > 0) buffers.push_back(drawBytes(input, items * sizeOfNumber(format)));
  if (format.find_first_of("zZuU") == 0) buffers.push_back(drawBytes(input, bytesOfValues));
  if (format == "vz" || format == "vu") drawViews(input, items, buffers);
  return buffers;
}

/// Any number of buffers; of binary views, whose sizes are behind the last one, none that reaches
/// beyond them.
std::int64_t drawBufferCount(Input& input, const std::string& format) {
  constexpr std::int64_t withoutValues = 3;
  const auto count = input.flag() ? std::numeric_limits<std::int64_t>::min()
                                  : static_cast<std::int64_t>(input.bits(8));
  return format.starts_with("v") ? std::min(count, withoutValues) : count;
}

/// An array as its format demands, except for some of its numbers and pointers.
qcArrowColumn drawArray(Input& input, const table::ArrowKind& kind, std::int64_t length,
                        std::vector<qcArrowColumn>&& children) {
  const std::string& format = kind.format;
  std::vector<qcArrowSchema> schemas;
  std::vector<qcArrowArray> arrays;
  for (qcArrowColumn& child : children) {
    schemas.push_back(std::move(child.schema));
    arrays.push_back(std::move(child.array));
  }
  const std::int64_t offset = input.below(4) == 0 ? drawLength(input) : 0;
  constexpr std::int64_t most = 64;
  const bool isSound = length >= 0 && length < most && offset >= 0 && offset < most;
  const std::size_t items = isSound ? static_cast<std::size_t>(length + offset) : 0;
  std::vector<table::ArrowBuffer> buffers = drawBuffers(input, format, items);
  const std::int64_t nulls = static_cast<std::int64_t>(input.below(8)) - 2;
  qcArrowColumn column{
      table::makeArrowSchema(kind, std::move(schemas)),
      table::makeArrowArray(length, nulls > 1 ? 0 : nulls, std::move(buffers), std::move(arrays))};
  column.array->offset = offset;
  switch (input.below(32)) {
    case 0:
      column.array->n_buffers = drawBufferCount(input, format);
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

qcArrowColumn drawColumn(Input& input, int depth) {
  const std::string format = formats[input.below(depth > 4 ? 5 : formats.size())];
  std::vector<qcArrowColumn> children;
  for (std::size_t left = depth > 4 ? 0 : childrenOf(format, input); left > 0; --left)
    children.push_back(drawColumn(input, depth + 1));
  const char* const extension = depth == 0 ? extensions[input.below(extensions.size())] : "";
  const char* const name = names[input.below(names.size())];
  const std::int64_t length = drawLength(input);
  return drawArray(input, {format, name, extension}, length, std::move(children));
}

qcArrowColumn drawNumbers(Input& input, const char* name, std::int64_t length) {
  const char* const format = numberFormats[input.below(numberFormats.size())];
  return drawArray(input, {format, name, ""}, length, {});
}

/// Lists of edge elements; there are enough for all offsets that are drawn.
qcArrowColumn drawEdges(Input& input, std::int64_t rows) {
  constexpr std::int64_t enough = 60;
  std::vector<qcArrowColumn> numbers;
  for (const char* const name : {"magnitude", "angle"})
    numbers.push_back(drawNumbers(input, name, enough));
  std::vector<qcArrowColumn> elements;
  elements.push_back(drawArray(input, {"+s", "item", ""}, enough, std::move(numbers)));
  const char* const format = input.flag() ? "+L" : "+l";
  return drawArray(input, {format, "edge_elements", ""}, rows, std::move(elements));
}

/// The column, with columns that may stand beside it.
qcArrowColumn drawTable(Input& input, qcArrowColumn&& geometry) {
  const std::int64_t rows = geometry.array->length;
  geometry.schema->name = "geometry";
  std::vector<qcArrowColumn> columns;
  columns.push_back(std::move(geometry));
  const std::size_t others = input.byte();
  if (others % 2 == 1) columns.push_back(drawNumbers(input, "label", rows));
  if (others / 2 % 2 == 1) {
    const char* const format = textFormats[input.below(textFormats.size())];
    columns.push_back(drawArray(input, {format, "problem", ""}, rows, {}));
  }
  if (others / 4 % 2 == 1) columns.push_back(drawEdges(input, rows));
  return drawArray(input, {"+s", "", ""}, rows, std::move(columns));
}

struct Drawn {
  qcArrowColumn column;
  std::size_t chunks = 0;
};

Drawn draw(Input& input) {
  Drawn drawn{drawColumn(input, 0)};
  const std::size_t choice = input.byte();
  drawn.chunks = choice % 3;
  constexpr std::size_t ofColumns = 128;
  if (choice >= ofColumns) drawn.column = drawTable(input, std::move(drawn.column));
  return drawn;
}

/// An array that counts how often it is released, wherever it has been moved.
class Counted {
 public:
  explicit Counted(qcArrowArray&& array) : inner_(std::move(array)), handed_(*inner_) {
    handed_.private_data = this;
    handed_.release = [](ArrowArray* released) {
      Counted& self = *static_cast<Counted*>(released->private_data);
      ++self.releases_;
      self.inner_ = qcArrowArray();
      released->release = nullptr;
    };
  }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;
  ~Counted() = default;

  ArrowArray* get() { return &handed_; }
  int releases() const { return releases_; }

 private:
  qcArrowArray inner_;
  ArrowArray handed_;
  int releases_ = 0;
};

/// A stream of a column and its beginning, which may fail at any point.
class Stream {
 public:
  Stream(ArrowSchema& schema, std::vector<ArrowArray*> chunks, Input& input)
      : schema_(schema), chunks_(std::move(chunks)), failing_(input.below(8)) {
    const bool isMute = input.below(4) == 1;
    stream_.private_data = this;
    stream_.get_schema = [](ArrowArrayStream* stream, ArrowSchema* out) {
      Stream& self = selfOf(stream);
      if (self.failing_ == failsAtSchema) return 5;
      qcArrowSchema(&self.schema_).moveTo(out);
      return 0;
    };
    stream_.get_next = [](ArrowArrayStream* stream, ArrowArray* out) {
      Stream& self = selfOf(stream);
      if (self.next_ == self.failing_) return 7;
      *out = ArrowArray{};
      if (self.next_ < self.chunks_.size()) qcArrowArray(self.chunks_[self.next_]).moveTo(out);
      ++self.next_;
      return 0;
    };
    stream_.get_last_error = [](ArrowArrayStream*) { return "the wire was cut"; };
    if (isMute) stream_.get_last_error = nullptr;
    stream_.release = [](ArrowArrayStream* released) {
      ++selfOf(released).releases_;
      released->release = nullptr;
    };
  }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;
  ~Stream() = default;

  ArrowArrayStream* get() { return &stream_; }
  int releases() const { return releases_; }

 private:
  static constexpr std::size_t failsAtSchema = 7;

  static Stream& selfOf(ArrowArrayStream* stream) {
    return *static_cast<Stream*>(stream->private_data);
  }

  ArrowSchema& schema_;
  std::vector<ArrowArray*> chunks_;
  /// The chunk in place of which it fails.
  std::size_t failing_;
  std::size_t next_ = 0;
  int releases_ = 0;
  ArrowArrayStream stream_{};
};

void requireSameTable(const qcOutlines& read, const qcOutlines& written) {
  fuzz::requireSame(read, written, "a table that has been written and read again");
  const table::Attributes a = table::attributesOf(read);
  const table::Attributes b = table::attributesOf(written);
  fuzz::require(a.labels == b.labels, "the labels");
  fuzz::require(a.edges.magnitudes == b.edges.magnitudes && a.edges.angles == b.edges.angles &&
                    a.edges.counts == b.edges.counts,
                "the edge elements");
  const auto why = [](const table::Problem& problem) { return problem.why; };
  fuzz::require(std::ranges::equal(a.problems, b.problems, {}, why, why), "the problems");
}

void requireToComeBack(const qcOutlines& outlines) {
  fuzz::examine(outlines);
  for (const auto coordinates :
       {qcArrowCoordinates::eInterleaved, qcArrowCoordinates::eSeparated}) {
    qcArrowColumn again = qf_ToArrow(outlines, qcArrowLayout::eFitting, coordinates);
    fuzz::requireSame(qf_FromArrow(again.schema.get(), again.array.get()), outlines,
                      "what has been written and read again");
    again = qf_ToArrowTable(outlines, qcArrowLayout::eFitting, coordinates);
    requireSameTable(qf_FromArrow(again.schema.get(), again.array.get()), outlines);
  }
}

void readAlone(qcArrowColumn&& column) {
  Counted array(std::move(column.array));
  try {
    requireToComeBack(qf_FromArrow(column.schema.get(), array.get()));
  } catch (const qcContourDefs::BadParams&) {
  }
  fuzz::require(array.releases() == 1, "an array is released once");
}

/// A second chunk has the first items of the column, which come out like those of the first one.
void readAsStream(qcArrowColumn&& column, qcArrowColumn&& same, std::size_t chunks, Input& input) {
  same.array->length = std::min<std::int64_t>(same.array->length, 2);
  const std::int64_t length = column.array->length;
  const std::int64_t repeated = chunks == 2 ? same.array->length : 0;
  Counted first(std::move(column.array));
  Counted second(std::move(same.array));
  std::vector<ArrowArray*> arrays{first.get(), second.get()};
  arrays.resize(chunks);
  Stream stream(*column.schema, arrays, input);
  try {
    const qcOutlines outlines = qf_FromArrow(stream.get());
    requireToComeBack(outlines);
    const auto count = static_cast<std::size_t>(repeated);
    fuzz::require(outlines.size() == static_cast<std::size_t>(length) + count, "a row for each");
    fuzz::requireSame(outlines.slice(static_cast<std::size_t>(length), count),
                      outlines.slice(0, count), "the second chunk");
  } catch (const qcContourDefs::BadParams&) {
  }
  fuzz::require(stream.releases() == 1, "a stream is released once");
  for (Counted* const array : {&first, &second}) {
    if (array->get()->release != nullptr) qcArrowArray(array->get());
    fuzz::require(array->releases() == 1, "a chunk is released once");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input({data, size});
  Input again = input;
  Drawn drawn = draw(input);
  if (drawn.chunks == 0) {
    readAlone(std::move(drawn.column));
  } else {
    readAsStream(std::move(drawn.column), draw(again).column, drawn.chunks, input);
  }
  return 0;
}
