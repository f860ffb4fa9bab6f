#include <gtest/gtest.h>

#include <QLocale>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "shared/TextHelpers.h"

namespace kelvane {
namespace {

const QLocale kPlain = QLocale::c();
const QLocale kGerman(QLocale::German, QLocale::Germany);
const QLocale kFrench(QLocale::French, QLocale::France);
// The Swiss separators are an apostrophe between groups and a decimal point: a comma is neither.
const QLocale kSwiss(QLocale::German, QLocale::Switzerland);

// Each test begins with the C locale as the default one. Afterwards the former default is restored.
class NumberText : public testing::Test {
 protected:
  NumberText() { QLocale::setDefault(kPlain); }
  ~NumberText() override { QLocale::setDefault(former_); }

 private:
  QLocale former_;
};

struct NumberAndText {
  double number;
  const char* text;
};

using Cases = std::vector<NumberAndText>;

template <class Format>
void ExpectTexts(Format format, const Cases& cases) {
  for (const auto& [number, text] : cases) EXPECT_EQ(format(number).toStdString(), text) << number;
}

template <class Read>
void ExpectNumbers(Read read, const Cases& cases) {
  for (const auto& [number, text] : cases) EXPECT_EQ(read(text), number) << text;
}

std::optional<double> Single(const char* text) {
  const std::optional<float> number = SingleFromText(QString::fromUtf8(text));
  return number ? std::optional<double>(*number) : std::nullopt;
}

TEST_F(NumberText, FormatGroupedGroupsAtLeastFourDigitsAndRoundsHalfAwayFromZero) {
  const Cases cases = {
      {0, "0,000"},        {7, "0,007"},           {64, "0,064"},   {576, "0,576"},
      {999, "0,999"},      {1000, "1,000"},        {1920, "1,920"}, {12345, "12,345"},
      {123456, "123,456"}, {1234567, "1,234,567"}, {-7, "-0,007"},  {2147483647, "2,147,483,647"},
      {-1920, "-1,920"},   {-123456, "-123,456"},  {0.4, "0,000"},  {0.5, "0,001"},
      {1.5, "0,002"},      {2.5, "0,003"},         {-0.4, "0,000"}, {-0.5, "-0,001"},
      {-2.5, "-0,003"},    {999.5, "1,000"},
  };
  ExpectTexts([](double number) { return FormatGrouped(number); }, cases);
  ExpectTexts([](double number) { return FormatGrouped(number, 5); },
              {{0, "00,000"}, {5400, "05,400"}, {86401, "86,401"}, {1080001, "1,080,001"}});
}

TEST_F(NumberText, FormatGroupedTextGroupsANumberAndKeepsAnyOtherText) {
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"1920\r\n", "1,920"}, {"576\r\n", "0,576"},       {" 640 ", "0,640"},
      {"1,920", "1,920"},    {"16777217", "16,777,217"},
  };
  for (const auto& [text, grouped] : cases) {
    EXPECT_EQ(FormatGroupedText(text).toStdString(), grouped) << text;
  }
  for (const char* text : {"", "N/A", "t=1080\r\n", "1080\r\nwidth1280\r\nheight720\r\n"}) {
    EXPECT_EQ(FormatGroupedText(text).toStdString(), text);
  }
}

TEST_F(NumberText, FormatTwoDecimalsHasAtLeastTwoDigitsBeforeThemAndRoundsHalfAwayFromZero) {
  const Cases cases = {
      {0, "00.00"},       {0.5, "00.50"},       {4.5, "04.50"},       {99.99, "99.99"},
      {100, "100.00"},    {1234.5, "1234.50"},  {-4.5, "-04.50"},     {0.125, "00.13"},
      {0.004, "00.00"},   {0.005, "00.01"},     {0.285, "00.29"},     {1.005, "01.01"},
      {9.995, "10.00"},   {99.994, "99.99"},    {99.995, "100.00"},   {-0.004, "00.00"},
      {-0.125, "-00.13"}, {100.0 / 3, "33.33"}, {200.0 / 3, "66.67"},
  };
  ExpectTexts(FormatTwoDecimals, cases);
  ExpectTexts(FormatTwoDecimals, {{1e15, "1000000000000000.00"}, {-1e15, "-1000000000000000.00"}});
  EXPECT_EQ(FormatTwoDecimals(1e308).toDouble(), 1e308);
}

TEST_F(NumberText, FormatDigitsFillsUpWithZerosAndNeverCutsDigitsOff) {
  const Cases cases = {
      {0, "00"},    {4, "04"},   {31.68, "32"},  {9.5, "10"},  {10.5, "11"},
      {100, "100"}, {-1, "-01"}, {-12.5, "-13"}, {-0.2, "00"},
  };
  ExpectTexts([](double number) { return FormatDigits(number, 2); }, cases);
  ExpectTexts([](double number) { return FormatDigits(number, 3); },
              {{10, "010"}, {100, "100"}, {0.2, "000"}, {1000, "1000"}});
}

TEST_F(NumberText, FormatSingleHasSevenSignificantDigitsWithoutTrailingZeros) {
  const Cases cases = {
      {0, "0"},
      {-0.0, "0"},
      {120, "120"},
      {-30, "-30"},
      {0.1, "0.1"},
      {1234.5, "1234.5"},
      {100000, "100000"},
      {100000.5, "100000.5"},
      {1234567, "1234567"},
      {1000000, "1000000"},
      {9999999, "9999999"},
      {-1234.567, "-1234.567"},
      {0.0001, "0.0001"},
      {10000000, "1E+07"},
      {-15000000, "-1.5E+07"},
      {0.00001, "1E-05"},
      {100.0 / 3, "33.33333"},
  };
  ExpectTexts([](double number) { return FormatSingle(static_cast<float>(number)); }, cases);
}

TEST_F(NumberText, IsWrittenAndReadWithTheSeparatorsOfTheLocale) {
  QLocale::setDefault(kGerman);
  EXPECT_EQ(FormatGrouped(1234567).toStdString(), "1.234.567");
  EXPECT_EQ(FormatGrouped(83, 5).toStdString(), "00.083");
  EXPECT_EQ(FormatTwoDecimals(4.5).toStdString(), "04,50");
  EXPECT_EQ(FormatSingle(1234.5F).toStdString(), "1234,5");
  EXPECT_EQ(FormatSingle(15000000).toStdString(), "1,5E+07");
  ExpectNumbers(Single, {{1920, "1.920"}, {1920.5, "1.920,5"}, {4.5, "4,5"}});
  EXPECT_EQ(SingleFromText("1,920"), 1.92F) << "a decimal comma never groups";
  QLocale::setDefault(kFrench);
  EXPECT_EQ(FormatGrouped(1234567).toStdString(), "1\u202F234\u202F567");
  EXPECT_EQ(FormatGrouped(640).toStdString(), "0\u202F640");
  EXPECT_EQ(FormatTwoDecimals(33.333).toStdString(), "33,33");
  EXPECT_EQ(FormatSingle(1234567).toStdString(), "1234567") << "FormatSingle groups no digits";
  ExpectNumbers(Single, {{1920, "1\u202F920"}, {1234567.5, "1\u202F234\u202F567,5"}, {4.5, "4,5"}});
  EXPECT_EQ(SingleFromText("1,920"), 1.92F);
}

TEST_F(NumberText, FormatGroupedCanBeReadBackInEveryLocale) {
  for (const QLocale& locale : {kPlain, kGerman, kFrench, kSwiss}) {
    QLocale::setDefault(locale);
    for (const float number : {0.F, 7.F, 640.F, 1920.F, 123456.F, -7.F, -1920.F}) {
      EXPECT_EQ(SingleFromText(FormatGrouped(static_cast<double>(number))), number)
          << locale.name().toStdString();
    }
    EXPECT_EQ(SingleFromText("0,000"), 0.F) << "a caption before a load";
  }
}

TEST_F(NumberText, SingleFromTextIgnoresGroupSeparatorsAndSpaceAroundTheNumber) {
  const Cases cases = {
      {1920, "1920"}, {1920, "1,920"}, {1920, " 1920 "},    {1920, "\t1920\r\n"},   {0.5, "0.5"},
      {0.5, ".5"},    {5, "5."},       {-7, "-7"},          {-7, "-0,007"},         {1000, "1e3"},
      {0, "0,000"},   {7, "+7"},       {1234.5, "1,234.5"}, {1234567, "1,234,567"},
  };
  ExpectNumbers(Single, cases);
  ExpectNumbers(Single, {{std::numeric_limits<float>::max(), "3.4028234663852886e38"}});
}

TEST_F(NumberText, SingleFromTextIgnoresACommaBeforeThreeDigitsUnlessItIsTheDecimalSeparator) {
  QLocale::setDefault(kSwiss);
  ASSERT_NE(QLocale().groupSeparator().toStdString(), ",");
  ASSERT_EQ(QLocale().decimalPoint().toStdString(), ".");
  ExpectNumbers(Single, {{1920, "1,920"}, {-1234567.5, "-1,234,567.5"}});
  EXPECT_EQ(FormatGroupedText("1,920").toStdString(), FormatGrouped(1920).toStdString());
  for (const char* text : {"1,92", "1,9200", "1,", ",920", "1,920,0", "1,92a"}) {
    EXPECT_EQ(SingleFromText(text), std::nullopt) << text;
  }
}

TEST_F(NumberText, SingleFromTextHasNoValueForATextThatIsNoNumberOrATooLargeOne) {
  for (const char* text : {"", " ", ",", ".", "-", "abc", "12px", "1 920", "0x10", "1.2.3", "--1",
                           "00:00:10", "inf", "nan", "1e39", "-1e39", "1e400"}) {
    EXPECT_EQ(SingleFromText(text), std::nullopt) << text;
  }
}

TEST_F(NumberText, LeadingNumberHasADecimalPointInEveryLocale) {
  for (const QLocale& locale : {kPlain, kGerman}) {
    QLocale::setDefault(locale);
    const Cases cases = {
        {4825, "4825"}, {4825, "4825 s"}, {4, "04"},        {12.5, "12.5"},
        {12, "12,5"},   {1.2, "1.2.3"},   {0.5, ".5x"},     {5, "5."},
        {-7, "-7"},     {7, "+7"},        {30, "  30"},     {100, "1e2"},
        {1, "1e"},      {0.1, "1E-1x"},   {1e308, "1e308"}, {1234, "1 2\t3\n4"},
    };
    ExpectNumbers(LeadingNumber, cases);
    for (const char* none :
         {"", " ", "a4", "-", ".", "e5", "--1", "x", "+ -1", "1e400", "-1e400"}) {
      EXPECT_EQ(LeadingNumber(none), 0) << none;
    }
  }
}

}  // namespace
}  // namespace kelvane
