// SPDX-License-Identifier: MIT
//
// Outlines to compare: those of the samples, and generated ones that do not cross themselves.

#pragma once

#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <testing/repository/repository.h>
#include <testing/shapes/shapes.h>
#include <nlohmann/json.hpp>

namespace peer {

/// The outer boundaries of a file in samples/, without the repeated last point.
inline std::vector<shapes::Shape> sampleOutlines(const std::string& file) {
  std::ifstream in(repositoryDirectory() + "/samples/" + file);
  if (!in) throw std::runtime_error("cannot open " + file);
  const nlohmann::json collection = nlohmann::json::parse(in);
  std::vector<shapes::Shape> outlines;
  for (const auto& feature : collection.at("features")) {
    const auto& label = feature.at("properties").at("label");
    shapes::Shape outline{file + " " + label.dump(), {}, true};
    for (const auto& p : feature.at("geometry").at("coordinates").at(0)) {
      outline.points.emplace_back(p.at(0).get<double>(), p.at(1).get<double>());
    }
    outline.points.pop_back();
    outlines.push_back(outline);
  }
  return outlines;
}

/// The smooth star, the spiky star and the comb of several sizes.
inline std::vector<shapes::Shape> generatedOutlines() {
  std::vector<shapes::Shape> all;
  for (const std::size_t n : {10U, 31U, 100U, 1000U, 10000U}) {
    const std::string size = " of " + std::to_string(n);
    all.push_back({"smooth star" + size, shapes::smoothStar(n), true});
    all.push_back({"spiky star" + size, shapes::spikyStar(n), true});
    all.push_back({"comb" + size, shapes::comb(n), true});
  }
  return all;
}

/// The 25 of the samples and the 15 generated ones.
inline std::vector<shapes::Shape> outlines() {
  std::vector<shapes::Shape> all = generatedOutlines();
  for (const char* file : {"coins.geojson", "cell.geojson"}) {
    const std::vector<shapes::Shape> samples = sampleOutlines(file);
    all.insert(all.end(), samples.begin(), samples.end());
  }
  if (all.size() != 40) throw std::runtime_error("there are 25 sample outlines");
  return all;
}

}  // namespace peer
