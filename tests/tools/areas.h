// SPDX-License-Identifier: MIT
//
// Areas of the GeoJSON that the program writes.

#pragma once

#include "program.h"

/// Positive for a ring that runs counterclockwise in the file's coordinates, as square() does.
inline double signedArea(const program::Json& ring) {
  double sum = 0.0;
  for (std::size_t i = 1; i < ring.size(); ++i) {
    sum += ring[i - 1][0].get<double>() * ring[i][1].get<double>() -
           ring[i][0].get<double>() * ring[i - 1][1].get<double>();
  }
  return sum / 2.0;
}

/// The polygons of a feature or geometry.
inline program::Json polygonsOf(const program::Json& feature) {
  const program::Json& geometry = feature.contains("geometry") ? feature["geometry"] : feature;
  if (geometry["type"] == "MultiPolygon") return geometry["coordinates"];
  return program::Json::array({geometry["coordinates"]});
}

inline double areaOf(const program::Json& feature) {
  double sum = 0.0;
  for (const program::Json& polygon : polygonsOf(feature))
    for (const program::Json& ring : polygon) sum += signedArea(ring);
  return sum;
}
