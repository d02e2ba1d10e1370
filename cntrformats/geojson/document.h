// SPDX-License-Identifier: MIT
//
// JSON documents whose features are the elements of a list, whatever the features look like.

#pragma once

#include <cntrformats/geojson/window.h>
#include <cntrformats/reader.h>

namespace formats {

/// How much of a document is read at once.
inline constexpr std::size_t windowSize = std::size_t{1} << 20U;

/// Hands over the elements of the list one by one while the document is read, so that a large one
/// takes no more memory than a small one; see readGeoJson().
void readDocument(Source& source, Keep keep, Sink& sink, std::size_t window);

}  // namespace formats
