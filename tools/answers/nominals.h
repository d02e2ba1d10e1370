// SPDX-License-Identifier: MIT
//
// The nominal features with which measured ones are compared, and how the two are paired. The
// comparison itself is in comparison.h.

#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <cntr/contour.h>
#include <cntrformats/feature.h>
#include <cntrsets/frame.h>
#include <cntrsets/rings.h>

namespace tool {

/// One nominal feature, in local coordinates: near the origin, with a size of about 1.
struct Nominal {
  /// Its place in its file, counted from 1.
  std::size_t number = 1;
  /// Outlines rather than open lines.
  bool closed = true;
  cntr::sets::Frame frame{std::vector<std::span<const qcVector<2>>>()};
  /// What it fills, in normal form, or else its lines.
  std::vector<qcRings> parts = {};
  /// The boundaries of these parts, outlines and holes in opposite directions.
  std::vector<qcContour> curves = {};
  /// What flawOf() says about it.
  const char* flaw = "";
  /// Why nothing can be compared with it; empty if comparison is possible.
  std::string problem = {};
};

/// What a geometry fills (eNonZero), in normal form; lines unchanged. Throws what qf_MakeValid()
/// throws, and qcContourDefs::BadParams for lines with a coordinate that is not finite.
std::vector<qcRings> filledParts(const formats::Geometry& geometry);

/// Why the rings of outlines are not the simple boundary of what they fill: "crosses", "overlaps",
/// or empty when they are. Throws as filledParts() does.
const char* flawOf(const formats::Geometry& geometry);

/// The vertex lists of all parts.
std::vector<std::span<const qcVector<2>>> ringsOf(const std::vector<qcRings>& parts);

/// The same parts with every vertex changed by `map`.
template <class Map>
std::vector<qcRings> mapped(const std::vector<qcRings>& parts, Map map) {
  std::vector<qcRings> result = parts;
  for (qcRings& part : result) {
    for (qcVector<2>& p : part.outline) p = map(p);
    for (auto& hole : part.holes) {
      for (qcVector<2>& p : hole) p = map(p);
    }
  }
  return result;
}

/// The nominal features of a file.
class Nominals {
 public:
  /// Takes the next feature; one with a problem keeps its place. Returns what is wrong with it,
  /// empty if nothing.
  std::string add(const formats::Feature& feature);

  const std::vector<Nominal>& all() const noexcept { return all_; }

  /// The nominal with which the feature is compared: the only one, else the one with its label,
  /// else the one with its id. Throws FeatureError when there is none or several.
  const Nominal& counterpartOf(const formats::Feature& feature) const;

 private:
  /// How many features share a name, and the first of them.
  struct Named {
    std::size_t first = 0;
    std::size_t count = 0;
  };
  using Names = std::map<std::string, Named>;

  std::size_t placeOf(const formats::Feature& feature) const;

  std::vector<Nominal> all_;
  Names labels_;
  Names ids_;
};

}  // namespace tool
