// SPDX-License-Identifier: MIT
//
// Features as Arrow columns, in the layouts of GeoArrow or as well-known binary.

#pragma once

#include <cstdint>

#include <cntrtable/arrow.h>
#include <cntrtable/export.h>
#include <cntrtable/outlines.h>

/// @addtogroup tables
/// @{

/// The features of a column, which is taken over and released once, whatever happens: immediately,
/// or with the last of the outlines that share its coordinates. Coordinates are shared if they are
/// x and y in turn as 64-bit floating-point numbers (fixed-size lists of 2) at an address that is a
/// multiple of 8; all others are copied: separated ones (a struct with x and y), misaligned ones,
/// and those with Z or M, which are left out.
///
/// It reads geoarrow.linestring, polygon, multilinestring and multipolygon; nested lists without
/// such a name, where list<coordinates> is a line, list<list<coordinates>> a polygon, and
/// list<list<list<coordinates>>> a multipolygon; and WKB as binary, with the name geoarrow.wkb,
/// ogc.wkb or none. Lists and binary may be large; binary may be views. A null becomes a feature
/// that is eNothing, with the problem "null". Nulls within a feature are refused.
///
/// It also reads tables (record batches, structs) with such a column named geometry, and these
/// columns, if they exist and have the right type:
/// - label: the labels, whole numbers of any size;
/// - problem: texts, why features without geometry have none;
/// - edge_elements: lists of structs of the whole numbers magnitude and angle; for each feature no
///   items or one for each vertex, ring by ring, without repeated last vertices. A ring with an
///   item that is null has no edge elements.
/// Other columns are ignored.
///
/// Throws qcContourDefs::BadParams, which says what is wrong and where, for other formats and for
/// whatever contradicts itself: a structure that has been released or is not complete, negative
/// lengths, offsets that go backwards or beyond the items, labels beyond 32 bits, magnitudes beyond
/// 16 and angles beyond 8. The sizes of buffers are not part of the interface: they are taken to be
/// as large as the lengths demand.
CNTRTABLE_EXPORT qcOutlines qf_FromArrow(const ArrowSchema* schema, ArrowArray* array);

/// The features of all columns or tables of a stream, one after the other, each taken over as
/// above: coordinates that are not copied stay in place, in as many columns as there were. The
/// stream is taken over and released once. Throws what the function above throws, and BadParams
/// with the stream's own message when the stream fails.
CNTRTABLE_EXPORT qcOutlines qf_FromArrow(ArrowArrayStream* stream);

/// How features are laid out.
enum class qcArrowLayout : std::uint8_t {
  /// The first that can hold them: polygon, multipolygon, linestring, multilinestring, WKB.
  eFitting = 0,
  ePolygon = 1,
  eMultiPolygon = 2,
  eLineString = 3,
  eMultiLineString = 4,
  eWkb = 5
};

/// How coordinates are laid out.
enum class qcArrowCoordinates : std::uint8_t {
  /// x and y in turn.
  eInterleaved = 0,
  /// All x, then all y.
  eSeparated = 1
};

/// The features as a column named "geometry"; those that are eNothing are null. Rings repeat their
/// first vertex. Labels, problems and edge elements are left out. Throws qcContourDefs::BadParams,
/// naming the first feature that the layout cannot hold.
CNTRTABLE_EXPORT qcArrowColumn
qf_ToArrow(const qcOutlines& outlines, qcArrowLayout layout = qcArrowLayout::eFitting,
           qcArrowCoordinates coordinates = qcArrowCoordinates::eInterleaved);

/// The features as a record batch of the columns geometry, as above, and label (64-bit integers);
/// if there are any, also problem (large strings) and edge_elements (lists of structs of magnitude
/// and angle, unsigned integers of 16 and 8 bits), in which an item is null if its ring has no edge
/// elements. qf_FromArrow() reads all of it.
CNTRTABLE_EXPORT qcArrowColumn
qf_ToArrowTable(const qcOutlines& outlines, qcArrowLayout layout = qcArrowLayout::eFitting,
                qcArrowCoordinates coordinates = qcArrowCoordinates::eInterleaved);

/// @}
