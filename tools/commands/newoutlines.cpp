// SPDX-License-Identifier: MIT

#include <tools/commands/newoutlines.h>

#include <string>
#include <utility>

#include <cntr/contourdefs.h>
#include <cntrformats/errors.h>
#include <cntrformats/geojson/feature.h>
#include <tools/answers/message.h>

namespace tool {

using namespace formats;

Answer NewOutlines::answer(const Origin& origin, Feature feature) const {
  if (!feature.geometry.closed) throw FeatureError(openLine);
  Geometry geometry;
  try {
    geometry.parts = outlinesOf(feature.geometry.parts);
  } catch (const qcContourDefs::Errors& error) {
    throw FeatureError(messageOf(error));
  }
  if (geometry.parts.empty()) return {};
  geometry.multiple = geometry.parts.size() > 1;
  replaceGeometry(feature, geometry);
  return file_.prepare(origin, std::move(feature));
}

void NewOutlines::write(Answer answer) {
  if (!answer.feature && answer.complaint.empty()) ++empty_;
  file_.write(std::move(answer));
}

void NewOutlines::takeMembers(Members&& members) {
  std::erase_if(members, [](const Member& member) { return member.name == "bbox"; });
  file_.takeMembers(std::move(members));
}

void NewOutlines::finish(Session& session) {
  file_.complete();
  if (empty_ == 0) return;
  session.diagnostics.warning(file_.name(),
                              "nothing is left of " + std::to_string(empty_) +
                                  (empty_ == 1 ? " feature, which is" : " features, which are") +
                                  " not written");
}

}  // namespace tool
