// SPDX-License-Identifier: MIT

#include <cntrformats/source.h>

#include <gtest/gtest.h>

#include <iterator>

#include <cntrformats/errors.h>
#include <cntrformats/lines.h>
#include <testing/repository/repository.h>

#include "texts.h"

using namespace formats;

namespace {

std::string all(Source& source) { return {std::istreambuf_iterator<char>(&source), {}}; }

}  // namespace

TEST(Source, LookingAheadLeavesEverythingToBeRead) {
  const std::string path = repositoryDirectory() + "/samples/coins.geojson";
  Source plain(path);
  const std::string text = all(plain);
  Source looked(path);
  EXPECT_TRUE(looked.startsWith("{"));
  EXPECT_FALSE(looked.startsWith("QCAR"));
  EXPECT_EQ(looked.firstCharacter(), '{');
  EXPECT_EQ(looked.firstLine(), text.substr(0, text.find('\n') + 1));
  EXPECT_EQ(all(looked), text);
  EXPECT_EQ(looked.position(), text.size());
  EXPECT_EQ(looked.taken(), text.size());
}

TEST(Source, HandsOverNoMoreThanIsAskedForAndEverythingInTheEnd) {
  const std::string path = repositoryDirectory() + "/samples/coins.geojson";
  Source plain(path);
  const std::string expected = all(plain);
  Source source(path);
  source.firstLine();
  TextBuffer read;
  read.append("before");
  EXPECT_TRUE(source.appendTo(read, 7));
  EXPECT_EQ(read.text(), "before" + expected.substr(0, 7));
  EXPECT_EQ(source.position(), 7U);
  while (source.appendTo(read, 1000)) EXPECT_EQ(source.position(), read.text().size() - 6);
  EXPECT_EQ(read.text(), "before" + expected);
  EXPECT_FALSE(source.appendTo(read, 1000));
}

TEST(Source, AFileCanBeReadAgainFromItsBeginning) {
  const texts::TemporaryFile file("\xEF\xBB\xBFsome text");
  Source source(file.path());
  TextBuffer read;
  EXPECT_TRUE(source.startsWith("some"));
  EXPECT_TRUE(source.isRepeatable());
  EXPECT_TRUE(source.appendTo(read, 4));
  source.restart();
  EXPECT_EQ(source.position(), 0U);
  EXPECT_EQ(source.taken(), 0U);
  EXPECT_EQ(all(source), "some text");
  EXPECT_EQ(source.position(), 9U);
  source.restart();
  EXPECT_EQ(source.firstLine(), "some text");
}

TEST(Source, WhatIsNoPlainFileCannotBeReadAgain) {
  EXPECT_FALSE(Source(Text{"text"}).isRepeatable());
  EXPECT_FALSE(Source("/dev/null").isRepeatable());
  EXPECT_FALSE(Source("-").isRepeatable());
  const texts::TemporaryFile packed({"\x1f\x8b\x08\0\0\0\0\0\0\x03\x03\0\0\0\0\0\0\0\0\0", 20});
  Source source(packed.path());
  EXPECT_EQ(source.firstCharacter(), '\0');
  EXPECT_FALSE(source.isRepeatable());
}

TEST(Source, ATextIsReadAsAFileIs) {
  const std::string path = repositoryDirectory() + "/samples/coins.geojson";
  Source file(path);
  const std::string text = all(file);
  Source source{Text{text}};
  EXPECT_EQ(source.firstCharacter(), '{');
  EXPECT_EQ(source.firstLine(), text.substr(0, text.find('\n') + 1));
  EXPECT_FALSE(source.isWaiting());
  EXPECT_EQ(all(source), text);
  EXPECT_EQ(source.position(), text.size());
  EXPECT_EQ(source.taken(), text.size());
  EXPECT_FALSE(source.isWaiting());
}

TEST(Source, ATextLosesItsByteOrderMarkAndMayBeEmpty) {
  Source marked{Text{"\xEF\xBB\xBF{}"}};
  EXPECT_EQ(all(marked), "{}");
  Source nothing{Text{""}};
  EXPECT_EQ(nothing.firstCharacter(), '\0');
  EXPECT_EQ(all(nothing), "");
}

TEST(Source, AFileThatCannotBeReadSaysWhy) {
  try {
    Source source("/nowhere/at/all");
    FAIL() << "there is no such file";
  } catch (const FileError& error) {
    EXPECT_STREQ(error.what(), "cannot be read: No such file or directory");
  }
}

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

TEST(Lines, BlankOnesHaveNothingToBeSeen) {
  EXPECT_TRUE(isBlank(" \t\r\n"));
  EXPECT_TRUE(isBlank(""));
  EXPECT_FALSE(isBlank(" x"));
}
