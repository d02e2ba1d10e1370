// SPDX-License-Identifier: MIT
//
// What is shown on a terminal only.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tools/run/progress.h>

#include <sstream>
#include <thread>

#include "../program.h"

using program::collection;
using program::polygon;
using program::run;
using program::runOnTerminal;
using program::square;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

const std::string goodAndBad = collection({polygon({square(0, 0, 2)}), polygon({"[[1,1]]"})});
const char* const escape = "\x1b[";

}  // namespace

TEST(Terminal, HeadingsAndMessagesAreColoured) {
  const auto result = runOnTerminal({"measure"}, goodAndBad, {"TERM=xterm", "NO_COLOR="});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.out, HasSubstr("\x1b[1mfeature\x1b[0m"));
  EXPECT_THAT(result.out, HasSubstr("\x1b[1;31mcntr:\x1b[0m standard input: feature 2: "));
}

TEST(Terminal, NothingIsColouredWithNoColor) {
  const auto result = runOnTerminal({"measure"}, goodAndBad, {"TERM=xterm", "NO_COLOR=1"});
  EXPECT_THAT(result.out, HasSubstr("feature"));
  EXPECT_THAT(result.out, Not(HasSubstr(escape)));
}

TEST(Terminal, NothingIsColouredOnADumbOne) {
  const auto result = runOnTerminal({"measure"}, goodAndBad, {"TERM=dumb", "NO_COLOR="});
  EXPECT_THAT(result.out, Not(HasSubstr(escape)));
}

TEST(Terminal, NothingIsColouredElsewhere) {
  const auto result = run({"measure"}, goodAndBad);
  EXPECT_THAT(result.out + result.messages, Not(HasSubstr(escape)));
}

TEST(Progress, IsShownOnceASecondHasPassed) {
  std::ostringstream out;
  tool::Progress progress(out, true);
  progress.count(1200);
  progress.count(34);
  progress.update();
  EXPECT_EQ(out.str(), "") << "at first";
  std::this_thread::sleep_for(std::chrono::milliseconds(1010));
  progress.update();
  EXPECT_THAT(out.str(), HasSubstr("1 234 features, 1 s"));
  const std::string once = out.str();
  progress.update();
  EXPECT_EQ(out.str(), once) << "a few times a second";
  progress.clear();
  EXPECT_EQ(out.str(), once + "\r\x1b[K");
  progress.clear();
  EXPECT_EQ(out.str(), once + "\r\x1b[K");
}

TEST(Progress, IsInPerCentWhereTheSizeIsKnown) {
  std::ostringstream out;
  tool::Progress progress(out, true, 3000000000000000000);
  progress.count(1);
  progress.reach(1000000000);
  std::this_thread::sleep_for(std::chrono::milliseconds(1010));
  progress.update();
  EXPECT_THAT(out.str(), HasSubstr("1 features, 0 %, 1 s"));
  progress.reach(1290000000000000000);
  std::this_thread::sleep_for(std::chrono::milliseconds(210));
  progress.update();
  EXPECT_THAT(out.str(), HasSubstr("1 features, 43 %, 1 s"));
}

TEST(Progress, IsNotShownToPrograms) {
  std::ostringstream out;
  tool::Progress progress(out, false);
  std::this_thread::sleep_for(std::chrono::milliseconds(1010));
  progress.update();
  EXPECT_EQ(out.str(), "");
}
