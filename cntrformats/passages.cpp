// SPDX-License-Identifier: MIT

#include <cntrformats/passages.h>

#include <utility>
#include <vector>

namespace formats {

class Passages::Gathered : public Undecoded {
 public:
  struct Part {
    Location location;
    std::size_t begin;
    std::size_t end;
  };

  Gathered(ReadPassage read, bool keepsText) : read_(read), keepsText_(keepsText) {}

  void add(const Part& part) { parts_.push_back(part); }
  const std::vector<Part>& parts() const noexcept { return parts_; }
  const TextBuffer& text() const noexcept { return text_; }

  void setText(TextBuffer&& text, const TextPlace& start) {
    text_ = std::move(text);
    text_.pad(passagePadding);
    start_ = start;
  }

  Feature decode(std::size_t index) override {
    const auto& [location, begin, end] = parts_[index];
    const std::string_view text = text_.text();
    const Passage passage{text.substr(begin, end - begin), text.substr(0, begin), start_};
    Feature feature = decoded(location.number, [&](Feature& made) { read_(passage, made); });
    if (keepsText_) feature.text = passage.text;
    return feature;
  }

 private:
  ReadPassage read_;
  bool keepsText_;
  TextBuffer text_;
  TextPlace start_;
  std::vector<Part> parts_;
};

Passages::Passages(Sink& sink, ReadPassage read, bool keepsText)
    : sink_(sink),
      read_(read),
      keepsText_(keepsText),
      gathered_(std::make_shared<Gathered>(read, keepsText)) {}

void Passages::add(const Location& location, std::size_t begin, std::size_t end) {
  gathered_->add({location, begin, end});
}

std::shared_ptr<const TextBuffer> Passages::handOver(TextBuffer&& text, const TextPlace& start) {
  if (gathered_->parts().empty()) return nullptr;
  const auto gathered = std::exchange(gathered_, std::make_shared<Gathered>(read_, keepsText_));
  gathered->setText(std::move(text), start);
  std::size_t index = 0;
  for (const auto& [location, begin, end] : gathered->parts())
    sink_.take({location, end - begin, gathered, index++});
  return {gathered, &gathered->text()};
}

}  // namespace formats
