// SPDX-License-Identifier: MIT
//
// qcContourT, a contour that carries a datum for each vertex. It is made for one type of datum, the
// edge element qcEdgelet, and compiled once in the library. Regions with data are in regiont.h,
// sets of them in regionsett.h.

#pragma once

#include <vector>

#include <cntr/contour.h>
#include <platform/image/edgelet.h>

/// @addtogroup data
/// @{

template <class Datum>
class qcRegionT;

/// A contour whose vertices and data are linked by a transform: a vertex maps through it to the
/// position of its datum, a position through its inverse to the vertex.
///
/// The side that was set last determines the other. Setting the points rebuilds the data with
/// magnitude and angle 0: the previous data are lost. Setting the data rebuilds the points and
/// keeps the data. Assigning to it as a plain qcContour, as map() does, replaces the points and
/// leaves the data unchanged; set either side afterwards.
///
/// Transforms are immutable and may be shared between contours; constructors take a clone of
/// theirs, copies share it.
template <class Datum>
class CNTR_EXPORT qcContourT : public virtual qcContour {
 public:
  /// No vertices, closed, label 0, and no transform: datum(), point(), and setting points or data
  /// that are not empty throw qcBadPointer until an archive record with a transform is loaded. When
  /// setting points throws, the points are set nevertheless, and the data stay as they were.
  qcContourT();
  /// Closed, label 0, the identity as transform: the points are the data's positions.
  qcContourT(const std::vector<Datum>& data);
  /// The same with a clone of `dataFromPoints`; a null handle means the identity. Throws what the
  /// transform's inverse throws (qcMathError::Singular).
  qcContourT(const std::vector<Datum>& data, const qcPtrHandle_const<qc2XformBase>& dataFromPoints);
  /// Copies points, data and remembered answers; shares the transform.
  qcContourT(const qcContourT& other);
  /// Copies like the copy constructor, after forgetting this object's own answers.
  qcContourT& operator=(const qcContourT& other);

  /// Exactly equal points and the same transform object: a copy equals its source, contours made
  /// separately from equal transforms do not. Data, label and closed flag are not compared.
  bool operator==(const qcContourT& other) const;

  /// One datum for each vertex, in the order of the points.
  const std::vector<Datum>& data() const noexcept { return data_; }
  /// Replaces the data and rebuilds the points. When that throws, nothing has changed.
  void data(const std::vector<Datum>& data);
  /// Shares the stored transform.
  qcPtrHandle_const<qc2XformBase> dataFromPointsXform() const { return dataFromPoints_; }

  /// The datum of a point: its position mapped by the transform, magnitude and angle 0. Throws
  /// qcBadPointer without a transform.
  Datum datum(const qcVector<2>& point) const;
  /// The point of a datum: its position mapped by the inverse of the transform, which is made on
  /// first use and kept. Throws qcBadPointer without a transform, and what the inverse throws; the
  /// next call then tries again.
  qcVector<2> point(const Datum& datum) const;

  /// Not supported: throws qcPel::BadWindow. Use convexHull().
  void convexHullT(qcRegionT<Datum>& hull) const;
  /// Not supported: throws qcPel::BadWindow. Use map().
  void mapT(const qcXform<2>& xform, qcContourT& result) const;

 protected:
  /// Current record version 1: the qcContour record, the list of data, the transform as a shared
  /// object. Version 0, without the transform, is still read: the contour then keeps the one it
  /// has.
  void dispatchSerialize(qcArchive& archive) override;
  /// The fields of a record of the given version; throws qcArchive::UnknownVersion for others.
  void serialize_(qcArchive& archive, unsigned char version) override;

  /// Rebuilds the data from the points.
  void makeDataConsistentWithPoints() override;
  /// Rebuilds the points from the data.
  void makePointsConsistentWithData() override;

  /// What a contour with data has in addition to its contour.
  struct DataAndTransform {
    /// One datum for each vertex.
    std::vector<Datum> data;
    /// The transform, null for none.
    qcPtrHandle_const<qc2XformBase> dataFromPoints;
    /// Its inverse, null until it is first needed.
    qcPtrHandle_const<qc2XformBase> pointsFromData;
  };
  /// A copy of the data that shares the transforms. O(n).
  DataAndTransform dataAndTransform() const { return {data_, dataFromPoints_, pointsFromData_}; }
  /// Takes over data and transforms, not touching the contour.
  void take(DataAndTransform taken) noexcept;

 private:
  /// Registers make() for the archives.
  struct Instantiator : qc_Instantiator {
    CNTR_LOCAL Instantiator();
  };
  CNTR_LOCAL static qcPersistent* make();
  CNTR_LOCAL static Instantiator sExemplar;

  qcPtrHandle_const<qc2XformBase> dataFromPoints_;
  std::vector<Datum> data_;
  /// The inverse, null until it was asked for.
  mutable qcPtrHandle_const<qc2XformBase> pointsFromData_;
};

extern template class CNTR_EXPORT qcContourT<qcEdgelet>;

/// @}
