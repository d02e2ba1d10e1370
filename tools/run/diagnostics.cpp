// SPDX-License-Identifier: MIT

#include <tools/run/diagnostics.h>

#include <algorithm>
#include <ostream>

namespace tool {

using namespace formats;

void Diagnostics::badFeature(const std::string& file, const Location& location,
                             const std::string& what) {
  const std::string line = location.line > 0 ? "line " + std::to_string(location.line) + ", " : "";
  report(eSomeFailed,
         file + ": " + line + "feature " + std::to_string(location.number) + ": " + what);
}

void Diagnostics::badFile(const std::string& file, const std::string& what) {
  report(eUnusable, file + ": " + what);
}

void Diagnostics::warning(const std::string& file, const std::string& what) {
  report(eAllWell, file + ": " + what);
}

void Diagnostics::report(ExitStatus status, const std::string& message) {
  const std::string name = status == eAllWell ? style_.warning("cntr:") : style_.error("cntr:");
  out_ << name << ' ' << message << '\n' << std::flush;
  status_ = std::max(status_, status);
}

}  // namespace tool
