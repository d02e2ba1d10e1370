// SPDX-License-Identifier: MIT
//
// Archives as hexadecimal text: what a function stores, and loading from typed bytes. Neither shows
// the eight bytes that every stream starts with.

#pragma once

#include <sstream>
#include <string>
#include <string_view>

#include <platform/core/archive.h>

/// "01 02": each byte as two digits.
inline std::string toHex(std::string_view bytes) {
  static constexpr std::string_view digits = "0123456789abcdef";
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (!text.empty()) text += ' ';
    text += digits[byte >> 4U];
    text += digits[byte & 0xFU];
  }
  return text;
}

/// The bytes of hexadecimal text. Words in quotes stand for their characters: "03 'abc'".
inline std::string fromHex(std::string_view text) {
  std::string bytes;
  bool quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\'') {
      quoted = !quoted;
    } else if (quoted) {
      bytes += text[i];
    } else if (text[i] != ' ') {
      bytes += static_cast<char>(std::stoi(std::string(text.substr(i, 2)), nullptr, 16));
      ++i;
    }
  }
  return bytes;
}

inline const std::string& archiveHeader() {
  static const std::string header("QCAR\x01\0\0\0", 8);
  return header;
}

/// The bytes that `transfer(archive)` stores.
template <class F>
std::string storedBytes(F transfer) {
  std::ostringstream stream;
  qcStreamArchive archive(stream);
  transfer(archive);
  return stream.str().substr(archiveHeader().size());
}

template <class F>
std::string storedHex(F transfer) {
  return toHex(storedBytes(transfer));
}

/// Runs `transfer(archive)` on an archive that loads `bytes`.
template <class F>
void loadBytes(const std::string& bytes, F transfer) {
  std::istringstream stream(archiveHeader() + bytes);
  qcStreamArchive archive(stream);
  transfer(archive);
}

template <class F>
void loadHex(std::string_view text, F transfer) {
  loadBytes(fromHex(text), transfer);
}

/// The bytes of a value.
template <class T>
std::string hexOf(T value) {
  return storedHex([&](qcArchive& archive) { archive || value; });
}

/// The value that the bytes are loaded as.
template <class T>
T loadedFrom(std::string_view hex) {
  T value{};
  loadHex(hex, [&](qcArchive& archive) { archive || value; });
  return value;
}
