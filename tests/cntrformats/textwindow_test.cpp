// SPDX-License-Identifier: MIT

#include <cntrformats/textwindow.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "texts.h"

using namespace formats;
using testing::ElementsAre;

namespace {

/// Writes down what it is given: the text of each feature, and pauses.
class Recorder : public Sink {
 public:
  void take(Record record) override {
    events.push_back(std::to_string(record.location.number) + ": " + record.decode().text);
  }
  void pause() override { events.emplace_back("pause"); }

  std::vector<std::string> events;
};

void readPlace(const Passage& passage, Feature& feature) {
  const TextPlace place = passage.placeOf(0);
  feature.id = std::to_string(place.line) + ":" + std::to_string(place.column);
}

}  // namespace

TEST(TextWindow, LooksAheadWithoutPassing) {
  const std::string text = "one\ntwo\n\nlast";
  for (const std::size_t step : {1U, 3U, 100U}) {
    Source source{Text{text}};
    TextWindow window(source, step);
    EXPECT_EQ(window.ahead(0, '\n'), "one");
    EXPECT_EQ(window.ahead(4, '\n'), "two");
    EXPECT_EQ(window.ahead(8, '\n'), "");
    EXPECT_EQ(window.ahead(9, '\n'), "last");
    EXPECT_EQ(window.ahead(13, '\n'), std::nullopt);
    EXPECT_EQ(window.position(), 0U);
    window.pass(4);
    EXPECT_EQ(window.ahead(0, '\n'), "two");
    EXPECT_EQ(window.place().line, 2U);
    EXPECT_EQ(window.place().line, 2U) << "asking again changes nothing";
  }
}

TEST(TextWindow, LooksForAnEndingBehindTheOffsetOnly) {
  Source source{Text{"one\ntwo\nlast"}};
  TextWindow window(source, 1);
  EXPECT_EQ(window.ahead(5, '\n'), "wo");
}

TEST(TextWindow, PausesBeforeItWaits) {
  texts::Pipe pipe;
  class Closer : public Recorder {
   public:
    explicit Closer(texts::Pipe& pipe) : pipe_(pipe) {}
    void pause() override {
      Recorder::pause();
      pipe_.close();
    }

   private:
    texts::Pipe& pipe_;
  } closer(pipe);
  pipe.write("one\n");
  Source source(pipe.path());
  Passages features(closer, readPlace, true);
  TextWindow window(source, 100);
  window.release(features);
  EXPECT_EQ(window.ahead(0, '\n'), "one");
  EXPECT_TRUE(closer.events.empty());
  features.add({1}, 0, 3);
  window.pass(4);
  EXPECT_EQ(window.ahead(0, '\n'), std::nullopt);
  EXPECT_THAT(closer.events, ElementsAre("1: one", "pause"));
}

TEST(TextWindow, HandsOverWhatHasBeenFoundBeforeItReadsMore) {
  const std::string text = "one\ntwo\nthree\n";
  Source source{Text{text}};
  Recorder recorder;
  Passages features(recorder, readPlace, true);
  TextWindow window(source, 8);
  window.release(features);
  std::size_t number = 0;
  while (const auto line = window.ahead(0, '\n')) {
    features.add({++number}, window.position(), window.position() + line->size());
    window.pass(line->size() + 1);
    EXPECT_EQ(recorder.events.size(), number <= 2 ? 0U : 2U);
  }
  window.handOver();
  EXPECT_THAT(recorder.events, ElementsAre("1: one", "2: two", "3: three"));
}

TEST(TextWindow, FeaturesKnowTheirPlacesWhereverTheTextIsCut) {
  const std::string text = "a\n\n  bb\nccc c\n";
  for (std::size_t step = 1; step <= text.size(); ++step) {
    Source source{Text{text}};
    class Places : public Sink {
     public:
      void take(Record record) override { places.push_back(*record.decode().id); }
      std::vector<std::string> places;
    } sink;
    Passages features(sink, readPlace, false);
    TextWindow window(source, step);
    window.release(features);
    while (const auto word = window.ahead(0, ' ')) {
      features.add({1}, window.position(), window.position() + word->size());
      window.pass(word->size() + 1);
    }
    window.handOver();
    EXPECT_THAT(sink.places, ElementsAre("1:1", "3:2", "3:3", "4:5")) << step;
  }
}
