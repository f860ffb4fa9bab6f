#include <gtest/gtest.h>

#include <algorithm>
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

struct Case {
  const char* name;
  std::vector<std::string> blocks;
  std::vector<Reading> readings;
};

TEST(DurationReading, IsTheTextBehindTheFirstDurationOfAllBlocks) {
  const std::vector<Case> cases = {
      {"banner", {"Input #0, mov:\n  Duration: 00:01:23.45, start: 0.000000\n"}, {"00:01:23"}},
      {"no word", {"", "a.mp4: No such file\n", "Duration", ""}, {{}, {}, {}, {}}},
      {"word cut in two", {"  Dura", "tion: 00:00:10.00", ""}, {{}, "00:00:10", "00:00:10"}},
      {"value cut in three",
       {"Duration: 00:0", "1:2", "3.45, bitrate", ""},
       {"00:0", "00:01:2", "00:01:23", "00:01:23"}},
      {"word alone", {"Duration:", " ", ""}, {"", "", ""}},
      {"second word in a later block",
       {"Duration: 00:00:10.00\n", "", "Duration: 00:00:20.00\n"},
       {"00:00:10", "00:00:10", "00:00:10"}},
      {"second word in the block",
       {"Duration: 00:00:10.00\nDuration: 00:00:20.00\n"},
       {"00:00:10"}},
      {"unknown duration", {"  Duration: N/A, bitrate: N/A\n"}, {"N/A, bit"}},
      {"upper case", {"DURATION: 00:00:05.00"}, {"00:00:05"}},
      {"lower case", {"duration: 00:00:05.00"}, {"00:00:05"}},
      {"line feed before the value", {"Duration:\n00:00:05.00"}, {"\n00:00:05"}},
      {"blanks around the value", {"Duration:   1:2    x"}, {"1:2"}},
  };
  for (const auto& [name, blocks, readings] : cases) {
    EXPECT_EQ(ReadAll(blocks), readings) << name;
  }
}

TEST(DurationReading, FindsAWordThatComesByteByByte) {
  DurationReading reading;
  Reading last;
  for (const char c : std::string("xDurDuration: 00:00:07.99")) last = reading.Append({&c, 1});
  EXPECT_EQ(last, "00:00:07");
}

TEST(DurationReading, ReadsTheSameHoweverTheTextIsCut) {
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

// A hundred megabytes in small blocks take a moment where each block costs the same, and outlast
// any test's time-out where each searches all that came before.
TEST(DurationReading, ItsCostDoesNotGrowWithWhatCameBefore) {
  constexpr int kBlocks = 400'000;
  DurationReading reading;
  const std::string block(256, 'D');
  for (int count = 0; count < kBlocks; ++count) ASSERT_EQ(reading.Append(block), std::nullopt);
  EXPECT_EQ(reading.Append("Duration: 00:00:10"), "00:00:10");
  for (int count = 0; count < kBlocks; ++count) ASSERT_EQ(reading.Append(block), "00:00:10");
}

}  // namespace
}  // namespace kelvane
