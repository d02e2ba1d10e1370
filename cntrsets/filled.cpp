// SPDX-License-Identifier: MIT
//
// Contacts are read off the windings of faces; moments are sums over edges.

#include <cntrsets/filled.h>

#include <algorithm>
#include <utility>

#include <cntr/plane/twofold.h>
#include <cntrsets/faces/filledset.h>
#include <cntrsets/frame.h>
#include <cntrsets/ringlist.h>
#include <cntrsets/sets.h>

namespace {

using cntr::plane::productOf;
using cntr::plane::sumOf;
using cntr::plane::Twofold;
using cntr::sets::Faces;
using cntr::sets::Frame;
using cntr::sets::Piece;
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

/// Whether `edges` edges, cut to pieces, meet elsewhere than in the vertices between neighbours:
/// some were cut, lie on each other, or begin in one vertex.
bool ringsTouch(const std::vector<Piece>& pieces, std::size_t edges, const Faces& faces) {
  return pieces.size() != edges || faces.edges.size() != edges || faces.vertices.size() != edges;
}

/// Sums over the edges of rings; each is an integral over the area, times the number in its name.
struct Sums {
  Twofold area2{};
  Twofold x6{};
  Twofold y6{};
  Twofold xx12{};
  Twofold xy24{};
  Twofold yy12{};

  /// What the triangle from the origin to the edge a-b adds.
  void add(const Point& a, const Point& b) {
    const Twofold cross = productOf(a.x(), b.y()) - productOf(b.x(), a.y());
    const Twofold x = sumOf(a.x(), b.x());
    const Twofold y = sumOf(a.y(), b.y());
    area2 = area2 + cross;
    x6 = x6 + cross * x;
    y6 = y6 + cross * y;
    xx12 = xx12 + cross * (x * x - productOf(a.x(), b.x()));
    yy12 = yy12 + cross * (y * y - productOf(a.y(), b.y()));
    xy24 = xy24 + cross * (x * y + (productOf(a.x(), a.y()) + productOf(b.x(), b.y())));
  }

  void add(const Sums& other, const Twofold& factor) {
    area2 = area2 + other.area2 * factor;
    x6 = x6 + other.x6 * factor;
    y6 = y6 + other.y6 * factor;
    xx12 = xx12 + other.xx12 * factor;
    xy24 = xy24 + other.xy24 * factor;
    yy12 = yy12 + other.yy12 * factor;
  }
};

Sums sumsOf(std::span<const Point> ring, const Frame& frame) {
  Sums sums;
  if (ring.empty()) return sums;
  Point from = frame.local(ring.back());
  for (const Point& p : ring) {
    const Point to = frame.local(p);
    sums.add(from, to);
    from = to;
  }
  return sums;
}

/// Moments of rings that bound their area simply.
qc_InertiaData momentsOf(const RingList& list) {
  const Frame frame(list.rings());
  Sums sums;
  for (std::size_t i = 0; i < list.rings().size(); ++i) {
    const Sums ring = sumsOf(list.rings()[i], frame);
    sums.add(ring, Twofold((ring.area2.high < 0.0) != list.isHole(i) ? -1.0 : 1.0));
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

}  // namespace

qcRingContact qf_RingContact(const std::vector<qcRings>& feature) {
  const RingList list(feature);
  std::vector<Piece> pieces =
      cntr::sets::scaledPieces(list.rings(), Scaling(cntr::sets::largestCoordinate(list.rings())));
  const std::size_t edges = pieces.size();
  const cntr::sets::Noding noding = cntr::sets::nodeUnlessCrossed(std::move(pieces));
  if (noding.crossed) return qcRingContact::eCrosses;
  const Faces faces = cntr::sets::facesOf(noding.pieces);
  const std::vector<Windings> windings = windingsOfFaces(faces);
  if (someRingTurnsOver(windings, list.rings().size())) return qcRingContact::eCrosses;
  if (!std::all_of(windings.begin(), windings.end(),
                   [&](const Windings& face) { return list.isSumOfRings(face); }))
    return qcRingContact::eOverlaps;
  return ringsTouch(noding.pieces, edges, faces) ? qcRingContact::eTouches : qcRingContact::eSimple;
}

qc_InertiaData qf_FilledMoments(const std::vector<qcRings>& feature) {
  return qf_FilledMoments(feature, qf_RingContact(feature));
}

qc_InertiaData qf_FilledMoments(const std::vector<qcRings>& feature, qcRingContact contact) {
  if (contact == qcRingContact::eSimple || contact == qcRingContact::eTouches)
    return momentsOf(RingList(feature));
  const std::vector<qcRings> none;
  return momentsOf(RingList(qf_Union(feature, none)));
}
