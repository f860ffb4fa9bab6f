#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <string>
#include <vector>

#include "media/ProbeReadings.h"

namespace kelvane {
namespace {

using Reading = std::optional<std::string>;

// The reading done the plain way, over the whole of a store that is never cleared.
class WholeStore {
 public:
  Reading Append(const std::string& block) {
    store_ += block;
    std::string lowerCase = store_;
    std::transform(lowerCase.begin(), lowerCase.end(), lowerCase.begin(), [](char c) {
      return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    });
    const std::size_t word = lowerCase.find("duration:");
    if (word == std::string::npos) return std::nullopt;
    const std::string cut = store_.substr(word, 18);
    std::string value = cut.size() < 9 ? std::string() : cut.substr(9, 9);
    while (value.starts_with(' ')) value.erase(0, 1);
    while (value.ends_with(' ')) value.pop_back();
    return value;
  }

 private:
  std::string store_;
};

std::vector<Reading> ReadAll(const std::vector<std::string>& blocks) {
  DurationReading reading;
  std::vector<Reading> readings;
  readings.reserve(blocks.size());
  for (const std::string& block : blocks) readings.push_back(reading.Append(block));
  return readings;
}

TEST(DurationReading, ReadsTheWholeSecondsBehindTheWord) {
  EXPECT_EQ(ReadAll({"Input #0, mov, from 'a.mp4':\n  Duration: 00:01:23.45, start: 0.000000\n"}),
            (std::vector<Reading>{"00:01:23"}));
}

TEST(DurationReading, WithoutTheWordThereIsNoReading) {
  EXPECT_EQ(ReadAll({"", "a.mp4: No such file or directory\n", "Duration", ""}),
            (std::vector<Reading>{std::nullopt, std::nullopt, std::nullopt, std::nullopt}));
}

TEST(DurationReading, AWordCutByABlocksEndIsFoundWithTheNextBlock) {
  EXPECT_EQ(ReadAll({"  Dura", "tion: 00:00:10.00", ""}),
            (std::vector<Reading>{std::nullopt, "00:00:10", "00:00:10"}));
}

TEST(DurationReading, AValueCutByABlocksEndIsPutRightByTheNextBlock) {
  EXPECT_EQ(ReadAll({"Duration: 00:0", "1:2", "3.45, bitrate", ""}),
            (std::vector<Reading>{"00:0", "00:01:2", "00:01:23", "00:01:23"}));
}

TEST(DurationReading, AWordThatComesByteByByteIsFound) {
  DurationReading reading;
  Reading last;
  for (const char c : std::string("xDurDuration: 00:00:07.99"))
    last = reading.Append(std::string(1, c));
  EXPECT_EQ(last, "00:00:07");
}

TEST(DurationReading, TheWordAloneReadsAsEmpty) {
  EXPECT_EQ(ReadAll({"Duration:", " ", ""}), (std::vector<Reading>{"", "", ""}));
}

TEST(DurationReading, TheFirstWordOfAllTheTextWins) {
  EXPECT_EQ(ReadAll({"Duration: 00:00:10.00\n", "", "Duration: 00:00:20.00\n", ""}),
            (std::vector<Reading>{"00:00:10", "00:00:10", "00:00:10", "00:00:10"}));
  EXPECT_EQ(ReadAll({"Duration: 00:00:10.00\nDuration: 00:00:20.00\n"}),
            (std::vector<Reading>{"00:00:10"}));
}

TEST(DurationReading, AnUnknownDurationReadsAsTheTextThatStandsThere) {
  EXPECT_EQ(ReadAll({"  Duration: N/A, bitrate: N/A\n"}), (std::vector<Reading>{"N/A, bit"}));
}

TEST(DurationReading, TheWordIsFoundInAnyCase) {
  EXPECT_EQ(ReadAll({"DURATION: 00:00:05.00"}), (std::vector<Reading>{"00:00:05"}));
  EXPECT_EQ(ReadAll({"duration: 00:00:05.00"}), (std::vector<Reading>{"00:00:05"}));
}

TEST(DurationReading, OnlyBlanksAreDroppedRoundTheValue) {
  EXPECT_EQ(ReadAll({"Duration:\n00:00:05.00"}), (std::vector<Reading>{"\n00:00:05"}));
  EXPECT_EQ(ReadAll({"Duration:   1:2    x"}), (std::vector<Reading>{"1:2"}));
}

TEST(DurationReading, ReadsAsAStoreOfAllTheTextDoesHoweverItIsCut) {
  constexpr int kTexts = 3000;
  const std::vector<std::string> pieces = {
      "Duration:", "duration:", "DURATION:", "Duration",          "Durati", "D",
      "on:",       ":",         " ",         "00:01:23",          ".45, ",  "N/A, bit",
      "\r\n",      "x",         "\xC3\xA4",  std::string(1, '\0')};
  std::mt19937 random(20240607);  // the same cuts every time
  const auto upTo = [&random](std::size_t most) {
    return std::uniform_int_distribution<std::size_t>(0, most)(random);
  };
  int found = 0;
  for (int text = 0; text < kTexts; ++text) {
    std::string whole;
    for (std::size_t count = upTo(30); count > 0; --count) whole += pieces[upTo(pieces.size() - 1)];
    DurationReading reading;
    WholeStore store;
    std::string cuts;
    for (std::size_t place = 0; place < whole.size();) {
      const std::string block = whole.substr(place, upTo(12));
      place += block.size();
      cuts += '[' + block + ']';
      const Reading expected = store.Append(block);
      ASSERT_EQ(reading.Append(block), expected) << cuts;
      if (expected) ++found;
    }
    ASSERT_EQ(reading.Append(""), store.Append("")) << cuts;
  }
  EXPECT_GT(found, kTexts) << "the texts must hold the word often enough to say something";
}

TEST(DurationReading, ItsCostDoesNotGrowWithWhatCameBefore) {
  // A hundred megabytes in small blocks: done at once where each block costs the same, hours where
  // each searches all that came before.
  constexpr int kBlocks = 400'000;
  DurationReading reading;
  const std::string block(256, 'D');
  const auto start = std::chrono::steady_clock::now();
  for (int count = 0; count < kBlocks; ++count) ASSERT_EQ(reading.Append(block), std::nullopt);
  EXPECT_EQ(reading.Append("Duration: 00:00:10"), "00:00:10");
  for (int count = 0; count < kBlocks; ++count) ASSERT_EQ(reading.Append(block), "00:00:10");
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

}  // namespace
}  // namespace kelvane
