// SPDX-License-Identifier: MIT
//
// The command line as a whole: usage, help and exit statuses.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tools/commandline.h>

#include <sstream>

#include <testing/repository/repository.h>

#include "program.h"

using program::run;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class WrongUsage : public testing::TestWithParam<std::vector<std::string>> {};

TEST_P(WrongUsage, EndsWithStatusTwo) {
  const auto result = run(GetParam());
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.messages, StartsWith("cntr: "));
  EXPECT_THAT(result.messages, HasSubstr("Try 'cntr --help'."));
  EXPECT_EQ(result.out, "");
}

INSTANTIATE_TEST_SUITE_P(
    Each, WrongUsage,
    testing::Values(std::vector<std::string>{}, std::vector<std::string>{"paint"},
                    std::vector<std::string>{"measure", "--colour"},
                    std::vector<std::string>{"measure", "--columns"},
                    std::vector<std::string>{"draw", "-o"},
                    std::vector<std::string>{"measure", "--all", "--columns", "area"}));

TEST(CommandLine, HelpIsAllWell) {
  const auto result = run({"--help"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.messages, "");
  for (const char* command :
       {"measure", "query", "repair", "combine", "offset", "compare", "draw", "convert"})
    EXPECT_THAT(result.out, HasSubstr(command));
}

TEST(CommandLine, EveryCommandHasHelpWithExamples) {
  for (const char* command :
       {"measure", "query", "repair", "combine", "offset", "compare", "draw", "convert"}) {
    const auto result = run({command, "--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr(std::string("\n  cntr ") + command + " ")) << command;
  }
}

TEST(CommandLine, TellsItsVersion) {
  const auto result = run({"--version"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, StartsWith("cntr 1."));
}

TEST(CommandLine, AnOutputThatFailsEndsWithStatusTwo) {
  std::ostringstream out;
  std::ostringstream messages;
  out.setstate(std::ios::badbit);
  const std::string sample = repositoryDirectory() + "/samples/cell.geojson";
  const char* arguments[] = {"cntr", "measure", sample.c_str()};
  EXPECT_EQ(tool::run(3, arguments, {out, messages}), 2);
  EXPECT_EQ(messages.str(), "cntr: standard output: cannot be written\n");
}

}  // namespace
