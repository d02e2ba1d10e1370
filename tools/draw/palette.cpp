// SPDX-License-Identifier: MIT

#include <tools/draw/palette.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>

namespace tool {

namespace {

/// Turning by the golden angle spreads any number of hues evenly.
constexpr double goldenAngle = 137.50776405003785;
constexpr double firstHue = 240.0;

struct Linear {
  double red;
  double green;
  double blue;
};

/// Oklab with polar coordinates: equally light colours look equally light. Lightness is from 0 to
/// 1, the hue in degrees. B. Ottosson, "A perceptual color space for image processing" (2020).
Linear fromOklch(double lightness, double chroma, double hue) {
  const double radians = hue * std::numbers::pi / 180.0;
  const double a = chroma * std::cos(radians);
  const double b = chroma * std::sin(radians);
  const double l = std::pow(lightness + 0.3963377774 * a + 0.2158037573 * b, 3);
  const double m = std::pow(lightness - 0.1055613458 * a - 0.0638541728 * b, 3);
  const double s = std::pow(lightness - 0.0894841775 * a - 1.2914855480 * b, 3);
  return {4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s,
          -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
          -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s};
}

/// One channel as 8 bits of sRGB.
unsigned encoded(double linear) {
  const double value = std::clamp(linear, 0.0, 1.0);
  const double curved =
      value <= 0.0031308 ? 12.92 * value : 1.055 * std::pow(value, 1.0 / 2.4) - 0.055;
  return static_cast<unsigned>(std::lround(255.0 * curved));
}

std::string hex(const Linear& colour) {
  char text[8];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", encoded(colour.red), encoded(colour.green),
                encoded(colour.blue));
  return text;
}

}  // namespace

Colours coloursOf(unsigned long number, Ground ground) {
  const double hue = firstHue + goldenAngle * static_cast<double>(number);
  if (ground == Ground::ePhotograph) {
    const std::string bright = hex(fromOklch(0.80, 0.17, hue));
    return {bright, bright};
  }
  return {hex(fromOklch(0.82, 0.10, hue)), hex(fromOklch(0.52, 0.13, hue))};
}

std::string colourOfDeviation(double share) {
  constexpr double blue = 262.0;
  constexpr double red = 27.0;
  const double size = std::min(std::abs(share), 1.0);
  return hex(fromOklch(0.82 - 0.30 * size, 0.21 * size, share < 0.0 ? blue : red));
}

}  // namespace tool
