// SPDX-License-Identifier: MIT

#include <cntrformats/source.h>

#include <gtest/gtest.h>

#include <unistd.h>

#include <future>
#include <iterator>

#include <cntrformats/errors.h>
#include <testing/repository/repository.h>

#include "texts.h"

using namespace formats;

namespace {

std::string all(Source& source) { return {std::istreambuf_iterator<char>(&source), {}}; }

/// The descriptor that the next file gets.
int nextDescriptor() {
  const int next = dup(STDIN_FILENO);
  close(next);
  return next;
}

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
  EXPECT_EQ(source.position(), 0U);
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

TEST(Source, MarksAndSignaturesCountOnlyAtTheBeginning) {
  const std::string mark = "\xEF\xBB\xBF";
  const std::string block(Source::mostAtOnce, 'a');
  const std::string text = block + mark + block.substr(mark.size()) + mark +
                           block.substr(mark.size()) + "\x1f\x8b" + mark;
  Source source{Text{text}};
  EXPECT_EQ(all(source), text);
  const std::string twice = mark + mark + block;
  Source looked{Text{twice}};
  EXPECT_FALSE(looked.firstLine().empty());
  EXPECT_TRUE(looked.startsWith(mark + "aa"));
  EXPECT_EQ(all(looked), mark + block);
}

TEST(Source, HandsOverABlockAtMost) {
  const std::string text(3 * Source::mostAtOnce, 'a');
  Source source{Text{text}};
  TextBuffer read;
  for (std::size_t blocks = 1; blocks <= 3; ++blocks) {
    EXPECT_TRUE(source.appendTo(read, text.size()));
    EXPECT_EQ(read.text().size(), blocks * Source::mostAtOnce);
    EXPECT_EQ(source.position(), read.text().size());
  }
  EXPECT_FALSE(source.appendTo(read, text.size()));
  EXPECT_EQ(read.text(), text);
}

TEST(Source, LooksForTheEndOfALineWithinAMegabyte) {
  constexpr std::size_t megabyte = std::size_t{1} << 20U;
  const std::string text(2 * megabyte, 'a');
  Source source{Text{text}};
  EXPECT_EQ(source.firstLine(), text.substr(0, megabyte));
  EXPECT_EQ(source.taken(), megabyte);
  const std::string line = text.substr(0, megabyte - 1) + '\n';
  Source ended{Text{line}};
  EXPECT_EQ(ended.firstLine(), line);
}

TEST(Source, IsWaitingUntilBytesArrive) {
  texts::Pipe pipe;
  Source source(pipe.path());
  TextBuffer read;
  EXPECT_TRUE(source.isWaiting());
  pipe.write("abcd");
  EXPECT_FALSE(source.isWaiting());
  EXPECT_TRUE(source.startsWith("ab"));
  EXPECT_FALSE(source.isWaiting()) << "bytes that have been inspected are there";
  EXPECT_TRUE(source.appendTo(read, 3));
  EXPECT_FALSE(source.isWaiting());
  EXPECT_TRUE(source.appendTo(read, 3));
  EXPECT_EQ(read.text(), "abcd");
  EXPECT_TRUE(source.isWaiting());
  pipe.close();
  EXPECT_FALSE(source.isWaiting()) << "nobody needs to wait for the end";
  EXPECT_FALSE(source.appendTo(read, 3));
}

TEST(Source, IsNotWaitingWhileBytesAreUnpacked) {
  const std::string text(5 * Source::mostAtOnce / 2, 'a');
  texts::Pipe pipe;
  pipe.write(texts::packed(text));
  Source source(pipe.path());
  TextBuffer read;
  for (int blocks = 0; blocks < 3; ++blocks) {
    EXPECT_FALSE(source.isWaiting()) << blocks;
    EXPECT_TRUE(source.appendTo(read, Source::mostAtOnce));
  }
  EXPECT_EQ(read.text(), text);
  EXPECT_TRUE(source.isWaiting());
}

TEST(Source, IsTheSameWhenItsBytesArriveOneByOne) {
  for (const std::string& bytes :
       {std::string("\xEF\xBB\xBFsome text"), texts::packed("some text")}) {
    texts::Pipe pipe;
    const auto written = std::async(std::launch::async, [&pipe, &bytes] {
      pipe.writeOneByOne(bytes);
      pipe.close();
    });
    Source source(pipe.path());
    EXPECT_EQ(all(source), "some text");
  }
}

TEST(Source, ClosesItsFileButNotStandardInput) {
  const texts::TemporaryFile file("text");
  const int next = nextDescriptor();
  ASSERT_GE(next, 0) << "standard input is not open";
  EXPECT_EQ(Source(file.path()).firstCharacter(), 't');
  EXPECT_EQ(nextDescriptor(), next);
  EXPECT_FALSE(Source("-").isRepeatable());
  EXPECT_EQ(nextDescriptor(), next);
}

TEST(Source, AFileThatCannotBeReadSaysWhy) {
  try {
    Source source("/nowhere/at/all");
    FAIL() << "there is no such file";
  } catch (const FileError& error) {
    EXPECT_STREQ(error.what(), "cannot be read: No such file or directory");
  }
}
