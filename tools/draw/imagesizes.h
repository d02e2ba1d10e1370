// SPDX-License-Identifier: MIT
//
// The sizes of the images that outlines come from, and whether they fit together in one picture.

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <tools/draw/box.h>

namespace tool {

/// The size of an image, and the file that states it: the image itself, or a file of outlines that
/// come from it.
struct ImageSize {
  std::string file;
  double width;
  double height;
};

/// Calls `warn` with the name of a file for
/// - outlines of several images on one canvas;
/// - a photograph whose size differs from that of an image;
/// - outlines that reach beyond the photograph, or else beyond the images.
void checkImageSizes(const std::vector<ImageSize>& images,
                     const std::optional<ImageSize>& photograph, const Box& outlines,
                     const std::function<void(const std::string&, const std::string&)>& warn);

}  // namespace tool
