// SPDX-License-Identifier: MIT
//
// The bytes of a file from its beginning, although some of them have already been read.

#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <streambuf>
#include <string_view>
#include <utility>
#include <vector>

#include <cntrformats/source.h>
#include <cntrformats/textbuffer.h>

namespace formats {

/// Texts one after the other, then what is left of a source.
class Replay : public std::streambuf {
 public:
  struct Text {
    std::shared_ptr<const TextBuffer> buffer;
    /// The number of its bytes that count.
    std::size_t size;
  };

  Replay(std::vector<Text> texts, Source& source) : texts_(std::move(texts)), source_(source) {}

  /// The number of bytes read.
  std::uint64_t position() const;
  /// What reading has thrown; null if nothing. Streams and archives do not pass it on.
  std::exception_ptr failure() const noexcept { return failure_; }

 protected:
  int_type underflow() override;

 private:
  /// Empty at the end.
  std::string_view nextText();

  std::vector<Text> texts_;
  Source& source_;
  /// The number of texts begun.
  std::size_t begun_ = 0;
  /// What was last read from the source.
  TextBuffer last_;
  /// The number of bytes read before those in the buffer.
  std::uint64_t passed_ = 0;
  std::exception_ptr failure_;
};

}  // namespace formats
