// SPDX-License-Identifier: MIT
//
// The readers of the formats, one source file each; see reader.h.

#pragma once

#include <tools/input/reader.h>

namespace tool {

void readGeoJson(Source& source, Sink& sink);
void readGeoJsonLines(Source& source, Sink& sink);
void readWkt(Source& source, Sink& sink);
void readCsv(Source& source, Sink& sink);
void readArchive(Source& source, Sink& sink);

}  // namespace tool
