// SPDX-License-Identifier: MIT
//
// A drawing surface that remembers the segments drawn on it, in order: for tests, and for callers
// that draw with a library of their own.

#pragma once

#include <vector>

#include <platform/display/tablet.h>

/// Remembers every drawLineSeg call.
class QCPLATFORM_EXPORT qcRecordingTablet : public qcUITablet {
 public:
  struct Segment {
    qcPair<double> from;
    qcPair<double> to;
    qcColor color;
    Layers layers;

    bool operator==(const Segment&) const noexcept = default;
  };

  void drawLineSeg(const qcPair<double>& from, const qcPair<double>& to, const qcColor& color,
                   Layers layers) override;

  /// All segments so far, in drawing order.
  const std::vector<Segment>& segments() const noexcept { return segments_; }
  void clear() noexcept { segments_.clear(); }

 private:
  std::vector<Segment> segments_;
};
