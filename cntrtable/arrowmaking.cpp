// SPDX-License-Identifier: MIT

#include <cntrtable/arrowmaking.h>

#include <algorithm>
#include <bit>
#include <limits>

namespace table {

namespace {

/// Children, and the list of pointers to them that Arrow asks for.
template <class T>
class ArrowChildren {
 public:
  explicit ArrowChildren(std::vector<qcArrowOwner<T>>&& children) : children_(std::move(children)) {
    for (qcArrowOwner<T>& child : children_) pointers_.push_back(child.get());
  }

  std::int64_t count() const { return static_cast<std::int64_t>(children_.size()); }
  T** pointers() { return pointers_.data(); }

 private:
  std::vector<qcArrowOwner<T>> children_;
  std::vector<T*> pointers_;
};

/// What a schema owns.
struct SchemaContents {
  ArrowKind kind;
  std::string metadata;
  ArrowChildren<ArrowSchema> children;
};

/// What an array owns.
struct ArrayContents {
  std::vector<ArrowBuffer> kept;
  std::vector<const void*> buffers;
  ArrowChildren<ArrowArray> children;
};

/// Releases what is owned. Children that were moved elsewhere are released there.
template <class Contents, class T>
void releaseContents(T* released) {
  const std::unique_ptr<Contents> contents(static_cast<Contents*>(released->private_data));
  released->private_data = nullptr;
  released->release = nullptr;
}

/// Arrow's list of one key with its value.
std::string extensionMetadata(const std::string& extension) {
  std::string metadata;
  const auto addNumber = [&metadata](std::size_t number) {
    const auto value = static_cast<std::int32_t>(number);
    metadata.append(reinterpret_cast<const char*>(&value), sizeof value);
  };
  const auto addText = [&](const std::string& text) {
    addNumber(text.size());
    metadata += text;
  };
  addNumber(1);
  addText("ARROW:extension:name");
  addText(extension);
  return metadata;
}

}  // namespace

qcArrowSchema makeArrowSchema(ArrowKind kind, std::vector<qcArrowSchema>&& children) {
  std::string metadata = kind.extension.empty() ? "" : extensionMetadata(kind.extension);
  auto contents = std::make_unique<SchemaContents>(SchemaContents{
      std::move(kind), std::move(metadata), ArrowChildren<ArrowSchema>(std::move(children))});
  ArrowSchema schema{};
  schema.format = contents->kind.format.c_str();
  schema.name = contents->kind.name.c_str();
  schema.metadata = contents->metadata.empty() ? nullptr : contents->metadata.data();
  schema.flags = contents->kind.isNullable ? ARROW_FLAG_NULLABLE : 0;
  schema.n_children = contents->children.count();
  schema.children = contents->children.pointers();
  schema.release = releaseContents<SchemaContents, ArrowSchema>;
  schema.private_data = contents.release();
  return qcArrowSchema(&schema);
}

qcArrowArray makeArrowArray(std::int64_t length, std::int64_t nulls,
                            std::vector<ArrowBuffer>&& buffers,
                            std::vector<qcArrowArray>&& children) {
  auto contents = std::make_unique<ArrayContents>(
      ArrayContents{std::move(buffers), {}, ArrowChildren<ArrowArray>(std::move(children))});
  for (const ArrowBuffer& buffer : contents->kept) contents->buffers.push_back(buffer.get());
  ArrowArray array{};
  array.length = length;
  array.null_count = nulls;
  array.n_buffers = static_cast<std::int64_t>(contents->buffers.size());
  array.n_children = contents->children.count();
  array.buffers = contents->buffers.data();
  array.children = contents->children.pointers();
  array.release = releaseContents<ArrayContents, ArrowArray>;
  array.private_data = contents.release();
  return qcArrowArray(&array);
}

TextColumn::TextColumn(std::size_t rows) : validity_(makeBitmap(rows)) {
  offsets_.reserve(rows + 1);
  offsets_.push_back(0);
}

void TextColumn::add(std::optional<std::string_view> text) {
  if (text) {
    setBit(validity_, offsets_.size() - 1);
    characters_ += *text;
  }
  offsets_.push_back(static_cast<std::int64_t>(characters_.size()));
}

qcArrowColumn TextColumn::named(const char* name) && {
  const std::size_t rows = offsets_.size() - 1;
  const std::int64_t nulls = countZeros(validity_, rows);
  return {makeArrowSchema({"U", name, "", true}, {}),
          makeArrowArray(static_cast<std::int64_t>(rows), nulls,
                         {bufferOf(std::move(validity_)), bufferOf(std::move(offsets_)),
                          bufferOf(std::move(characters_))},
                         {})};
}

ArrowValidity makeArrowValidity(std::vector<std::uint8_t>&& bitmap, std::size_t length) {
  const std::int64_t nulls = countZeros(bitmap, length);
  if (nulls == 0) return {};
  return {bufferOf(std::move(bitmap)), nulls};
}

qcArrowColumn makeStruct(ArrowKind kind, std::size_t length, ArrowValidity&& validity,
                         std::vector<qcArrowColumn>&& columns) {
  std::vector<qcArrowSchema> schemas;
  std::vector<qcArrowArray> arrays;
  for (qcArrowColumn& column : columns) {
    schemas.push_back(std::move(column.schema));
    arrays.push_back(std::move(column.array));
  }
  return {makeArrowSchema(std::move(kind), std::move(schemas)),
          makeArrowArray(static_cast<std::int64_t>(length), validity.nulls,
                         {std::move(validity.bitmap)}, std::move(arrays))};
}

qcArrowColumn makeList(ArrowKind kind, ArrowValidity&& validity,
                       std::vector<std::int64_t>&& offsets, qcArrowColumn&& items) {
  kind.format = needsLargeOffsets(offsets) ? "+L" : "+l";
  const auto length = static_cast<std::int64_t>(offsets.size()) - 1;
  return {makeArrowSchema(std::move(kind), listOf(std::move(items.schema))),
          makeArrowArray(length, validity.nulls,
                         {std::move(validity.bitmap), offsetBuffer(std::move(offsets))},
                         listOf(std::move(items.array)))};
}

bool needsLargeOffsets(const std::vector<std::int64_t>& offsets) {
  return offsets.back() > std::numeric_limits<std::int32_t>::max();
}

ArrowBuffer offsetBuffer(std::vector<std::int64_t>&& offsets) {
  if (needsLargeOffsets(offsets)) return bufferOf(std::move(offsets));
  std::vector<std::int32_t> small(offsets.size());
  std::transform(offsets.begin(), offsets.end(), small.begin(),
                 [](std::int64_t offset) { return static_cast<std::int32_t>(offset); });
  return bufferOf(std::move(small));
}

std::vector<std::uint8_t> makeBitmap(std::size_t length) {
  return std::vector<std::uint8_t>((length + 7) / 8);
}

std::int64_t countZeros(const std::vector<std::uint8_t>& bitmap, std::size_t length) {
  std::int64_t ones = 0;
  for (const std::uint8_t byte : bitmap) ones += std::popcount(byte);
  return static_cast<std::int64_t>(length) - ones;
}

}  // namespace table
