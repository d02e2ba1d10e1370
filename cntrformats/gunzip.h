// SPDX-License-Identifier: MIT
//
// Unpacks gzip files as they are read.

#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>

namespace formats {

/// The beginning of every gzip file.
inline constexpr std::string_view gzipSignature = "\x1f\x8b";

class Gunzip {
 public:
  /// Fills a buffer with the next packed bytes and returns their number, 0 at the end.
  using ReadPacked = std::function<std::size_t(char* buffer, std::size_t size)>;

  explicit Gunzip(ReadPacked readPacked);
  ~Gunzip();
  Gunzip(const Gunzip&) = delete;
  Gunzip& operator=(const Gunzip&) = delete;

  /// Reads the next bytes, at least one; 0 at the end. Throws FileError for data that gzip did not
  /// write, and when the packed bytes end too early.
  std::size_t read(char* buffer, std::size_t size);
  /// True while packed bytes that have been read remain to be unpacked.
  bool hasMore() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace formats
