// SPDX-License-Identifier: MIT

#include <cntrformats/textbuffer.h>

#include <utility>

namespace formats {

void TextBuffer::reserve(std::size_t capacity) {
  if (capacity <= capacity_) return;
  // NOLINTNEXTLINE(modernize-avoid-c-arrays)
  auto bytes = std::make_unique_for_overwrite<char[]>(capacity);
  text().copy(bytes.get(), size_);
  bytes_ = std::move(bytes);
  capacity_ = capacity;
}

}  // namespace formats
