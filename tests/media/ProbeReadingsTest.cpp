#include "media/ProbeReadings.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kelvane {
namespace {

constexpr std::nullopt_t kNone = std::nullopt;

struct SizeCase {
  const char* name;
  std::string block;
  std::optional<std::string> width;
  std::optional<std::string> height;
  bool usedUp = false;
};

// Only a width of four digits uses its block up.
const SizeCase kSizeCases[] = {
    {"width of three digits", "width=720\r\nheight=576\r\n", "720\r\n", "576\r\n"},
    {"height of four digits", "width=640\r\nheight=1080\r\n", "640\r\n", "1080\r\n"},
    {"height of one digit", "width=100\r\nheight=8\r\n", "100\r\n", "8\r\n"},
    {"width of four digits", "width=1920\r\nheight=1080\r\n", "1920\r\n", "1080\r\n", true},
    {"height of three digits", "width=1280\r\nheight=720\r\n", "1280\r\n", "720\r\n", true},
    {"width of five digits", "width=10240\r\nheight=4320\r\n", "10240\r\n", "t=4320\r\n"},
    {"width of two digits", "width=64\r\nheight=48\r\n", "64\r\n", "8\r\n"},
    {"width of one digit", "width=8\r\nheight=480\r\n", "8\r\n", "0\r\n"},
    {"bare line feeds", "width=720\nheight=576\n", "720\n", "76\n"},
    {"bare line feeds after four digits", "width=1920\nheight=1080\n", "1920\n", "1080\n"},
    {"two streams of four digits", "width=1920\r\nheight=1080\r\nwidth=1280\r\nheight=720\r\n",
     "1920\r\n", "1080\r\nwidth1280\r\nheight720\r\n", true},
    {"two streams of three digits", "width=720\r\nheight=576\r\nwidth=640\r\nheight=480\r\n",
     "720\r\n", "576\r\nwidth=640\r\nheight=480\r\n"},
    {"width without a height", "width=1920\r\n", "", kNone},
    {"no digits", "width=", "", kNone},
    {"width and half a word", "width=1920\r\nheigh", "", kNone},
    {"height without a width", "height=1080\r\n", kNone, ""},
    {"height after other words", "some words height=1080\r\n", kNone, "1080\r\n"},
    {"height before the width", "height=1080\r\nwidth=1920\r\n", "", "1920\r\n", true},
    {"nothing", "", kNone, kNone},
    {"no equals signs", "width 1920 height 1080", kNone, kNone},
    {"upper case", "WIDTH=1920\r\nHEIGHT=1080\r\n", "1920\r\n", "1080\r\n", true},
    {"text before the width", "xx width=1920\r\nheight=1080\r\n", "th=1920\r\n", "ght=1080\r\n"},
    {"blanks around the height", "width=720\r\n   height=576   ", "720\r\n   ", "576"},
    {"blanks before line breaks", "width=72 \r\n height=576\r\n ", "72 \r\n ", "576\r\n"},
    {"two line breaks", "width=7200\r\n\r\nheight=576", "7200\r\n\r\n", "ht=576"},
    {"bytes that are no text", "width=\xFF\x80\x01\r\nheight=\xC3\r\n", "\xFF\x80\x01\r\n",
     "\xC3\r\n"},
};

TEST(ReadSize, CutsABlockAtFixedOffsets) {
  for (const auto& [name, block, width, height, usedUp] : kSizeCases) {
    SCOPED_TRACE(name);
    const SizeReading reading = ReadSize(block);
    EXPECT_EQ(reading.width, width);
    EXPECT_EQ(reading.height, height);
    EXPECT_EQ(reading.usedUp, usedUp);
  }
}

using Lengths = std::vector<std::pair<const char*, std::size_t>>;

TEST(EndOfSize, IsAfterTheLineOfTheFirstHeightOrBeforeALaterWidth) {
  const Lengths cases = {
      {"width=640\nheight=360\n", 21},
      {"WIDTH=640\r\nHEIGHT=360\r\nwidth=1\nheight=1\n", 23},
      {"x: bad\nheight=1\n\n", 16},
      {"[x] Bad frame.\nwidth=640\nheight=360\n", 15},
      {"[x] Bad frame.\nwidth=", 15},
      {"", 0},
      {"\n", 0},
      {"width=640\n", 0},
      {"width=640\nheight", 0},
      {"width=640\nheight=360", 0},
  };
  for (const auto& [text, length] : cases) EXPECT_EQ(EndOfSize(text), length) << text;
}

TEST(EndOfLine, IsAfterTheFirstLineBreak) {
  const Lengths cases = {{"one\ntwo\n", 4}, {"one\rtwo\n", 4}, {"\n", 1}, {"one", 0}};
  for (const auto& [text, length] : cases) EXPECT_EQ(EndOfLine(text), length) << text;
}

TEST(WidenLineBreaks, PutsACarriageReturnBeforeEachBareLineFeed) {
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"", ""},
      {"a\nb\n", "a\r\nb\r\n"},
      {"\n\n", "\r\n\r\n"},
      {"a\rb\r", "a\rb\r"},
      {"a\r\nb\r\n", "a\r\nb\r\n"},
      {"a\r\r\n\nb", "a\r\r\n\r\nb"},
  };
  for (const auto& [text, wide] : cases) EXPECT_EQ(WidenLineBreaks(text), wide) << text;
}

using Duration = std::optional<std::string>;

struct DurationCase {
  const char* name;
  std::vector<std::string> blocks;
  std::vector<Duration> readings;
};

TEST(DurationReading, IsTheTextAfterTheFirstDurationOfAllBlocks) {
  const std::vector<DurationCase> cases = {
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
    SCOPED_TRACE(name);
    DurationReading reading;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
      EXPECT_EQ(reading.Append(blocks[i]), readings[i]) << blocks[i];
    }
  }
}

TEST(DurationReading, IsTheSameHoweverTheTextIsCut) {
  for (const std::string_view text :
       {"DDuraDuration:  1:2 x", "a\r\nduration: 00:01:23.45, Duration: 7", "on:Duration:",
        "DurDurationDuration:N/A, bitrate: N/A", "Duration :\xC3\xA4 DURATION:00:00:07"}) {
    // Each reading of all blocks so far must be the reading of the text so far as one block.
    const auto append = [text](DurationReading& reading, std::size_t from, std::size_t to) {
      EXPECT_EQ(reading.Append(text.substr(from, to - from)),
                DurationReading().Append(text.substr(0, to)))
          << text << " from " << from << " to " << to;
    };
    DurationReading byteByByte;
    for (std::size_t end = 1; end <= text.size(); ++end) append(byteByByte, end - 1, end);
    for (std::size_t first = 0; first <= text.size(); ++first) {
      for (std::size_t second = first; second <= text.size(); ++second) {
        DurationReading reading;
        append(reading, 0, first);
        append(reading, first, second);
        append(reading, second, text.size());
      }
    }
  }
}

// 100 MiB in small blocks outlast the time-out of any test if each block costs what came before.
TEST(DurationReading, CostsTheSameForEachBlock) {
  constexpr int kBlocks = 400'000;
  DurationReading reading;
  const std::string block(256, 'D');
  for (int count = 0; count < kBlocks; ++count) ASSERT_EQ(reading.Append(block), std::nullopt);
  EXPECT_EQ(reading.Append("Duration: 00:00:10"), "00:00:10");
  for (int count = 0; count < kBlocks; ++count) ASSERT_EQ(reading.Append(block), "00:00:10");
}

}  // namespace
}  // namespace kelvane
