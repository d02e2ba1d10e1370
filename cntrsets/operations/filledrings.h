// SPDX-License-Identifier: MIT
//
// What filled.h offers, for callers that know the box of the rings: without computing it, and in
// the coordinates of a frame.

#pragma once

#include <optional>

#include <cntr/inertia.h>
#include <cntr/plane/box.h>
#include <cntrsets/filled.h>
#include <cntrsets/frame.h>
#include <cntrsets/operations/ringlist.h>

namespace cntr::sets {

/// See qf_RingContact(). `box` is that of all vertices.
CNTRSETS_EXPORT qcRingContact contactOf(const RingList& list, const plane::Box& box);

// For rings that bound their area simply, in the coordinates of the frame; nothing if they bound no
// area. The frame is that of the rings: its power of two changes no digit of a sum.

struct AreaAndCentre {
  double area = 0.0;
  Point centre;
};

/// The area, 0 if there is none.
CNTRSETS_EXPORT double areaIn(const Frame& frame, const RingList& list);
/// The area and the centre of mass, with the same bits as in the moments.
CNTRSETS_EXPORT std::optional<AreaAndCentre> areaAndCentreIn(const Frame& frame,
                                                             const RingList& list);
/// Both and the second moments about the centre.
CNTRSETS_EXPORT std::optional<qc_InertiaData> momentsIn(const Frame& frame, const RingList& list);

}  // namespace cntr::sets
