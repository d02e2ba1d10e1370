// SPDX-License-Identifier: MIT
//
// qcRegionT, a region whose outline carries a datum for each vertex, see contourt.h. Sets of
// such regions are in regionsett.h.

#pragma once

#include <vector>

#include <cntr/region.h>
#include <cntrtmpl/contourt.h>

/// @addtogroup data
/// @{

/// A qcRegion and a qcContourT over the same outline. It is always closed; the geometry is that of
/// the region, the data are those of the contour.
///
/// The plain holes, which measures and queries consider, are the region's:
/// `region.qcRegion::holes()`. Setting them rebuilds the data: magnitudes and angles become 0. The
/// holes with data, holes(), are a list of their own; neither is copied into the other.
///
/// Writing to it as a plain qcRegion or qcContour (by assignment, map(), convexHull(),
/// regularize(), outerHull()) replaces its points and leaves its data unchanged; set either side
/// afterwards.
///
/// A class derived from it that is made from a contour gives the contour to the virtual base
/// qcContour as well, see qcRegion; one that is made from data does not need to.
template <class Datum>
class CNTR_EXPORT qcRegionT : public qcRegion, public qcContourT<Datum> {
 public:
  /// A list of holes with data.
  using Holes = std::vector<qcPtrHandle_const<qcRegionT<Datum>>>;

  /// No vertices, no holes, the identity as transform.
  qcRegionT();
  /// A copy of the contour's points and data that shares its transform; no holes.
  qcRegionT(const qcContourT<Datum>& contour, unsigned long label);
  /// As the constructors of qcContourT with the same data.
  qcRegionT(const std::vector<Datum>& data, unsigned long label);
  /// The same with a transform between data and points, see qcContourT.
  qcRegionT(const std::vector<Datum>& data, const qcPtrHandle_const<qc2XformBase>& dataFromPoints,
            unsigned long label);
  /// @{
  /// The second argument is a label: these regions are not repaired on construction.
  qcRegionT(const qcContourT<Datum>& contour, qcContourDefs::IntersectionMode mode) = delete;
  qcRegionT(const std::vector<Datum>& data, qcContourDefs::IntersectionMode mode) = delete;
  qcRegionT(const std::vector<Datum>& data, const qcPtrHandle_const<qc2XformBase>& dataFromPoints,
            qcContourDefs::IntersectionMode mode) = delete;
  /// @}
  /// Copies points, data, holes of both kinds and remembered answers; shares the transform.
  qcRegionT(const qcRegionT& other) = default;
  /// Copies like the copy constructor, after forgetting this object's own answers.
  qcRegionT& operator=(const qcRegionT& other);

  /// The comparison of qcContourT: points, and identity of the transform.
  bool operator==(const qcRegionT& other) const;

  /// The holes with data. Measures and queries do not look at them.
  const Holes& holes() const noexcept { return holes_; }
  /// Replaces the holes with data. Points, data and plain holes stay, and so do all answers.
  void holes(const Holes& holes) { holes_ = holes; }

  using qcContour::draw;
  /// Draws every datum, in order, as a segment of length 1 centred on its position, in the
  /// direction of its angle less a quarter turn: along the edge when the angle is the gradient's.
  /// Draws neither the outline nor the holes.
  void draw(qcUITablet& tablet, const qcColor& color,
            const qcUITablet::Layers& layers) const override;

  /// Not supported: throws qcPel::BadWindow. Use regularize().
  void regularizeT(qcRegionT& dest) const;
  /// Not supported: throws qcPel::BadWindow. Use map().
  void mapT(const qcXform<2>& xform, qcRegionT& dest) const;

 protected:
  /// Record version 0: the qcRegion record and nothing else. Data, transform and holes with data
  /// are not stored: store a qcContourT to keep data and transform. Loading leaves all three
  /// unchanged, whatever points are loaded: set either side afterwards.
  void dispatchSerialize(qcArchive& archive) override;
  /// The fields of record version 0; throws qcArchive::UnknownVersion for others.
  void serialize_(qcArchive& archive, unsigned char version) override;

 private:
  /// Registers make() for the archives.
  struct Instantiator : qc_Instantiator {
    CNTR_LOCAL Instantiator();
  };
  CNTR_LOCAL static qcPersistent* make();
  CNTR_LOCAL static Instantiator sExemplar;

  Holes holes_;
};

extern template class CNTR_EXPORT qcRegionT<qcEdgelet>;

/// @}
