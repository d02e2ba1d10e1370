// SPDX-License-Identifier: MIT

#include <cntrtable/arrowbytes.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include <cntrtable/arrowchecks.h>
#include <cntrtable/refusal.h>

namespace table {

namespace {

using Bytes = std::span<const std::byte>;

/// Values one after the other.
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
  std::vector<std::int64_t> offsets_;
  const std::byte* bytes_;
};

/// Views of values. A view has 16 bytes: the size of the value, then either
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

template <class Values>
std::vector<std::optional<Bytes>> allOf(const ArrowArray& array, const Values& values) {
  std::vector<std::optional<Bytes>> found(static_cast<std::size_t>(array.length));
  for (std::int64_t i = 0; i < array.length; ++i)
    if (!isNullAt(array, i)) found[static_cast<std::size_t>(i)] = values(i);
  return found;
}

}  // namespace

bool isBinary(const ArrowSchema& schema) {
  const std::string_view format = schema.format;
  return format == "z" || format == "Z" || format == "vz";
}

bool isText(const ArrowSchema& schema) {
  const std::string_view format = schema.format;
  return format == "u" || format == "U" || format == "vu";
}

std::vector<std::optional<Bytes>> bytesOf(const ArrowSchema& schema, const ArrowArray& array) {
  const bool isViewed = std::string_view(schema.format).starts_with("v");
  return isViewed ? allOf(array, ViewedValues(array)) : allOf(array, JoinedValues(schema, array));
}

}  // namespace table
