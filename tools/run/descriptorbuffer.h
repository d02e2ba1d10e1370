// SPDX-License-Identifier: MIT
//
// A stream buffer that writes to a file descriptor of the system.

#pragma once

#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <streambuf>
#include <utility>

namespace tool {

/// A buffer in front of a file descriptor, which it closes. Remembers the first failure.
class DescriptorBuffer : public std::streambuf {
 public:
  explicit DescriptorBuffer(int descriptor) : descriptor_(descriptor) { restart(); }
  ~DescriptorBuffer() override {
    if (descriptor_ >= 0) ::close(descriptor_);
  }
  DescriptorBuffer(const DescriptorBuffer&) = delete;
  DescriptorBuffer& operator=(const DescriptorBuffer&) = delete;

  /// Writes what is left and closes the file; 0, or the system's error number of the first failure.
  int finish() {
    sync();
    if (::close(std::exchange(descriptor_, -1)) != 0 && failure_ == 0) failure_ = errno;
    return failure_;
  }

 protected:
  int_type overflow(int_type c) override {
    if (sync() != 0) return traits_type::eof();
    if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
    return sputc(traits_type::to_char_type(c));
  }

  int sync() override {
    const char* at = pbase();
    while (at != pptr() && failure_ == 0) {
      const ssize_t count = ::write(descriptor_, at, static_cast<std::size_t>(pptr() - at));
      if (count >= 0) {
        at += count;
      } else if (errno != EINTR) {
        failure_ = errno;
      }
    }
    restart();
    return failure_ == 0 ? 0 : -1;
  }

 private:
  void restart() { setp(buffer_.data(), buffer_.data() + buffer_.size()); }

  int descriptor_;
  int failure_ = 0;
  std::array<char, std::size_t{1} << 16U> buffer_{};
};

}  // namespace tool
