// SPDX-License-Identifier: MIT

#include <cntrformats/lines.h>

#include <gtest/gtest.h>

#include <cntrformats/errors.h>
#include <testing/repository/repository.h>

#include "texts.h"

using namespace formats;

TEST(Lines, AreCountedFromOne) {
  Source source(repositoryDirectory() + "/samples/coins.geojson");
  Lines lines(source);
  std::string line;
  std::size_t count = 0;
  while (lines.next(line)) {
    EXPECT_EQ(lines.number(), ++count);
    EXPECT_EQ(line.find('\n'), std::string::npos);
  }
  EXPECT_GT(count, 24);
}

TEST(Lines, MayEndWithACarriageReturn) {
  Source source{Text{"one\r\n\r\n\rtwo\r\r"}};
  Lines lines(source);
  std::string line;
  for (const char* expected : {"one", "", "\rtwo\r"}) {
    EXPECT_TRUE(lines.next(line));
    EXPECT_EQ(line, expected);
  }
  EXPECT_FALSE(lines.next(line));
}

TEST(Lines, OfAFileThatCannotBeReadAreRefused) {
  const std::string cut = texts::packed("one\ntwo\n").substr(0, 20);
  Source source{Text{cut}};
  Lines lines(source);
  std::string line;
  const auto readAll = [&] {
    while (lines.next(line)) EXPECT_LE(lines.number(), 2U);
  };
  EXPECT_THROW(readAll(), FileError);
}

TEST(Lines, BlankOnesHaveNothingToBeSeen) {
  EXPECT_TRUE(isBlank(" \t\r\n"));
  EXPECT_TRUE(isBlank("\r"));
  EXPECT_TRUE(isBlank(""));
  EXPECT_FALSE(isBlank(" x"));
}
