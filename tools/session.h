// SPDX-License-Identifier: MIT
//
// What every command works with: where answers go, and where messages go.

#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

#include <tools/diagnostics.h>
#include <tools/input/document.h>

namespace tool {

struct Session {
  std::ostream& out;
  std::ostream& messages;
  Diagnostics diagnostics;

  Session(std::ostream& out_, std::ostream& messages_)
      : out(out_), messages(messages_), diagnostics(messages_) {}
};

/// Runs `answer` for each feature of a document in turn. A feature that it throws a FeatureError or
/// an exception of the library for is reported, and the next one is answered.
void forEachFeature(const Document& document, Diagnostics& diagnostics,
                    const std::function<void(const Feature&)>& answer);

/// The same over several files. One that cannot be read is reported, and the next one is answered.
void forEachFeature(const std::vector<std::string>& files, Diagnostics& diagnostics,
                    const std::function<void(const Document&, const Feature&)>& answer);

}  // namespace tool
