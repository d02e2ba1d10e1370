// SPDX-License-Identifier: MIT
//
// Remembers drawn segments.

#include <platform/display/recordingtablet.h>

void qcRecordingTablet::drawLineSeg(const qcPair<double>& from, const qcPair<double>& to,
                                    const qcColor& color, Layers layers) {
  segments_.push_back({from, to, color, layers});
}
