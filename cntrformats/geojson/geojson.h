// SPDX-License-Identifier: MIT
//
// GeoJSON: documents, and GeoJSON lines. See Format for what each function does.

#pragma once

#include <iosfwd>
#include <memory>
#include <string_view>

#include <cntrformats/losses.h>
#include <cntrformats/reader.h>
#include <cntrformats/source.h>
#include <cntrformats/writer.h>

namespace formats {

void readGeoJson(Source& source, Keep keep, Sink& sink);
std::unique_ptr<FeatureWriter> makeGeoJsonWriter(std::ostream& out, Rings rings);

bool looksLikeGeoJsonLines(std::string_view line);
void readGeoJsonLines(Source& source, Keep keep, Sink& sink);
std::unique_ptr<FeatureWriter> makeGeoJsonLinesWriter(std::ostream& out, Rings rings);

/// For both: edge elements of several parts are lost.
Losses lossesInGeoJson(const Feature& feature);

}  // namespace formats
