// SPDX-License-Identifier: MIT

#include <tools/draw/imagesizes.h>

#include <algorithm>

#include <tools/draw/underlay.h>
#include <tools/report/numbers.h>

namespace tool {

namespace {

/// Outlines along the edges of pixels may reach beyond the image by this much.
constexpr double slack = 1.0;

using Warn = std::function<void(const std::string&, const std::string&)>;

std::string sizeOf(const ImageSize& image) {
  return shortNumber(image.width, 10) + " x " + shortNumber(image.height, 10);
}

bool haveSameSize(const ImageSize& a, const ImageSize& b) {
  return a.width == b.width && a.height == b.height;
}

/// The first image with a different size.
const ImageSize* otherThan(const ImageSize& image, const std::vector<ImageSize>& images) {
  const auto other = std::find_if(images.begin(), images.end(), [&](const ImageSize& candidate) {
    return !haveSameSize(candidate, image);
  });
  return other == images.end() ? nullptr : &*other;
}

std::string corner(const qcVector<2>& p) {
  return shortNumber(p.x(), 6) + "," + shortNumber(p.y(), 6);
}

Box areaOf(const ImageSize& image) { return pixelArea(image.width, image.height); }

}  // namespace

void checkImageSizes(const std::vector<ImageSize>& images,
                     const std::optional<ImageSize>& photograph, const Box& outlines,
                     const Warn& warn) {
  if (!images.empty()) {
    if (const ImageSize* other = otherThan(images.front(), images)) {
      warn(other->file, "its outlines are of an image of " + sizeOf(*other) +
                            " pixels, but share the picture with " + images.front().file +
                            ", whose image has " + sizeOf(images.front()));
    }
  }
  if (photograph) {
    if (const ImageSize* other = otherThan(*photograph, images)) {
      return warn(photograph->file, "has " + sizeOf(*photograph) + " pixels, but the outlines of " +
                                        other->file + " are of an image of " + sizeOf(*other));
    }
  }
  if (outlines.isEmpty() || (!photograph && images.empty())) return;
  const ImageSize& first = photograph ? *photograph : images.front();
  Box area = areaOf(first);
  if (!photograph) {
    for (const ImageSize& image : images) area.enclose(areaOf(image));
  }
  if (area.widened(slack).holds(outlines)) return;
  warn(first.file, (photograph ? "has " : "says that its image has ") + sizeOf(first) +
                       " pixels, but outlines reach from " + corner(outlines.low) + " to " +
                       corner(outlines.high));
}

}  // namespace tool
