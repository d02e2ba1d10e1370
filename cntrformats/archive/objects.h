// SPDX-License-Identifier: MIT
//
// Makes features from the objects that the library has loaded from an archive, whatever their
// class.

#pragma once

#include <cntrformats/feature.h>
#include <platform/core/persistent.h>

namespace formats {

/// Throws FeatureError. `object` may be null.
void readObject(const qcPersistent* object, Feature& feature);

}  // namespace formats
