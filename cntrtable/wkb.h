// SPDX-License-Identifier: MIT
//
// Features as well-known binary (WKB): the form of OGC and ISO, and the extended form with a number
// for the spatial reference, which is ignored.

#pragma once

#include <bit>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include <cntrtable/export.h>
#include <cntrtable/outlines.h>

/// @addtogroup tables
/// @{

/// Bytes, or nothing for a null.
using qcWkbValue = std::optional<std::span<const std::byte>>;

/// A feature from each value, in either byte order: polygons and multipolygons as areas,
/// linestrings and multilinestrings as lines, collections of one or the other (16 deep at most) as
/// their parts. Z and M are left out. Everything else becomes a feature that is eNothing, with a
/// problem that says what is wrong and at which byte: nulls, other geometries, empty ones, and
/// values that are cut short, have counts that their bytes cannot hold, or continue after the
/// geometry. Takes memory in proportion to the number of bytes, whatever they say. O(bytes).
CNTRTABLE_EXPORT qcOutlines qf_FromWkb(std::span<const qcWkbValue> values);

/// One feature as a polygon or linestring or, if it has several parts, as a multipolygon or
/// multilinestring; rings repeat their first vertex. REQUIRES: feature < outlines.size(). Throws
/// qcContourDefs::BadParams when it is eNothing.
CNTRTABLE_EXPORT std::vector<std::byte> qf_ToWkb(const qcOutlines& outlines, std::size_t feature,
                                                 std::endian order = std::endian::little);

/// @}
