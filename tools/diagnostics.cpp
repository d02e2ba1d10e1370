// SPDX-License-Identifier: MIT

#include <tools/diagnostics.h>

#include <algorithm>
#include <ostream>

namespace tool {

void Diagnostics::badFeature(const std::string& file, std::size_t number, const std::string& what) {
  report(eSomeFailed, file + ": feature " + std::to_string(number) + ": " + what);
}

void Diagnostics::badFile(const std::string& file, const std::string& what) {
  report(eUnusable, file + ": " + what);
}

void Diagnostics::report(ExitStatus status, const std::string& message) {
  out_ << "cntr: " << message << '\n' << std::flush;
  status_ = std::max(status_, status);
}

}  // namespace tool
