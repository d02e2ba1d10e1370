// SPDX-License-Identifier: MIT
//
// Packed files, read in pieces of any size.

#include <cntrformats/gunzip.h>

#include <gtest/gtest.h>
#include <zlib.h>

#include <cntrformats/errors.h>

#include "texts.h"

using namespace formats;
using texts::packed;

namespace {

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

const std::string triangleInWkt = "POLYGON ((0 0, 4 0, 4 4))\n";

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
  const std::string bytes = packed(triangleInWkt);
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_EQ(refusalOf(bytes.substr(0, size)), "cannot be unpacked: the gzip file ends too early");
  }
}

TEST(Gunzip, RefusesDamagedFiles) {
  std::string bytes = packed(triangleInWkt);
  bytes[bytes.size() - 6] = static_cast<char>(bytes[bytes.size() - 6] ^ 1);
  EXPECT_EQ(refusalOf(bytes), "cannot be unpacked: the gzip file is damaged");
}

TEST(Gunzip, RefusesDataOfZlibThatAreNoGzipFile) {
  uLongf size = compressBound(triangleInWkt.size());
  std::string bytes(size, '\0');
  ASSERT_EQ(
      compress(reinterpret_cast<unsigned char*>(bytes.data()), &size,
               reinterpret_cast<const unsigned char*>(triangleInWkt.data()), triangleInWkt.size()),
      Z_OK);
  bytes.resize(size);
  EXPECT_EQ(refusalOf(bytes), "cannot be unpacked: the gzip file is damaged");
}

TEST(Gunzip, TakesNoMorePackedBytesThanItNeeds) {
  const std::string bytes = packed(triangleInWkt);
  std::size_t calls = 0;
  Gunzip gunzip([&](char* buffer, std::size_t room) {
    ++calls;
    return bytes.copy(buffer, room);
  });
  std::string piece(100, '\0');
  EXPECT_FALSE(gunzip.hasMore());
  EXPECT_EQ(gunzip.read(piece.data(), 1), 1U);
  EXPECT_TRUE(gunzip.hasMore());
  EXPECT_EQ(gunzip.read(piece.data() + 1, 99), triangleInWkt.size() - 1);
  EXPECT_EQ(piece.substr(0, triangleInWkt.size()), triangleInWkt);
  EXPECT_FALSE(gunzip.hasMore());
  EXPECT_EQ(calls, 1U);
}

TEST(Gunzip, PackedFilesAreReadLikeOthers) {
  const auto found = texts::read("wkt", packed(triangleInWkt));
  ASSERT_EQ(found.features.size(), 1);
  EXPECT_EQ(found.features[0].geometry.parts[0].outline.size(), 3);
  EXPECT_EQ(texts::guess(packed(triangleInWkt)), "wkt");
  EXPECT_EQ(formatByEnding("a.wkt.gz"), formatNamed("wkt"));
  EXPECT_EQ(texts::flawOf("wkt", packed(triangleInWkt).substr(0, 20)),
            "cannot be unpacked: the gzip file ends too early");
}
