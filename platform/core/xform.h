// SPDX-License-Identifier: MIT
//
// Transforms of the plane: the value qcXform<2> (matrix and translation) and the family of
// transform objects under qc2XformBase that shapes with per-vertex data share through handles.

#pragma once

#include <platform/core/handle.h>
#include <platform/core/matrix.h>
#include <platform/core/persistent.h>

/// @addtogroup plane
/// @{

template <int N>
class qcXform;

/// The affine transform p -> matrix * p + translation: a trivially copyable value.
template <>
class qcXform<2> {
 public:
  /// The identity transform.
  static const qcXform I;

  /// The identity.
  constexpr qcXform() noexcept = default;
  /// p -> matrix * p + translation.
  constexpr qcXform(const qcMatrix<2>& matrix, const qcVector<2>& translation) noexcept
      : matrix_(matrix), translation_(translation) {}

  /// The linear part.
  constexpr const qcMatrix<2>& matrix() const noexcept { return matrix_; }
  /// The translation, applied after the linear part.
  constexpr const qcVector<2>& trans() const noexcept { return translation_; }

  /// The image of a point: ((e00*x + e01*y) + tx, (e10*x + e11*y) + ty).
  constexpr qcVector<2> operator*(const qcVector<2>& point) const noexcept {
    return matrix_ * point + translation_;
  }
  /// The composition: applies `other`, then this transform.
  constexpr qcXform operator*(const qcXform& other) const noexcept {
    return {matrix_ * other.matrix_, *this * other.translation_};
  }
  /// The inverse. Throws qcMathError::Singular when the matrix has none.
  QCPLATFORM_EXPORT qcXform inverse() const;

  /// Exact equality of all six numbers.
  constexpr bool operator==(const qcXform& other) const noexcept {
    return matrix_ == other.matrix_ && translation_ == other.translation_;
  }

 private:
  qcMatrix<2> matrix_;
  qcVector<2> translation_;
};

inline constexpr qcXform<2> qcXform<2>::I{};

static_assert(std::is_trivially_copyable_v<qcXform<2>>);

/// Stores or loads a transform: its matrix, then its translation.
QCPLATFORM_EXPORT qcArchive& operator||(qcArchive& archive, qcXform<2>& xform);

/// A transform as a shared, archivable object. The objects are immutable.
class QCPLATFORM_EXPORT qc2XformBase : public virtual qcPersistent, public virtual qcRepBase {
 public:
  /// The image of a point.
  virtual qcVector<2> mapPoint(const qcVector<2>& point) const = 0;
  /// True when linearXform() describes the whole transform.
  virtual bool isLinear() const = 0;
  /// The transform as a value; exact when isLinear().
  virtual qcXform<2> linearXform() const = 0;
  /// A new object of the same class and value.
  virtual qcPtrHandle<qc2XformBase> clone() const = 0;
  /// A new transform, the composition: applies `other`, then this transform.
  virtual qcPtrHandle<qc2XformBase> composeBase(const qc2XformBase& other) const = 0;
  /// A new transform that undoes this one. Throws qcMathError::Singular when there is none.
  virtual qcPtrHandle<qc2XformBase> inverseBase() const = 0;
};

/// The transform object of a qcXform<2>.
/// Record: a version byte 0, the qcPersistent record, the transform.
class QCPLATFORM_EXPORT qc2XformLinear : public qc2XformBase {
 public:
  /// The identity.
  qc2XformLinear() noexcept = default;
  /// The transform object of `xform`.
  qc2XformLinear(const qcXform<2>& xform) noexcept : xform_(xform) {}

  /// @{
  /// Objects made with new come from this library's heap and go back to it, whichever module makes
  /// them or drops their last handle.
  static void* operator new(std::size_t size);
  static void operator delete(void* memory) noexcept;
  /// @}

  /// The image of a point under linearXform().
  qcVector<2> mapPoint(const qcVector<2>& point) const override;
  /// Always true.
  bool isLinear() const override;
  qcXform<2> linearXform() const override;
  qcPtrHandle<qc2XformBase> clone() const override;
  /// Linear; of `other`, its linearXform() is used.
  qcPtrHandle<qc2XformBase> composeBase(const qc2XformBase& other) const override;
  qcPtrHandle<qc2XformBase> inverseBase() const override;

 protected:
  void dispatchSerialize(qcArchive& archive) override;
  /// The fields of record version 0; throws qcArchive::UnknownVersion for others.
  void serialize_(qcArchive& archive, unsigned char version);

 private:
  QCPLATFORM_LOCAL static qcPersistent* make();
  QCPLATFORM_LOCAL static qc_Instantiator sExemplar;

  qcXform<2> xform_;
};

/// A rotation about the origin followed by a translation. It keeps the angle that it was given.
/// Record: a version byte 0, the qcPersistent record, the degrees, the translation.
class QCPLATFORM_EXPORT qc2Rigid : public qc2XformBase {
 public:
  /// The identity.
  qc2Rigid() noexcept = default;
  /// The rotation by `angle`, then the translation.
  qc2Rigid(const qcDegree& angle, const qcVector<2>& translation) noexcept;

  /// The angle as given, not normalised.
  qcDegree angle() const noexcept { return angle_; }
  /// The translation.
  const qcVector<2>& trans() const noexcept { return xform_.trans(); }
  /// The transform as a value: qcMatrix<2>(angle, angle, 1, 1) and the translation.
  const qcXform<2>& xform() const noexcept { return xform_; }

  /// The image of a point under xform().
  qcVector<2> mapPoint(const qcVector<2>& point) const override;
  /// Always true.
  bool isLinear() const override;
  qcXform<2> linearXform() const override;
  qcPtrHandle<qc2XformBase> clone() const override;
  /// Rigid when `other` is a qc2Rigid (angles are added), else linear.
  qcPtrHandle<qc2XformBase> composeBase(const qc2XformBase& other) const override;
  /// Rigid, with the angle negated; never throws.
  qcPtrHandle<qc2XformBase> inverseBase() const override;

 protected:
  void dispatchSerialize(qcArchive& archive) override;
  /// The fields of record version 0; throws qcArchive::UnknownVersion for others.
  void serialize_(qcArchive& archive, unsigned char version);

 private:
  QCPLATFORM_LOCAL static qcPersistent* make();
  QCPLATFORM_LOCAL static qc_Instantiator sExemplar;

  qcDegree angle_;
  qcXform<2> xform_;
};

/// @}
