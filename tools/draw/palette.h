// SPDX-License-Identifier: MIT
//
// Colours for any number of labels.

#pragma once

#include <string>

namespace tool {

/// For areas and for the lines around them; written as SVG writes colours.
struct Colours {
  std::string fill;
  std::string stroke;
};

/// What the colours are drawn on.
enum class Ground { ePaper, ePhotograph };

/// The same number always has the same hue; numbers that follow each other look different. On paper
/// areas are light and lines dark, on a photograph both are bright.
Colours coloursOf(unsigned long number, Ground ground);

/// Colours from inside (-1, blue) over no deviation (0, grey) to outside (1, red), equally dark on
/// both sides.
std::string colourOfDeviation(double share);

}  // namespace tool
