// SPDX-License-Identifier: MIT

#include <cntrformats/textbuffer.h>

#include <algorithm>
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

void TextBuffer::pad(std::size_t count) {
  reserve(size_ + count);
  std::fill_n(bytes_.get() + size_, count, '\0');
}

}  // namespace formats
