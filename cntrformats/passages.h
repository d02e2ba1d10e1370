// SPDX-License-Identifier: MIT
//
// Features that are parts of a text, handed over many at a time together with the text.

#pragma once

#include <memory>

#include <cntrformats/passage.h>
#include <cntrformats/reader.h>
#include <cntrformats/textbuffer.h>

namespace formats {

/// Reads a feature from the part of a text that holds it. Throws FeatureError.
using ReadPassage = void (*)(const Passage& passage, Feature& feature);

class Passages {
 public:
  /// Features keep their text if `keepsText`.
  Passages(Sink& sink, ReadPassage read, bool keepsText);

  /// A feature from `begin` to `end` in the text that is handed over next.
  void add(const Location& location, std::size_t begin, std::size_t end);
  /// Hands over all features added since the last call, with the text that holds them and the place
  /// where it begins. Returns the text; null when there are no features.
  std::shared_ptr<const TextBuffer> handOver(TextBuffer&& text, const TextPlace& start);
  /// See Sink.
  void pause() { sink_.pause(); }

 private:
  class Gathered;

  Sink& sink_;
  ReadPassage read_;
  bool keepsText_;
  std::shared_ptr<Gathered> gathered_;
};

}  // namespace formats
