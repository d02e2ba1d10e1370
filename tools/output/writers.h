// SPDX-License-Identifier: MIT
//
// The writers of the formats, one source file each; see writer.h.

#pragma once

#include <tools/output/writer.h>

namespace tool {

std::unique_ptr<FeatureWriter> makeGeoJsonWriter(std::ostream& out, Rings rings);
std::unique_ptr<FeatureWriter> makeGeoJsonLinesWriter(std::ostream& out, Rings rings);
std::unique_ptr<FeatureWriter> makeWktWriter(std::ostream& out, Rings rings);
std::unique_ptr<FeatureWriter> makeCsvWriter(std::ostream& out, Rings rings);
std::unique_ptr<FeatureWriter> makeArchiveWriter(std::ostream& out, Rings rings);

}  // namespace tool
