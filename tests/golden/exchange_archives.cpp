// SPDX-License-Identifier: MIT
//
// Stores shapes of every kind in an archive, or loads such an archive and stores what was loaded:
//
//   exchange_archives --store OUT
//   exchange_archives IN OUT
//
// Whichever system stores and whichever loads, all archives have the same bytes.

#include <cstring>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include <cntrtmpl/regionsett.h>
#include <platform/core/archive.h>

#include "subjects.h"

namespace {

constexpr std::size_t count = 50;
constexpr auto keep = qcContourDefs::eNoIntersectionRepair;

using ContourT = qcContourT<qcEdgelet>;
using RegionSetT = qcRegionSetT<qcEdgelet>;
using RegionT = qcRegionT<qcEdgelet>;

/// One shape of every kind.
struct Shapes {
  qcContour contour{{}, false, 0};
  qcRegion region;
  qcRegionSet set{std::vector<qcPtrHandle_const<qcRegion>>(), keep};
  ContourT withData;
  RegionSetT setWithData;
};

void transfer(qcArchive& archive, Shapes& shapes) {
  archive || shapes.contour || shapes.region || shapes.set || shapes.withData || shapes.setWithData;
}

std::vector<qcEdgelet> edgeletsAt(const golden::Points& points) {
  std::vector<qcEdgelet> edgelets;
  for (const golden::Point& p : points) {
    const auto i = edgelets.size();
    edgelets.emplace_back(p, static_cast<unsigned short>(i * 1000),
                          qcAngle8(static_cast<unsigned char>(i)));
  }
  return edgelets;
}

Shapes made(std::size_t number) {
  const shapes::Shape shape = shapes::anyFinite(number, 200);
  const std::vector<qcEdgelet> edgelets = edgeletsAt(shape.points);
  const qcPtrHandle<RegionT> region(new RegionT(edgelets, 4294967295U));
  return {qcContour(shape.points, shape.closed, 4294967295U), *golden::regionWithHoles(8 * number),
          golden::regionSet(8 * number), ContourT(edgelets),
          RegionSetT(RegionSetT::RegionsT{region, region})};
}

void store(std::vector<Shapes>& all, const char* file) {
  std::ofstream out(file, std::ios::binary);
  qcStreamArchive archive(out);
  for (Shapes& shapes : all) transfer(archive, shapes);
  out.close();
  if (!out) throw std::runtime_error(std::string("cannot write ") + file);
}

std::vector<Shapes> load(const char* file) {
  std::ifstream in(file, std::ios::binary);
  qcStreamArchive archive(in);
  std::vector<Shapes> all(count);
  for (Shapes& shapes : all) transfer(archive, shapes);
  return all;
}

std::vector<Shapes> madeAnew() {
  std::vector<Shapes> all;
  for (std::size_t number = 0; number < count; ++number) all.push_back(made(number));
  return all;
}

}  // namespace

int main(int argumentCount, char** arguments) try {
  if (argumentCount != 3) throw std::runtime_error("exchange_archives --store OUT | IN OUT");
  std::vector<Shapes> all =
      std::strcmp(arguments[1], "--store") == 0 ? madeAnew() : load(arguments[1]);
  store(all, arguments[2]);
  return 0;
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
