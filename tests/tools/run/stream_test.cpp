// SPDX-License-Identifier: MIT
//
// Streams: order, memory, answers as they come, and what signals leave behind.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdlib>
#include <thread>

#include "../program.h"

using program::Directory;
using program::Json;
using program::run;
using program::Running;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// Squares of sizes 1, 2, 3 ..., and a flaw in every hundredth line.
std::string manyLines(std::size_t count) {
  std::string text;
  for (std::size_t i = 1; i <= count; ++i) {
    const std::string s = std::to_string(i % 100 == 0 ? 0 : i % 97 + 1);
    text += i % 100 == 0 ? "POLYGON ((0 0))\n"
                         : "POLYGON ((0 0, " + s + " 0, " + s + " " + s + ", 0 " + s + "))\n";
  }
  return text;
}

}  // namespace

TEST(Stream, AnswersAreTheSameWithAnyNumberOfJobs) {
  const std::string text = manyLines(3000);
  for (const char* format : {"--jsonl", "--csv", "--json"}) {
    const auto one = run({"measure", format, "--jobs", "1"}, text);
    const auto four = run({"measure", format, "--jobs", "4"}, text);
    EXPECT_EQ(one.status, 1);
    EXPECT_EQ(four.status, 1);
    EXPECT_TRUE(one.out == four.out);
    EXPECT_TRUE(one.messages == four.messages);
    EXPECT_THAT(one.messages, HasSubstr("line 300, feature 300: outline has 1 point"));
  }
  const auto one = run({"convert", "-o", "-", "--to", "csv", "--jobs", "1"}, text);
  const auto four = run({"convert", "-o", "-", "--to", "csv", "--jobs", "4"}, text);
  EXPECT_TRUE(one.out == four.out);
}

TEST(Stream, JobsAreCounted) {
  EXPECT_EQ(run({"measure", "--jobs", "0"}, manyLines(1)).status, 2);
  EXPECT_EQ(run({"measure", "--jobs", "many"}, manyLines(1)).status, 2);
}

TEST(Stream, EachAnswerComesBeforeTheNextQuestion) {
  Running cntr({"measure", "--jsonl", "--columns", "area", "--from", "wkt"});
  cntr.feed("POLYGON ((0 0, 2 0, 2 2))\n");
  EXPECT_EQ(cntr.line(), R"({"area":2.0})");
  cntr.feed("POLYGON ((0 0, 4 0, 4 4))\n");
  EXPECT_EQ(cntr.line(), R"({"area":8.0})");
  cntr.close();
  EXPECT_EQ(cntr.wait(), 0);
}

namespace {

/// The peak memory in kilobytes of a command that reads this many lines.
long peakMemory(const std::vector<std::string>& command, std::size_t lines) {
  Running cntr(command);
  const std::string text = manyLines(1000);
  for (std::size_t i = 0; i < lines / 1000; ++i) cntr.feed(text);
  cntr.close();
  EXPECT_EQ(WEXITSTATUS(cntr.wait()), 1) << "of the flawed lines";
  return cntr.peakMemory();
}

}  // namespace

TEST(Stream, MemoryDoesNotGrowWithTheInput) {
  // The address sanitizer keeps what was freed for a while, unless told otherwise.
  ASSERT_EQ(setenv("ASAN_OPTIONS", "quarantine_size_mb=0:thread_local_quarantine_size_kb=0", 1), 0);
  const Directory directory;
  const std::string out = directory.path("out.geojsonl");
  const std::vector<std::vector<std::string>> commands{
      {"convert", "--from", "wkt", "-o", out}, {"repair", "--quiet", "--from", "wkt", "-o", out}};
  for (const auto& command : commands) {
    const long few = peakMemory(command, 5000);
    const long many = peakMemory(command, 50000);
    EXPECT_LT(many, few + 3000) << command[0];
  }
}

TEST(Stream, ASignalLeavesNoFileBehind) {
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
    const Directory directory;
    directory.write("out.wkt", "old");
    Running cntr({"convert", "--from", "wkt", "-o", directory.path("out.wkt")});
    cntr.feed(manyLines(10));
    while (directory.names().size() < 2) std::this_thread::yield();
    cntr.signal(number);
    const int state = cntr.wait();
    EXPECT_TRUE(WIFSIGNALED(state));
    EXPECT_EQ(WTERMSIG(state), number);
    EXPECT_THAT(directory.names(), ElementsAre("out.wkt"));
    EXPECT_EQ(directory.read("out.wkt"), "old");
  }
}

TEST(Stream, NothingMoreIsReadWhenAnswersNoLongerGetThrough) {
  const auto result = program::runShell(
      "yes 'POLYGON ((0 0, 2 0, 2 2))' | cntr measure --csv --columns area --from wkt | head -n 2");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "area\n2\n");
}
