// SPDX-License-Identifier: MIT
//
// The overlay that shows how far outlines are from nominal ones.

#pragma once

#include <string>
#include <vector>

#include <tools/answers/nominals.h>
#include <tools/draw/overlays.h>

namespace tool {

/// Colours the boundary of each feature by its distance from the nominal, and draws each nominal
/// once.
class DeviationOverlay {
 public:
  static constexpr const char* name = "deviation";

  /// Keeps a reference to the nominals.
  explicit DeviationOverlay(const Nominals& nominals);
  DeviationOverlay(const DeviationOverlay&) = delete;
  DeviationOverlay& operator=(const DeviationOverlay&) = delete;

  const Overlay& overlay() const noexcept { return overlay_; }

  /// Why the last feature has no colours, empty if it has; the call forgets the reason.
  std::string takeComplaint();

 private:
  std::vector<Mark> find(const formats::Feature& feature);

  const Nominals& nominals_;
  std::vector<bool> isDrawn_;
  std::string complaint_;
  Overlay overlay_;
};

}  // namespace tool
