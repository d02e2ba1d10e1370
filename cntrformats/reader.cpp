// SPDX-License-Identifier: MIT

#include <cntrformats/reader.h>

namespace formats {

Feature decoded(std::size_t number, const std::function<void(Feature&)>& read) {
  Feature feature;
  feature.number = number;
  try {
    read(feature);
  } catch (const FeatureError& error) {
    feature.geometry = {};
    feature.problem = error.what();
  }
  return feature;
}

}  // namespace formats
