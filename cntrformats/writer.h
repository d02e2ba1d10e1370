// SPDX-License-Identifier: MIT
//
// Writes features in any format.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include <cntr/regionst.h>
#include <cntrformats/feature.h>
#include <cntrformats/members.h>

namespace formats {

/// How rings run in a feature that is written with its own GeoJSON.
enum class Rings {
  eAsTheyWere,
  /// Closed, outlines with positive area in the file's coordinates and holes with negative area;
  /// the first vertex stays the first.
  eAsGeoJsonWants
};

/// A shape of the library: one of the two.
struct Shape {
  qcPtrHandle<qcContour> contour = {};
  qcPtrHandle<qcRegionSet> set = {};
};

/// A feature in the form in which it is written.
struct Prepared {
  std::string text;
  /// For an archive; several if the library has no set for them.
  std::vector<Shape> shapes = {};
  /// True when it is the whole file, see Location.
  bool isLone = false;
};

/// Writes one file. Only prepare() and prepareUnreadable() may be called on several threads.
class FeatureWriter {
 public:
  virtual ~FeatureWriter() = default;

  /// REQUIRES: the feature has a geometry. `isLone` when the feature is all that will be written
  /// and is not to be part of a collection.
  virtual Prepared prepare(Feature feature, bool isLone) const = 0;
  /// A feature that has a problem, as it was; empty when that cannot be written.
  virtual std::optional<Prepared> prepareUnreadable(const Feature& feature, bool isLone) const {
    (void)feature, (void)isLone;
    return std::nullopt;
  }
  virtual void write(Prepared prepared) = 0;
  /// To be called once, after the last feature.
  virtual void finish() = 0;

  /// Takes the members of a collection besides its features, once before the features and once
  /// after them. False, and the members are left alone, when the format cannot hold them.
  virtual bool takeMembers(Members&& /*members*/) { return false; }
};

}  // namespace formats
