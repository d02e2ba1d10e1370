// SPDX-License-Identifier: MIT
//
// The surface on which shapes draw themselves. recordingtablet.h remembers what was drawn,
// svgtablet.h writes it as a picture.

#pragma once

#include <platform/core/vector.h>

/// @addtogroup display
/// @{

/// A colour, 8 bits per channel.
class qcColor {
 public:
  /// The intensities of red, green and blue, 0 to 255.
  constexpr qcColor(unsigned char r, unsigned char g, unsigned char b) noexcept
      : red_(r), green_(g), blue_(b) {}

  /// The intensity of red.
  constexpr unsigned char r() const noexcept { return red_; }
  /// The intensity of green.
  constexpr unsigned char g() const noexcept { return green_; }
  /// The intensity of blue.
  constexpr unsigned char b() const noexcept { return blue_; }
  /// Equality of all three channels.
  constexpr bool operator==(const qcColor&) const noexcept = default;

  /// @{
  /// The usual colours.
  static const qcColor black;
  static const qcColor white;
  static const qcColor red;
  static const qcColor green;
  static const qcColor blue;
  static const qcColor cyan;
  static const qcColor magenta;
  static const qcColor yellow;
  static const qcColor orange;
  static const qcColor grey;
  /// @}

 private:
  unsigned char red_;
  unsigned char green_;
  unsigned char blue_;
};

inline constexpr qcColor qcColor::black{0, 0, 0};
inline constexpr qcColor qcColor::white{255, 255, 255};
inline constexpr qcColor qcColor::red{255, 0, 0};
inline constexpr qcColor qcColor::green{0, 255, 0};
inline constexpr qcColor qcColor::blue{0, 0, 255};
inline constexpr qcColor qcColor::cyan{0, 255, 255};
inline constexpr qcColor qcColor::magenta{255, 0, 255};
inline constexpr qcColor qcColor::yellow{255, 255, 0};
inline constexpr qcColor qcColor::orange{255, 165, 0};
inline constexpr qcColor qcColor::grey{128, 128, 128};

/// A drawing surface. Coordinates are those of an image, y pointing down.
class QCPLATFORM_EXPORT qcUITablet {
 public:
  /// Where a drawing goes: into the picture, or over it.
  enum Layers { eImageLayer = 0, eOverlayLayer = 1 };

  virtual ~qcUITablet();

  /// Draws one segment.
  virtual void drawLineSeg(const qcPair<double>& from, const qcPair<double>& to,
                           const qcColor& color, Layers layers) = 0;
};

/// @}
