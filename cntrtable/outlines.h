// SPDX-License-Identifier: MIT
//
// Many features at once, as columns: the place and the number of each ring's vertices, and lists of
// numbers that tell where parts and features begin among the rings. Well-known binary is in wkb.h,
// Arrow in geoarrow.h, and measures are in measuring.h.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <cntr/regionst.h>
#include <cntrsets/rings.h>
#include <cntrtable/export.h>
#include <platform/image/edgelet.h>

namespace table {
struct OutlineColumns;
}  // namespace table

/// @addtogroup tables
/// @{

/// What a feature is.
enum class qcOutlineKind : std::uint8_t {
  /// There is nothing to measure: it is null, empty, or could not be read.
  eNothing = 0,
  /// Outlines with holes.
  eAreas = 1,
  /// Open lines, each a part with one ring that is not closed.
  eLines = 2
};

/// Features as ragged arrays: offsets tell where each ring, part or feature begins; the last offset
/// tells where the last one ends. The first offset need not be 0.
struct qcRaggedOutlines {
  /// The kind of all features.
  qcOutlineKind kind = qcOutlineKind::eAreas;
  /// x and y in turn.
  std::span<const double> coordinates;
  /// Offsets of vertices, one more than there are rings. The last vertex of a ring of areas may
  /// repeat the first one.
  std::span<const std::int64_t> rings;
  /// Offsets of rings, only for areas: the first ring of a part is its outline. Without any, each
  /// feature is one part.
  std::span<const std::int64_t> parts;
  /// Offsets of parts, or of rings if `parts` is empty. Without any, each part or ring is a
  /// feature.
  std::span<const std::int64_t> features;
  /// One for each vertex, including repeated ones, or none at all.
  std::span<const qcEdgelet> edgelets;
};

/// Ragged arrays that own their memory. Offsets begin at 0, and the last vertex of each ring of
/// areas repeats the first one.
struct qcRaggedArrays {
  /// x and y in turn.
  std::vector<double> coordinates;
  /// Offsets of vertices, one more than there are rings.
  std::vector<std::int64_t> rings{0};
  /// Offsets of rings, one more than there are parts.
  std::vector<std::int64_t> parts{0};
  /// Offsets of parts, one more than there are features.
  std::vector<std::int64_t> features{0};
  /// One for each vertex, or none at all. If only some rings have edge elements, the others get
  /// zeros.
  std::vector<qcEdgelet> edgelets;
};

/// A list of features. An immutable value: copies and slices share their contents, and several
/// threads may read the same list.
class CNTRTABLE_EXPORT qcOutlines {
 public:
  /// No features.
  qcOutlines();

  /// The features of ragged arrays. Coordinates are shared with `owner`, which keeps them alive and
  /// unchanged, or copied if it is null; everything else is copied. A feature without vertices is
  /// of the kind eNothing, with the problem "empty". O(rings).
  ///
  /// Throws qcContourDefs::BadParams for offsets that are negative, less than the one before, or
  /// beyond what they count, naming the first such offset; for an odd number of coordinates; and
  /// when there are edge elements, but not one for each vertex. Nothing outside the arrays is read.
  static qcOutlines fromRagged(const qcRaggedOutlines& arrays,
                               std::shared_ptr<const void> owner = nullptr);

  /// The number of features.
  std::size_t size() const noexcept { return count_; }

  // Properties of feature number `feature`, from 0. REQUIRES: feature < size(),
  // part < parts(feature), ring < rings(feature, part).

  /// The kind of the feature.
  qcOutlineKind kind(std::size_t feature) const;
  /// Why the feature is eNothing; empty for other kinds.
  std::string problem(std::size_t feature) const;
  /// The label, if there is one.
  std::optional<std::uint32_t> label(std::size_t feature) const;
  /// The number of its parts, some of which may have no rings; 0 for eNothing.
  std::size_t parts(std::size_t feature) const;
  /// The number of rings of a part: its outline and holes, or a line.
  std::size_t rings(std::size_t feature, std::size_t part) const;
  /// The vertices of a ring in place, x and y in turn, without the repeated last one.
  std::span<const double> ring(std::size_t feature, std::size_t part, std::size_t ring) const;
  /// The edge elements of a ring; empty if it has none.
  std::span<const qcEdgelet> edgelets(std::size_t feature, std::size_t part,
                                      std::size_t ring) const;
  /// A copy of the feature, without parts that have no rings. A line is an outline without holes.
  std::vector<qcRings> feature(std::size_t feature) const;

  /// `count` features from number `first` on, which share the memory of this list. Throws
  /// qcContourDefs::BadParams when there are fewer.
  qcOutlines slice(std::size_t first, std::size_t count) const;

  /// The features with these numbers, in that order; numbers may be repeated. They share the
  /// coordinates of this list. Throws qcContourDefs::BadParams for a number without a feature.
  /// O(their rings), plus a copy of all edge elements.
  qcOutlines selected(std::span<const std::size_t> features) const;

  /// A copy as ragged arrays. A feature that is eNothing has no parts.
  qcRaggedArrays toRagged() const;

 private:
  friend class qcOutlinesBuilder;
  friend struct table::OutlineColumns;

  CNTRTABLE_LOCAL explicit qcOutlines(std::shared_ptr<const table::OutlineColumns> columns);
  CNTRTABLE_LOCAL std::size_t firstRing(std::size_t feature, std::size_t part) const;

  std::shared_ptr<const table::OutlineColumns> columns_;
  std::size_t first_ = 0;
  std::size_t count_ = 0;
};

/// Makes features one after the other, each from a shape or ring by ring.
class CNTRTABLE_EXPORT qcOutlinesBuilder {
 public:
  qcOutlinesBuilder();
  qcOutlinesBuilder(const qcOutlinesBuilder&) = delete;
  qcOutlinesBuilder& operator=(const qcOutlinesBuilder&) = delete;
  ~qcOutlinesBuilder();

  // Whole features. One without vertices becomes eNothing, "empty".

  /// Areas with holes.
  void addAreas(const std::vector<qcRings>& parts, std::optional<std::uint32_t> label = {});
  /// Open lines.
  void addLines(const std::vector<std::vector<qcVector<2>>>& lines,
                std::optional<std::uint32_t> label = {});
  /// An area if the contour is closed, otherwise a line, with the contour's label.
  void add(const qcContour& contour);
  /// The outline with its holes, and a further part for each hole of a hole, with the region's
  /// label. Throws qcBadPointer for a null handle among the holes.
  void add(const qcRegion& region);
  /// A part for each region, and for each hole of a hole; no label.
  void add(const qcRegionSet& set);
  /// A feature of another list.
  void add(const qcOutlines& outlines, std::size_t feature);

  // Ring by ring.

  /// Makes room for this many vertices in all.
  void reserve(std::size_t vertices) { coordinates_.reserve(2 * vertices); }
  /// Begins a ring and returns the place for its vertices, x and y in turn, initially zeros. It is
  /// valid until the next call.
  std::span<double> addRing(std::size_t vertices);
  /// Sets the edge elements of the newest ring. REQUIRES: as many as it has vertices.
  void setEdgelets(std::span<const qcEdgelet> edgelets);
  /// Leaves out the last vertex of the newest ring if it repeats the first one. REQUIRES: the ring
  /// has no edge elements.
  void leaveOutRepeated();
  /// Ends a part that consists of the rings since the last one. A part without rings is not added.
  void endPart();
  /// Ends a feature that consists of the parts since the last one; without vertices it is eNothing,
  /// "empty".
  void endFeature(qcOutlineKind kind, std::optional<std::uint32_t> label = {});
  /// Drops the rings and parts since the last feature; this feature is eNothing, for the given
  /// reason.
  void failFeature(const std::string& why);

  /// All features added since the last call.
  qcOutlines finish();

 private:
  CNTRTABLE_LOCAL void addPoints(const std::vector<qcVector<2>>& points);
  CNTRTABLE_LOCAL void addParts(std::vector<const qcRegion*> regions);

  /// Everything except the places of rings, which move as long as coordinates are added.
  std::unique_ptr<table::OutlineColumns> columns_;
  std::vector<double> coordinates_;
  /// Where each ring begins in the coordinates.
  std::vector<std::size_t> ringStarts_;
};

/// @}
