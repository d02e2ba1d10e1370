// SPDX-License-Identifier: MIT
//
// qcRegionSetT, a region set that keeps the same regions twice: plain, and with their data.

#pragma once

#include <initializer_list>
#include <vector>

#include <cntr/regionst.h>
#include <cntrtmpl/regiont.h>

/// @addtogroup data
/// @{

/// A region set and a parallel list of regions with data.
///
/// In a set made from regions with data, regions()[i] and regionsT()[i] are the same object.
/// Setting or adding plain regions rebuilds the list with data: new regions that have only the
/// outlines of the plain ones, without holes or labels, with magnitudes and angles 0; the previous
/// list is lost. A repair mode then replaces the plain regions but not the list with data: use the
/// mode eNoIntersectionRepair to keep the two parallel.
///
/// Equality, measures, queries and repair are those of qcRegionSet, over the plain regions.
template <class Datum>
class CNTR_EXPORT qcRegionSetT : public qcRegionSet {
 public:
  /// A list of regions with data.
  using RegionsT = std::vector<qcPtrHandle_const<qcRegionT<Datum>>>;

  /// No regions.
  qcRegionSetT();
  /// Shares the regions; nothing is repaired. A null handle throws qcBadPointer.
  qcRegionSetT(const RegionsT& regions);
  /// The same for handles that may change their region; do not change it afterwards.
  qcRegionSetT(std::vector<qcPtrHandle<qcRegionT<Datum>>> regions);
  /// The same for handles of either kind listed in braces.
  qcRegionSetT(std::initializer_list<qcPtrHandle_const<qcRegionT<Datum>>> regions);

  /// The comparison of qcRegionSet, over the plain regions; the list with data is not compared.
  bool operator==(const qcRegionSetT& other) const;

  /// The regions with data, in order. O(n): the handles are copied.
  RegionsT regionsT() const { return regionsT_; }

  /// Not supported: throws qcPel::BadWindow. Use regularize().
  void regularizeT(qcRegionSetT& result) const;
  /// Not supported: throws qcPel::BadWindow.
  void mapT(const qcXform<2>& xform, qcRegionSetT& result) const;

 protected:
  /// Record version 0: the qcRegionSet record, then the list of regions with data (whose own
  /// records hold no data, see qcRegionT).
  void dispatchSerialize(qcArchive& archive) override;
  /// The fields of record version 0; throws qcArchive::UnknownVersion for others.
  void serialize_(qcArchive& archive, unsigned char version) override;

  /// Rebuilds the list with data from the plain regions.
  void makeDataConsistentWithPoints() override;
  /// Makes the regions with data the plain regions, too.
  void makePointsConsistentWithData() override;
  /// Forgets what qcRegionSet remembers; the list with data stays.
  void cleanCacheInfo() override;

 private:
  /// Registers make() for the archives.
  struct Instantiator : qc_Instantiator {
    CNTR_LOCAL Instantiator();
  };
  CNTR_LOCAL static qcPersistent* make();
  CNTR_LOCAL static Instantiator sExemplar;

  RegionsT regionsT_;
};

extern template class CNTR_EXPORT qcRegionSetT<qcEdgelet>;

/// @}
