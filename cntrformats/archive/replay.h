// SPDX-License-Identifier: MIT
//
// The bytes of a file from its beginning, although some of them have been read already.

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
    /// How many of its bytes count.
    std::size_t size;
  };

  Replay(std::vector<Text> texts, Source& source) : texts_(std::move(texts)), source_(source) {}

  /// How many bytes have been read.
  std::uint64_t position() const;
  /// What reading has thrown; null if nothing. Streams and archives keep it to themselves.
  std::exception_ptr failure() const noexcept { return failure_; }

 protected:
  int_type underflow() override;

 private:
  /// Empty at the end.
  std::string_view nextText();

  std::vector<Text> texts_;
  Source& source_;
  /// How many texts have been begun.
  std::size_t begun_ = 0;
  /// What was read from the source last.
  TextBuffer last_;
  /// How many bytes were read before those in the buffer.
  std::uint64_t passed_ = 0;
  std::exception_ptr failure_;
};

}  // namespace formats
