// SPDX-License-Identifier: MIT
//
// Colours for any number of labels.

#pragma once

#include <string>

namespace tool {

/// Light, for areas, and dark, for the lines around them; written as SVG writes colours.
struct Colours {
  std::string fill;
  std::string stroke;
};

/// The same number always has the same colours; numbers that follow each other look different.
Colours coloursOf(unsigned long number);

}  // namespace tool
