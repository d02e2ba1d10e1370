// SPDX-License-Identifier: MIT
//
// This library.

#include <bench/peers/work.h>

#include <array>
#include <limits>
#include <memory>
#include <sstream>
#include <stdexcept>

#include <cntr/descriptors.h>
#include <cntr/deviation.h>
#include <cntr/region.h>
#include <cntr/regionst.h>
#include <cntr/simplify.h>
#include <platform/core/archive.h>

namespace peers {

namespace {

const std::string us = "cntr";

/// A region that makes functions for derived classes public.
class OpenRegion : public qcRegion {
 public:
  explicit OpenRegion(const Points& outline)
      : qcContour(outline, true, 0), qcRegion(outline, qcContourDefs::eNoIntersectionRepair) {}

  using qcContour::medianFeatureSize;
};

std::shared_ptr<OpenRegion> regionOf(const Work& given) {
  return std::make_shared<OpenRegion>(given.outline);
}

/// askOften() with `answer(region, given, i)`, asked 2 + n / 64 times beforehand: for outlines of
/// 1,000 vertices and more every index that it uses then exists, except for the containment grid.
template <class Answer>
void often(const std::string& question, const Plan& plan, Answer answer) {
  askOften(question, us, plan, [answer](const Work& given) {
    auto region = regionOf(given);
    const std::size_t first = 2 + given.outline.size() / 64;
    for (std::size_t i = 0; i < first; ++i) {
      benchmark::DoNotOptimize(answer(*region, given, i % questionCount));
    }
    return [region, &given, answer](std::size_t i) { return answer(*region, given, i); };
  });
}

/// askOnce() with `answer(region)`.
template <class Answer>
void once(const std::string& question, const Plan& plan, Answer answer) {
  askOnce(question, us, plan, [answer](const Work& given) {
    auto region = regionOf(given);
    return std::pair([region, &given] { region->points(given.outline); },
                     [region, answer] { return answer(*region); });
  });
}

void askAboutPlaces() {
  const auto isInside = [](const OpenRegion& region, const Work& given, std::size_t i) {
    return region.inside(given.places[i], false);
  };
  often("inside", everyShape, isInside);
  for (const Plan& plan : {quadrilateral, everyShape}) {
    askNew("first inside", us, plan, &regionOf, isInside);
  }
  askNewTimes(10, us, smoothStars, &regionOf, isInside);
  askNewTimes(100, us, largeCrossingStar, &regionOf, isInside);
  liveOften("make, area, inside", us, quadrilateral, [](const Work& given, std::size_t i) {
    const qcRegion region(given.outline, qcContourDefs::eNoIntersectionRepair);
    return region.area(false) + (region.inside(given.places[i], false) ? 1.0 : 0.0);
  });
  often("closestPoint", everyShape, [](const OpenRegion& region, const Work& given, std::size_t i) {
    return region.closestPoint(given.places[i], false);
  });
  often("closestVertexIndex", everyShape,
        [](const OpenRegion& region, const Work& given, std::size_t i) {
          return region.closestVertexIndex(given.places[i]);
        });
  often("vertexIndex", everyShape, [](const OpenRegion& region, const Work& given, std::size_t i) {
    return region.vertexIndex(given.places[i], 1.0).size();
  });
  often("extremalVertexIndex", everyShape,
        [](const OpenRegion& region, const Work&, std::size_t i) {
          return region.extremalVertexIndex(qcRadian(angleOf(i)));
        });
}

/// Times `answer(region, work)`, which asks about all places; the time reported is that for one
/// place.
template <class Answer>
void allPlaces(const std::string& question, const std::string& who, Answer answer) {
  for (const char shape : everyShape.shapes) {
    for (const std::size_t n : everyShape.sizes) {
      const auto timing = [answer, shape, n](benchmark::State& state) {
        const Work& given = work(shape, n);
        const auto region = regionOf(given);
        answer(*region, given);
        for (auto _ : state) benchmark::DoNotOptimize(answer(*region, given));
        const auto asked = static_cast<double>(state.iterations()) * questionCount;
        state.counters["nanoseconds"] = benchmark::Counter(
            asked * 1e-9, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
      };
      benchmark::RegisterBenchmark(nameOf(question, shape, n, who).c_str(), timing);
    }
  }
}

/// `atOnce(region, places)` compared with `one(region, place)` called for each place in turn.
template <class AtOnce, class One>
void askAllPlaces(const std::string& question, AtOnce atOnce, One one) {
  allPlaces(question, us, [atOnce](const OpenRegion& region, const Work& given) {
    return atOnce(region, given.places);
  });
  allPlaces(question, "one by one", [one](const OpenRegion& region, const Work& given) {
    for (const Point& p : given.places) benchmark::DoNotOptimize(one(region, p));
    return 0;
  });
}

void askAboutManyPlaces() {
  askAllPlaces(
      "many inside",
      [](const OpenRegion& region, const Points& places) {
        static std::array<bool, questionCount> answers;
        region.inside(places, false, answers);
        return answers.data();
      },
      [](const OpenRegion& region, const Point& p) { return region.inside(p, false); });
  askAllPlaces(
      "many closestPoint",
      [](const OpenRegion& region, const Points& places) {
        static std::array<Point, questionCount> answers;
        region.closestPoint(places, false, false, answers);
        return answers.data();
      },
      [](const OpenRegion& region, const Point& p) {
        return region.closestPoint(p, false, false);
      });
  askAllPlaces(
      "many distToPoint",
      [](const OpenRegion& region, const Points& places) {
        static std::array<double, questionCount> answers;
        region.distToPoint(places, false, false, false, answers);
        return answers.data();
      },
      [](const OpenRegion& region, const Point& p) {
        return region.distToPoint(p, false, false, false);
      });
}

void askAboutSegments() {
  often("short segments", everyShape,
        [](const OpenRegion& region, const Work& given, std::size_t i) {
          const auto& [a, b] = given.shortSegments[i];
          return region.intersections(qcLineSeg(a, b), true).size();
        });
  often("long segments", everyShape,
        [](const OpenRegion& region, const Work& given, std::size_t i) {
          const auto& [a, b] = given.longSegments[i];
          return region.intersections(qcLineSeg(a, b), true).size();
        });
  often("short segments (yes or no)", everyShape,
        [](const OpenRegion& region, const Work& given, std::size_t i) {
          const auto& [a, b] = given.shortSegments[i];
          return region.isCrossedBy(qcLineSeg(a, b), true);
        });
  often("long segments (yes or no)", everyShape,
        [](const OpenRegion& region, const Work& given, std::size_t i) {
          const auto& [a, b] = given.longSegments[i];
          return region.isCrossedBy(qcLineSeg(a, b), true);
        });
  once("isSelfIntersecting", everyShape,
       [](const OpenRegion& region) { return region.isSelfIntersecting(); });
}

void measure() {
  once("length", smoothStars, [](const OpenRegion& region) { return region.length(); });
  once("area", allSmoothStars, [](const OpenRegion& region) { return region.area(false); });
  once("encloseRect", allSmoothStars,
       [](const OpenRegion& region) { return region.encloseRect(qcXform<2>()).height(); });
  once("medianFeatureSize", smoothStars,
       [](const OpenRegion& region) { return region.medianFeatureSize(); });
  once("centerOfMass", smoothStars,
       [](const OpenRegion& region) { return region.centerOfMass(false); });
  once("inertiaMatrix", smoothStars,
       [](const OpenRegion& region) { return region.inertiaMatrix(false); });
  once("farthest pair", everyShape, [](const OpenRegion& region) {
    return region.diameter(qcContourDefs::eFarthestVertexPair);
  });
  once("convexHull", largerShapes, [](const OpenRegion& region) {
    qcRegion hull;
    region.convexHull(hull);
    return hull.points().size();
  });
  askOnce("set points", us, smoothStars, [](const Work& given) {
    auto region = regionOf(given);
    return std::pair(&setNothing, [region, &given] {
      region->points(given.outline);
      return region->points().data();
    });
  });
}

/// Descriptors are functions of a list of points: nothing is set beforehand or remembered.
template <class Answer>
void onPoints(const std::string& question, const Plan& plan, Answer answer) {
  askOnce(question, us, plan, [answer](const Work& given) {
    return std::pair(&setNothing, [&given, answer] { return answer(given.outline); });
  });
}

void describe() {
  onPoints("minimumAreaRect", largerShapes,
           [](const Points& points) { return qf_MinimumAreaRect(points).length; });
  onPoints("minimumWidth", largerShapes,
           [](const Points& points) { return qf_MinimumWidth(points).width; });
  onPoints("minimumCircle", largerShapes,
           [](const Points& points) { return qf_MinimumCircle(points).radius(); });
  once("simplify", smoothStars,
       [](const OpenRegion& region) { return qf_Simplify(region, 2.0).points().size(); });
  const auto isMeasured = [](const Work& given) {
    Points measured = given.outline;
    shapes::scaleAndShift(measured, 1.002, Point(0.5, 0.25));
    return std::vector<qcContour>{{measured, true, 0}};
  };
  askOnce("deviation", us, smoothStars, [isMeasured](const Work& given) {
    const std::vector<qcContour> nominal{{given.outline, true, 0}};
    return std::pair(&setNothing, [measured = isMeasured(given), nominal] {
      return qf_Deviation(measured, nominal, std::numeric_limits<double>::infinity()).rms;
    });
  });
  askOnce("align", us, Plan{"S", {100, 1000}}, [isMeasured](const Work& given) {
    const std::vector<qcContour> nominal{{given.outline, true, 0}};
    return std::pair(&setNothing, [measured = isMeasured(given), nominal] {
      return qf_Align(measured, nominal).residual;
    });
  });
  askOnce("hausdorff", us, Plan{"S", {100, 1000}}, [isMeasured](const Work& given) {
    const std::vector<qcContour> nominal{{given.outline, true, 0}};
    return std::pair(&setNothing, [measured = isMeasured(given), nominal] {
      return qf_Hausdorff(measured, nominal, hausdorffTolerance);
    });
  });
  onPoints("huMoments", smoothStars, [](const Points& points) { return qf_HuMoments(points)[0]; });
}

void repair() {
  once("regularize", Plan{"X", {1000, 10000, 100000}}, [](const OpenRegion& region) {
    qcRegion repaired;
    region.regularize(repaired);
    return repaired.points().size();
  });
  const auto outerHull = [](const OpenRegion& region) {
    qcRegion repaired;
    region.outerHull(repaired);
    return repaired.points().size();
  };
  once("outerHull", Plan{"X", {1000, 10000, 20000, 80000}}, outerHull);
  once("outerHull (circles walked twice)", Plan{"D", {20000, 80000}}, outerHull);
}

using SetOfRegions = std::shared_ptr<qcRegionSet>;

SetOfRegions setOf(const SetWork& given) {
  std::vector<qcPtrHandle_const<qcRegion>> regions;
  for (const Points& outline : given.outlines) {
    regions.emplace_back(new qcRegion(outline, qcContourDefs::eNoIntersectionRepair));
  }
  return std::make_shared<qcRegionSet>(regions, qcContourDefs::eNoIntersectionRepair);
}

/// n rectangles, each of which crosses the one before it.
SetOfRegions chainOfRegions(std::size_t n) {
  std::vector<qcPtrHandle_const<qcRegion>> regions;
  for (std::size_t k = 0; k < n; ++k) {
    Points outline{{0, 0}, {12, 0}, {12, 11}, {0, 11}};
    const auto place = static_cast<double>(k);
    shapes::scaleAndShift(outline, 1.0, Point(10.0 * place, 3.0 * place));
    regions.emplace_back(new qcRegion(outline, qcContourDefs::eNoIntersectionRepair));
  }
  return std::make_shared<qcRegionSet>(regions, qcContourDefs::eNoIntersectionRepair);
}

/// n squares in a row, each of which shares an edge with the one before it.
SetOfRegions rowOfTiles(std::size_t n) {
  std::vector<qcPtrHandle_const<qcRegion>> regions;
  for (std::size_t k = 0; k < n; ++k) {
    const double x = 10.0 * static_cast<double>(k);
    const Points outline{{x, 0}, {x + 10.0, 0}, {x + 10.0, 10.0}, {x, 10.0}};
    regions.emplace_back(new qcRegion(outline, qcContourDefs::eNoIntersectionRepair));
  }
  return std::make_shared<qcRegionSet>(regions, qcContourDefs::eNoIntersectionRepair);
}

/// n squares, each inside the one before it.
SetOfRegions squaresInSquares(std::size_t n) {
  std::vector<qcPtrHandle_const<qcRegion>> regions;
  for (std::size_t k = 0; k < n; ++k) {
    const auto low = static_cast<double>(k);
    const double high = 3.0 * static_cast<double>(n) - low;
    const Points outline{{low, low}, {high, low}, {high, high}, {low, high}};
    regions.emplace_back(new qcRegion(outline, qcContourDefs::eNoIntersectionRepair));
  }
  return std::make_shared<qcRegionSet>(regions, qcContourDefs::eNoIntersectionRepair);
}

/// A new set of new regions each time: make(n).
template <class Make, class Answer>
void askSetOnce(const std::string& question, Make make, Answer answer) {
  for (const std::size_t n : setSizes) {
    const auto timing = [make, answer, n](benchmark::State& state) {
      SetOfRegions set;
      timeOneByOne(
          state, [&set, make, n] { set = make(n); }, [&set, answer] { return answer(*set); });
    };
    benchmark::RegisterBenchmark(nameOf(question, 'R', n, us).c_str(), timing)->UseManualTime();
  }
}

void askSets() {
  askSetOften("set inside", us, [](const SetWork& given) {
    return [set = setOf(given)](const Point& p) { return set->inside(p, false); };
  });
  askSetOften("set distToPoint", us, [](const SetWork& given) {
    return
        [set = setOf(given)](const Point& p) { return set->distToPoint(p, false, false, false); };
  });
  const auto apart = [](std::size_t n) { return setOf(setWork(n)); };
  const auto regularized = [](const qcRegionSet& set) {
    auto result = std::make_unique<qcRegionSet>(set);
    set.regularize(*result);
    return result;
  };
  const auto isRefused = [](const qcRegionSet& set) {
    try {
      qcRegionSet result(set);
      set.regularize(result);
    } catch (const qcContourDefs::BadParams&) {
      return true;
    }
    throw std::logic_error("the set was to be refused");
  };
  const auto isSelfIntersecting = [](const qcRegionSet& set) { return set.isSelfIntersecting(); };
  askSetOnce("set isSelfIntersecting", apart, isSelfIntersecting);
  askSetOnce("set isSelfIntersecting (nested)", &squaresInSquares, isSelfIntersecting);
  askSetOnce("set isSelfIntersecting (touching)", &rowOfTiles, isSelfIntersecting);
  askSetOnce("set regularize", apart, regularized);
  askSetOnce("set regularize (chain)", &chainOfRegions, regularized);
  askSetOnce("set regularize (touching, refused)", &rowOfTiles, isRefused);
}

void storeAndCopy() {
  const Plan plan{"S", {1000, 100000, 1000000}};
  askOnce("store", us, plan, [](const Work& given) {
    const auto contour = std::make_shared<qcContour>(given.outline, true, 0);
    const auto stream = std::make_shared<std::ostringstream>();
    const auto store = [contour, stream] {
      qcStreamArchive archive(*stream);
      archive || *contour;
      return stream.get();
    };
    store();
    return std::pair([stream] { stream->seekp(0); }, store);
  });
  askOnce("load", us, plan, [](const Work& given) {
    std::ostringstream stored;
    qcContour contour(given.outline, true, 0);
    qcStreamArchive archive(stored);
    archive || contour;
    const auto stream = std::make_shared<std::istringstream>(std::move(stored).str());
    return std::pair([stream] { stream->seekg(0); },
                     [stream] {
                       qcContour loaded({}, true, 0);
                       qcStreamArchive source(*stream);
                       source || loaded;
                       return loaded.points().size();
                     });
  });
  askOnce("copy with answers", us, plan, [](const Work& given) {
    auto region = regionOf(given);
    for (std::size_t i = 0; i < questionCount; ++i) region->inside(given.places[i], false);
    region->length();
    auto copy = std::make_shared<std::unique_ptr<qcRegion>>();
    return std::pair([copy] { copy->reset(); },
                     [region, copy] {
                       *copy = std::make_unique<qcRegion>(*region);
                       return copy->get();
                     });
  });
}

const bool isRegistered = [] {
  askAboutPlaces();
  askAboutManyPlaces();
  askAboutSegments();
  measure();
  describe();
  repair();
  askSets();
  storeAndCopy();
  return true;
}();

}  // namespace

}  // namespace peers
