// SPDX-License-Identifier: MIT

#include "rooms.h"

namespace golden {

std::span<const Room> rooms() {
  static constexpr Room all[] = {
      {"shapes", askShapes},
      {"numbers", askNumbers},
      {"hull", askHull},
      {"circle_fit", askCircleFit},
      {"ellipse_fit", askEllipseFit},
      {"angles", askAngles},
      {"contour_measures", askContourMeasures},
      {"contour_edges", askContourEdges},
      {"contour_extents", askContourExtents},
      {"contour_extremes", askContourExtremes},
      {"contour_drawing", askContourDrawing},
      {"moments", askMoments},
      {"moment_ellipses", askMomentEllipses},
      {"region_measures", askRegionMeasures},
      {"region_queries", askRegionQueries},
      {"containment", askContainment},
      {"region_repair", askRegionRepair},
      {"set_measures", askSetMeasures},
      {"set_queries", askSetQueries},
      {"set_repair", askSetRepair},
      {"data", askData},
      {"data_drawing", askDataDrawing},
      {"archive", askArchive},
  };
  return all;
}

}  // namespace golden
