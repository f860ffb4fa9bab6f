#include <gtest/gtest.h>

#include <QString>
#include <utility>
#include <vector>

#include "shared/TextHelpers.h"

namespace kelvane {
namespace {

TEST(TimeText, IsReadAsSecondsFromMidnight) {
  const std::vector<std::pair<const char*, int>> cases = {
      {"00:00:00", 0},
      {"00:00:10", 10},
      {"00:01:00", 60},
      {"01:00:00", 3600},
      {"12:34:56", 45296},
      {"23:59:59", 86399},
      {"0:0:7", 7},
      {"1:2:3", 3723},
      // Two parts are hours and minutes.
      {"0:0", 0},
      {"00:01", 60},
      {"12:30", 45000},
      {"23:59", 86340},
      {" 00:00:10 ", 10},
      {"\t00:00:10\r\n", 10},
  };
  for (const auto& [text, seconds] : cases) EXPECT_EQ(SecondsFromTimeText(text), seconds) << text;
}

TEST(TimeText, HasNoValueIfItIsNoTime) {
  for (const char* text :
       {"24:00:00", "24:00",     "00:60:00", "00:00:60", "99:99:99",   "-1:00",
        "00:-1:00", "+1:00",     "00:00:",   "00:",      "0",          "00",
        ":",        "::",        ":00",      ":00:00",   "00::00",     "",
        " ",        "12",        "N/A, bit", "N/A",      "00:00:10.5", "00:00:00:00",
        "100:00",   "00:000:00", "00 :00",   "aa:bb:cc", "00:00:1x",   "٠٠:٠٠:١٠"}) {
    EXPECT_EQ(SecondsFromTimeText(QString::fromUtf8(text)), std::nullopt) << text;
  }
}

using Cases = std::vector<std::pair<double, const char*>>;

template <class Format>
void ExpectTexts(Format format, const Cases& cases) {
  for (const auto& [seconds, text] : cases) {
    EXPECT_EQ(format(seconds).toStdString(), text) << seconds;
  }
}

TEST(FormatTimeOfDay, WrapsAfterADayAndRoundsFractionsAndHasNoLeadingZero) {
  const Cases cases = {
      {0, "0:00:00"},      {9, "0:00:09"},      {75, "0:01:15"},       {3600, "1:00:00"},
      {45296, "12:34:56"}, {86399, "23:59:59"}, {-75, "0:01:15"},      {86400, "0:00:00"},
      {86475, "0:01:15"},  {867661, "1:01:01"}, {1e15, "1:46:40"},     {74.6, "0:01:15"},
      {75.4, "0:01:15"},   {59.5, "0:01:00"},   {86399.4, "23:59:59"}, {86399.6, "0:00:00"},
  };
  ExpectTexts(FormatTimeOfDay, cases);
}

TEST(FormatTimeText, HasTwoDigitsOfHours) {
  const Cases cases = {
      {0, "00:00:00"},     {7, "00:00:07"},     {60, "00:01:00"},    {138, "00:02:18"},
      {3599, "00:59:59"},  {3600, "01:00:00"},  {45296, "12:34:56"}, {86400, "00:00:00"},
      {90000, "01:00:00"}, {64.25, "00:01:04"}, {64.5, "00:01:05"},  {128.75, "00:02:09"},
      {59.75, "00:01:00"}, {-3600, "01:00:00"}, {-0.25, "00:00:00"},
  };
  ExpectTexts(FormatTimeText, cases);
}

TEST(FormatPosition, HasHoursOnlyFromOneHourOnAndDoesNotWrap) {
  const Cases cases = {
      {0, "00:00"},        {0.99, "00:00"},       {1, "00:01"},       {59.9, "00:59"},
      {75, "01:15"},       {3599.9, "59:59"},     {3600, "01:00:00"}, {3661.5, "01:01:01"},
      {86400, "24:00:00"}, {360000, "100:00:00"},
  };
  ExpectTexts(FormatPosition, cases);
}

TEST(FormatPosition, ShowsNegativeSecondsAsZeroAndMoreThan1e15As1e15) {
  const Cases cases = {
      {-0.5, "00:00"},
      {-54.0, "00:00"},
      {-3600.0, "00:00"},
      {-1e300, "00:00"},
      {1e15, "277777777777:46:40"},
      {5.8e252, "277777777777:46:40"},
  };
  ExpectTexts(FormatPosition, cases);
}

}  // namespace
}  // namespace kelvane
