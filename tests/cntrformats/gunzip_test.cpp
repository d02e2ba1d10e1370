// SPDX-License-Identifier: MIT
//
// Packed files, read in pieces of any size.

#include <cntrformats/gunzip.h>

#include <gtest/gtest.h>
#include <zlib.h>

#include <cntrformats/errors.h>

#include "texts.h"

using namespace formats;

namespace {

std::string packed(const std::string& text) {
  z_stream stream{};
  EXPECT_EQ(deflateInit2(&stream, 9, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY), Z_OK);
  std::string input = text;
  std::string output(deflateBound(&stream, input.size()), '\0');
  stream.next_in = reinterpret_cast<unsigned char*>(input.data());
  stream.avail_in = static_cast<uInt>(input.size());
  stream.next_out = reinterpret_cast<unsigned char*>(output.data());
  stream.avail_out = static_cast<uInt>(output.size());
  EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
  output.resize(stream.total_out);
  deflateEnd(&stream);
  return output;
}

/// All unpacked bytes, in pieces of `size` bytes at most.
std::string unpacked(const std::string& bytes, std::size_t size, std::size_t step) {
  std::size_t at = 0;
  Gunzip gunzip([&](char* buffer, std::size_t room) {
    const std::size_t count = bytes.copy(buffer, std::min(room, step), at);
    at += count;
    return count;
  });
  std::string text;
  std::string piece(size, '\0');
  while (const std::size_t count = gunzip.read(piece.data(), size)) text.append(piece, 0, count);
  return text;
}

std::string refusalOf(const std::string& bytes) {
  try {
    unpacked(bytes, 100, 100);
    return "";
  } catch (const FileError& error) {
    return error.what();
  }
}

const std::string triangle = "POLYGON ((0 0, 4 0, 4 4))\n";

}  // namespace

TEST(Gunzip, UnpacksWhateverIsReadAtOnce) {
  std::string text;
  for (int k = 0; k < 3000; ++k) text += std::to_string(k * k) + ",";
  const std::string bytes = packed(text) + packed("and more");
  for (const std::size_t size : {1U, 7U, 4096U, 1U << 20U}) {
    for (const std::size_t step : {1U, 13U, 1U << 20U}) {
      EXPECT_EQ(unpacked(bytes, size, step), text + "and more") << size << " " << step;
    }
  }
}

TEST(Gunzip, RefusesFilesThatEndTooEarly) {
  const std::string bytes = packed(triangle);
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_EQ(refusalOf(bytes.substr(0, size)), "cannot be unpacked: the gzip file ends too early");
  }
}

TEST(Gunzip, RefusesDamagedFiles) {
  std::string bytes = packed(triangle);
  bytes[bytes.size() - 6] = static_cast<char>(bytes[bytes.size() - 6] ^ 1);
  EXPECT_EQ(refusalOf(bytes), "cannot be unpacked: the gzip file is damaged");
}

TEST(Gunzip, PackedFilesAreReadLikeOthers) {
  const auto found = texts::read("wkt", packed(triangle));
  ASSERT_EQ(found.features.size(), 1);
  EXPECT_EQ(found.features[0].geometry.parts[0].outline.size(), 3);
  EXPECT_EQ(texts::guess(packed(triangle)), "wkt");
  EXPECT_EQ(formatByEnding("a.wkt.gz"), formatNamed("wkt"));
  EXPECT_EQ(texts::flawOf("wkt", packed(triangle).substr(0, 20)),
            "cannot be unpacked: the gzip file ends too early");
}
