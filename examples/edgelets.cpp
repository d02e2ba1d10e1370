// SPDX-License-Identifier: MIT
//
// Edge elements from a file to a picture: reads outlines with a gradient at each point
// (samples/cell-edgelets.geojson, see samples/README.md), stores them in an archive, loads them
// from it and draws them. Contours are stored, because the records of regions and sets hold no edge
// elements.
//
//   example_edgelets cell-edgelets.geojson cell.qcar cell.svg

#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include <cntrtmpl/regionsett.h>
#include <platform/core/archive.h>
#include <platform/display/svgtablet.h>
#include <nlohmann/json.hpp>

namespace {

using Contour = qcContourT<qcEdgelet>;
using Contours = std::vector<qcPtrHandle<Contour>>;
using Region = qcRegionT<qcEdgelet>;
using RegionSet = qcRegionSetT<qcEdgelet>;
using nlohmann::json;

/// The outline of a feature with the magnitude and angle of each point. A ring repeats its first
/// point at the end; the edge elements do not.
qcPtrHandle<Contour> contourOf(const json& feature) {
  const json& ring = feature.at("geometry").at("coordinates").at(0);
  const json& gradients = feature.at("properties").at("edgelets");
  if (ring.size() != gradients.size() + 1) {
    throw std::runtime_error("a ring has not as many points as edge elements");
  }
  std::vector<qcEdgelet> edgelets;
  for (std::size_t i = 0; i < gradients.size(); ++i) {
    const qcVector<2> position(ring[i].at(0).get<double>(), ring[i].at(1).get<double>());
    const qcAngle8 angle(gradients[i].at(1).get<unsigned char>());
    edgelets.emplace_back(position, gradients[i].at(0).get<unsigned short>(), angle);
  }
  qcPtrHandle<Contour> contour(new Contour(edgelets));
  contour->label(feature.at("properties").at("label").get<unsigned long>());
  return contour;
}

Contours readOutlines(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error("cannot read " + path);
  const json collection = json::parse(file);
  Contours contours;
  for (const json& feature : collection.at("features")) contours.push_back(contourOf(feature));
  return contours;
}

void store(const std::string& path, Contours contours) {
  std::ofstream file(path, std::ios::binary);
  qcStreamArchive archive(file);
  archive || contours;
  file.close();
  if (!file) throw std::runtime_error("cannot write " + path);
}

Contours load(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  qcStreamArchive archive(file);
  Contours contours;
  archive || contours;
  return contours;
}

/// A region for each contour, with its points, data and label.
RegionSet regionsOf(const Contours& contours) {
  RegionSet::RegionsT regions;
  for (const auto& contour : contours) {
    regions.emplace_back(new Region(*contour, contour->label()));
  }
  return RegionSet(regions);
}

void draw(const RegionSet& regions, const std::string& path) {
  qcSvgTablet tablet(0.2);
  regions.draw(tablet, qcColor::orange, qcUITablet::eOverlayLayer);
  std::ofstream file(path);
  tablet.write(file);
  file.close();
  if (!file) throw std::runtime_error("cannot write " + path);
}

void report(const RegionSet& regions) {
  std::size_t edgelets = 0;
  for (const auto& region : regions.regionsT()) edgelets += region->data().size();
  std::cout << regions.regionsT().size() << " region(s), " << edgelets << " edge elements, "
            << regions.area(false) << " square pixels\n";
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 4) {
    std::cerr << "usage: " << argv[0] << " outlines.geojson archive.qcar picture.svg\n";
    return EXIT_FAILURE;
  }
  store(argv[2], readOutlines(argv[1]));
  const RegionSet regions = regionsOf(load(argv[2]));
  draw(regions, argv[3]);
  report(regions);
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return EXIT_FAILURE;
}
