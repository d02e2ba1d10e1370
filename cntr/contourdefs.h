// SPDX-License-Identifier: MIT
//
// The enumerations and exceptions that contours, regions and region sets share. The classes
// themselves are in contour.h, region.h and regionst.h.

#pragma once

#include <cstdint>
#include <string>

#include <cntr/export.h>
#include <platform/core/exception.h>

/// @addtogroup contours
/// @{

/// A class used as a namespace: `qcContourDefs::eOuterHull`, `qcContourDefs::BadParams`.
class CNTR_EXPORT qcContourDefs {
 public:
  /// How a contour draws itself; every value draws the same segments.
  enum DrawMode : std::int32_t { eDrawContour = 0 };

  /// Which circle qcContour::encloseCircle() gives. Neither is the minimum enclosing circle.
  enum DiameterMode : std::int32_t {
    /// Centred midway between the two vertices that lie farthest apart; other vertices may lie
    /// outside.
    eFarthestVertexPair = 0,
    /// Centred on the first vertex, reaching to the vertex farthest from it; contains every vertex.
    eFromFirstVertex = 1
  };

  /// What is done with regions that cross themselves or each other. Any other value acts like 0.
  enum IntersectionMode : std::int32_t {
    /// They are kept as given.
    eNoIntersectionRepair = 0,
    /// They are replaced by their outer hull.
    eOuterHull = 1,
    /// They are replaced by their regularization.
    eRegularize = 2
  };

  /// Base of the exceptions of this library; abstract. Failures of the platform (archives, null
  /// handles, singular transforms) pass through unchanged.
  ///
  /// Records: each class is a version byte 0, then the records of its bases. The message is not
  /// stored: an exception read back keeps its class and number and has an empty message.
  class CNTR_EXPORT Errors : public qcExceptionWithString {
   public:
    long errorNumber() const override = 0;
    void suicideAndRethrow() override = 0;

   protected:
    /// Keeps `message`.
    Errors(const std::wstring& message = std::wstring()) : qcExceptionWithString(message.c_str()) {}
    void dispatchSerialize(qcArchive& archive) override;
    /// What follows the version byte; throws qcArchive::UnknownVersion naming the class, line 0,
    /// for a version other than 0.
    void serialize_(qcArchive& archive, unsigned char version);
  };

  /// A contour of fewer than 2 vertices, or a region of fewer than 3, where a curve is needed.
  class CNTR_EXPORT EmptyContour : public Errors {
   public:
    /// Thrown with an empty message unless the operation that throws it quotes one.
    EmptyContour(const std::wstring& message = std::wstring()) : Errors(message) {}
    /// 0x10004680.
    long errorNumber() const override;
    void suicideAndRethrow() override;

   protected:
    void dispatchSerialize(qcArchive& archive) override;
    /// See Errors::serialize_().
    void serialize_(qcArchive& archive, unsigned char version);

   private:
    CNTR_LOCAL static qcPersistent* make();
    CNTR_LOCAL static qc_Instantiator sExemplar;
  };

  /// A region set without regions where one is needed.
  class CNTR_EXPORT EmptyRegionSet : public Errors {
   public:
    /// Thrown with an empty message unless the operation that throws it quotes one.
    EmptyRegionSet(const std::wstring& message = std::wstring()) : Errors(message) {}
    /// 0x10004682.
    long errorNumber() const override;
    void suicideAndRethrow() override;

   protected:
    void dispatchSerialize(qcArchive& archive) override;
    /// See Errors::serialize_().
    void serialize_(qcArchive& archive, unsigned char version);

   private:
    CNTR_LOCAL static qcPersistent* make();
    CNTR_LOCAL static qc_Instantiator sExemplar;
  };

  /// An argument, or a shape, that the operation cannot work with; the message says why.
  class CNTR_EXPORT BadParams : public Errors {
   public:
    /// Thrown with an empty message unless the operation that throws it quotes one.
    BadParams(const std::wstring& message = std::wstring()) : Errors(message) {}
    /// 0x10004683.
    long errorNumber() const override;
    void suicideAndRethrow() override;

   protected:
    void dispatchSerialize(qcArchive& archive) override;
    /// See Errors::serialize_().
    void serialize_(qcArchive& archive, unsigned char version);

   private:
    CNTR_LOCAL static qcPersistent* make();
    CNTR_LOCAL static qc_Instantiator sExemplar;
  };

  /// An attempt to open a region.
  class CNTR_EXPORT RegionCannotBeSetOpen : public Errors {
   public:
    /// Thrown with an empty message unless the operation that throws it quotes one.
    RegionCannotBeSetOpen(const std::wstring& message = std::wstring()) : Errors(message) {}
    /// 0x10004684.
    long errorNumber() const override;
    void suicideAndRethrow() override;

   protected:
    void dispatchSerialize(qcArchive& archive) override;
    /// See Errors::serialize_().
    void serialize_(qcArchive& archive, unsigned char version);

   private:
    CNTR_LOCAL static qcPersistent* make();
    CNTR_LOCAL static qc_Instantiator sExemplar;
  };
};

/// @}
