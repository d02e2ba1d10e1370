// SPDX-License-Identifier: MIT
//
// The edge element of an image: where an edge point lies, how strong it is and where its gradient
// points.

#pragma once

#include <platform/core/vector.h>

/// @addtogroup display
/// @{

/// An edge point: sub-pixel position, gradient magnitude (16 bits, in the caller's scale) and
/// gradient direction (256 steps to a full turn). A plain value.
class qcEdgelet {
 public:
  /// At the origin, magnitude 0, angle 0.
  constexpr qcEdgelet() noexcept : magnitude_(0) {}
  /// An edge point as given.
  constexpr qcEdgelet(const qcVector<2>& position, unsigned short magnitude,
                      const qcAngle8& angle) noexcept
      : position_(position), magnitude_(magnitude), angle_(angle) {}

  /// Where it lies, in pixels.
  constexpr const qcVector<2>& position() const noexcept { return position_; }
  /// How strong it is.
  constexpr unsigned short magnitude() const noexcept { return magnitude_; }
  /// Where its gradient points.
  constexpr qcAngle8 angle() const noexcept { return angle_; }

  /// Exact equality of all three.
  constexpr bool operator==(const qcEdgelet&) const noexcept = default;

 private:
  qcVector<2> position_;
  unsigned short magnitude_;
  qcAngle8 angle_;
};

static_assert(std::is_trivially_copyable_v<qcEdgelet>);

/// Stores or loads an edge element: a version byte 0 (loading any other throws
/// qcArchive::UnknownVersion naming "qcEdgelet", line 0), the position, the magnitude as an
/// unsigned long (above 65,535 throws qcArchive::ValueTooLarge), the angle's steps as one byte.
QCPLATFORM_EXPORT qcArchive& operator||(qcArchive& archive, qcEdgelet& edgelet);

/// @}
