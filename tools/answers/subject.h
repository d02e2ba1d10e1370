// SPDX-License-Identifier: MIT
//
// What one row of measures is about: a feature, or one of its parts. The measures that the tool
// shows are listed in measures.h.

#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <cntr/inertia.h>
#include <cntrformats/shapes.h>

namespace tool {

/// One or several outlines, with or without their holes, or one or several open lines.
class Subject {
 public:
  /// Throws FeatureError when a hole cannot be taken out of its outline.
  Subject(const formats::Geometry& geometry, bool withHoles);

  bool isClosed() const noexcept { return closed_; }
  /// The only outline or line; null when there are several.
  const qcContour* only() const noexcept;

  /// Vertices of the outlines or lines, without those of holes.
  std::size_t vertexCount() const;
  std::size_t holeCount() const noexcept { return holeCount_; }
  /// The outlines' or lines' lengths together.
  double length() const;
  qcRect rectangle() const;
  /// Unanswered for several lines.
  std::optional<bool> crossesItself() const;
  /// Why there is no area although there are outlines; none when all is well.
  const std::vector<const char*>& flaws() const noexcept { return flaws_; }

  // Without an answer for lines, and for outlines with flaws.

  std::optional<double> area() const;
  /// Area, centre and second moments together; nothing where there is no area to speak of, for the
  /// library then puts the centre at (0, 0).
  const std::optional<qc_InertiaData>& body() const noexcept { return body_; }

 private:
  void findFlaws();
  void addBody(const std::vector<qcRings>& parts);

  bool closed_;
  bool withHoles_;
  std::size_t holeCount_ = 0;
  std::vector<formats::ContourHandle> contours_;
  /// The same outlines as regions.
  std::optional<qcRegionSet> regions_;
  std::vector<const char*> flaws_;
  std::optional<qc_InertiaData> body_;
};

}  // namespace tool
