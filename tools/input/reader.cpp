// SPDX-License-Identifier: MIT

#include <tools/input/reader.h>

#include <tools/input/readers.h>

namespace tool {

namespace {

using Read = void (*)(Source&, Sink&);

/// In the order of the formats.
constexpr Read readers[] = {readGeoJson, readGeoJsonLines, readWkt, readCsv, readArchive};

}  // namespace

void readRecords(Source& source, Format format, Sink& sink) {
  readers[static_cast<std::size_t>(format)](source, sink);
}

}  // namespace tool
