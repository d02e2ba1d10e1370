// SPDX-License-Identifier: MIT
//
// The property `edgelets`: an edge element for every vertex of a feature's only outline or line.

#pragma once

#include <string_view>

#include <cntrformats/feature.h>

namespace formats {

/// Reads a list of [magnitude, angle], whole numbers from 0 to 65535 and from 0 to 255 (256ths of a
/// turn from the x axis towards the y axis), into the geometry that they belong to; null and an
/// empty text leave it unchanged. Throws FeatureError for anything else, for several parts, and
/// when their number is not that of the outline's vertices, not counting a repeated last one.
void readEdgelets(std::string_view json, Geometry& geometry);

}  // namespace formats
