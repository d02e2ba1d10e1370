// SPDX-License-Identifier: MIT
//
// A long text of which only a window is in memory: what is being examined, and what was read along
// with it.

#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>

#include <cntrformats/passage.h>
#include <cntrformats/passages.h>
#include <cntrformats/source.h>
#include <cntrformats/textbuffer.h>

namespace formats {

class TextWindow {
 public:
  /// Reads up to `step` bytes at once. Keeps everything until release().
  TextWindow(Source& source, std::size_t step) : source_(source), step_(step) {}

  /// The text that is kept, and how much of it has been passed.
  std::string_view kept() const noexcept { return text_.text(); }
  std::size_t position() const noexcept { return at_; }
  void pass(std::size_t count) noexcept { at_ = std::min(at_ + count, kept().size()); }

  /// From now on, what has been passed need not be kept: it is handed over with the features found
  /// in it before more is read. The position is then 0.
  void release(Passages& features) { features_ = &features; }
  /// REQUIRES: release() has been called. Hands over what has been passed.
  void handOver();

  /// Reads more; false at the end.
  bool more();

  /// The text from `offset` bytes after the position up to `ending`, which is not part of it, or up
  /// to the end; nothing when the text ends before `offset`. Passes nothing. The view lasts until
  /// the next call.
  std::optional<std::string_view> ahead(std::size_t offset, char ending);

  /// The place of what comes next.
  TextPlace place();

 private:
  Source& source_;
  const std::size_t step_;
  TextBuffer text_;
  std::size_t at_ = 0;
  /// Null before release().
  Passages* features_ = nullptr;
  /// The place where the kept text begins, and that of its byte `counted_`.
  TextPlace start_;
  TextPlace countedPlace_;
  std::size_t counted_ = 0;
};

}  // namespace formats
