// SPDX-License-Identifier: MIT
//
// Everything that a contour remembers. Nothing here outlives a change of the vertices or the closed
// flag; a copied contour gets a copy. What is large or rarely asked for never changes once it is
// made, and copies share it.

#pragma once

#include <array>
#include <memory>
#include <optional>
#include <vector>

#include <cntr/compute/evenodd.h>
#include <cntr/index/containmentgrid.h>
#include <cntr/index/edgeindex.h>
#include <cntr/index/vertexgrid.h>
#include <cntr/model/keyedresults.h>
#include <cntr/model/waystaken.h>
#include <cntr/region.h>
#include <platform/core/shapes.h>

/// The edges as shape objects, for derived classes that ask for them.
struct qc_EdgeShapes {
  std::vector<qcLineSeg> segments;
  std::vector<bool> isValid;
};

/// A fitted ellipse with its residual.
struct qc_FittedEllipse {
  qcEllipse ellipse;
  double residual = 0.0;
};

/// A circle and a rectangle are remembered as bare numbers: objects that an archive could hold cost
/// more to make and to destroy than a small contour's whole answer.
struct qc_BareCircle {
  qcVector<2> center;
  double radius = 0.0;
};

/// The answers of one contour, each empty until it is first asked for.
struct qc_ContourCache {
  /// Whether the contour was closed when the answers were computed.
  bool ofClosed = false;
  std::optional<double> length;
  std::optional<qcVector<2>> meanPosition;
  std::optional<double> medianFeatureSize;
  std::optional<bool> isSelfIntersecting;
  std::optional<cntr::plane::Box> bounds;
  std::shared_ptr<const qc_FittedEllipse> fittedEllipse;
  /// By DiameterMode.
  std::array<std::optional<qc_BareCircle>, 2> circles;
  qcPtrHandle<qcRegion> convexHull;
  cntr::model::KeyedResults<qcRadian, long, cntr::model::AngleKey> extremalVertices;
  cntr::model::KeyedResults<qcXform<2>, cntr::plane::Box, cntr::model::XformKey> enclosingRects;
  std::shared_ptr<const qc_EdgeShapes> edgeShapes;
  std::shared_ptr<const cntr::index::EdgeIndex> edgeIndex;
  /// The number of directions asked for while there was no index of the edges.
  std::size_t directions = 0;
  /// For points asked about while there is no containment grid.
  std::optional<cntr::compute::Extents> extents;
  /// That grid, unless the outline has proved to have none.
  std::shared_ptr<const cntr::index::ContainmentGrid> containmentGrid;
  bool hasNoContainmentGrid = false;
  /// One for each tolerance asked for.
  std::vector<std::shared_ptr<const cntr::index::VertexGrid>> vertexGrids;
  qc_WaysTaken waysTaken;
};
