// SPDX-License-Identifier: MIT
//
// Contacts are read off the windings of faces; moments are put together from integrals over rings.

#include <cntrsets/filled.h>

#include <algorithm>
#include <utility>

#include <cntr/plane/starcentre.h>
#include <cntrsets/faces/filledset.h>
#include <cntrsets/frame.h>
#include <cntrsets/integrals.h>
#include <cntrsets/ringlist.h>
#include <cntrsets/sets.h>

namespace {

using cntr::plane::Twofold;
using cntr::sets::Faces;
using cntr::sets::Frame;
using cntr::sets::Integrals;
using cntr::sets::Point;
using cntr::sets::RingList;
using cntr::sets::Scaling;
using cntr::sets::Winding;
using cntr::sets::Windings;

/// The directions in which a ring has been seen to wind, in all faces together.
struct Directions {
  bool forward = false;
  bool backward = false;
};

/// Whether some ring winds both ways.
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

/// The windings on either side of an edge; not those on the way from one side to the other where
/// several rings pass.
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

/// 1 where the area of a ring counts as it is, -1 where it counts the other way.
Twofold signOf(const Twofold& area, bool isHole) {
  return Twofold((area.high < 0.0) != isHole ? -1.0 : 1.0);
}

// Of rings that bound their area simply.

double areaOf(const RingList& list) {
  const Frame frame(list.rings());
  Twofold area2;
  for (std::size_t i = 0; i < list.rings().size(); ++i) {
    const Twofold ring = cntr::sets::doubledAreaOf(list.rings()[i], frame);
    area2 = area2 + ring * signOf(ring, list.isHole(i));
  }
  if (!(area2.high > 0.0)) return 0.0;
  return frame.restored((area2 * Twofold(0.5)).high, 2);
}

qc_InertiaData momentsOf(const RingList& list) {
  const Frame frame(list.rings());
  Integrals sums;
  for (std::size_t i = 0; i < list.rings().size(); ++i) {
    const Integrals ring = cntr::sets::integralsOf(list.rings()[i], frame);
    sums.add(ring, signOf(ring.area2, list.isHole(i)));
  }
  if (!(sums.area2.high > 0.0)) return qc_InertiaData();
  const Twofold area = sums.area2 * Twofold(0.5);
  const Twofold x = sums.x6 / (sums.area2 * Twofold(3.0));
  const Twofold y = sums.y6 / (sums.area2 * Twofold(3.0));
  const Twofold xx = sums.xx12 / Twofold(12.0) - area * (x * x);
  const Twofold xy = sums.xy24 / Twofold(24.0) - area * (x * y);
  const Twofold yy = sums.yy12 / Twofold(12.0) - area * (y * y);
  return qc_InertiaData(frame.restored(area.high, 2), frame.restored({x.high, y.high}),
                        qcMatrix<2>(frame.restored(xx.high, 4), frame.restored(xy.high, 4),
                                    frame.restored(xy.high, 4), frame.restored(yy.high, 4)));
}

bool isBoundedSimply(qcRingContact contact) {
  return contact == qcRingContact::eSimple || contact == qcRingContact::eTouches;
}

std::vector<qcRings> filled(const std::vector<qcRings>& feature) {
  return qf_Union(feature, std::vector<qcRings>());
}

bool isStarShaped(std::span<const Point> ring) {
  cntr::plane::Box box;
  for (const Point& p : ring) box.add(p);
  return cntr::plane::starCentre(ring, box).has_value();
}

}  // namespace

qcRingContact qf_RingContact(const std::vector<qcRings>& feature) {
  const RingList list(feature);
  const bool isAlone = list.rings().size() == 1;
  if (isAlone && isStarShaped(list.rings().front())) return qcRingContact::eSimple;
  const Scaling scaling(cntr::sets::largestCoordinate(list.rings()));
  const cntr::sets::Noding noding =
      cntr::sets::nodeUnlessCrossed(cntr::sets::scaledPieces(list.rings(), scaling));
  if (noding.crossed) return qcRingContact::eCrosses;
  if (isAlone && !noding.touched) return qcRingContact::eSimple;
  const Faces faces = cntr::sets::facesOf(noding.pieces);
  const std::vector<Windings> windings = windingsOfFaces(faces);
  if (someRingTurnsOver(windings, list.rings().size())) return qcRingContact::eCrosses;
  if (!std::all_of(windings.begin(), windings.end(),
                   [&](const Windings& face) { return list.isSumOfRings(face); }))
    return qcRingContact::eOverlaps;
  return noding.touched ? qcRingContact::eTouches : qcRingContact::eSimple;
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
