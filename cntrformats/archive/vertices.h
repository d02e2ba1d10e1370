// SPDX-License-Identifier: MIT
//
// What an archive holds about a feature: its vertices, which must be finite, and its label.

#pragma once

#include <optional>
#include <string>

#include <cntrformats/feature.h>

namespace formats {

// These return the points, or throw FeatureError.

Points archivedRing(Points points, const std::string& place);
Points archivedLine(Points points);

/// In the library, label 0 means no label.
std::optional<Label> labelOf(unsigned long label);

}  // namespace formats
