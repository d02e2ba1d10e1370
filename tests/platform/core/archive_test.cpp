// SPDX-License-Identifier: MIT
//
// The bytes of plain values, lists and the header, and the streams that they pass through. Objects
// are in archive_objects_test.cpp, damaged input in archive_damage_test.cpp.

#include <platform/core/archive.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <tests/platform/archive_bytes.h>

namespace {

TEST(ArchiveHeaderTest, IsWrittenAtTheStart) {
  std::ostringstream stream;
  const qcStreamArchive archive(stream);
  EXPECT_EQ(toHex(stream.str()), "51 43 41 52 01 00 00 00");
  EXPECT_TRUE(archive.isStoring());
  EXPECT_FALSE(archive.isLoading());
}

TEST(ArchiveHeaderTest, AllEightBytesAreChecked) {
  for (std::size_t i = 0; i < archiveHeader().size(); ++i) {
    std::string header = archiveHeader();
    header[i] = static_cast<char>(header[i] ^ 1);
    std::istringstream stream(header);
    EXPECT_THROW(qcStreamArchive archive(stream), qcArchive::BadFormat) << i;
  }
  std::istringstream stream(archiveHeader());
  const qcStreamArchive archive(stream);
  EXPECT_TRUE(archive.isLoading());
  EXPECT_FALSE(archive.isStoring());
}

TEST(ArchiveHeaderTest, ShorterInputIsTruncated) {
  for (std::size_t size = 0; size < archiveHeader().size(); ++size) {
    std::istringstream stream(archiveHeader().substr(0, size));
    EXPECT_THROW(qcStreamArchive archive(stream), qcArchive::Truncated) << size;
  }
}

TEST(ArchiveValueTest, BoolIsOneByte) {
  EXPECT_EQ(hexOf(false), "00");
  EXPECT_EQ(hexOf(true), "01");
  EXPECT_FALSE(loadedFrom<bool>("00"));
  EXPECT_TRUE(loadedFrom<bool>("01"));
}

TEST(ArchiveValueTest, BoolIsNothingElse) {
  EXPECT_THROW(loadedFrom<bool>("02"), qcArchive::BadFormat);
  EXPECT_THROW(loadedFrom<bool>("ff"), qcArchive::BadFormat);
}

TEST(ArchiveValueTest, UnsignedCharIsOneByte) {
  EXPECT_EQ(hexOf<unsigned char>(0xa5), "a5");
  EXPECT_EQ(loadedFrom<unsigned char>("a5"), 0xa5);
}

TEST(ArchiveValueTest, LongIsTwosComplementInFourBytes) {
  const std::pair<long, const char*> cases[] = {
      {0, "00 00 00 00"},          {1, "01 00 00 00"},          {-1, "ff ff ff ff"},
      {0x12345678, "78 56 34 12"}, {2147483647, "ff ff ff 7f"}, {-2147483647 - 1, "00 00 00 80"}};
  for (const auto& [value, hex] : cases) {
    EXPECT_EQ(hexOf<long>(value), hex);
    EXPECT_EQ(loadedFrom<long>(hex), value);
  }
}

TEST(ArchiveValueTest, UnsignedLongIsFourBytes) {
  const std::pair<unsigned long, const char*> cases[] = {
      {0UL, "00 00 00 00"}, {0x89ABCDEFUL, "ef cd ab 89"}, {0xFFFFFFFFUL, "ff ff ff ff"}};
  for (const auto& [value, hex] : cases) {
    EXPECT_EQ(hexOf<unsigned long>(value), hex);
    EXPECT_EQ(loadedFrom<unsigned long>(hex), value);
  }
}

TEST(ArchiveValueTest, NumbersWiderThan32BitsAreRefusedBeforeAByteIsWritten) {
  if constexpr (sizeof(long) > 4) {
    const auto refused = [](auto value) {
      return storedBytes([&](qcArchive& archive) {
        EXPECT_THROW(archive || value, qcArchive::ValueTooLarge) << value;
      });
    };
    EXPECT_EQ(refused(static_cast<long>(std::int64_t{1} << 31U)), "");
    EXPECT_EQ(refused(static_cast<long>(-(std::int64_t{1} << 31U) - 1)), "");
    EXPECT_EQ(refused(std::numeric_limits<long>::max()), "");
    EXPECT_EQ(refused(static_cast<unsigned long>(std::uint64_t{1} << 32U)), "");
    EXPECT_EQ(refused(std::numeric_limits<unsigned long>::max()), "");
  }
}

TEST(ArchiveValueTest, AnArchiveTakesMoreAfterItRefusedAValue) {
  if constexpr (sizeof(long) > 4) {
    auto tooLarge = std::numeric_limits<unsigned long>::max();
    unsigned char next = 7;
    EXPECT_EQ(storedHex([&](qcArchive& archive) {
                EXPECT_THROW(archive || tooLarge, qcArchive::ValueTooLarge);
                archive || next;
              }),
              "07");
  }
}

TEST(ArchiveValueTest, DoubleIsItsEightBytes) {
  EXPECT_EQ(hexOf(1.0), "00 00 00 00 00 00 f0 3f");
  EXPECT_EQ(hexOf(-2.5), "00 00 00 00 00 00 04 c0");
  EXPECT_EQ(hexOf(3.141592653589793), "18 2d 44 54 fb 21 09 40");
}

TEST(ArchiveValueTest, EveryBitOfADoubleComesBack) {
  const std::uint64_t patterns[] = {0x8000000000000000U, 0x0000000000000001U, 0x7FF0000000000000U,
                                    0xFFF0000000000000U, 0x7FF8000000001234U, 0xFFFFFFFFFFFFFFFFU,
                                    0x0123456789ABCDEFU};
  for (const std::uint64_t pattern : patterns) {
    auto value = std::bit_cast<double>(pattern);
    const std::string bytes = storedBytes([&](qcArchive& archive) { archive || value; });
    loadBytes(bytes, [&](qcArchive& archive) { archive || value; });
    EXPECT_EQ(std::bit_cast<std::uint64_t>(value), pattern);
  }
}

TEST(ArchiveValueTest, StoringLeavesTheValuesAsTheyAre) {
  bool flag = true;
  long number = -7;
  double real = 0.1;
  storedBytes([&](qcArchive& archive) { archive || flag || number || real; });
  EXPECT_TRUE(flag);
  EXPECT_EQ(number, -7);
  EXPECT_EQ(real, 0.1);
}

TEST(ArchiveListTest, IsVersionCountAndElements) {
  EXPECT_EQ(hexOf(std::vector<unsigned long>()), "00 00 00 00 00");
  EXPECT_EQ(hexOf(std::vector<unsigned long>{5, 6}), "00 02 00 00 00 05 00 00 00 06 00 00 00");
}

TEST(ArchiveListTest, LoadingReplacesTheList) {
  std::vector<unsigned long> list = {1, 2, 3};
  loadHex("00 02000000 05000000 06000000", [&](qcArchive& archive) { archive || list; });
  EXPECT_EQ(list, (std::vector<unsigned long>{5, 6}));
}

TEST(ArchiveListTest, AnotherVersionIsRefusedWithoutASource) {
  std::vector<unsigned long> numbers;
  std::vector<qcVector<2>> points;
  const auto expectRefusal = [](auto& list) {
    try {
      loadHex("01 00000000", [&](qcArchive& archive) { archive || list; });
      FAIL() << "nothing was thrown";
    } catch (const qcArchive::UnknownVersion& error) {
      EXPECT_STREQ(error.source(), "");
      EXPECT_EQ(error.line(), 0);
    }
  };
  expectRefusal(numbers);
  expectRefusal(points);
}

TEST(ArchiveListTest, MoreElementsThan32BitsCountAreRefusedBeforeAByteIsWritten) {
  if constexpr (sizeof(std::size_t) > 4) {
    const std::string bytes = storedBytes([](qcArchive& archive) {
      EXPECT_THROW(qf_TransferListHead(archive, std::size_t{1} << 32U), qcArchive::ValueTooLarge);
    });
    EXPECT_EQ(bytes, "");
  }
}

TEST(ArchiveListTest, TheLongestListHasAsManyElementsAs32BitsCount) {
  const std::string hex = storedHex([](qcArchive& archive) {
    EXPECT_EQ(qf_TransferListHead(archive, 0xFFFFFFFFU), 0xFFFFFFFFU);
  });
  EXPECT_EQ(hex, "00 ff ff ff ff");
}

TEST(ArchiveListTest, ThereIsRoomForOneElementHoweverLarge) {
  loadHex("00", [](qcArchive& archive) {
    EXPECT_EQ(archive.roomFor(3, 1000000), 1U);
    EXPECT_EQ(archive.roomFor(0, 1000000), 0U);
  });
}

TEST(ArchivePointListTest, HasTheBytesOfItsElements) {
  const char* const bytes =
      "00 02 00 00 00 "
      "00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 40 "
      "00 00 00 00 00 00 08 40 00 00 00 00 00 00 10 c0";
  const std::vector<qcVector<2>> points = {{1.0, 2.0}, {3.0, -4.0}};
  EXPECT_EQ(hexOf(points), bytes);
  EXPECT_EQ(loadedFrom<std::vector<qcVector<2>>>(bytes), points);
}

TEST(ArchivePointListTest, EmptyListsComeBackEmpty) {
  EXPECT_EQ(hexOf(std::vector<qcVector<2>>()), "00 00 00 00 00");
  std::vector<qcVector<2>> points = {{1.0, 2.0}};
  loadHex("00 00000000", [&](qcArchive& archive) { archive || points; });
  EXPECT_TRUE(points.empty());
}

std::vector<qcVector<2>> manyPoints(int count) {
  std::vector<qcVector<2>> points;
  for (int i = 0; i < count; ++i) points.emplace_back(i + 0.25, std::sqrt(i));
  return points;
}

TEST(ArchivePointListTest, ListsOfAnySizeComeBack) {
  for (const int count : {1, 255, 256, 257, 2047, 2048, 2049, 5000, 100000}) {
    std::vector<qcVector<2>> points = manyPoints(count);
    const std::string bytes = storedBytes([&](qcArchive& archive) { archive || points; });
    std::vector<qcVector<2>> loaded;
    loadBytes(bytes, [&](qcArchive& archive) { archive || loaded; });
    EXPECT_TRUE(loaded == points) << count;
  }
}

TEST(ArchiveDoublesTest, HaveTheBytesOfSingleDoubles) {
  std::vector<double> values(1500);
  for (std::size_t i = 0; i < values.size(); ++i) values[i] = std::sqrt(static_cast<double>(i));
  const std::string singly = storedBytes([&](qcArchive& archive) {
    for (double& value : values) archive || value;
  });
  const std::string together = storedBytes(
      [&](qcArchive& archive) { archive.transferDoubles(values.data(), values.size()); });
  EXPECT_EQ(singly, together);
  std::vector<double> loaded(values.size());
  loadBytes(together,
            [&](qcArchive& archive) { archive.transferDoubles(loaded.data(), loaded.size()); });
  EXPECT_EQ(loaded, values);
}

TEST(ArchiveMessageTest, SaysWhere) {
  try {
    loadHex("00 01 02", [](qcArchive& archive) {
      bool flag = false;
      archive || flag || flag || flag;
    });
    FAIL() << "nothing was thrown";
  } catch (const qcArchive::BadFormat& error) {
    EXPECT_EQ(error.message(), L"at byte 10: a truth value is neither 0 nor 1");
  }
  try {
    loadedFrom<double>("00 00 00");
    FAIL() << "nothing was thrown";
  } catch (const qcArchive::Truncated& error) {
    EXPECT_EQ(error.message(), L"at byte 8: the input ends too early");
  }
}

TEST(ArchiveMessageTest, SaysWhereTheNextItemWouldHaveGone) {
  std::ostringstream stream;
  qcStreamArchive archive(stream);
  double value = 1.5;
  archive || value || value;
  static_cast<std::ios&>(stream).rdbuf(nullptr);
  try {
    archive || value;
    FAIL() << "nothing was thrown";
  } catch (const qcArchive::WriteFailed& error) {
    EXPECT_EQ(error.message(), L"at byte 24: the stream does not take the bytes");
  }
}

/// Gives its bytes a few at a time and never says how many are left.
class TricklingBuffer : public std::streambuf {
 public:
  explicit TricklingBuffer(std::string bytes) : bytes_(std::move(bytes)) {}

 protected:
  int_type underflow() override {
    const std::size_t part = std::min<std::size_t>(7, bytes_.size() - given_);
    if (part == 0) return traits_type::eof();
    char* const start = bytes_.data() + given_;
    setg(start, start, start + part);
    given_ += part;
    return traits_type::to_int_type(*start);
  }

 private:
  std::string bytes_;
  std::size_t given_ = 0;
};

TEST(StreamArchiveTest, LoadsFromAStreamThatTrickles) {
  std::vector<qcVector<2>> points = manyPoints(3000);
  const std::string bytes = storedBytes([&](qcArchive& archive) { archive || points; });
  TricklingBuffer buffer(archiveHeader() + bytes);
  std::istream stream(&buffer);
  qcStreamArchive archive(stream);
  std::vector<qcVector<2>> loaded;
  archive || loaded;
  EXPECT_TRUE(loaded == points);
}

/// The message of the Error that `operation` throws.
template <class Error, class Operation>
std::wstring messageOf(Operation operation) {
  try {
    operation();
  } catch (const Error& error) {
    return error.message();
  }
  return L"nothing was thrown";
}

/// Takes a number of bytes and no more; throws instead of refusing when told to.
class FullBuffer : public std::streambuf {
 public:
  explicit FullBuffer(int room, bool throws = false) : room_(room), throws_(throws) {}

 protected:
  int_type overflow(int_type c) override {
    if (room_-- > 0) return traits_type::not_eof(c);
    if (throws_) throw std::runtime_error("full");
    return traits_type::eof();
  }

 private:
  int room_;
  bool throws_;
};

TEST(StreamArchiveTest, AStreamThatRefusesGivesWriteFailed) {
  FullBuffer buffer(12);
  std::ostream stream(&buffer);
  qcStreamArchive archive(stream);
  unsigned long number = 1;
  archive || number;
  EXPECT_TRUE(stream.good());
  EXPECT_EQ(messageOf<qcArchive::WriteFailed>([&] { archive || number; }),
            L"at byte 12: the stream does not take the bytes");
  EXPECT_EQ(stream.rdstate(), std::ios::badbit);
}

TEST(StreamArchiveTest, NothingFollowsAFailedWrite) {
  FullBuffer buffer(10, true);
  std::ostream stream(&buffer);
  qcStreamArchive archive(stream);
  unsigned long number = 1;
  unsigned char byte = 1;
  EXPECT_EQ(messageOf<qcArchive::WriteFailed>([&] { archive || number; }),
            L"at byte 8: the stream does not take the bytes");
  EXPECT_EQ(stream.rdstate(), std::ios::badbit);
  EXPECT_EQ(messageOf<qcArchive::WriteFailed>([&] { archive || byte; }),
            L"at byte 8: an earlier failure left an object incomplete");
}

TEST(StreamArchiveTest, AStreamThatTakesNothingIsRefusedAtOnce) {
  FullBuffer buffer(7);
  std::ostream full(&buffer);
  EXPECT_THROW(qcStreamArchive archive(full), qcArchive::WriteFailed);
  EXPECT_EQ(full.rdstate(), std::ios::badbit);
  std::ofstream closed;
  EXPECT_THROW(qcStreamArchive archive(closed), qcArchive::WriteFailed);
}

TEST(StreamArchiveTest, AStreamThatHasFailedBeforeIsRefusedAndNotTouched) {
  for (const std::ios::iostate state : {std::ios::failbit, std::ios::badbit}) {
    std::ostringstream out;
    out.setstate(state);
    EXPECT_EQ(messageOf<qcArchive::WriteFailed>([&] { qcStreamArchive archive(out); }),
              L"at byte 0: the stream has failed before");
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(out.rdstate(), state);
    std::istringstream in(archiveHeader());
    in.setstate(state);
    EXPECT_EQ(messageOf<qcArchive::Truncated>([&] { qcStreamArchive archive(in); }),
              L"at byte 0: the stream has failed before");
    EXPECT_EQ(in.rdbuf()->in_avail(), 8);
    EXPECT_EQ(in.rdstate(), state);
  }
}

TEST(StreamArchiveTest, AStreamThatHasMetItsEndWithoutFailingIsTaken) {
  std::istringstream in(archiveHeader());
  in.setstate(std::ios::eofbit);
  EXPECT_NO_THROW(qcStreamArchive archive(in));
}

TEST(StreamArchiveTest, AStreamWithoutABufferIsRefused) {
  std::ostream out(nullptr);
  EXPECT_THROW(qcStreamArchive archive(out), qcArchive::WriteFailed);
  std::istream in(nullptr);
  EXPECT_THROW(qcStreamArchive archive(in), qcArchive::Truncated);
}

TEST(StreamArchiveTest, AStreamThatLosesItsBufferIsTruncated) {
  std::istringstream stream(archiveHeader() + "\x01");
  qcStreamArchive archive(stream);
  static_cast<std::ios&>(stream).rdbuf(nullptr);
  bool flag = false;
  EXPECT_THROW(archive || flag, qcArchive::Truncated);
}

TEST(StreamArchiveTest, AClosedFileIsTruncated) {
  std::ifstream closed;
  EXPECT_THROW(qcStreamArchive archive(closed), qcArchive::Truncated);
}

/// Throws when its bytes are used up.
class ThrowingBuffer : public std::stringbuf {
 public:
  using std::stringbuf::stringbuf;

 protected:
  int_type underflow() override {
    const int_type next = std::stringbuf::underflow();
    if (traits_type::eq_int_type(next, traits_type::eof())) throw std::runtime_error("cable cut");
    return next;
  }
};

TEST(StreamArchiveTest, WhatABufferThrowsIsTruncated) {
  ThrowingBuffer buffer(archiveHeader() + "\x01", std::ios::in);
  std::istream stream(&buffer);
  qcStreamArchive archive(stream);
  bool flag = false;
  archive || flag;
  EXPECT_TRUE(flag);
  EXPECT_EQ(messageOf<qcArchive::Truncated>([&] { archive || flag; }),
            L"at byte 9: the input ends too early");
  EXPECT_EQ(stream.rdstate(), std::ios::badbit);
}

/// Does not know how many bytes are left, and throws when asked.
class SecretiveBuffer : public std::stringbuf {
 public:
  using std::stringbuf::stringbuf;

 protected:
  std::streamsize showmanyc() override { throw std::runtime_error("no idea"); }
};

TEST(StreamArchiveTest, ABufferThatCannotTellHowMuchIsLeftLoadsLists) {
  std::vector<qcVector<2>> points = manyPoints(3);
  const std::string bytes = storedBytes([&](qcArchive& archive) { archive || points; });
  SecretiveBuffer buffer(archiveHeader() + bytes.substr(0, bytes.size() - 1), std::ios::in);
  std::istream stream(&buffer);
  qcStreamArchive archive(stream);
  std::vector<qcVector<2>> loaded;
  EXPECT_THROW(archive || loaded, qcArchive::Truncated);
  EXPECT_EQ(stream.rdstate(), std::ios::eofbit | std::ios::failbit);
}

TEST(StreamArchiveTest, StreamsThatThrowOnFailureGiveTheArchivesOwnErrors) {
  std::istringstream stream(archiveHeader());
  stream.exceptions(std::ios::failbit | std::ios::badbit | std::ios::eofbit);
  qcStreamArchive archive(stream);
  bool flag = false;
  EXPECT_THROW(archive || flag, qcArchive::Truncated);
  EXPECT_EQ(stream.rdstate(), std::ios::eofbit | std::ios::failbit);
}

TEST(StreamArchiveTest, OutputThatThrowsOnFailureGivesTheArchivesOwnErrors) {
  FullBuffer buffer(8, true);
  std::ostream stream(&buffer);
  stream.exceptions(std::ios::failbit | std::ios::badbit | std::ios::eofbit);
  qcStreamArchive archive(stream);
  bool flag = false;
  EXPECT_THROW(archive || flag, qcArchive::WriteFailed);
  EXPECT_EQ(stream.rdstate(), std::ios::badbit);
}

TEST(StreamArchiveTest, AnArchiveMayStartInTheMiddleOfAStream) {
  std::stringstream stream;
  stream << "before";
  {
    qcStreamArchive archive(static_cast<std::ostream&>(stream));
    unsigned char byte = 9;
    archive || byte;
  }
  stream << "after";
  std::string text(6, ' ');
  stream.read(text.data(), 6);
  qcStreamArchive archive(static_cast<std::istream&>(stream));
  unsigned char byte = 0;
  archive || byte;
  EXPECT_EQ(byte, 9);
  stream >> text;
  EXPECT_EQ(text, "after");
}

}  // namespace
