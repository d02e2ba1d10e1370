// SPDX-License-Identifier: MIT
//
// CSV: one vertex per line, id,x,y or x,y. See Format for what each function does.

#pragma once

#include <iosfwd>
#include <memory>
#include <string_view>

#include <cntrformats/losses.h>
#include <cntrformats/reader.h>
#include <cntrformats/source.h>
#include <cntrformats/writer.h>

namespace formats {

bool looksLikeCsv(std::string_view line);
void readCsv(Source& source, Keep keep, Sink& sink);
std::unique_ptr<FeatureWriter> makeCsvWriter(std::ostream& out, Rings rings);
Losses lossesInCsv(const Feature& feature);

}  // namespace formats
