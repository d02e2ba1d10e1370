// SPDX-License-Identifier: MIT

#include <tools/session.h>

#include <platform/core/exception.h>
#include <tools/errors.h>

namespace tool {

void forEachFeature(const Document& document, Diagnostics& diagnostics,
                    const std::function<void(const Feature&)>& answer) {
  for (const Feature& feature : document.features) {
    try {
      answer(feature);
    } catch (const FeatureError& error) {
      diagnostics.badFeature(document.name, feature.number, error.what());
    } catch (const qcException& error) {
      diagnostics.badFeature(document.name, feature.number, error.what());
    }
  }
}

void forEachFeature(const std::vector<std::string>& files, Diagnostics& diagnostics,
                    const std::function<void(const Document&, const Feature&)>& answer) {
  for (const std::string& file : files) {
    const auto document = readDocument(file, diagnostics);
    if (!document) continue;
    forEachFeature(*document, diagnostics,
                   [&](const Feature& feature) { answer(*document, feature); });
  }
}

}  // namespace tool
