// SPDX-License-Identifier: MIT

#include <tools/answers/comparison.h>

#include <algorithm>
#include <utility>

#include <cntrformats/shapes.h>
#include <cntrsets/filled.h>
#include <cntrsets/sets.h>
#include <cntrsets/spacing.h>

namespace tool {

using namespace formats;

namespace {

using Point = qcVector<2>;

/// How far the Hausdorff distance may be below the true one, as a fraction of the extent.
constexpr double hausdorffError = 1e-9;

/// A measured feature in the coordinates of its nominal.
struct Measured {
  std::vector<qcRings> parts;
  std::vector<qcContour> curves;

  Measured(std::vector<qcRings> parts_, bool closed)
      : parts(std::move(parts_)), curves(curvesOf(parts, closed)) {}
};

double areaOf(const std::vector<qcRings>& parts) {
  return qf_FilledArea(parts, qcRingContact::eTouches);
}

/// Converts an alignment found in local coordinates to the coordinates as given. `origin` is where
/// the local origin comes to lie.
Placement placementOf(const qcAlignment& found, const Point& origin, const cntr::sets::Frame& frame,
                      double scale) {
  return {found.angle.toDouble(), frame.restored(found.transform * origin) * scale};
}

qcDeviation scaled(qcDeviation deviation, double factor) {
  deviation.least *= factor;
  deviation.greatest *= factor;
  deviation.mean *= factor;
  deviation.rms *= factor;
  return deviation;
}

void addAreas(Comparison& result, const Measured& measured, const Nominal& nominal, double scale) {
  const double there = areaOf(measured.parts);
  const double wanted = areaOf(nominal.parts);
  const double common = areaOf(qf_Intersection(measured.parts, nominal.parts));
  result.iou = std::min(1.0, common / (there + wanted - common));
  result.areaDifference = nominal.frame.restored(there - wanted, 2) * scale * scale;
}

void addNote(std::string& note, const std::string& text) {
  note.append(note.empty() ? "" : "; ").append(text);
}

/// Notes that the rings are not compared as given.
void addFlaw(std::string& note, const std::string& whose, const std::string& flaw) {
  if (!flaw.empty()) addNote(note, whose + flaw + ": compared as filled");
}

}  // namespace

Comparison compared(const Geometry& measured, const Nominal& nominal,
                    const ComparingOptions& options) {
  const std::vector<qcRings> parts = filledParts(measured);
  const cntr::sets::Frame own(ringsOf(parts));
  // The unit of local lengths and the measured size, as powers of two, so that nothing is rounded.
  const double unit = nominal.frame.restored(1.0, 1);
  const double extent = own.restored(1.0, 1) / unit;
  Comparison result;
  addFlaw(result.note, "", flawOf(measured));
  addFlaw(result.note, "the nominal ", nominal.flaw);
  // Before it is aligned the feature may lie anywhere, so its coordinates are relative to its own
  // origin.
  const auto local = [&](const Point& p) {
    return options.align ? own.local(p) * extent : nominal.frame.local(p);
  };
  Measured moved(mapped(parts, local), measured.closed);
  if (options.align) {
    const qcAlignment found = qf_Align(moved.curves, nominal.curves);
    const auto onto = [&](const Point& p) { return found.transform * p; };
    moved = Measured(mapped(moved.parts, onto), measured.closed);
    result.placement = placementOf(found, local({0.0, 0.0}), nominal.frame, options.scale);
    if (!found.settled) addNote(result.note, "the alignment has not settled");
  }
  const double spacing = options.spacing ? *options.spacing / options.scale / unit
                                         : cntr::sets::usualSpacing(moved.curves);
  result.deviation =
      scaled(qf_Deviation(moved.curves, nominal.curves, spacing), unit * options.scale);
  result.hausdorff =
      qf_Hausdorff(moved.curves, nominal.curves, hausdorffError * std::max(1.0, extent)) * unit *
      options.scale;
  if (options.tolerance) result.inTolerance = result.hausdorff <= *options.tolerance;
  if (!nominal.closed) addNote(result.note, "the nominal is open: distances have no signs");
  if (measured.closed && nominal.closed) addAreas(result, moved, nominal, options.scale);
  return result;
}

}  // namespace tool
