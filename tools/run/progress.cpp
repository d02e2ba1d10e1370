// SPDX-License-Identifier: MIT

#include <tools/run/progress.h>

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
  out_ << clearLine << grouped(features_) << " features, " << seconds << " s" << std::flush;
  isThere_ = true;
}

void Progress::clear() {
  if (!isThere_) return;
  out_ << clearLine << std::flush;
  isThere_ = false;
}

}  // namespace tool
