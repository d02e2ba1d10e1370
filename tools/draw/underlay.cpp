// SPDX-License-Identifier: MIT

#include <tools/draw/underlay.h>

#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>

#include <cntrformats/errors.h>
#include <cntrformats/source.h>

namespace tool {

using namespace formats;

namespace {

struct Size {
  std::uint32_t width;
  std::uint32_t height;
};

/// The big-endian number of `count` bytes at `at`. REQUIRES: there are as many bytes.
std::uint32_t number(std::string_view bytes, std::size_t at, std::size_t count) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < count; ++i) {
    value = value << 8U | static_cast<unsigned char>(bytes[at + i]);
  }
  return value;
}

/// The header is the first chunk of a PNG file and begins with width and height.
std::optional<Size> pngSize(std::string_view bytes) {
  constexpr std::string_view signature = "\x89PNG\r\n\x1a\n";
  constexpr std::size_t header = 16;
  if (bytes.size() < header + 8 || !bytes.starts_with(signature)) return std::nullopt;
  if (bytes.substr(12, 4) != "IHDR") return std::nullopt;
  return Size{number(bytes, header, 4), number(bytes, header + 4, 4)};
}

/// The frame headers are the markers C0 to CF except for three of them.
bool isFrame(std::uint32_t marker) {
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

/// A JPEG file is a sequence of segments, each with a marker (FF and a byte, preceded by any number
/// of FF as filling) and a length; the frame header holds precision, height and width.
std::optional<Size> jpegSize(std::string_view bytes) {
  if (!bytes.starts_with("\xff\xd8")) return std::nullopt;
  std::size_t at = 2;
  while (at + 9 <= bytes.size() && number(bytes, at, 1) == 0xFF) {
    const std::uint32_t marker = number(bytes, at + 1, 1);
    if (isFrame(marker)) return Size{number(bytes, at + 7, 2), number(bytes, at + 5, 2)};
    at += marker == 0xFF ? 1 : 2 + number(bytes, at + 2, 2);
  }
  return std::nullopt;
}

std::string base64(std::string_view bytes) {
  constexpr std::string_view digits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::string_view group = bytes.substr(i, 3);
    const std::uint32_t bits = number(group, 0, group.size()) << 8U * (3 - group.size());
    for (std::size_t k = 0; k < 4; ++k) {
      text += k <= group.size() ? digits[bits >> (18 - 6 * k) & 63U] : '=';
    }
  }
  return text;
}

}  // namespace

Box pixelArea(double width, double height) { return {{-0.5, -0.5}, {width - 0.5, height - 0.5}}; }

Underlay readUnderlay(const std::string& file) {
  Source source(file);
  const std::string bytes(std::istreambuf_iterator<char>(&source), {});
  const std::optional<Size> png = pngSize(bytes);
  const std::optional<Size> size = png ? png : jpegSize(bytes);
  if (!size || size->width == 0 || size->height == 0) {
    throw FileError("cannot be drawn: neither a PNG nor a JPEG picture");
  }
  const std::string type = png ? "image/png" : "image/jpeg";
  return {"data:" + type + ";base64," + base64(bytes), pixelArea(size->width, size->height)};
}

}  // namespace tool
