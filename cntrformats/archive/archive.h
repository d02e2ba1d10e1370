// SPDX-License-Identifier: MIT
//
// The library's archive: a list of shapes. See Format for what each function does.

#pragma once

#include <iosfwd>
#include <memory>

#include <cntrformats/losses.h>
#include <cntrformats/reader.h>
#include <cntrformats/source.h>
#include <cntrformats/writer.h>

namespace formats {

void readArchive(Source& source, Keep keep, Sink& sink);
std::unique_ptr<FeatureWriter> makeArchiveWriter(std::ostream& out, Rings rings);
Losses lossesInArchive(const Feature& feature);

}  // namespace formats
