// SPDX-License-Identifier: MIT

#include <tools/run/progress.h>

#include <algorithm>
#include <ostream>
#include <string>

namespace tool {

namespace {

constexpr std::chrono::milliseconds interval{200};
constexpr const char* clearLine = "\r\x1b[K";

/// 1234567 as "1 234 567".
std::string grouped(std::size_t number) {
  std::string text = std::to_string(number);
  for (std::size_t end = text.size(); end > 3; end -= 3) text.insert(end - 3, 1, ' ');
  return text;
}

}  // namespace

void Progress::update() {
  if (!isShown_ || Clock::now() < next_) return;
  next_ = Clock::now() + interval;
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(next_ - begin_).count();
  out_ << clearLine << grouped(features_) << " features, ";
  if (total_ > 0) out_ << percent() << " %, ";
  out_ << seconds << " s" << std::flush;
  isThere_ = true;
}

int Progress::percent() const {
  const double share = static_cast<double>(reached_) / static_cast<double>(total_);
  return static_cast<int>(100.0 * std::min(1.0, share));
}

void Progress::clear() {
  if (!isThere_) return;
  out_ << clearLine << std::flush;
  isThere_ = false;
}

}  // namespace tool
