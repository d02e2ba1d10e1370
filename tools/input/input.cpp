// SPDX-License-Identifier: MIT

#include <tools/input/input.h>

namespace tool {

std::string displayName(const std::string& file) { return file == "-" ? "standard input" : file; }

Input openInput(const std::string& file, std::optional<Format> from) {
  Input input{displayName(file), std::make_unique<Source>(file)};
  const std::optional<Format> known = from ? from : formatByEnding(file);
  input.format = known ? *known : formatByContent(*input.source);
  return input;
}

}  // namespace tool
