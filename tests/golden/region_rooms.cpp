// SPDX-License-Identifier: MIT
//
// Regions and region sets: measures, queries and repair.

#include <cntr/regionst.h>

#include "rooms.h"
#include "subjects.h"

namespace golden {

void askRegionMeasures(Answers& answers) {
  for (std::size_t number = 0; number < 1000; ++number) {
    const qcPtrHandle<qcRegion> region = regionWithHoles(number);
    answers.add(*region);
    for (const bool considerHoles : {false, true}) {
      answers.ask([&] { return region->area(considerHoles); });
      answers.ask([&] { return region->centerOfMass(considerHoles); });
      answers.ask([&] { return region->inertiaMatrix(considerHoles); });
    }
  }
}

void askRegionQueries(Answers& answers) {
  for (std::size_t number = 0; number < 600; ++number) {
    const qcPtrHandle<qcRegion> region = regionWithHoles(number);
    Random random(number);
    for (int i = 0; i < 20; ++i) {
      const Point p = shapes::queryPoint(random, region->points());
      const shapes::Segment segment = shapes::querySegment(random, region->points());
      const bool yes = random.chance(0.5);
      answers.ask([&] { return region->distToPoint(p, yes, true, false); });
      answers.ask([&] { return region->closestPoint(p, !yes, true); });
      answers.ask([&] {
        long hole = -1;
        const long vertex = region->closestVertexIndex(p, yes, hole);
        answers.add(hole);
        return vertex;
      });
      answers.ask(
          [&] { return region->intersections(qcLineSeg(segment.a, segment.b), yes, true); });
    }
  }
}

void askContainment(Answers& answers) {
  for (std::size_t number = 0; number < 1000; ++number) {
    const qcPtrHandle<qcRegion> region = regionWithHoles(number);
    Random random(number);
    for (int i = 0; i < 60; ++i) {
      const Point p = shapes::queryPoint(random, region->points());
      const bool yes = random.chance(0.5);
      answers.ask([&] { return region->inside(p, yes); });
      answers.ask([&] { return region->distToPoint(p, false, yes, true); });
    }
  }
}

void askRegionRepair(Answers& answers) {
  forEachShape(1000, [&](const shapes::Shape& shape, Random&) {
    const qcRegion region(shape.points, qcContourDefs::eNoIntersectionRepair);
    qcRegion repaired;
    answers.ask([&] {
      region.regularize(repaired);
      return repaired.points();
    });
    answers.ask([&] {
      region.outerHull(repaired);
      return repaired.points();
    });
  });
}

void askSetMeasures(Answers& answers) {
  for (std::size_t number = 0; number < 300; ++number) {
    const qcRegionSet set = regionSet(number);
    Random random(number);
    const qcXform<2> xform = anyXform(random);
    answers.ask([&] { return set.area(true); });
    answers.ask([&] { return set.centerOfMass(false); });
    answers.ask([&] { return set.inertiaMatrix(false); });
    answers.ask([&] { return set.encloseRect(xform); });
    answers.ask([&] { return set.isSelfIntersecting(); });
  }
}

void askSetQueries(Answers& answers) {
  for (std::size_t number = 0; number < 300; ++number) {
    const qcRegionSet set = regionSet(number);
    Random random(number);
    for (int i = 0; i < 20; ++i) {
      const double x = random.uniform(0.0, 1500.0);
      const Point p(x, random.uniform(0.0, 1500.0));
      answers.ask([&] { return set.inside(p, true); });
      answers.ask([&] { return set.distToPoint(p, i % 2 == 0, true, i % 3 == 0); });
    }
  }
}

void askSetRepair(Answers& answers) {
  for (std::size_t number = 0; number < 300; ++number) {
    const qcRegionSet set = regionSet(number);
    qcRegionSet repaired(set);
    answers.ask([&] {
      set.regularize(repaired);
      return repaired.regions();
    });
    answers.ask([&] {
      set.outerHull(repaired);
      return repaired.regions();
    });
  }
}

}  // namespace golden
