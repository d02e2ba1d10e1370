// SPDX-License-Identifier: MIT
//
// JSON documents whose features are the elements of a list, whatever form the features have.

#pragma once

#include <cntrformats/geojson/window.h>
#include <cntrformats/reader.h>

namespace formats {

/// Hands over the elements of the list one by one while the document is read, so that a large
/// document takes no more memory than a small one; see readGeoJson(). Reads up to `step` bytes at
/// once.
void readDocument(Source& source, Keep keep, Sink& sink, std::size_t step);

}  // namespace formats
