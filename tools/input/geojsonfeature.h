// SPDX-License-Identifier: MIT
//
// A feature from its JSON.

#pragma once

#include <tools/feature.h>

namespace tool {

/// Reads a Feature or a geometry, and keeps the JSON in it. Throws UnreadableFeature.
Feature readFeature(Json json, std::size_t number);

}  // namespace tool
