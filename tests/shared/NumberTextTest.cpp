#include <gtest/gtest.h>

#include <QLocale>
#include <limits>
#include <string>
#include <vector>

#include "shared/TextHelpers.h"

namespace kelvane {
namespace {

// Each test runs under a locale of its choice and leaves the default one as it was.
class NumberText : public testing::Test {
 protected:
  void SetUp() override { UsePlain(); }
  void TearDown() override { QLocale::setDefault(former_); }

  static void UsePlain() { QLocale::setDefault(QLocale::c()); }
  static void UseGerman() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }
  static void UseFrench() { QLocale::setDefault(QLocale(QLocale::French, QLocale::France)); }
  // Groups with an apostrophe and divides with a dot: a comma means nothing there.
  static void UseSwiss() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Switzerland)); }

 private:
  QLocale former_;
};

struct NumberAndText {
  double number;
  const char* text;
};

TEST_F(NumberText, AGroupedNumberMayHaveFiveDigitsAtLeast) {
  const std::vector<NumberAndText> cases = {{0, "00,000"},       {83, "00,083"},
                                            {5400, "05,400"},    {86401, "86,401"},
                                            {123456, "123,456"}, {1080001, "1,080,001"}};
  for (const auto& [number, text] : cases) EXPECT_EQ(FormatGrouped(number, 5).toStdString(), text);
  UseGerman();
  EXPECT_EQ(FormatGrouped(83, 5).toStdString(), "00.083");
}

TEST_F(NumberText, AGroupedNumberHasFourDigitsAtLeast) {
  const std::vector<NumberAndText> cases = {
      {0, "0,000"},           {7, "0,007"},
      {64, "0,064"},          {576, "0,576"},
      {640, "0,640"},         {720, "0,720"},
      {999, "0,999"},         {1000, "1,000"},
      {1920, "1,920"},        {12345, "12,345"},
      {86400, "86,400"},      {123456, "123,456"},
      {1234567, "1,234,567"}, {2147483647, "2,147,483,647"},
  };
  for (const auto& [number, text] : cases) {
    EXPECT_EQ(FormatGrouped(number).toStdString(), text) << number;
  }
}

TEST_F(NumberText, AGroupedNegativeNumberKeepsItsDigitsBehindTheSign) {
  EXPECT_EQ(FormatGrouped(-7).toStdString(), "-0,007");
  EXPECT_EQ(FormatGrouped(-1920).toStdString(), "-1,920");
  EXPECT_EQ(FormatGrouped(-123456).toStdString(), "-123,456");
}

TEST_F(NumberText, AGroupedFractionIsRoundedHalfAwayFromZero) {
  const std::vector<NumberAndText> cases = {
      {0.4, "0,000"},   {0.5, "0,001"},  {1.5, "0,002"},   {2.5, "0,003"},
      {999.5, "1,000"}, {-0.4, "0,000"}, {-0.5, "-0,001"}, {-2.5, "-0,003"},
  };
  for (const auto& [number, text] : cases) {
    EXPECT_EQ(FormatGrouped(number).toStdString(), text) << number;
  }
}

TEST_F(NumberText, TheGroupSeparatorIsThatOfTheLocale) {
  UseGerman();
  EXPECT_EQ(FormatGrouped(1234567).toStdString(), "1.234.567");
  UseFrench();
  EXPECT_EQ(FormatGrouped(1234567).toStdString(), "1\u202F234\u202F567");
  EXPECT_EQ(FormatGrouped(640).toStdString(), "0\u202F640");
}

TEST_F(NumberText, ANumberTextIsGroupedAndAnyOtherTextStands) {
  struct TextAndText {
    const char* text;
    const char* grouped;
  };
  const std::vector<TextAndText> cases = {
      {"1920\r\n", "1,920"},
      {"576\r\n", "0,576"},
      {" 640 ", "0,640"},
      {"0", "0,000"},
      {"1,920", "1,920"},
      {"16777217", "16,777,217"},
      {"", ""},
      {"N/A", "N/A"},
      {"t=1080\r\n", "t=1080\r\n"},
      {"1080\r\nwidth1280\r\nheight720\r\n", "1080\r\nwidth1280\r\nheight720\r\n"},
  };
  for (const auto& [text, grouped] : cases) {
    EXPECT_EQ(FormatGroupedText(text).toStdString(), grouped) << text;
  }
}

TEST_F(NumberText, AGroupedTextReadsBackAsItsNumberInEveryLocale) {
  for (void (*const use)() : {&UsePlain, &UseGerman, &UseFrench, &UseSwiss}) {
    use();
    for (const float number : {0.F, 7.F, 640.F, 1920.F, 123456.F, -7.F, -1920.F}) {
      EXPECT_EQ(SingleFromText(FormatGrouped(static_cast<double>(number))), number)
          << QLocale().name().toStdString();
    }
  }
}

TEST_F(NumberText, TwoDecimalsStandBehindTwoDigitsAtLeast) {
  const std::vector<NumberAndText> cases = {
      {0, "00.00"},     {0.5, "00.50"},  {4.5, "04.50"},      {12.25, "12.25"},
      {99.99, "99.99"}, {100, "100.00"}, {1234.5, "1234.50"}, {-4.5, "-04.50"},
  };
  for (const auto& [number, text] : cases) {
    EXPECT_EQ(FormatTwoDecimals(number).toStdString(), text) << number;
  }
}

TEST_F(NumberText, TwoDecimalsAreRoundedHalfAwayFromZero) {
  const std::vector<NumberAndText> cases = {
      {0.125, "00.13"},  {0.004, "00.00"},   {0.005, "00.01"},     {0.285, "00.29"},
      {1.005, "01.01"},  {9.995, "10.00"},   {99.994, "99.99"},    {99.995, "100.00"},
      {-0.004, "00.00"}, {-0.125, "-00.13"}, {100.0 / 3, "33.33"}, {200.0 / 3, "66.67"},
  };
  for (const auto& [number, text] : cases) {
    EXPECT_EQ(FormatTwoDecimals(number).toStdString(), text) << number;
  }
}

TEST_F(NumberText, ANumberTooLargeForDecimalsKeepsItsSize) {
  EXPECT_EQ(FormatTwoDecimals(1e15).toStdString(), "1000000000000000.00");
  EXPECT_EQ(FormatTwoDecimals(-1e15).toStdString(), "-1000000000000000.00");
  EXPECT_EQ(FormatTwoDecimals(1e308).toDouble(), 1e308);
}

TEST_F(NumberText, TheDecimalSeparatorIsThatOfTheLocale) {
  UseGerman();
  EXPECT_EQ(FormatTwoDecimals(4.5).toStdString(), "04,50");
  EXPECT_EQ(SingleFromText("4,5"), 4.5F);
  UseFrench();
  EXPECT_EQ(FormatTwoDecimals(33.333).toStdString(), "33,33");
  EXPECT_EQ(SingleFromText("4,5"), 4.5F);
}

TEST_F(NumberText, ANumberIsReadThroughSpaceRoundItAndSeparatorsInIt) {
  const std::vector<NumberAndText> cases = {
      {1920, "1920"},      {1920, "1,920"},
      {1920, " 1920 "},    {1920, "\t1920\r\n"},
      {0.5, "0.5"},        {0.5, ".5"},
      {5, "5."},           {-7, "-7"},
      {-7, "-0,007"},      {1234567, "1,234,567"},
      {1234.5, "1,234.5"}, {1000, "1e3"},
      {0, "0,000"},        {7, "+7"},
  };
  for (const auto& [number, text] : cases) {
    EXPECT_EQ(SingleFromText(text), static_cast<float>(number)) << text;
  }
}

TEST_F(NumberText, InGermanADotGroupsAndACommaDivides) {
  UseGerman();
  EXPECT_EQ(SingleFromText("1.920"), 1920.F);
  EXPECT_EQ(SingleFromText("1.920,5"), 1920.5F);
}

TEST_F(NumberText, InFrenchANarrowNoBreakSpaceGroups) {
  UseFrench();
  EXPECT_EQ(SingleFromText(QString::fromUtf8("1\u202F920")), 1920.F);
  EXPECT_EQ(SingleFromText(QString::fromUtf8("1\u202F234\u202F567,5")), 1234567.5F);
}

TEST_F(NumberText, TheCaptionsOwnZeroIsANumberInEveryLocale) {
  for (void (*const use)() : {&UsePlain, &UseGerman, &UseFrench, &UseSwiss}) {
    use();
    EXPECT_EQ(SingleFromText("0,000"), 0.F) << QLocale().name().toStdString();
  }
}

TEST_F(NumberText, ACommaThatDividesNothingGroupsBeforeThreeDigits) {
  UseSwiss();
  ASSERT_NE(QLocale().groupSeparator().toStdString(), ",");
  ASSERT_EQ(QLocale().decimalPoint().toStdString(), ".");
  EXPECT_EQ(SingleFromText("1,920"), 1920.F);
  EXPECT_EQ(SingleFromText("-1,234,567.5"), -1234567.5F);
  EXPECT_EQ(FormatGroupedText("1,920").toStdString(), FormatGrouped(1920).toStdString());
}

TEST_F(NumberText, ACommaThatDividesNothingIsNoNumberBeforeFewerOrMoreDigits) {
  UseSwiss();
  for (const char* text : {"1,92", "1,9200", "1,", ",920", "1,920,0", "1,92a"}) {
    EXPECT_EQ(SingleFromText(text), std::nullopt) << text;
  }
}

TEST_F(NumberText, ACommaThatDividesNeverGroups) {
  UseGerman();
  EXPECT_EQ(SingleFromText("1,920"), 1.92F);
  UseFrench();
  EXPECT_EQ(SingleFromText("1,920"), 1.92F);
}

TEST_F(NumberText, WhatIsNoNumberHasNoValue) {
  for (const char* text : {"", " ", ",", ".", "-", "abc", "12px", "1 920", "0x10", "1.2.3", "--1",
                           "00:00:10", "inf", "nan", "1e39", "-1e39", "1e400"}) {
    EXPECT_EQ(SingleFromText(text), std::nullopt) << text;
  }
}

TEST_F(NumberText, TheLargestSinglePrecisionNumberIsRead) {
  EXPECT_EQ(SingleFromText("3.4028234663852886e38"), std::numeric_limits<float>::max());
}

struct NumberDigitsAndText {
  double number;
  int leastDigits;
  const char* text;
};

TEST_F(NumberText, DigitsAreFilledUpWithNoughtsAndNeverCutOff) {
  const std::vector<NumberDigitsAndText> cases = {
      {0, 2, "00"},      {4, 2, "04"},    {31.68, 2, "32"},  {9.5, 2, "10"},  {10.5, 2, "11"},
      {100, 2, "100"},   {10, 3, "010"},  {100, 3, "100"},   {0.2, 3, "000"}, {-1, 2, "-01"},
      {-12.5, 2, "-13"}, {-0.2, 2, "00"}, {1000, 3, "1000"},
  };
  for (const auto& [number, leastDigits, text] : cases) {
    EXPECT_EQ(FormatDigits(number, leastDigits).toStdString(), text) << number;
  }
}

struct SingleAndText {
  float number;
  const char* text;
};

TEST_F(NumberText, ASingleHasSevenSignificantDigitsAndNoNoughtsAtTheirEnd) {
  const std::vector<SingleAndText> cases = {
      {0, "0"},
      {-0.0F, "0"},
      {120, "120"},
      {-30, "-30"},
      {0.5F, "0.5"},
      {0.1F, "0.1"},
      {1234.5F, "1234.5"},
      {-1234.567F, "-1234.567"},
      {100000, "100000"},
      {100000.5F, "100000.5"},
      {1234567, "1234567"},
      {1000000, "1000000"},
      {9999999, "9999999"},
      {100.0F / 3, "33.33333"},
      {0.0001F, "0.0001"},
      {10000000, "1E+07"},
      {-15000000, "-1.5E+07"},
      {0.00001F, "1E-05"},
  };
  for (const auto& [number, text] : cases) {
    EXPECT_EQ(FormatSingle(number).toStdString(), text) << number;
  }
}

TEST_F(NumberText, ASinglesDecimalSeparatorIsThatOfTheLocaleAndNothingGroupsIt) {
  UseGerman();
  EXPECT_EQ(FormatSingle(1234.5F).toStdString(), "1234,5");
  EXPECT_EQ(FormatSingle(15000000).toStdString(), "1,5E+07");
  UseFrench();
  EXPECT_EQ(FormatSingle(1234567).toStdString(), "1234567");
}

struct TextAndNumber {
  const char* text;
  double number;
};

TEST_F(NumberText, ALeadingNumberEndsWhereTheTextIsNoNumberAnyMore) {
  const std::vector<TextAndNumber> cases = {
      {"4825", 4825}, {"4825 s", 4825},    {"04", 4},    {"12.5", 12.5}, {"12,5", 12},
      {"1.2.3", 1.2}, {".5x", 0.5},        {"5.", 5},    {"-7", -7},     {"+7", 7},
      {"  30", 30},   {"1 2\t3\n4", 1234}, {"1e2", 100}, {"1E-1x", 0.1}, {"1e", 1},
  };
  for (const auto& [text, number] : cases) EXPECT_EQ(LeadingNumber(text), number) << text;
}

TEST_F(NumberText, ATextThatBeginsWithNoNumberCountsAsNought) {
  for (const char* text : {"", " ", "a4", "-", ".", "e5", "--1", "x", "+ -1"}) {
    EXPECT_EQ(LeadingNumber(text), 0) << text;
  }
}

TEST_F(NumberText, ALeadingNumberThatIsTooLargeCountsAsNought) {
  for (const char* text : {"1e400", "-1e400", "1e309 s"}) EXPECT_EQ(LeadingNumber(text), 0) << text;
  EXPECT_EQ(LeadingNumber("1e308"), 1e308);
}

TEST_F(NumberText, ALeadingNumberHasAPointInEveryLocale) {
  UseGerman();
  EXPECT_EQ(LeadingNumber("12.5"), 12.5);
  EXPECT_EQ(LeadingNumber("12,5"), 12);
}

TEST_F(NumberText, BlanksAloneAreTrimmedAndAtTheEndsAlone) {
  EXPECT_EQ(Trim("  a b  ").toStdString(), "a b");
  EXPECT_EQ(Trim("a").toStdString(), "a");
  EXPECT_EQ(Trim("   ").toStdString(), "");
  EXPECT_EQ(Trim("").toStdString(), "");
  EXPECT_EQ(Trim(" \ta\n ").toStdString(), "\ta\n");
  EXPECT_EQ(Trim("a \n").toStdString(), "a \n");
}

}  // namespace
}  // namespace kelvane
