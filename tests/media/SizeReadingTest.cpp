#include <gtest/gtest.h>

#include <string>

#include "media/ProbeReadings.h"

namespace kelvane {
namespace {

struct Case {
  const char* name;
  std::string block;
  std::optional<std::string> width;
  std::optional<std::string> height;
  bool usedUp = false;
};

void PrintTo(const Case& shown, std::ostream* out) { *out << shown.block; }

class SizeProbeBlock : public ::testing::TestWithParam<Case> {};

TEST_P(SizeProbeBlock, IsCutAtFixedOffsets) {
  const SizeReading reading = ReadSize(GetParam().block);
  EXPECT_EQ(reading.width, GetParam().width);
  EXPECT_EQ(reading.height, GetParam().height);
  EXPECT_EQ(reading.usedUp, GetParam().usedUp);
}

constexpr std::nullopt_t kNone = std::nullopt;

// Only a width of four digits uses its block up.
const Case kCases[] = {
    {"WidthOfThreeDigits", "width=720\r\nheight=576\r\n", "720\r\n", "576\r\n"},
    {"ShorterWidthThanHeight", "width=640\r\nheight=1080\r\n", "640\r\n", "1080\r\n"},
    {"HeightOfOneDigit", "width=100\r\nheight=8\r\n", "100\r\n", "8\r\n"},
    {"WidthOfFourDigits", "width=1920\r\nheight=1080\r\n", "1920\r\n", "1080\r\n", true},
    {"LongerWidthThanHeight", "width=1280\r\nheight=720\r\n", "1280\r\n", "720\r\n", true},
    {"WidthOfFiveDigits", "width=10240\r\nheight=4320\r\n", "10240\r\n", "t=4320\r\n"},
    {"WidthOfTwoDigits", "width=64\r\nheight=48\r\n", "64\r\n", "8\r\n"},
    {"WidthOfOneDigit", "width=8\r\nheight=480\r\n", "8\r\n", "0\r\n"},
    {"BareLineFeeds", "width=720\nheight=576\n", "720\n", "76\n"},
    {"BareLineFeedsBehindFourDigits", "width=1920\nheight=1080\n", "1920\n", "1080\n"},
    {"WidenedLineFeeds", WidenLineBreaks("width=720\nheight=576\n"), "720\r\n", "576\r\n"},
    {"WidenedLineFeedsBehindFourDigits", WidenLineBreaks("width=1920\nheight=1080\n"), "1920\r\n",
     "1080\r\n", true},
    {"TwoStreamsOfFourDigits", "width=1920\r\nheight=1080\r\nwidth=1280\r\nheight=720\r\n",
     "1920\r\n", "1080\r\nwidth1280\r\nheight720\r\n", true},
    {"TwoStreamsOfThreeDigits", "width=720\r\nheight=576\r\nwidth=640\r\nheight=480\r\n", "720\r\n",
     "576\r\nwidth=640\r\nheight=480\r\n"},
    {"WidthWithoutHeight", "width=1920\r\n", "", kNone},
    {"WidthAlone", "width=", "", kNone},
    {"WidthBeforeHalfAWord", "width=1920\r\nheigh", "", kNone},
    {"HeightAlone", "height=1080\r\n", kNone, ""},
    {"HeightBehindOtherWords", "some words height=1080\r\n", kNone, "1080\r\n"},
    {"HeightBeforeWidth", "height=1080\r\nwidth=1920\r\n", "", "1920\r\n", true},
    {"Nothing", "", kNone, kNone},
    {"LineBreak", "\r\n", kNone, kNone},
    {"Complaint", "/clips/a.mp4: Invalid data found when processing input\r\n", kNone, kNone},
    {"WordsWithoutEqualsSigns", "width 1920 height 1080", kNone, kNone},
    {"HalfAWord", "widt", kNone, kNone},
    {"UpperCase", "WIDTH=1920\r\nHEIGHT=1080\r\n", "1920\r\n", "1080\r\n", true},
    {"MixedCase", "Width=720\r\nheiGHT=576\r\n", "720\r\n", "576\r\n"},
    {"TextBeforeTheWidth", "xx width=1920\r\nheight=1080\r\n", "th=1920\r\n", "ght=1080\r\n"},
    // Blanks at the ends are dropped and line breaks aren't.
    {"BlanksAroundTheHeight", "width=720\r\n   height=576   ", "720\r\n   ", "576"},
    {"BlanksBeforeLineBreaks", "width=72 \r\n height=576\r\n ", "72 \r\n ", "576\r\n"},
    {"TwoLineBreaks", "width=7200\r\n\r\nheight=576", "7200\r\n\r\n", "ht=576"},
    {"BytesThatAreNoText", "width=\xFF\x80\x01\r\nheight=\xC3\r\n", "\xFF\x80\x01\r\n", "\xC3\r\n"},
};

INSTANTIATE_TEST_SUITE_P(Text, SizeProbeBlock, ::testing::ValuesIn(kCases),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(EndOfSize, IsBehindTheLineOfTheFirstHeight) {
  EXPECT_EQ(EndOfSize("width=640\nheight=360\n"), 21U);
  EXPECT_EQ(EndOfSize("WIDTH=640\r\nHEIGHT=360\r\nwidth=1\nheight=1\n"), 23U);
  EXPECT_EQ(EndOfSize("x: bad\nheight=1\n\n"), 16U);
}

TEST(EndOfSize, IsBeforeAWidthThatSomethingStandsBefore) {
  EXPECT_EQ(EndOfSize("[x] Bad frame.\nwidth=640\nheight=360\n"), 15U);
  EXPECT_EQ(EndOfSize("[x] Bad frame.\nwidth="), 15U);
}

TEST(EndOfSize, IsZeroBeforeThatLineEnds) {
  for (const char* text : {"", "width=640\n", "width=640\nheight", "width=640\nheight=360", "\n"}) {
    EXPECT_EQ(EndOfSize(text), 0U) << text;
  }
}

TEST(EndOfLine, IsBehindItsBreak) {
  EXPECT_EQ(EndOfLine("one\ntwo\n"), 4U);
  EXPECT_EQ(EndOfLine("one\rtwo\n"), 4U);
  EXPECT_EQ(EndOfLine("\n"), 1U);
  EXPECT_EQ(EndOfLine("one"), 0U);
}

TEST(WidenLineBreaks, GivesEveryBareLineFeedItsCarriageReturnAndLeavesTheRestAlone) {
  EXPECT_EQ(WidenLineBreaks(""), "");
  EXPECT_EQ(WidenLineBreaks("a"), "a");
  EXPECT_EQ(WidenLineBreaks("a\nb\n"), "a\r\nb\r\n");
  EXPECT_EQ(WidenLineBreaks("\n\n"), "\r\n\r\n");
  EXPECT_EQ(WidenLineBreaks("a\r\nb\r\n"), "a\r\nb\r\n");
  EXPECT_EQ(WidenLineBreaks("a\rb\r"), "a\rb\r");
  EXPECT_EQ(WidenLineBreaks("a\r\r\n\nb"), "a\r\r\n\r\nb");
}

}  // namespace
}  // namespace kelvane
