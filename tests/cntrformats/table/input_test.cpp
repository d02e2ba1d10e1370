// SPDX-License-Identifier: MIT

#include <cntrformats/table/input.h>

#include <gtest/gtest.h>

#include <testing/repository/repository.h>

#include "../texts.h"

using namespace formats;

namespace {

const std::string sample = repositoryDirectory() + "/samples/coins.geojson";

std::string formatOf(const std::string& file, const char* from = "") {
  return openInput(file, formatNamed(from)).format->name;
}

}  // namespace

TEST(Input, IsOfTheFormatGivenWhateverItsNameAndContent) {
  EXPECT_EQ(formatOf(sample, "csv"), "csv");
  EXPECT_EQ(formatOf(texts::TemporaryFile("POLYGON ((0 0, 1 0, 1 1))").path(), "csv"), "csv");
}

TEST(Input, IsOfTheFormatOfItsEndingWhateverItsContent) {
  EXPECT_EQ(formatOf(sample), "geojson");
  const texts::TemporaryFile file("POLYGON ((0 0, 1 0, 1 1))", ".csv");
  EXPECT_EQ(formatOf(file.path()), "csv");
}

TEST(Input, IsOfTheFormatOfItsContentIfItsEndingTellsNothing) {
  EXPECT_EQ(formatOf(texts::TemporaryFile("POLYGON ((0 0, 1 0, 1 1))").path()), "wkt");
}

TEST(Input, HasTheNameOfItsFile) {
  EXPECT_EQ(displayName("-"), "standard input");
  EXPECT_EQ(displayName("a.csv"), "a.csv");
  EXPECT_EQ(openInput("-", formatNamed("wkt")).name, "standard input");
  EXPECT_EQ(openInput(sample, nullptr).name, sample);
}
