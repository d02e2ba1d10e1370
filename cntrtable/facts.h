// SPDX-License-Identifier: MIT
//
// The facts from which measures are computed. A measure names the facts that it needs (measures.h);
// only those are found, each once, however many measures share it.

#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include <cntr/contour.h>
#include <cntr/descriptors.h>
#include <cntr/inertia.h>
#include <cntrsets/filled.h>
#include <cntrsets/frame.h>
#include <cntrsets/lonering.h>
#include <cntrsets/rings.h>

namespace table {

/// What is measured: areas, or open lines, which are outlines without holes. Refers to the parts.
struct Shape {
  const std::vector<qcRings>& parts;
  bool closed = true;
};

/// Kinds of facts, to be joined by |.
enum Need : unsigned {
  eCounts = 0U,
  /// Facts::extent.
  eExtent = 1U,
  /// Facts::curves, which answer queries themselves, see contour.h.
  eCurves = 2U,
  /// Facts::length and Facts::holeLength.
  eLength = 4U,
  /// Facts::contact and Facts::area.
  eFilled = 8U,
  /// Facts::solidArea; brings eFilled.
  eSolid = 16U,
  /// Facts::crosses.
  eCrossings = 32U,
  /// Facts::crosses, only of open lines.
  eLineCrossings = 64U,
  /// Facts::box.
  eBox = 128U,
  /// Facts::strip.
  eStrip = 256U,
  /// Facts::circle.
  eCircle = 512U,
  /// Facts::hull.
  eHull = 1024U,
  /// Facts::hu; brings eFilled.
  eHu = 2048U,
  /// Facts::moments; brings eCentre.
  eMoments = 4096U,
  /// Facts::inscribed; brings eFilled.
  eInscribed = 8192U,
  /// Facts::centre; brings eFilled.
  eCentre = 16384U
};

using Needs = unsigned;

/// What is done with an area whose rings do not bound it simply.
enum class Filling {
  /// The set that it fills is found by the set operations.
  eMeasured,
  /// It has no area, centre or moments.
  eLeftOut
};

/// The smallest box around outlines or lines, in the coordinates as given.
struct Extent {
  qcVector<2> low;
  qcVector<2> high;
};

/// The convex hull.
struct Hull {
  double area = 0.0;
  /// The length of the way around; for points on a line, there and back.
  double length = 0.0;
};

/// What is known about a shape. Local coordinates are those of `frame`, in which the size of the
/// shape is about 1: no answer depends on where it lies or on its unit.
struct Facts {
  Facts(const cntr::sets::Frame& frame_, bool closed_) : frame(frame_), closed(closed_) {}

  cntr::sets::Frame frame;
  bool closed;
  /// The number of vertices of outlines or lines, without those of holes.
  std::size_t vertices = 0;
  std::size_t holes = 0;

  std::optional<Extent> extent;
  /// The outlines or lines, local.
  std::vector<qcContour> curves;
  /// The local length of all outlines or lines, as qcContour::length() of each.
  double length = 0.0;
  /// The same for the rings of all holes.
  double holeLength = 0.0;

  // Around the vertices of all outlines or lines together, in local coordinates.

  std::optional<qcOrientedRect> box;
  std::optional<qcWidth> strip;
  std::optional<qcCircle> circle;
  std::optional<Hull> hull;

  // Only for areas.

  /// How the rings lie in relation to each other.
  std::optional<qcRingContact> contact;
  /// The rings do not bound their area simply, and Filling::eLeftOut was asked for.
  bool isLeftOut = false;
  /// The local area of what is filled; nothing if there is none or it is left out.
  std::optional<double> area;
  /// The local centre of mass of what is filled; nothing if `area` is nothing.
  std::optional<qcVector<2>> centre;
  /// The area, centre and second moments of what is filled, local; nothing if `area` is nothing.
  std::optional<qc_InertiaData> moments;
  /// The local area of a single outline without its holes; nothing if `area` is nothing.
  std::optional<double> solidArea;
  /// Hu's moment invariants of what is filled; nothing if `area` is nothing.
  std::optional<std::array<double, 7>> hu;
  /// A largest circle in what is filled; nothing if `area` is nothing or it is too thin for one.
  std::optional<qcCircle> inscribed;

  /// Whether, according to the library, outlines cross themselves or each other, in the coordinates
  /// as given; nothing for several lines.
  std::optional<bool> crosses;
};

/// Whether the rings bound their area simply, so that it needs no set operations.
bool isBoundedSimply(qcRingContact contact);

/// REQUIRES: at least one part. Throws qcContourDefs::BadParams "a coordinate is not a finite
/// number", and what the set operations throw (sets.h).
Facts factsOf(const Shape& shape, Needs needs, Filling filling);

/// What quickFactsOf() can find.
inline constexpr Needs quickNeeds =
    eExtent | eLength | eFilled | eSolid | eMoments | eCentre | eLineCrossings;

/// The same facts for an area that a single outline bounds, whose coordinates are x and y in turn;
/// nothing if factsOf() has to look closer. The outline is read into `ring`. REQUIRES: needs of
/// quickNeeds.
std::optional<Facts> quickFactsOf(std::span<const double> coordinates, Needs needs,
                                  cntr::sets::LoneRing& ring);

}  // namespace table
