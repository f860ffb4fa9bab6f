// The region: what the bars say, at each tick of the second timer.
#include <QLocale>

#include "shared/SharedValues.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class Region : public MainWindowTest {
 protected:
  // Left, top, width, height, base, right.
  using Numbers = std::vector<std::string>;
  Numbers ReadOut() const {
    return {Number(RegionLeft),   Number(RegionTop),  Number(RegionWidth),
            Number(RegionHeight), Number(RegionBase), Number(RegionRight)};
  }
  // Width, height, left, top.
  using Values = std::vector<int>;
  static Values SharedValues() { return {CropWidth, CropHeight, CropLeft, CropTop}; }

  void Measure() const { ASSERT_TRUE(WaitForTicks(Get<Timer>("Timer2"), 1)); }
};

TEST_F(Region, AFreshVideoOf640By360IsFivePixelsNarrowerAndLower) {
  LoadVideoOf(640, 360);
  Measure();
  EXPECT_EQ(ReadOut(), (Numbers{"0,000", "0,000", "0,635", "0,355", "0,355", "0,635"}));
  EXPECT_EQ(SharedValues(), (Values{635, 355, 0, 0}));
  EXPECT_EQ(Number(SourceWidth), "0,640");
  EXPECT_EQ(Number(SourceHeight), "0,360");
}

struct BarsAndRegion {
  const char* name;
  float left, top, right, base;
  std::vector<std::string> readOut;
  std::vector<int> values;
};

void PrintTo(const BarsAndRegion& row, std::ostream* out) { *out << row.name; }

class RegionOf : public Region, public ::testing::WithParamInterface<BarsAndRegion> {};

TEST_P(RegionOf, TheBarsIsWhatTheReadOutSaysAndTheCropGets) {
  const BarsAndRegion& row = GetParam();
  LoadVideoOf(1920, 1080);
  Bar(LeftBar).setLeft(row.left);
  Bar(TopBar).setTop(row.top);
  Bar(RightBar).setLeft(row.right);
  Bar(BaseBar).setTop(row.base);
  Measure();
  EXPECT_EQ(ReadOut(), row.readOut);
  EXPECT_EQ(SharedValues(), row.values);
}

INSTANTIATE_TEST_SUITE_P(
    Region, RegionOf,
    ::testing::Values(BarsAndRegion{"OddValues",
                                    3,
                                    5,
                                    604,
                                    342,
                                    {"0,003", "0,005", "0,601", "0,337", "0,342", "0,604"},
                                    {601, 337, 3, 5}},
                      BarsAndRegion{"RightLeftOfLeft",
                                    100,
                                    0,
                                    80,
                                    355,
                                    {"0,100", "0,000", "-0,020", "0,355", "0,355", "0,080"},
                                    {-20, 355, 100, 0}},
                      BarsAndRegion{"BaseOverTop",
                                    0,
                                    200,
                                    635,
                                    193,
                                    {"0,000", "0,200", "0,635", "-0,007", "0,193", "0,635"},
                                    {635, -7, 0, 200}},
                      BarsAndRegion{"OffTheCanvas",
                                    -30,
                                    -12,
                                    2500,
                                    1500,
                                    {"-0,030", "-0,012", "2,530", "1,512", "1,500", "2,500"},
                                    {2530, 1512, -30, -12}},
                      BarsAndRegion{"NoWidthAndNoHeight",
                                    50,
                                    60,
                                    50,
                                    60,
                                    {"0,050", "0,060", "0,000", "0,000", "0,060", "0,050"},
                                    {0, 0, 50, 60}},
                      BarsAndRegion{"FiveDigits",
                                    0,
                                    0,
                                    12345,
                                    10000,
                                    {"0,000", "0,000", "12,345", "10,000", "10,000", "12,345"},
                                    {12345, 10000, 0, 0}},
                      BarsAndRegion{"HalfPixelsGoToTheEvenOne",
                                    2.5F,
                                    3.5F,
                                    103.0F,
                                    105.0F,
                                    {"0,003", "0,004", "0,100", "0,102", "0,105", "0,103"},
                                    {100, 102, 2, 4}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(Region, ThePlayerTheHolderAndTheCanvasPlayNoPart) {
  LoadVideoOf(640, 360);
  Get<Control>("wmp").setWidth(10);
  Get<PictureBox>("Picture1", HolderBox).setHeight(10);
  Canvas().setLeft(-60);
  Canvas().setTop(-70);
  Measure();
  EXPECT_EQ(ReadOut(), (Numbers{"0,000", "0,000", "0,635", "0,355", "0,355", "0,635"}));
  EXPECT_EQ(SharedValues(), (Values{635, 355, 0, 0}));
}

TEST_F(Region, WhatIsTooLargeForAWholeNumberLeavesTheLastOne) {
  LoadVideoOf(640, 360);
  Measure();
  constexpr float kFar = 3e9F;
  Bar(LeftBar).setLeft(-kFar);
  Bar(TopBar).setTop(-kFar);
  Measure();
  EXPECT_EQ(Number(RegionWidth), "0,000");
  EXPECT_EQ(Number(RegionHeight), "0,000");
  EXPECT_EQ(SharedValues(), (Values{635, 355, 0, 0}));
}

TEST_F(Region, TheNumbersUseTheLocalesGroupSeparator) {
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  LoadVideoOf(1920, 1080);
  Measure();
  const std::string width = Number(SourceWidth);
  const Numbers readOut = ReadOut();
  QLocale::setDefault(QLocale::c());
  EXPECT_EQ(width, "1.920");
  EXPECT_EQ(readOut, (Numbers{"0.000", "0.000", "1.915", "1.075", "1.075", "1.915"}));
  EXPECT_EQ(SharedValues(), (Values{1915, 1075, 0, 0}));
  EXPECT_EQ(Canvas().Width(), 1920);
  EXPECT_EQ(Canvas().Height(), 1080);
}

TEST_F(Region, BeforeAnyLoadNothingIsMeasured) {
  Bar(LeftBar).setLeft(20);
  ASSERT_TRUE(WaitForTicks(Get<Timer>("Timer3"), 1));
  EXPECT_EQ(ReadOut(), (Numbers{"0,000", "0,000", "0,000", "0,000", "0,000", "0,000"}));
  EXPECT_EQ(SharedValues(), (Values{0, 0, 0, 0}));
}

TEST_F(Region, ACancelledDialogLeavesItMeasuringTheOldCanvas) {
  const DialogAnswers answers({CancelDialog()});
  Give(LoadVideo);
  EXPECT_TRUE(Get<Timer>("Timer2").Enabled());
  Measure();
  EXPECT_EQ(ReadOut(), (Numbers{"0,000", "0,000", "0,412", "0,244", "0,244", "0,412"}));
  EXPECT_EQ(Number(SourceWidth), "0,000");
}

TEST_F(Region, UntilTheFirstTickTheSharedValuesKeepWhatTheyHeld) {
  // However long the load takes, no tick measures during it.
  auto& timer = Get<Timer>("Timer2");
  std::function<void()> wired = std::exchange(timer.Tick, nullptr);
  LoadVideoOf(640, 360);
  EXPECT_EQ(SharedValues(), (Values{0, 0, 0, 0}));
  timer.Tick = std::move(wired);
  Measure();
  Bar(LeftBar).setLeft(10);
  EXPECT_EQ(SharedValues(), (Values{635, 355, 0, 0}));
  Measure();
  EXPECT_EQ(SharedValues(), (Values{625, 355, 10, 0}));
}

TEST_F(Region, ItGoesOnBeingMeasuredWhileTheDialogIsOpen) {
  LoadVideoOf(640, 360);
  Bar(TopBar).setTop(9);
  bool measured = false;
  const DialogAnswers answers({[&](QDialog& dialog) {
    measured = WaitForTicks(Get<Timer>("Timer2"), 1);
    dialog.reject();
  }});
  Give(LoadVideo);
  EXPECT_TRUE(measured);
  EXPECT_EQ(Number(RegionTop), "0,009");
}

TEST_F(Region, NothingTurnsTheMeasuringOffInOrdinaryUse) {
  LoadVideoOf(640, 360);
  Give(ResetMarkers);
  Give(PauseVideo);
  Give(PreviewCroppedVideo);
  LoadVideoOf(320, 240);
  EXPECT_TRUE(Get<Timer>("Timer2").Enabled());
}

TEST_F(Region, TheReadOutIsWrittenInItsOrder) {
  LoadVideoOf(640, 360);
  Measure();
  std::vector<std::string> written;
  for (int index = 0; index < 16; ++index) {
    Before(Get<Label>("Label1", index).Change, [&written](int which) {
      written.push_back(std::to_string(which) + (CropWidth == 635 ? "" : " after the values"));
    });
  }
  Bar(LeftBar).setLeft(1);
  Bar(TopBar).setTop(2);
  Bar(RightBar).setLeft(600);
  Bar(BaseBar).setTop(300);
  Measure();
  EXPECT_EQ(written, (Numbers{"5", "7", "9", "11", "15", "13"}));
  EXPECT_EQ(SharedValues(), (Values{599, 298, 1, 2}));
}

}  // namespace
}  // namespace kelvane::testing
