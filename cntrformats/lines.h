// SPDX-License-Identifier: MIT
//
// A file line by line.

#pragma once

#include <istream>
#include <string>

#include <cntrformats/source.h>

namespace formats {

class Lines {
 public:
  explicit Lines(Source& source);

  /// Takes the next line without its end; false when there is none.
  bool next(std::string& text);
  /// Takes the text up to the next record separator, or to the end of the file.
  bool nextRecord(std::string& text);
  /// The number of the line that the last text began on, from 1.
  std::size_t number() const noexcept { return number_; }

 private:
  std::istream stream_;
  std::size_t number_ = 0;
  std::size_t following_ = 1;
};

bool isBlank(const std::string& text);

}  // namespace formats
