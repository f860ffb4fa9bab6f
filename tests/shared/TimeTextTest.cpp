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

}  // namespace
}  // namespace kelvane
