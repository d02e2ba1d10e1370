// SPDX-License-Identifier: MIT

#include <cntrformats/archive/replay.h>

namespace formats {

std::uint64_t Replay::position() const {
  return passed_ + static_cast<std::uint64_t>(gptr() - eback());
}

Replay::int_type Replay::underflow() {
  passed_ = position();
  setg(nullptr, nullptr, nullptr);
  const std::string_view text = nextText();
  // Stream buffers consist of non-const characters, but nothing writes into this one.
  auto* const begin = const_cast<char*>(text.data());
  setg(begin, begin, begin + text.size());
  return text.empty() ? traits_type::eof() : traits_type::to_int_type(*begin);
}

std::string_view Replay::nextText() {
  while (begun_ < texts_.size()) {
    const auto& [buffer, size] = texts_[begun_++];
    if (size > 0) return buffer->text().substr(0, size);
  }
  last_ = TextBuffer(Source::mostAtOnce);
  try {
    source_.appendTo(last_, Source::mostAtOnce);
  } catch (...) {
    failure_ = std::current_exception();
    throw;
  }
  return last_.text();
}

}  // namespace formats
