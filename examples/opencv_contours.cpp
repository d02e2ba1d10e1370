// SPDX-License-Identifier: MIT
//
// From the contours that OpenCV finds in a picture, and their hierarchy, to outlines with holes as
// plain values, to what they fill, and to regions. docs/from-opencv.md explains such contours: they
// touch themselves and their holes, which is allowed for plain outlines but not for regions.
//
//   opencv_contours [PICTURE.pgm]    cut at its mean; without a picture, a plate that is drawn

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include <cntr/regionst.h>
#include <cntrsets/filled.h>
#include <cntrsets/sets.h>
#include <opencv2/imgproc.hpp>

namespace {

using Contours = std::vector<std::vector<cv::Point>>;
/// For each contour the next and the previous one of its level, its first child and its parent.
using Hierarchy = std::vector<cv::Vec4i>;
using Points = std::vector<qcVector<2>>;

constexpr int next = 0;
constexpr int firstChild = 2;
constexpr int parent = 3;

Points verticesOf(const std::vector<cv::Point>& contour) {
  Points vertices;
  for (const cv::Point& point : contour) vertices.emplace_back(point.x, point.y);
  return vertices;
}

/// Single pixels and lines bound nothing.
bool hasArea(const std::vector<cv::Point>& contour) { return cv::contourArea(contour) > 0.0; }

/// An outer contour with its children, which are its holes.
qcRings ringsOf(std::size_t outer, const Contours& contours, const Hierarchy& hierarchy) {
  qcRings rings{verticesOf(contours[outer]), {}};
  for (int i = hierarchy[outer][firstChild]; i >= 0;) {
    const auto hole = static_cast<std::size_t>(i);
    rings.holes.push_back(verticesOf(contours[hole]));
    i = hierarchy[hole][next];
  }
  return rings;
}

/// One for each outer contour; with RETR_CCOMP, where contours without a parent are the outer ones,
/// this includes those that lie in a hole.
std::vector<qcRings> outlinesOf(const Contours& contours, const Hierarchy& hierarchy) {
  std::vector<qcRings> outlines;
  for (std::size_t i = 0; i < contours.size(); ++i) {
    if (hierarchy[i][parent] < 0 && hasArea(contours[i]))
      outlines.push_back(ringsOf(i, contours, hierarchy));
  }
  return outlines;
}

/// Whether a region can be made from the outline: its holes lie within it and do not touch it.
bool suitsRegion(const qcRings& rings) {
  try {
    qf_ToRegion(rings);
    return true;
  } catch (const qcContourDefs::BadParams&) {
    return false;
  }
}

/// What an outline fills, as regions. A part whose holes touch each other or its outline is shrunk
/// by a thousandth of a pixel, which opens the corners where they touch.
std::vector<qcPtrHandle_const<qcRegion>> regionsOf(const qcRings& rings, std::size_t label) {
  constexpr double opening = 1e-3;
  std::vector<qcPtrHandle_const<qcRegion>> regions;
  const std::vector<qcRings> none;
  for (const qcRings& part : qf_Union({rings}, none)) {
    const std::vector<qcRings> apart =
        suitsRegion(part) ? std::vector<qcRings>{part} : qf_Offset({part}, -opening, opening);
    for (const qcRings& piece : apart) {
      const qcPtrHandle<qcRegion> region(new qcRegion(qf_ToRegion(piece)));
      region->label(label);
      regions.emplace_back(region);
    }
  }
  return regions;
}

/// A plate with two bores, something small in the larger one, a slot one pixel from the edge of the
/// plate, and a pixel of dirt.
cv::Mat plate() {
  cv::Mat image = cv::Mat::zeros(80, 120, CV_8UC1);
  cv::rectangle(image, {10, 10}, {99, 69}, 255, cv::FILLED);
  cv::circle(image, {40, 40}, 15, 0, cv::FILLED);
  cv::rectangle(image, {70, 30}, {79, 39}, 0, cv::FILLED);
  cv::rectangle(image, {38, 38}, {42, 42}, 255, cv::FILLED);
  cv::rectangle(image, {60, 60}, {90, 68}, 0, cv::FILLED);
  image.at<unsigned char>(75, 110) = 255;
  return image;
}

/// A picture as scanners and cameras produce it, in the simplest of formats: 8-bit binary PGM
/// without comments.
cv::Mat pictureFrom(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  std::string magic;
  int width = 0;
  int height = 0;
  int white = 0;
  in >> magic >> width >> height >> white;
  if (!in || magic != "P5" || white != 255) throw std::runtime_error(file + " is no PGM picture");
  in.get();
  cv::Mat image(height, width, CV_8UC1);
  in.read(reinterpret_cast<char*>(image.data), static_cast<std::streamsize>(image.total()));
  if (!in) throw std::runtime_error(file + " ends early");
  return image > cv::mean(image)[0];
}

}  // namespace

int main(int argc, char** argv) try {
  Contours contours;
  Hierarchy hierarchy;
  cv::findContours(argc > 1 ? pictureFrom(argv[1]) : plate(), contours, hierarchy, cv::RETR_CCOMP,
                   cv::CHAIN_APPROX_SIMPLE);
  const std::vector<qcRings> outlines = outlinesOf(contours, hierarchy);

  // Measures need no regions: a hole may touch the outline.
  double area = 0.0;
  std::size_t touching = 0;
  for (const qcRings& rings : outlines) {
    area += qf_FilledMoments({rings}).area();
    if (!suitsRegion(rings)) ++touching;
  }
  std::cout << outlines.size() << " outlines, area " << area << ", " << touching
            << " with holes that touch\n";

  // Distances and intersections need regions.
  std::vector<qcPtrHandle_const<qcRegion>> regions;
  for (std::size_t i = 0; i < outlines.size(); ++i) {
    const auto more = regionsOf(outlines[i], i + 1);
    regions.insert(regions.end(), more.begin(), more.end());
  }
  const qcRegionSet set(regions, qcContourDefs::eNoIntersectionRepair);
  std::cout << set.regions().size() << " regions, area " << set.area(true)
            << ", inside: " << set.inside({15, 15}, true) << set.inside({30, 40}, true)
            << set.inside({40, 40}, true) << '\n';
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return EXIT_FAILURE;
}
