// SPDX-License-Identifier: MIT

#include <tools/commands/newoutlines.h>

#include <string>
#include <utility>

#include <cntrformats/errors.h>
#include <cntrformats/geojson/feature.h>

namespace tool {

using namespace formats;

Answer NewOutlines::answer(const Origin& origin, Feature feature) const {
  if (!feature.geometry.closed) throw FeatureError(openLine);
  Geometry geometry;
  geometry.parts = outlinesOf(feature.geometry.parts);
  if (geometry.parts.empty()) return {};
  geometry.multiple = geometry.parts.size() > 1;
  replaceGeometry(feature, geometry);
  return file().prepare(origin, std::move(feature));
}

void NewOutlines::write(Answer answer) {
  if (!answer.feature && answer.complaint.empty()) ++empty_;
  FeaturesToFile::write(std::move(answer));
}

void NewOutlines::finish() {
  FeaturesToFile::finish();
  if (empty_ == 0) return;
  session_.diagnostics.warning(file().name(),
                               "nothing is left of " + std::to_string(empty_) +
                                   (empty_ == 1 ? " feature, which is" : " features, which are") +
                                   " not written");
}

}  // namespace tool
