// SPDX-License-Identifier: MIT
//
// PNG files of SVG pictures, if the program is built with support for them, and the messages if
// none can be written.

#include <tools/draw/png.h>

#include <gtest/gtest.h>

#include <sstream>

#include <cntrformats/errors.h>

#if defined(CNTR_PNG)

namespace {

std::string written(const std::string& svg) {
  std::ostringstream out;
  tool::writePng(out, svg);
  return out.str();
}

std::string refusalOfWriting(const std::string& svg) {
  try {
    written(svg);
  } catch (const formats::FileError& error) {
    return error.what();
  }
  return "";
}

}  // namespace

TEST(Png, IsAsLargeAsThePicture) {
  const std::string png =
      written("<svg xmlns='http://www.w3.org/2000/svg' width='30.4' height='20.6'/>");
  // The header chunk begins with width and height.
  EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1a\n");
  EXPECT_EQ(png.substr(16, 8), std::string("\0\0\0\x1e\0\0\0\x15", 8));
}

TEST(Png, ShowsWhatIsDrawn) {
  const auto filled = [](const std::string& colour) {
    return written(
        "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><rect width='9' "
        "height='9' fill='" +
        colour + "'/></svg>");
  };
  EXPECT_NE(filled("red"), filled("blue"));
  EXPECT_EQ(filled("red"), filled("#f00"));
}

TEST(Png, APictureThatIsNoSvgIsRefused) {
  EXPECT_EQ(refusalOfWriting("no picture").substr(0, 17), "cannot be drawn: ");
}

TEST(Png, APictureThatIsTooLargeIsRefused) {
  EXPECT_EQ(refusalOfWriting("<svg xmlns='http://www.w3.org/2000/svg' width='40000' height='9'/>"),
            "cannot be drawn: invalid value (typically too big) for the size of the input "
            "(surface, pattern, etc.)");
}

TEST(Png, ALibraryIsThere) { EXPECT_NO_THROW(tool::requirePng()); }

#else

TEST(Png, WithoutLibrsvgIsRefused) {
  try {
    tool::requirePng();
    FAIL();
  } catch (const formats::FileError& error) {
    EXPECT_STREQ(
        error.what(),
        "cannot be written: this program was built without PNG pictures; SVG needs nothing");
  }
}

#endif
