// SPDX-License-Identifier: MIT
//
// A picture to draw outlines over: what is embedded, and how large it is.

#pragma once

#include <string>

#include <tools/draw/box.h>

namespace tool {

struct Underlay {
  /// The whole file as a data URI.
  std::string uri;
  /// The area of its pixels, whose centres have whole coordinates: it begins at (-0.5, -0.5).
  Box area;
};

/// The area of an image of so many pixels.
Box pixelArea(double width, double height);

/// Reads a PNG or JPEG file, known by its content. Pixels are taken as they are stored, whatever
/// the file says of an orientation. Throws FileError for files that cannot be read or are neither.
Underlay readUnderlay(const std::string& file);

}  // namespace tool
