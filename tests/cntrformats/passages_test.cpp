// SPDX-License-Identifier: MIT

#include <cntrformats/passages.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include <cntrformats/errors.h>

using namespace formats;
using testing::ElementsAre;

namespace {

class Keeper : public Sink {
 public:
  void take(Record record) override { records.push_back(std::move(record)); }

  std::vector<Record> records;
};

void readId(const Passage& passage, Feature& feature) {
  if (passage.text == "bad") throw FeatureError("bad");
  feature.id = passage.text;
}

TextBuffer bufferOf(std::string_view text) {
  TextBuffer buffer;
  buffer.append(text);
  return buffer;
}

}  // namespace

TEST(Passages, AreDecodedInAnyOrderAndAfterTheirReaderIsGone) {
  Keeper keeper;
  {
    Passages passages(keeper, readId, true);
    passages.add({1, 7}, 0, 3);
    passages.add({2, 8}, 4, 7);
    passages.add({3, 9}, 8, 11);
    EXPECT_TRUE(keeper.records.empty());
    passages.handOver(bufferOf("one bad two"), {});
  }
  ASSERT_EQ(keeper.records.size(), 3U);
  EXPECT_EQ(keeper.records[1].location.line, 8U);
  EXPECT_EQ(keeper.records[2].size, 3U);
  const Feature last = keeper.records[2].decode();
  EXPECT_EQ(last.number, 3U);
  EXPECT_EQ(last.id, "two");
  EXPECT_EQ(last.text, "two");
  const Feature bad = keeper.records[1].decode();
  EXPECT_EQ(bad.problem, "bad");
  EXPECT_EQ(bad.text, "bad");
  EXPECT_EQ(keeper.records[0].decode().id, "one");
}

TEST(Passages, OfATextWithoutFeaturesAreNotHandedOver) {
  Keeper keeper;
  Passages passages(keeper, readId, false);
  EXPECT_EQ(passages.handOver(bufferOf("blank"), {}), nullptr);
  passages.add({1}, 0, 1);
  const auto text = passages.handOver(bufferOf("abc"), {});
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(text->text(), "abc");
  passages.handOver(bufferOf("blank"), {});
  ASSERT_EQ(keeper.records.size(), 1U);
  EXPECT_EQ(keeper.records[0].decode().text, "");
}

TEST(Passages, AtTheEndOfATextAreFollowedByZeros) {
  // Whatever the memory held: a bracket there would change what is wrong with unfinished JSON.
  TextBuffer buffer;
  buffer.append(200, [](char* place, std::size_t most) {
    std::fill_n(place, most, '}');
    return std::size_t{1};
  });
  Keeper keeper;
  const auto readFollowing = [](const Passage& passage, Feature& feature) {
    feature.id = std::string(passage.text.end(), passage.text.end() + passagePadding);
  };
  Passages passages(keeper, readFollowing, false);
  passages.add({1}, 0, 1);
  passages.handOver(std::move(buffer), {});
  EXPECT_EQ(keeper.records.at(0).decode().id, std::string(passagePadding, '\0'));
}
