// SPDX-License-Identifier: MIT

#include <tools/draw/deviations.h>

#include <cstddef>
#include <utility>

#include <cntrformats/errors.h>
#include <platform/core/exception.h>
#include <tools/answers/stretches.h>
#include <tools/report/message.h>

namespace tool {

using namespace formats;

DeviationOverlay::DeviationOverlay(const Nominals& nominals)
    : nominals_(nominals),
      isDrawn_(nominals.all().size()),
      overlay_{name, "#495057", [this](const Overlaid& overlaid) { return find(overlaid.feature); },
               nullptr, true} {}

std::string DeviationOverlay::takeComplaint() { return std::exchange(complaint_, ""); }

std::vector<Mark> DeviationOverlay::find(const Feature& feature) {
  std::vector<Mark> marks;
  try {
    const Nominal& nominal = nominals_.counterpartOf(feature);
    for (const Stretch& stretch : stretchesOf(feature.geometry, nominal))
      marks.emplace_back(Tint{stretch.from, stretch.to, stretch.deviation});
    const auto place = static_cast<std::size_t>(&nominal - nominals_.all().data());
    if (isDrawn_[place]) return marks;
    isDrawn_[place] = true;
    for (const Stretch& edge : edgesOf(nominal)) marks.emplace_back(Segment{edge.from, edge.to});
  } catch (const FeatureError& error) {
    complaint_ = error.what();
  } catch (const qcException& error) {
    complaint_ = messageOf(error);
  }
  return marks;
}

}  // namespace tool
