// SPDX-License-Identifier: MIT
//
// Files that gzip has packed, unpacked as they are read.

#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>

namespace formats {

/// What every gzip file begins with.
inline constexpr std::string_view gzipSignature = "\x1f\x8b";

class Gunzip {
 public:
  /// Fills a buffer with the next packed bytes and gives their count, 0 at the end.
  using ReadPacked = std::function<std::size_t(char* buffer, std::size_t size)>;

  explicit Gunzip(ReadPacked readPacked);
  ~Gunzip();
  Gunzip(const Gunzip&) = delete;
  Gunzip& operator=(const Gunzip&) = delete;

  /// The next bytes, at least one; 0 at the end. Throws FileError for data that gzip did not write,
  /// and when the packed bytes end too early.
  std::size_t read(char* buffer, std::size_t size);
  /// True while packed bytes that have been read are still to be unpacked.
  bool hasMore() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace formats
