// SPDX-License-Identifier: MIT
//
// A picture over which outlines are drawn: the data to embed and its size.

#pragma once

#include <string>

#include <tools/draw/box.h>

namespace tool {

struct Underlay {
  /// The whole file as a data URI.
  std::string uri;
  /// The area of its pixels, whose centres have integer coordinates: it begins at (-0.5, -0.5).
  Box area;
};

/// The area of an image of this many pixels.
Box pixelArea(double width, double height);

/// Reads a PNG or JPEG file, recognised by its content. Pixels are taken as they are stored,
/// whatever orientation the file states. Throws FileError for files that cannot be read or are
/// neither PNG nor JPEG.
Underlay readUnderlay(const std::string& file);

}  // namespace tool
