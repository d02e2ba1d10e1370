// SPDX-License-Identifier: MIT

#include <cntrformats/table/input.h>

namespace formats {

std::string displayName(const std::string& file) { return file == "-" ? "standard input" : file; }

Input openInput(const std::string& file, const Format* from) {
  Input input{displayName(file), std::make_unique<Source>(file),
              from != nullptr ? from : formatByEnding(file)};
  if (input.format == nullptr) input.format = &formatByContent(*input.source);
  return input;
}

}  // namespace formats
