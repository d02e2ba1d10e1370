// SPDX-License-Identifier: MIT
//
// Loops over bare doubles without any index; where there is a textbook method, the best one known.

#include <bench/peers/work.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>

#include <platform/core/hull.h>

namespace peers {

namespace {

const std::string who = "plain loop";

/// The outline as x, y, x, y, ...
std::vector<double> numbersOf(const Points& points) {
  std::vector<double> numbers;
  numbers.reserve(2 * points.size());
  for (const Point& p : points) {
    numbers.push_back(p.x());
    numbers.push_back(p.y());
  }
  return numbers;
}

bool inside(const std::vector<double>& xy, double x, double y) {
  bool isInside = false;
  double x0 = xy[xy.size() - 2];
  double y0 = xy[xy.size() - 1];
  for (std::size_t i = 0; i < xy.size(); i += 2) {
    const double x1 = xy[i];
    const double y1 = xy[i + 1];
    if ((y0 > y) != (y1 > y) && x < (x1 - x0) * (y - y0) / (y1 - y0) + x0) isInside = !isInside;
    x0 = x1;
    y0 = y1;
  }
  return isInside;
}

double squaredDistance(const std::vector<double>& xy, double x, double y) {
  double best = std::numeric_limits<double>::infinity();
  double x0 = xy[xy.size() - 2];
  double y0 = xy[xy.size() - 1];
  for (std::size_t i = 0; i < xy.size(); i += 2) {
    const double dx = xy[i] - x0;
    const double dy = xy[i + 1] - y0;
    const double t = std::clamp(((x - x0) * dx + (y - y0) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
    const double ex = x0 + t * dx - x;
    const double ey = y0 + t * dy - y;
    best = std::min(best, ex * ex + ey * ey);
    x0 = xy[i];
    y0 = xy[i + 1];
  }
  return best;
}

std::size_t nearestVertex(const std::vector<double>& xy, double x, double y) {
  std::size_t best = 0;
  double bestSquare = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < xy.size(); i += 2) {
    const double dx = xy[i] - x;
    const double dy = xy[i + 1] - y;
    const double square = dx * dx + dy * dy;
    if (square < bestSquare) {
      bestSquare = square;
      best = i / 2;
    }
  }
  return best;
}

std::size_t extremalVertex(const std::vector<double>& xy, double angle) {
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  std::size_t best = 0;
  double bestReach = -std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < xy.size(); i += 2) {
    const double reach = c * xy[i] + s * xy[i + 1];
    if (reach > bestReach) {
      bestReach = reach;
      best = i / 2;
    }
  }
  return best;
}

double length(const std::vector<double>& xy) {
  double sum = 0.0;
  double x0 = xy[xy.size() - 2];
  double y0 = xy[xy.size() - 1];
  for (std::size_t i = 0; i < xy.size(); i += 2) {
    const double dx = xy[i] - x0;
    const double dy = xy[i + 1] - y0;
    sum += std::sqrt(dx * dx + dy * dy);
    x0 = xy[i];
    y0 = xy[i + 1];
  }
  return sum;
}

double area(const std::vector<double>& xy) {
  double sum = 0.0;
  double x0 = xy[xy.size() - 2];
  double y0 = xy[xy.size() - 1];
  for (std::size_t i = 0; i < xy.size(); i += 2) {
    sum += xy[i + 1] * x0 - y0 * xy[i];
    x0 = xy[i];
    y0 = xy[i + 1];
  }
  return std::fabs(sum * 0.5);
}

double boxHeight(const std::vector<double>& xy) {
  double minX = xy[0];
  double maxX = xy[0];
  double minY = xy[1];
  double maxY = xy[1];
  for (std::size_t i = 2; i < xy.size(); i += 2) {
    minX = std::min(minX, xy[i]);
    maxX = std::max(maxX, xy[i]);
    minY = std::min(minY, xy[i + 1]);
    maxY = std::max(maxY, xy[i + 1]);
  }
  benchmark::DoNotOptimize(minX);
  benchmark::DoNotOptimize(maxX);
  return maxY - minY;
}

/// The median of the edge lengths (the upper one of two), by selection.
double medianEdge(const std::vector<double>& xy) {
  std::vector<double> lengths;
  lengths.reserve(xy.size() / 2);
  double x0 = xy[xy.size() - 2];
  double y0 = xy[xy.size() - 1];
  for (std::size_t i = 0; i < xy.size(); i += 2) {
    const double dx = xy[i] - x0;
    const double dy = xy[i + 1] - y0;
    lengths.push_back(std::sqrt(dx * dx + dy * dy));
    x0 = xy[i];
    y0 = xy[i + 1];
  }
  const auto middle = lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() / 2);
  std::nth_element(lengths.begin(), middle, lengths.end());
  return *middle;
}

/// The largest distance between vertices: rotating calipers (Shamos 1978) around the hull.
double farthestPair(const Points& outline) {
  Points hull;
  qfConvexHull(outline, hull);
  const std::size_t n = hull.size();
  const auto square = [&hull](std::size_t i, std::size_t j) {
    const double dx = hull[i].x() - hull[j].x();
    const double dy = hull[i].y() - hull[j].y();
    return dx * dx + dy * dy;
  };
  const auto doubleArea = [&hull](std::size_t i, std::size_t j, std::size_t k) {
    return std::fabs((hull[j].x() - hull[i].x()) * (hull[k].y() - hull[i].y()) -
                     (hull[j].y() - hull[i].y()) * (hull[k].x() - hull[i].x()));
  };
  double best = 0.0;
  std::size_t j = 1;
  for (std::size_t i = 0; i < n; ++i) {
    const std::size_t next = (i + 1) % n;
    while (doubleArea(i, next, (j + 1) % n) > doubleArea(i, next, j)) j = (j + 1) % n;
    best = std::max({best, square(i, j), square(next, j)});
  }
  return std::sqrt(best);
}

/// The same by comparing every pair.
double farthestOfAll(const Points& outline) {
  double best = 0.0;
  for (std::size_t i = 0; i < outline.size(); ++i) {
    for (std::size_t j = i + 1; j < outline.size(); ++j) {
      const double dx = outline[i].x() - outline[j].x();
      const double dy = outline[i].y() - outline[j].y();
      best = std::max(best, dx * dx + dy * dy);
    }
  }
  return std::sqrt(best);
}

/// askOften() with `answer(xy, given, i)`.
template <class Answer>
void often(const std::string& question, const Plan& plan, Answer answer) {
  askOften(question, who, plan, [answer](const Work& given) {
    return [xy = numbersOf(given.outline), &given, answer](std::size_t i) {
      return answer(xy, given, i);
    };
  });
}

/// askOnce() with `answer(xy)`.
template <class Answer>
void once(const std::string& question, const Plan& plan, Answer answer) {
  askOnce(question, who, plan, [answer](const Work& given) {
    return std::pair(&setNothing, [xy = numbersOf(given.outline), answer] { return answer(xy); });
  });
}

void copyBytes() {
  askOnce("copy with answers", "memcpy and allocation", {"S", {1000, 100000, 1000000}},
          [](const Work& given) {
            const auto copy = std::make_shared<std::unique_ptr<char[]>>();
            return std::pair([copy] { copy->reset(); },
                             [&given, copy] {
                               const std::size_t bytes = given.outline.size() * sizeof(Point);
                               *copy = std::make_unique_for_overwrite<char[]>(bytes);
                               std::memcpy(copy->get(), given.outline.data(), bytes);
                               return copy->get();
                             });
          });
}

const bool isRegistered = [] {
  const auto isInside = [](const std::vector<double>& xy, const Work& given, std::size_t i) {
    return inside(xy, given.places[i].x(), given.places[i].y());
  };
  const auto makeNumbers = [](const Work& given) {
    return std::make_unique<std::vector<double>>(numbersOf(given.outline));
  };
  often("inside", everyShape, isInside);
  for (const Plan& plan : {quadrilateral, everyShape}) {
    askNew("first inside", who, plan, makeNumbers, isInside);
  }
  askNewTimes(100, who, largeCrossingStar, makeNumbers, isInside);
  often("closestPoint", everyShape,
        [](const std::vector<double>& xy, const Work& given, std::size_t i) {
          return squaredDistance(xy, given.places[i].x(), given.places[i].y());
        });
  often("closestVertexIndex", everyShape,
        [](const std::vector<double>& xy, const Work& given, std::size_t i) {
          return nearestVertex(xy, given.places[i].x(), given.places[i].y());
        });
  often("extremalVertexIndex", everyShape,
        [](const std::vector<double>& xy, const Work&, std::size_t i) {
          return extremalVertex(xy, angleOf(i));
        });
  once("length", smoothStars, &length);
  once("area", allSmoothStars, &area);
  once("encloseRect", allSmoothStars, &boxHeight);
  once("medianFeatureSize", smoothStars, &medianEdge);
  askOnce("farthest pair", "every pair", Plan{"SNC", {10, 100}}, [](const Work& given) {
    return std::pair(&setNothing, [&given] { return farthestOfAll(given.outline); });
  });
  askOnce("farthest pair", "hull and calipers", everyShape, [](const Work& given) {
    return std::pair(&setNothing, [&given] { return farthestPair(given.outline); });
  });
  copyBytes();
  return true;
}();

}  // namespace

}  // namespace peers
