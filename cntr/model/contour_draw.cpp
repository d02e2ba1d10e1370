// SPDX-License-Identifier: MIT
//
// Draws a contour.

#include <cntr/contour.h>
#include <cntr/plane/path.h>

void qcContour::draw(qcUITablet& tablet, qcContourDefs::DrawMode /*mode*/, const qcColor& color,
                     const qcUITablet::Layers& layers) const {
  const auto pair = [](const qcVector<2>& p) { return qcPair<double>(p.x(), p.y()); };
  cntr::plane::forEachEdge({points(), isClosed()}, [&](const auto& from, const auto& to) {
    tablet.drawLineSeg(pair(from), pair(to), color, layers);
  });
}
