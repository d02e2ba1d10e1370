// SPDX-License-Identifier: MIT
//
// The sizes of PNG and JPEG files, and how they are embedded.

#include <tools/draw/underlay.h>

#include <gtest/gtest.h>

#include <cntrformats/errors.h>

#include "../program.h"

using program::Directory;

namespace {

using P = qcVector<2>;

/// The head of a PNG file of 0x12345 x 2 pixels.
std::string png() { return {"\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\1\x23\x45\0\0\0\2", 24}; }

/// A JPEG file of 0x105 x 0x204 pixels whose frame header has that marker.
std::string jpeg(char marker) {
  std::string text("\xff\xd8\xff\xe0\0\4ab\xff?\0\x0b\10\2\4\1\5\1\1\x11\0", 21);
  text[9] = marker;
  return text;
}

tool::Underlay read(const std::string& content) {
  const Directory directory;
  return tool::readUnderlay(directory.write("picture", content));
}

std::string refusalOfReading(const std::string& content) {
  try {
    read(content);
  } catch (const formats::FileError& error) {
    return error.what();
  }
  return "";
}

const std::string neither = "cannot be drawn: neither a PNG nor a JPEG picture";

}  // namespace

TEST(PixelArea, HasTheCentreOfTheFirstPixelAtTheOrigin) {
  EXPECT_EQ(tool::pixelArea(3, 2).low, P(-0.5, -0.5));
  EXPECT_EQ(tool::pixelArea(3, 2).high, P(2.5, 1.5));
}

TEST(Underlay, OfAPngFileHasItsSize) {
  EXPECT_EQ(read(png()).area.width(), 0x12345);
  EXPECT_EQ(read(png()).area.height(), 2.0);
  EXPECT_EQ(read(png()).uri, "data:image/png;base64,iVBORw0KGgoAAAANSUhEUgABI0UAAAAC");
}

TEST(Underlay, OfAJpegFileHasItsSizeWhateverTheFrame) {
  for (const int marker : {0xC0, 0xC1, 0xC2, 0xC3, 0xC5, 0xCB, 0xCD, 0xCF}) {
    EXPECT_EQ(read(jpeg(static_cast<char>(marker))).area.width(), 0x105) << marker;
    EXPECT_EQ(read(jpeg(static_cast<char>(marker))).area.height(), 0x204) << marker;
  }
  EXPECT_EQ(read(jpeg('\xC0')).uri.substr(0, 27), "data:image/jpeg;base64,/9j/");
}

TEST(Underlay, OtherMarkersAreNoFrames) {
  for (const int marker : {0xBF, 0xC4, 0xC8, 0xCC, 0xD0}) {
    EXPECT_EQ(refusalOfReading(jpeg(static_cast<char>(marker))), neither) << marker;
  }
}

TEST(Underlay, OtherFilesAreRefused) {
  EXPECT_EQ(refusalOfReading(""), neither);
  EXPECT_EQ(refusalOfReading(png().substr(0, 23)), neither);
  EXPECT_EQ(refusalOfReading(jpeg('\xC0').substr(0, 16)), neither);
  std::string narrow = png();
  narrow.replace(16, 4, std::string(4, '\0'));
  EXPECT_EQ(refusalOfReading(narrow), neither);
  std::string flat = png();
  flat.replace(20, 4, std::string(4, '\0'));
  EXPECT_EQ(refusalOfReading(flat), neither);
}
