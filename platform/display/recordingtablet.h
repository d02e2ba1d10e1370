// SPDX-License-Identifier: MIT
//
// A drawing surface that remembers the segments drawn on it, in order: for tests, and for callers
// that draw with a library of their own.

#pragma once

#include <vector>

#include <platform/display/tablet.h>

/// @addtogroup display
/// @{

/// Remembers every drawLineSeg call.
class QCPLATFORM_EXPORT qcRecordingTablet : public qcUITablet {
 public:
  /// One drawLineSeg call.
  struct Segment {
    /// Where the segment starts.
    qcPair<double> from;
    /// Where the segment ends.
    qcPair<double> to;
    /// Its colour.
    qcColor color;
    /// The layer that it was drawn on.
    Layers layers;

    /// Exact equality of all four.
    bool operator==(const Segment&) const noexcept = default;
  };

  void drawLineSeg(const qcPair<double>& from, const qcPair<double>& to, const qcColor& color,
                   Layers layers) override;

  /// All segments so far, in drawing order.
  const std::vector<Segment>& segments() const noexcept { return segments_; }
  /// Forgets all segments.
  void clear() noexcept { segments_.clear(); }

 private:
  std::vector<Segment> segments_;
};

/// @}
