// SPDX-License-Identifier: MIT
//
// WKT (well-known text): geometries one after the other, each beginning on a new line. See Format
// for what each function does.

#pragma once

#include <iosfwd>
#include <memory>
#include <string_view>

#include <cntrformats/losses.h>
#include <cntrformats/reader.h>
#include <cntrformats/source.h>
#include <cntrformats/writer.h>

namespace formats {

bool looksLikeWkt(std::string_view line);
void readWkt(Source& source, Keep keep, Sink& sink);
std::unique_ptr<FeatureWriter> makeWktWriter(std::ostream& out, Rings rings);
Losses lossesInWkt(const Feature& feature);

}  // namespace formats
