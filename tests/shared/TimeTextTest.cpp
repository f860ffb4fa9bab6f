#include <gtest/gtest.h>

#include <QString>
#include <vector>

#include "shared/TextHelpers.h"

namespace kelvane {
namespace {

struct TimeAndSeconds {
  const char* text;
  int seconds;
};

TEST(TimeText, HoursMinutesAndSecondsCountFromMidnight) {
  const std::vector<TimeAndSeconds> cases = {
      {"00:00:00", 0},     {"00:00:10", 10},    {"00:01:00", 60}, {"01:00:00", 3600},
      {"12:34:56", 45296}, {"23:59:59", 86399}, {"0:0:7", 7},     {"1:2:3", 3723},
  };
  for (const auto& [text, seconds] : cases) {
    EXPECT_EQ(SecondsFromTimeText(text), seconds) << text;
  }
}

TEST(TimeText, TwoPartsAreHoursAndMinutes) {
  const std::vector<TimeAndSeconds> cases = {
      {"0:0", 0}, {"00:00", 0}, {"00:01", 60}, {"00:0", 0}, {"12:30", 45000}, {"23:59", 86340},
  };
  for (const auto& [text, seconds] : cases) {
    EXPECT_EQ(SecondsFromTimeText(text), seconds) << text;
  }
}

TEST(TimeText, SpaceRoundATimeDoesNotMatter) {
  EXPECT_EQ(SecondsFromTimeText(" 00:00:10 "), 10);
  EXPECT_EQ(SecondsFromTimeText("\t00:00:10\r\n"), 10);
}

TEST(TimeText, APartBeyondItsRangeIsNoTime) {
  for (const char* text :
       {"24:00:00", "24:00", "00:60:00", "00:00:60", "99:99:99", "-1:00", "00:-1:00", "+1:00"}) {
    EXPECT_EQ(SecondsFromTimeText(text), std::nullopt) << text;
  }
}

TEST(TimeText, ATimeCutShortBehindAColonIsNoTime) {
  for (const char* text : {"00:00:", "00:", "0", "00", ":", "::", ":00", ":00:00", "00::00"}) {
    EXPECT_EQ(SecondsFromTimeText(text), std::nullopt) << text;
  }
}

TEST(TimeText, AnyOtherTextIsNoTime) {
  for (const char* text : {"", " ", "12", "N/A, bit", "N/A", "00:00:10.5", "00:00:00:00", "100:00",
                           "00:000:00", "00 :00", "aa:bb:cc", "00:00:1x"}) {
    EXPECT_EQ(SecondsFromTimeText(text), std::nullopt) << text;
  }
}

TEST(TimeText, DigitsOfOtherScriptsAreNoTime) {
  EXPECT_EQ(SecondsFromTimeText(QString::fromUtf8("٠٠:٠٠:١٠")), std::nullopt);
}

struct SecondsAndText {
  double seconds;
  const char* text;
};

TEST(TimeOfDay, HasHoursWithoutALeadingZero) {
  const std::vector<SecondsAndText> cases = {{0, "0:00:00"},      {9, "0:00:09"},
                                             {75, "0:01:15"},     {3600, "1:00:00"},
                                             {45296, "12:34:56"}, {86399, "23:59:59"}};
  for (const auto& [seconds, text] : cases) EXPECT_EQ(FormatTimeOfDay(seconds), text) << seconds;
}

TEST(TimeOfDay, WrapsAfterTwentyFourHours) {
  const std::vector<SecondsAndText> cases = {
      {86400, "0:00:00"}, {86475, "0:01:15"}, {10 * 86400 + 3661, "1:01:01"}, {1e15, "1:46:40"}};
  for (const auto& [seconds, text] : cases) EXPECT_EQ(FormatTimeOfDay(seconds), text) << seconds;
}

TEST(TimeOfDay, RoundsFractionsOfASecond) {
  const std::vector<SecondsAndText> cases = {{74.6, "0:01:15"},
                                             {75.4, "0:01:15"},
                                             {59.5, "0:01:00"},
                                             {86399.4, "23:59:59"},
                                             {86399.6, "0:00:00"}};
  for (const auto& [seconds, text] : cases) EXPECT_EQ(FormatTimeOfDay(seconds), text) << seconds;
}

TEST(TimeOfDay, OfANegativeNumberIsThatOfItsAbsoluteValue) {
  EXPECT_EQ(FormatTimeOfDay(-75), QStringLiteral("0:01:15"));
}

TEST(Position, HasMinutesAndSecondsAndHoursWhereThereAreAny) {
  const std::vector<SecondsAndText> cases = {
      {0, "00:00"},        {0.99, "00:00"},      {1, "00:01"},       {59.9, "00:59"},
      {75, "01:15"},       {3599.9, "59:59"},    {3600, "01:00:00"}, {3661.5, "01:01:01"},
      {86400, "24:00:00"}, {360000, "100:00:00"}};
  for (const auto& [seconds, text] : cases) EXPECT_EQ(FormatPosition(seconds), text) << seconds;
}

TEST(Position, BeforeTheBeginningIsTheBeginning) {
  for (const double seconds : {-0.5, -1.0, -54.0, -3600.0, -1e300}) {
    EXPECT_EQ(FormatPosition(seconds), QStringLiteral("00:00")) << seconds;
  }
}

TEST(Position, BeyondAnyRecordingIsTheLongestThatIsShown) {
  EXPECT_EQ(FormatPosition(1e15), QStringLiteral("277777777777:46:40"));
  EXPECT_EQ(FormatPosition(5.8e252), FormatPosition(1e15));
}

TEST(TimeText, ANumberOfSecondsReadsAsATimeOfDayWithTwoDigitsEach) {
  const std::vector<SecondsAndText> cases = {
      {0, "00:00:00"},     {7, "00:00:07"},      {59, "00:00:59"},    {60, "00:01:00"},
      {138, "00:02:18"},   {3599, "00:59:59"},   {3600, "01:00:00"},  {45296, "12:34:56"},
      {86399, "23:59:59"}, {86400, "00:00:00"},  {90000, "01:00:00"}, {64.25, "00:01:04"},
      {64.5, "00:01:05"},  {128.75, "00:02:09"}, {59.75, "00:01:00"}, {-1, "00:00:01"},
      {-3600, "01:00:00"}, {-0.25, "00:00:00"},
  };
  for (const auto& [seconds, text] : cases) {
    EXPECT_EQ(FormatTimeText(seconds).toStdString(), text) << seconds;
  }
}

}  // namespace
}  // namespace kelvane
