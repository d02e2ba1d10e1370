// SPDX-License-Identifier: MIT

#include <cntrformats/textwindow.h>

#include <utility>

namespace formats {

void TextWindow::handOver() {
  const TextPlace next = place();
  const std::string_view notPassed = kept().substr(at_);
  TextBuffer rest(notPassed.size() + 2 * Source::mostAtOnce + passagePadding);
  rest.append(notPassed);
  features_->handOver(std::exchange(text_, std::move(rest)), std::exchange(start_, next));
  at_ = 0;
  counted_ = 0;
}

bool TextWindow::more() {
  if (features_ != nullptr) {
    if (at_ > 0) handOver();
    if (source_.isWaiting()) features_->pause();
  }
  return source_.appendTo(text_, step_);
}

std::optional<std::string_view> TextWindow::ahead(std::size_t offset, char ending) {
  std::size_t searched = offset;
  for (;;) {
    const std::string_view text = kept().substr(at_);
    const std::size_t end = text.find(ending, searched);
    if (end != std::string_view::npos) return text.substr(offset, end - offset);
    searched = std::max(offset, text.size());
    if (!more()) break;
  }
  const std::string_view text = kept().substr(at_);
  return offset < text.size() ? std::optional(text.substr(offset)) : std::nullopt;
}

TextPlace TextWindow::place() {
  const std::string_view passed = kept().substr(counted_, at_ - counted_);
  countedPlace_ = placeAfter(passed, countedPlace_);
  counted_ = at_;
  return countedPlace_;
}

}  // namespace formats
