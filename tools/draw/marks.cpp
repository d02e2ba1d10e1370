// SPDX-License-Identifier: MIT

#include <tools/draw/marks.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include <tools/draw/thinning.h>

namespace tool {

using namespace formats;

namespace {

/// In pixels: the tolerance of hulls, and the squares for shorter segments.
constexpr double hullTolerance = 0.05;
constexpr double shortSegment = 0.5;

struct BoxOf {
  Box operator()(const Box& box) const { return box; }
  Box operator()(const Circle& circle) const {
    const qcVector<2> reach(circle.radius, circle.radius);
    return {circle.centre - reach, circle.centre + reach};
  }
  Box operator()(const Ellipse& ellipse) const {
    const double cosine = std::cos(ellipse.angle);
    const double sine = std::sin(ellipse.angle);
    const qcVector<2> reach(std::hypot(ellipse.along * cosine, ellipse.across * sine),
                            std::hypot(ellipse.along * sine, ellipse.across * cosine));
    return {ellipse.centre - reach, ellipse.centre + reach};
  }
  Box operator()(const Ring& ring) const { return boxAround(ring.points); }
  Box operator()(const Segment& segment) const { return boxAround({segment.from, segment.to}); }
  Box operator()(const Tint& tint) const { return boxAround({tint.from, tint.to}); }
  Box operator()(const Cross& cross) const { return {cross.at, cross.at}; }
  Box operator()(const Spot& spot) const { return {spot.at, spot.at}; }
};

}  // namespace

Box boxOf(const Mark& mark) { return std::visit(BoxOf(), mark); }

MarkList::Thinner::Thinner(double pixel)
    : tolerance_(hullTolerance * pixel),
      spots_(spotSpacing * pixel),
      segments_(shortSegment * pixel),
      tints_(shortSegment * pixel) {}

bool MarkList::Thinner::operator()(Ring& ring) const {
  ring.points = thinnedRing(ring.points, tolerance_);
  return true;
}

bool MarkList::Thinner::operator()(const Segment& segment) {
  const bool isShort = segment.from.distance(segment.to) < segments_.size();
  return !isShort || segments_.take(segment.from);
}

void MarkList::add(std::vector<Mark> marks) {
  for (Mark& mark : marks) {
    if (const auto* tint = std::get_if<Tint>(&mark))
      range_ = std::max(range_, std::abs(tint->value));
    if (std::visit(thinner_, mark)) marks_.push_back(std::move(mark));
  }
}

void MarkList::thin(double pixel) {
  thinner_ = Thinner(pixel);
  add(std::exchange(marks_, {}));
}

}  // namespace tool
