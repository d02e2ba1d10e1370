// SPDX-License-Identifier: MIT
//
// From the contours that OpenCV finds in a picture, and their hierarchy, to regions with holes and
// to a set of them. docs/from-opencv.md tells what to know about such contours.

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <vector>

#include <cntr/regionst.h>
#include <opencv2/imgproc.hpp>

namespace {

using Contours = std::vector<std::vector<cv::Point>>;
/// For each contour the next and the previous one of its level, its first child and its parent.
using Hierarchy = std::vector<cv::Vec4i>;
using Regions = std::vector<qcPtrHandle_const<qcRegion>>;

constexpr int next = 0;
constexpr int firstChild = 2;
constexpr int parent = 3;

/// The vertices in reverse: OpenCV's outer contours have a negative signed area, which does not
/// suit inertia matrices.
std::vector<qcVector<2>> verticesOf(const std::vector<cv::Point>& contour) {
  std::vector<qcVector<2>> vertices(contour.size());
  std::transform(contour.rbegin(), contour.rend(), vertices.begin(),
                 [](const cv::Point& point) { return qcVector<2>(point.x, point.y); });
  return vertices;
}

qcPtrHandle<qcRegion> regionOf(const std::vector<cv::Point>& contour, std::size_t label) {
  const qcContour boundary(verticesOf(contour), true, label);
  return qcPtrHandle<qcRegion>(new qcRegion(boundary, qcContourDefs::eNoIntersectionRepair));
}

/// Single pixels and lines bound nothing: measures of such a region would throw.
bool hasArea(const std::vector<cv::Point>& contour) { return contour.size() >= 3; }

/// The holes of an outer contour: its children.
Regions holesOf(std::size_t outer, const Contours& contours, const Hierarchy& hierarchy) {
  Regions holes;
  for (int i = hierarchy[outer][firstChild]; i >= 0;) {
    const auto hole = static_cast<std::size_t>(i);
    if (hasArea(contours[hole])) holes.push_back(regionOf(contours[hole], 0));
    i = hierarchy[hole][next];
  }
  return holes;
}

/// One region for each outer contour, labelled from 1. Of RETR_CCOMP, where contours without a
/// parent are the outer ones, also of what lies in a hole.
qcRegionSet regionsOf(const Contours& contours, const Hierarchy& hierarchy) {
  Regions regions;
  for (std::size_t i = 0; i < contours.size(); ++i) {
    if (hierarchy[i][parent] >= 0 || !hasArea(contours[i])) continue;
    const qcPtrHandle<qcRegion> region = regionOf(contours[i], regions.size() + 1);
    region->holes(holesOf(i, contours, hierarchy));
    regions.push_back(region);
  }
  return qcRegionSet(regions, qcContourDefs::eNoIntersectionRepair);
}

/// A plate with two bores, something small in the larger one, and a pixel of dirt.
cv::Mat picture() {
  cv::Mat image = cv::Mat::zeros(80, 120, CV_8UC1);
  cv::rectangle(image, {10, 10}, {99, 69}, 255, cv::FILLED);
  cv::circle(image, {40, 40}, 15, 0, cv::FILLED);
  cv::rectangle(image, {70, 30}, {79, 39}, 0, cv::FILLED);
  cv::rectangle(image, {38, 38}, {42, 42}, 255, cv::FILLED);
  image.at<unsigned char>(75, 110) = 255;
  return image;
}

}  // namespace

int main() {
  Contours contours;
  Hierarchy hierarchy;
  cv::findContours(picture(), contours, hierarchy, cv::RETR_CCOMP, cv::CHAIN_APPROX_SIMPLE);
  const qcRegionSet set = regionsOf(contours, hierarchy);

  for (const auto& region : set.regions()) {
    std::cout << "region " << region->label() << ": " << region->holes().size() << " holes, area "
              << region->area(true) << '\n';
  }
  std::cout << "inside: " << set.inside({15, 15}, true) << set.inside({30, 40}, true)
            << set.inside({40, 40}, true) << '\n';
}
