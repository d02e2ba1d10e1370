// SPDX-License-Identifier: MIT

#include <tools/input/text.h>

#include <iterator>

#include <tools/input/source.h>

namespace tool {

std::string readText(const std::string& file) {
  Source source(file);
  return {std::istreambuf_iterator<char>(&source), {}};
}

}  // namespace tool
