// SPDX-License-Identifier: MIT

#include <tools/run/diagnostics.h>

#include <algorithm>
#include <ostream>

#include <tools/report/printable.h>

namespace tool {

using namespace formats;

namespace {

/// How many bad features of a file are listed.
constexpr std::size_t mostListed = 5;

}  // namespace

void Diagnostics::badFeature(const std::string& file, const Location& location,
                             const std::string& what, const std::string& name) {
  status_ = std::max(status_, eSomeFailed);
  if (++badFeatures_[file] > mostListed && !listsAll_) return;
  const std::string line = location.line > 0 ? "line " + std::to_string(location.line) + ", " : "";
  const std::string names = name.empty() ? "" : " (" + name + ")";
  report(eSomeFailed,
         file + ": " + line + "feature " + std::to_string(location.number) + names + ": " + what);
}

void Diagnostics::sumUp() {
  for (const auto& [file, count] : badFeatures_) {
    if (listsAll_ || count <= mostListed) continue;
    const std::size_t others = count - mostListed;
    report(eSomeFailed, file + ": " + std::to_string(others) + " more feature" +
                            (others == 1 ? " has" : "s have") + " problems; --verbose lists all");
  }
  badFeatures_.clear();
}

void Diagnostics::badFile(const std::string& file, const std::string& what) {
  report(eUnusable, file + ": " + what);
}

void Diagnostics::warning(const std::string& file, const std::string& what) {
  report(eAllWell, file + ": " + what);
}

void Diagnostics::report(ExitStatus status, const std::string& message) {
  const std::string name = status == eAllWell ? style_.warning("cntr:") : style_.error("cntr:");
  out_ << name << ' ' << printable(message) << '\n' << std::flush;
  status_ = std::max(status_, status);
}

}  // namespace tool
