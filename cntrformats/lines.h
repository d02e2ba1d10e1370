// SPDX-License-Identifier: MIT
//
// A file line by line.

#pragma once

#include <istream>
#include <string>
#include <string_view>

#include <cntrformats/source.h>

namespace formats {

class Lines {
 public:
  explicit Lines(Source& source);

  /// Takes the next line without its end; false when there is none.
  bool next(std::string& text);
  /// The number of the last line, from 1.
  std::size_t number() const noexcept { return number_; }

 private:
  std::istream stream_;
  std::size_t number_ = 0;
};

bool isBlank(std::string_view text);

}  // namespace formats
