// SPDX-License-Identifier: MIT
//
// Contacts are derived from the windings of faces, moments from integrals over rings.

#include <cntrsets/filled.h>

#include <algorithm>
#include <optional>
#include <utility>

#include <cntr/plane/starcentre.h>
#include <cntrsets/faces/filledset.h>
#include <cntrsets/frame.h>
#include <cntrsets/integrals.h>
#include <cntrsets/operations/filledrings.h>
#include <cntrsets/operations/ringlist.h>
#include <cntrsets/sets.h>

namespace {

using cntr::plane::Twofold;
using cntr::sets::AreaAndCentre;
using cntr::sets::areaIn;
using cntr::sets::Faces;
using cntr::sets::Frame;
using cntr::sets::Integrals;
using cntr::sets::momentsIn;
using cntr::sets::Point;
using cntr::sets::RingList;
using cntr::sets::Winding;
using cntr::sets::Windings;

/// The directions in which a ring has been seen to wind, in all faces together.
struct Directions {
  bool forward = false;
  bool backward = false;
};

/// Whether some ring winds in both directions.
bool someRingTurnsOver(const std::vector<Windings>& faces, std::size_t rings) {
  std::vector<Directions> directions(rings);
  for (const Windings& windings : faces) {
    for (const Winding& winding : windings)
      (winding.times > 0 ? directions[winding.ring].forward : directions[winding.ring].backward) =
          true;
  }
  return std::any_of(directions.begin(), directions.end(), [](const Directions& direction) {
    return direction.forward && direction.backward;
  });
}

/// The windings on either side of each edge, but not those in between where several rings share an
/// edge.
std::vector<Windings> windingsOfFaces(const Faces& faces) {
  std::vector<bool> occurs(faces.windings.size());
  for (const cntr::sets::Edge& edge : faces.edges) {
    occurs[edge.below] = true;
    occurs[edge.above] = true;
  }
  std::vector<Windings> result;
  for (std::size_t i = 0; i < occurs.size(); ++i)
    if (occurs[i]) result.push_back(faces.windings[i]);
  return result;
}

/// 1 if the area of a ring counts with its own sign, -1 if with the opposite sign.
Twofold signOf(const Twofold& area, bool isHole) {
  return Twofold((area.high < 0.0) != isHole ? -1.0 : 1.0);
}

/// The integrals over what all rings bound, from those that `over` finds for each ring.
template <class IntegralsOver>
Integrals sumOfRings(const Frame& frame, const RingList& list, IntegralsOver over) {
  Integrals sums;
  for (std::size_t i = 0; i < list.rings().size(); ++i) {
    const Integrals ring = over(list.rings()[i], frame);
    sums.add(ring, signOf(ring.area2, list.isHole(i)));
  }
  return sums;
}

struct Centroid {
  explicit Centroid(const Integrals& sums)
      : area(sums.area2 * Twofold(0.5)),
        x(sums.x6 / (sums.area2 * Twofold(3.0))),
        y(sums.y6 / (sums.area2 * Twofold(3.0))) {}

  Twofold area;
  Twofold x;
  Twofold y;
};

}  // namespace

namespace cntr::sets {

qcRingContact contactOf(const RingList& list, const plane::Box& box) {
  const bool isAlone = list.rings().size() == 1;
  if (isAlone && plane::starCentre(list.rings().front(), box)) return qcRingContact::eSimple;
  const Scaling scaling(largestCoordinate(list.rings()));
  const Noding noding = nodeUnlessCrossed(scaledPieces(list.rings(), scaling));
  if (noding.crossed) return qcRingContact::eCrosses;
  if (isAlone && !noding.touched) return qcRingContact::eSimple;
  const Faces faces = facesOf(noding.pieces);
  const std::vector<Windings> windings = windingsOfFaces(faces);
  if (someRingTurnsOver(windings, list.rings().size())) return qcRingContact::eCrosses;
  if (!std::all_of(windings.begin(), windings.end(),
                   [&](const Windings& face) { return list.isSumOfRings(face); }))
    return qcRingContact::eOverlaps;
  return noding.touched ? qcRingContact::eTouches : qcRingContact::eSimple;
}

double areaIn(const Frame& frame, const RingList& list) {
  Twofold area2;
  for (std::size_t i = 0; i < list.rings().size(); ++i) {
    const Twofold ring = doubledAreaOf(list.rings()[i], frame);
    area2 = area2 + ring * signOf(ring, list.isHole(i));
  }
  return area2.high > 0.0 ? (area2 * Twofold(0.5)).high : 0.0;
}

std::optional<AreaAndCentre> areaAndCentreIn(const Frame& frame, const RingList& list) {
  const Integrals sums = sumOfRings(frame, list, firstIntegralsOf);
  if (!(sums.area2.high > 0.0)) return std::nullopt;
  const Centroid centroid(sums);
  return AreaAndCentre{centroid.area.high, {centroid.x.high, centroid.y.high}};
}

std::optional<qc_InertiaData> momentsIn(const Frame& frame, const RingList& list) {
  const Integrals sums = sumOfRings(frame, list, integralsOf);
  if (!(sums.area2.high > 0.0)) return std::nullopt;
  const Centroid centroid(sums);
  const auto& [area, x, y] = centroid;
  const Twofold xx = sums.xx12 / Twofold(12.0) - area * (x * x);
  const Twofold xy = sums.xy24 / Twofold(24.0) - area * (x * y);
  const Twofold yy = sums.yy12 / Twofold(12.0) - area * (y * y);
  return qc_InertiaData(area.high, {x.high, y.high},
                        qcMatrix<2>(xx.high, xy.high, xy.high, yy.high));
}

}  // namespace cntr::sets

namespace {

// For rings that bound their area simply.

double areaOf(const RingList& list) {
  const Frame frame(list.rings());
  return frame.restored(areaIn(frame, list), 2);
}

qc_InertiaData momentsOf(const RingList& list) {
  const Frame frame(list.rings());
  const std::optional<qc_InertiaData> local = momentsIn(frame, list);
  if (!local) return qc_InertiaData();
  const qcMatrix<2>& matrix = local->inertiaMatrix();
  return qc_InertiaData(
      frame.restored(local->area(), 2), frame.restored(local->centerOfMass()),
      qcMatrix<2>(frame.restored(matrix.element(0, 0), 4), frame.restored(matrix.element(0, 1), 4),
                  frame.restored(matrix.element(1, 0), 4),
                  frame.restored(matrix.element(1, 1), 4)));
}

bool isBoundedSimply(qcRingContact contact) {
  return contact == qcRingContact::eSimple || contact == qcRingContact::eTouches;
}

std::vector<qcRings> filled(const std::vector<qcRings>& feature) {
  return qf_Union(feature, std::vector<qcRings>());
}

}  // namespace

qcRingContact qf_RingContact(const std::vector<qcRings>& feature) {
  const RingList list(feature);
  return cntr::sets::contactOf(list, cntr::sets::boxOf(list.rings()));
}

qc_InertiaData qf_FilledMoments(const std::vector<qcRings>& feature) {
  return qf_FilledMoments(feature, qf_RingContact(feature));
}

qc_InertiaData qf_FilledMoments(const std::vector<qcRings>& feature, qcRingContact contact) {
  if (isBoundedSimply(contact)) return momentsOf(RingList(feature));
  return momentsOf(RingList(filled(feature)));
}

double qf_FilledArea(const std::vector<qcRings>& feature, qcRingContact contact) {
  if (isBoundedSimply(contact)) return areaOf(RingList(feature));
  return areaOf(RingList(filled(feature)));
}
