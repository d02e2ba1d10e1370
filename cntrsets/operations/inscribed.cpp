// SPDX-License-Identifier: MIT
//
// Brings the boundary of a filled set to local coordinates for the search in roomiest.h.

#include <cntrsets/inscribed.h>

#include <algorithm>
#include <cmath>

#include <cntr/contourdefs.h>
#include <cntrsets/frame.h>
#include <cntrsets/operations/ringlist.h>
#include <cntrsets/operations/roomiest.h>
#include <cntrsets/sets.h>

namespace {

using cntr::sets::Frame;
using cntr::sets::RingList;
using cntr::sets::Room;
using cntr::sets::Side;

/// As a fraction of the extent: even the hardest shapes take a bounded time.
constexpr double leastTolerance = 1e-10;

}  // namespace

qcCircle qf_InscribedCircle(const std::vector<qcRings>& feature, double tolerance) {
  return qf_InscribedCircle(feature, qf_RingContact(feature), tolerance);
}

qcCircle qf_InscribedCircle(const std::vector<qcRings>& feature, qcRingContact contact,
                            double tolerance) {
  if (!(tolerance > 0.0)) throw qcContourDefs::BadParams(L"tolerance is not positive");
  if (contact != qcRingContact::eSimple)
    return qf_InscribedCircle(qf_Union(feature, {}), qcRingContact::eSimple, tolerance);
  const RingList list(feature);
  const Frame frame(list.rings());
  const std::vector<Side> sides = sidesOf(list, frame);
  if (sides.empty()) return {};
  const Room room = cntr::sets::roomiest(sides, std::max(frame.scaled(tolerance), leastTolerance));
  return {frame.restored(room.centre), frame.restored(room.radius, 1)};
}
