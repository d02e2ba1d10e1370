// SPDX-License-Identifier: MIT
//
// OpenCV, with single-precision coordinates: it has no others for contours.

#include <bench/peers/work.h>

#include <opencv2/imgproc.hpp>

namespace peers {

namespace {

using Contour = std::vector<cv::Point2f>;

cv::Point2f point(const Point& p) { return {static_cast<float>(p.x()), static_cast<float>(p.y())}; }

Contour contourOf(const Points& points) {
  Contour contour;
  for (const Point& p : points) contour.push_back(point(p));
  return contour;
}

/// askOnce() with `answer(contour)`.
template <class Answer>
void once(const std::string& question, const Plan& plan, Answer answer) {
  askOnce(question, "OpenCV", plan, [answer](const Work& given) {
    return std::pair(&setNothing,
                     [contour = contourOf(given.outline), answer] { return answer(contour); });
  });
}

const bool isRegistered = [] {
  askOften("inside", "OpenCV", everyShape, [](const Work& given) {
    return [contour = contourOf(given.outline), &given](std::size_t i) {
      return cv::pointPolygonTest(contour, point(given.places[i]), false);
    };
  });
  askOften("closestPoint", "OpenCV", everyShape, [](const Work& given) {
    return [contour = contourOf(given.outline), &given](std::size_t i) {
      return cv::pointPolygonTest(contour, point(given.places[i]), true);
    };
  });
  once("convexHull", largerShapes, [](const Contour& contour) {
    Contour hull;
    cv::convexHull(contour, hull);
    return hull.size();
  });
  once("length", smoothStars, [](const Contour& c) { return cv::arcLength(c, true); });
  once("area", smoothStars, [](const Contour& c) { return cv::contourArea(c); });
  once("encloseRect", smoothStars, [](const Contour& c) { return cv::boundingRect(c).height; });
  once("centerOfMass", smoothStars, [](const Contour& c) { return cv::moments(c).m10; });
  once("inertiaMatrix", smoothStars, [](const Contour& c) { return cv::moments(c).mu11; });
  once("minimumAreaRect", largerShapes,
       [](const Contour& c) { return cv::minAreaRect(c).size.width; });
  // The time grows faster than the square of the vertices.
  once("minimumCircle", upTo(1000, largerShapes), [](const Contour& contour) {
    cv::Point2f center;
    float radius = 0.0F;
    cv::minEnclosingCircle(contour, center, radius);
    return radius;
  });
  once("simplify", smoothStars, [](const Contour& contour) {
    Contour simplified;
    cv::approxPolyDP(contour, simplified, 2.0, true);
    return simplified.size();
  });
  once("huMoments", smoothStars, [](const Contour& contour) {
    double invariants[7];
    cv::HuMoments(cv::moments(contour), invariants);
    return invariants[0];
  });
  return true;
}();

}  // namespace

}  // namespace peers
