// SPDX-License-Identifier: MIT
//
// docs/measures.md has a line for each measure, exactly as the list gives it.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include <cntrtable/measures.h>
#include <testing/repository/repository.h>

namespace {

std::string lineOf(const table::Measure& measure) {
  const std::string power = measure.power > 1 ? "^" + std::to_string(measure.power) : "";
  const std::string unit = measure.power == 0 ? "" : "unit" + power;
  return std::string("| `") + measure.name + "` | " + unit + (unit.empty() ? "| " : " | ") +
         measure.meaning + " |";
}

/// The lines of the table of measures.
std::string tableOf(const std::string& page) {
  const std::string head = "| measure | unit | meaning |\n|---|---|---|\n";
  const std::size_t begin = page.find(head);
  return begin == std::string::npos ? "" : page.substr(begin + head.size());
}

}  // namespace

TEST(MeasuresPage, HasALineForEachMeasureAsTheListHasIt) {
  std::string lines;
  for (const table::Measure& measure : table::allMeasures()) lines += lineOf(measure) + '\n';
  std::ifstream file(repositoryDirectory() + "/docs/measures.md");
  std::ostringstream page;
  page << file.rdbuf();
  EXPECT_EQ(tableOf(page.str()), lines);
}
