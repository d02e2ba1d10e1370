// SPDX-License-Identifier: MIT

#include <tools/draw/canvas.h>

namespace tool {

using namespace formats;

namespace {

struct Mapped {
  const Canvas& canvas;
  bool isUp;

  Mark operator()(const Box& box) const { return canvas.map(box); }
  Mark operator()(const Circle& circle) const {
    return Circle{canvas.map(circle.centre), canvas.map(circle.radius)};
  }
  Mark operator()(const Ellipse& ellipse) const {
    return Ellipse{canvas.map(ellipse.centre), canvas.map(ellipse.along),
                   canvas.map(ellipse.across), isUp ? -ellipse.angle : ellipse.angle};
  }
  Mark operator()(const Ring& ring) const { return Ring{canvas.map(ring.points)}; }
  Mark operator()(const Segment& segment) const {
    return Segment{canvas.map(segment.from), canvas.map(segment.to)};
  }
  Mark operator()(const Tint& tint) const {
    return Tint{canvas.map(tint.from), canvas.map(tint.to), tint.value};
  }
  Mark operator()(const Cross& cross) const { return Cross{canvas.map(cross.at)}; }
  Mark operator()(const Spot& spot) const { return Spot{canvas.map(spot.at)}; }
};

}  // namespace

qcVector<2> Canvas::map(const qcVector<2>& p) const {
  const double y = isUp_ ? view_.high.y() - p.y() : p.y() - view_.low.y();
  return {(p.x() - view_.low.x()) / pixel_, y / pixel_};
}

Points Canvas::map(const Points& points) const {
  Points mapped;
  mapped.reserve(points.size());
  for (const qcVector<2>& p : points) mapped.push_back(map(p));
  return mapped;
}

Box Canvas::map(const Box& box) const {
  Box mapped;
  mapped.enclose(map(box.low));
  mapped.enclose(map(box.high));
  return mapped;
}

Mark Canvas::map(const Mark& mark) const { return std::visit(Mapped{*this, isUp_}, mark); }

}  // namespace tool
