// SPDX-License-Identifier: MIT
//
// Smallest rectangles, strips and circles, Hu's invariants, contours with other vertices,
// and how far curves lie from each other, as they are and aligned.

#include <cntr/descriptors.h>
#include <cntr/deviation.h>
#include <cntr/simplify.h>

#include "rooms.h"
#include "subjects.h"

namespace golden {

void askDescriptors(Answers& answers) {
  forEachShape(1000, [&](const shapes::Shape& shape, Random&) {
    answers.ask([&] {
      const qcOrientedRect rect = qf_MinimumAreaRect(shape.points);
      answers.add(rect.length, rect.width);
      for (const Point& corner : rect.corners) answers.add(corner);
      return rect.center;
    });
    answers.ask([&] { return qf_MinimumWidth(shape.points).width; });
    answers.ask([&] { return qf_MinimumCircle(shape.points); });
    for (const double invariant : qf_HuMoments(shape.points)) answers.add(invariant);
  });
}

void askDescriptorAngles(Answers& answers) {
  forEachShape(1000, [&](const shapes::Shape& shape, Random&) {
    answers.ask([&] { return qf_MinimumAreaRect(shape.points).angle.toDouble(); });
    answers.ask([&] { return qf_MinimumWidth(shape.points).angle.toDouble(); });
  });
}

void askSimplified(Answers& answers) {
  forEachShape(600, [&](const shapes::Shape& shape, Random& random) {
    const qcContour contour(shape.points, shape.closed, 0);
    const double share = random.uniform();
    answers.ask([&] { return qf_Simplify(contour, 20.0 * share).points(); });
    answers.ask(
        [&] { return qf_Resample(contour, contour.length() * (0.01 + 0.5 * share)).points(); });
  });
}

void askDeviations(Answers& answers) {
  forEachShape(400, [&](const shapes::Shape& shape, Random& random) {
    const std::vector<qcContour> nominal{{shape.points, shape.closed, 0}};
    Points moved = shape.points;
    const double size = random.uniform(0.9, 1.1);
    shapes::scaleAndShift(moved, size, Point(2.0, -1.0));
    const std::vector<qcContour> measured{{moved, true, 0}};
    const double spacing = nominal.front().length() * random.uniform(0.01, 1.0);
    answers.ask([&] {
      const qcDeviation found = qf_Deviation(measured, nominal, spacing);
      answers.add(found.least, found.leastAt, found.greatest, found.greatestAt);
      answers.add(found.mean, found.rms);
      return found.isSigned;
    });
    answers.ask([&] { return qf_Hausdorff(measured, nominal, 0.01 * spacing); });
  });
}

namespace {

/// Aligns shapes that were turned with the shapes themselves.
template <class Take>
void forEachAlignment(std::size_t shapes, Answers& answers, Take take) {
  forEachShape(shapes, [&](const shapes::Shape& shape, Random& random) {
    const double slope = random.uniform(-3.0, 3.0);
    const Point direction = Point(1.0, slope) * (1.0 / std::sqrt(1.0 + slope * slope));
    Points moved = shape.points;
    for (Point& p : moved) {
      p = Point(direction.x() * p.x() - direction.y() * p.y(),
                direction.y() * p.x() + direction.x() * p.y());
    }
    answers.ask([&] {
      return take(qf_Align({{moved, true, 0}}, {{shape.points, shape.closed, 0}}));
    });
  });
}

}  // namespace

void askAlignments(Answers& answers) {
  forEachAlignment(60, answers, [&](const qcAlignment& found) {
    answers.add(found.residual, found.steps, found.settled);
    return found.transform;
  });
}

void askAlignmentAngles(Answers& answers) {
  forEachAlignment(20, answers, [](const qcAlignment& found) { return found.angle.toDouble(); });
}

}  // namespace golden
