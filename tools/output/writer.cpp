// SPDX-License-Identifier: MIT

#include <tools/output/writers.h>

namespace tool {

namespace {

using Make = std::unique_ptr<FeatureWriter> (*)(std::ostream&, Rings);

/// In the order of the formats.
constexpr Make writers[] = {makeGeoJsonWriter, makeGeoJsonLinesWriter, makeWktWriter, makeCsvWriter,
                            makeArchiveWriter};

}  // namespace

std::unique_ptr<FeatureWriter> makeWriter(std::ostream& out, Format format, Rings rings) {
  return writers[static_cast<std::size_t>(format)](out, rings);
}

}  // namespace tool
