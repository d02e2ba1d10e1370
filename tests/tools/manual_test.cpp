// SPDX-License-Identifier: MIT
//
// The help, the manual page, the completion and the documents: their examples run, and they know
// every command and option.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include <testing/repository/repository.h>

#include "program.h"

using program::run;
using program::runShell;
using testing::HasSubstr;

namespace {

const std::vector<std::string> allCommands{"measure",  "query",   "repair", "combine", "offset",
                                           "simplify", "compare", "draw",   "convert"};

std::string content(const std::string& path) {
  std::ifstream file(repositoryDirectory() + "/" + path);
  std::ostringstream text;
  text << file.rdbuf();
  EXPECT_NE(text.str(), "") << path;
  return text.str();
}

/// The lines that begin with `indent` and a command line of the program.
std::vector<std::string> examplesIn(const std::string& text, const std::string& indent) {
  std::vector<std::string> examples;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with(indent)) continue;
    line.erase(0, indent.size());
    if (line.starts_with("cntr ") || line.starts_with("cat ")) examples.push_back(line);
  }
  return examples;
}

void expectToRun(const std::vector<std::string>& examples, const std::string& where) {
  EXPECT_FALSE(examples.empty()) << where;
  for (const std::string& example : examples) {
    const auto result = runShell(example);
    EXPECT_EQ(result.status, 0) << where << ": " << example << "\n" << result.messages;
  }
}

/// The long options of a command.
std::set<std::string> optionsOf(const std::string& command) {
  const std::string help = run({command, "--help"}).out;
  const std::string options = help.substr(0, help.find("Examples:"));
  std::set<std::string> found;
  const std::regex option("\n +(-[a-z],)?(--[a-z-]+)(,|\\{| |\n)");
  for (std::sregex_iterator it(options.begin(), options.end(), option), end; it != end; ++it) {
    found.insert((*it)[2]);
  }
  return found;
}

}  // namespace

TEST(Help, ItsExamplesRun) {
  for (const std::string& command : allCommands) {
    expectToRun(examplesIn(run({command, "--help"}).out, "  "), command);
  }
}

TEST(Help, ListsItsOptions) {
  EXPECT_TRUE(optionsOf("measure").contains("--columns"));
  EXPECT_TRUE(optionsOf("convert").contains("--output"));
}

TEST(Manual, ItsExamplesRun) { expectToRun(examplesIn(content("docs/man/cntr.1"), ".Dl "), "man"); }

TEST(Manual, HasNothingThatTheFormatterMinds) {
  if (runShell("command -v mandoc").status != 0) GTEST_SKIP() << "mandoc is not installed";
  const auto result =
      runShell("mandoc -T lint -W style " + repositoryDirectory() + "/docs/man/cntr.1");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "");
}

TEST(Manual, KnowsAllCommandsAndOptions) {
  // "--no-holes" is written "Fl \-no-holes".
  std::string page = content("docs/man/cntr.1");
  page = std::regex_replace(page, std::regex("Fl \\\\?-"), "--");
  for (const std::string& command : allCommands) {
    EXPECT_THAT(page, HasSubstr(".Ss cntr " + command + "\n"));
    for (const std::string& option : optionsOf(command)) {
      EXPECT_THAT(page, HasSubstr(option)) << command;
    }
  }
}

namespace {

/// What completion offers for the last word of a command line.
std::set<std::string> completions(const std::string& line) {
  const auto result = runShell(
      "bash -c 'set -u; source " + repositoryDirectory() +
      "/tools/completion/cntr.bash; "
      "COMP_LINE=\"" +
      line +
      "\"; COMP_POINT=${#COMP_LINE}; read -ra COMP_WORDS <<<\"$COMP_LINE\"; "
      "[[ $COMP_LINE == *\" \" ]] && COMP_WORDS+=(\"\"); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); "
      "COMPREPLY=(); _cntr; printf \"%s\\n\" \"${COMPREPLY[@]}\"'");
  EXPECT_EQ(result.status, 0) << result.messages;
  std::set<std::string> words;
  std::istringstream lines(result.out);
  for (std::string word; std::getline(lines, word);) {
    if (!word.empty()) words.insert(word);
  }
  return words;
}

}  // namespace

TEST(Completion, OffersCommands) {
  EXPECT_EQ(completions("cntr me"), (std::set<std::string>{"measure"}));
  for (const std::string& command : allCommands)
    EXPECT_TRUE(completions("cntr ").contains(command));
}

TEST(Completion, OffersAllOptionsOfACommand) {
  for (const std::string& command : allCommands) {
    EXPECT_EQ(completions("cntr " + command + " --"), optionsOf(command)) << command;
  }
}

TEST(Completion, OffersNamesAndFiles) {
  EXPECT_TRUE(completions("cntr measure --columns ar").contains("area"));
  EXPECT_TRUE(completions("cntr measure --columns label,ar").contains("label,area"));
  EXPECT_TRUE(completions("cntr measure --sort wid").contains("width"));
  EXPECT_EQ(completions("cntr convert --to w"), (std::set<std::string>{"wkt"}));
  EXPECT_EQ(completions("cntr repair --mode o"), (std::set<std::string>{"outer-hull"}));
  EXPECT_TRUE(completions("cntr draw --show el").contains("ellipse"));
  EXPECT_EQ(completions("cntr measure sam"), (std::set<std::string>{"samples"}));
}
