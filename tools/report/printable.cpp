// SPDX-License-Identifier: MIT

#include <tools/report/printable.h>

#include <cstddef>

namespace tool {

namespace {

constexpr unsigned char firstPrintable = 0x20;
constexpr unsigned char deleteCharacter = 0x7f;
/// U+0080 to U+009F are this byte followed by one from 0x80 to 0x9f.
constexpr unsigned char leadOfControls = 0xc2;
constexpr unsigned char firstControl = 0x80;
constexpr unsigned char lastControl = 0x9f;

std::string twoDigits(unsigned char byte) {
  constexpr const char* digits = "0123456789abcdef";
  return {digits[byte >> 4U], digits[byte & 0xfU]};
}

}  // namespace

std::string printable(const std::string& text) {
  std::string shown;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 'x');
    if (byte < firstPrintable || byte == deleteCharacter) {
      shown += "\\x" + twoDigits(byte);
    } else if (byte == leadOfControls && next >= firstControl && next <= lastControl) {
      shown += "\\u00" + twoDigits(next);
      ++i;
    } else {
      shown += text[i];
    }
  }
  return shown;
}

}  // namespace tool
