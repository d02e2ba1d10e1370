// SPDX-License-Identifier: MIT
//
// Smallest rectangles, strips and circles, Hu's invariants, and contours with other vertices.

#include <cntr/descriptors.h>
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

}  // namespace golden
