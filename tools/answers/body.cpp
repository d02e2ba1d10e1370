// SPDX-License-Identifier: MIT

#include <tools/answers/body.h>

#include <cntrformats/shapes.h>
#include <cntrsets/filled.h>

namespace tool {

using namespace formats;

namespace {

/// An outline whose area is a smaller fraction of the square of its length is a line: its centre
/// would be rounding noise.
constexpr double smallestArea = 1e-15;

}  // namespace

qcVector<2> middleOf(const qcRings& part, bool closed) {
  const ContourHandle contour = makeContour(part.outline, closed);
  const double length = contour->length();
  if (!(length > 0.0)) return part.outline.front();
  // Summed ring by ring, as if rings did no more than touch.
  const qc_InertiaData body =
      closed ? qf_FilledMoments({part}, qcRingContact::eTouches) : qc_InertiaData();
  return body.area() > smallestArea * length * length ? body.centerOfMass()
                                                      : contour->meanPosition();
}

}  // namespace tool
