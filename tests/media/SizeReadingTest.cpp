#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "media/ProbeReadings.h"

namespace kelvane {
namespace {

struct BlockAndReading {
  std::string block;
  std::optional<std::string> width;
  std::optional<std::string> height;
  bool usedUp;
};

void ExpectReadings(const std::vector<BlockAndReading>& cases) {
  for (const auto& [block, width, height, usedUp] : cases) {
    const SizeReading reading = ReadSize(block);
    EXPECT_EQ(reading.width, width) << block;
    EXPECT_EQ(reading.height, height) << block;
    EXPECT_EQ(reading.usedUp, usedUp) << block;
  }
}

TEST(SizeReading, AWidthOfThreeDigitsIsReadAndTheBlockGoesOn) {
  ExpectReadings({
      {"width=720\r\nheight=576\r\n", "720\r\n", "576\r\n", false},
      {"width=640\r\nheight=1080\r\n", "640\r\n", "1080\r\n", false},
      {"width=100\r\nheight=8\r\n", "100\r\n", "8\r\n", false},
  });
}

TEST(SizeReading, AWidthOfFourDigitsIsReadAndUsesTheBlockUp) {
  ExpectReadings({
      {"width=1920\r\nheight=1080\r\n", "1920\r\n", "1080\r\n", true},
      {"width=1280\r\nheight=720\r\n", "1280\r\n", "720\r\n", true},
  });
}

TEST(SizeReading, AWidthOfFiveDigitsLeavesAHeightThatIsNoNumber) {
  ExpectReadings({{"width=10240\r\nheight=4320\r\n", "10240\r\n", "t=4320\r\n", false}});
}

TEST(SizeReading, AWidthOfTwoDigitsLeavesTheHeightsLastDigits) {
  ExpectReadings({
      {"width=64\r\nheight=48\r\n", "64\r\n", "8\r\n", false},
      {"width=8\r\nheight=480\r\n", "8\r\n", "0\r\n", false},
  });
}

TEST(SizeReading, WithABareLineFeedTheOffsetsMissByOne) {
  ExpectReadings({
      {"width=720\nheight=576\n", "720\n", "76\n", false},
      {"width=1920\nheight=1080\n", "1920\n", "1080\n", false},
  });
}

TEST(SizeReading, WithItsLineBreaksWidenedABareLineFeedReadsRight) {
  ExpectReadings({
      {WidenLineBreaks("width=720\nheight=576\n"), "720\r\n", "576\r\n", false},
      {WidenLineBreaks("width=1920\nheight=1080\n"), "1920\r\n", "1080\r\n", true},
  });
}

TEST(SizeReading, TwoStreamsBoundTheWidthAtTheFirstHeightAndLeaveBothPairsInTheHeight) {
  ExpectReadings({
      {"width=1920\r\nheight=1080\r\nwidth=1280\r\nheight=720\r\n", "1920\r\n",
       "1080\r\nwidth1280\r\nheight720\r\n", true},
      {"width=720\r\nheight=576\r\nwidth=640\r\nheight=480\r\n", "720\r\n",
       "576\r\nwidth=640\r\nheight=480\r\n", false},
  });
}

TEST(SizeReading, WithoutItsHeightAWidthIsEmpty) {
  ExpectReadings({
      {"width=1920\r\n", "", std::nullopt, false},
      {"width=", "", std::nullopt, false},
      {"width=1920\r\nheigh", "", std::nullopt, false},
  });
}

TEST(SizeReading, AHeightInABlockOfItsOwnIsCutAtTheSameOffsets) {
  ExpectReadings({
      {"height=1080\r\n", std::nullopt, "", false},
      {"some words height=1080\r\n", std::nullopt, "1080\r\n", false},
  });
}

TEST(SizeReading, AHeightBeforeTheWidthLeavesTheWidthEmpty) {
  ExpectReadings({{"height=1080\r\nwidth=1920\r\n", "", "1920\r\n", true}});
}

TEST(SizeReading, TextThatIsNoAnswerReadsAsNothing) {
  ExpectReadings({
      {"", std::nullopt, std::nullopt, false},
      {"\r\n", std::nullopt, std::nullopt, false},
      {"/clips/a.mp4: Invalid data found when processing input\r\n", std::nullopt, std::nullopt,
       false},
      {"width 1920 height 1080", std::nullopt, std::nullopt, false},
      {"widt", std::nullopt, std::nullopt, false},
  });
}

TEST(SizeReading, TheWordsAreFoundInAnyCase) {
  ExpectReadings({
      {"WIDTH=1920\r\nHEIGHT=1080\r\n", "1920\r\n", "1080\r\n", true},
      {"Width=720\r\nheiGHT=576\r\n", "720\r\n", "576\r\n", false},
  });
}

TEST(SizeReading, ACutBeforeTheWidthIsStillAtTheSeventhCharacter) {
  ExpectReadings({{"xx width=1920\r\nheight=1080\r\n", "th=1920\r\n", "ght=1080\r\n", false}});
}

TEST(SizeReading, BlanksRoundTheHeightLineAreDroppedButLineBreaksAreNot) {
  ExpectReadings({
      {"width=720\r\n   height=576   ", "720\r\n   ", "576", false},
      {"width=72 \r\n height=576\r\n ", "72 \r\n ", "576\r\n", false},
      {"width=7200\r\n\r\nheight=576", "7200\r\n\r\n", "ht=576", false},
  });
}

TEST(SizeReading, BytesThatAreNoTextPassThrough) {
  ExpectReadings(
      {{"width=\xFF\x80\x01\r\nheight=\xC3\r\n", "\xFF\x80\x01\r\n", "\xC3\r\n", false}});
}

TEST(EndOfSize, IsBehindTheLineOfTheFirstHeight) {
  EXPECT_EQ(EndOfSize("width=640\nheight=360\n"), 21U);
  EXPECT_EQ(EndOfSize("WIDTH=640\r\nHEIGHT=360\r\nwidth=1\nheight=1\n"), 23U);
  EXPECT_EQ(EndOfSize("x: bad\nheight=1\n\n"), 16U);
}

TEST(EndOfSize, IsBeforeAWidthThatSomethingStandsBefore) {
  EXPECT_EQ(EndOfSize("[x] Bad frame.\nwidth=640\nheight=360\n"), 15U);
  EXPECT_EQ(EndOfSize("[x] Bad frame.\nwidth="), 15U);
}

TEST(EndOfSize, HasNotComeBeforeThatLineEnds) {
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

TEST(WidenLineBreaks, GivesEveryBareLineFeedItsCarriageReturn) {
  EXPECT_EQ(WidenLineBreaks(""), "");
  EXPECT_EQ(WidenLineBreaks("a"), "a");
  EXPECT_EQ(WidenLineBreaks("\n"), "\r\n");
  EXPECT_EQ(WidenLineBreaks("a\nb\n"), "a\r\nb\r\n");
  EXPECT_EQ(WidenLineBreaks("\n\n"), "\r\n\r\n");
}

TEST(WidenLineBreaks, LeavesWideLineBreaksAndCarriageReturnsAlone) {
  EXPECT_EQ(WidenLineBreaks("a\r\nb\r\n"), "a\r\nb\r\n");
  EXPECT_EQ(WidenLineBreaks("a\rb\r"), "a\rb\r");
  EXPECT_EQ(WidenLineBreaks("a\r\r\n\nb"), "a\r\r\n\r\nb");
}

}  // namespace
}  // namespace kelvane
