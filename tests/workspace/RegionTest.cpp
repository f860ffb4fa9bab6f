// The region is measured from the bars at each tick of Timer2.
#include <QLocale>

#include "shared/SharedValues.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class Region : public MainWindowTest {
 protected:
  // Returns the read-outs of the region in the order left, top, width, height, base, right.
  Texts RegionReadOuts() const {
    return {Number(RegionLeft),   Number(RegionTop),  Number(RegionWidth),
            Number(RegionHeight), Number(RegionBase), Number(RegionRight)};
  }
  // The order is width, height, left, top.
  using Values = std::vector<int>;
  static Values SharedValues() { return {CropWidth, CropHeight, CropLeft, CropTop}; }
};

TEST_F(Region, OfAFreshVideoIsFivePixelsLessWideAndLessHigh) {
  LoadVideoOf(640, 360);
  MeasureRegion();
  EXPECT_EQ(RegionReadOuts(), (Texts{"0,000", "0,000", "0,635", "0,355", "0,355", "0,635"}));
  EXPECT_EQ(SharedValues(), (Values{635, 355, 0, 0}));
  EXPECT_EQ(Number(SourceWidth), "0,640");
  EXPECT_EQ(Number(SourceHeight), "0,360");
}

TEST_F(Region, IsMeasuredFromTheBarsForTheReadOutAndTheCrop) {
  struct Case {
    const char* name;
    float left, top, right, base;
    Texts readOut;
    Values values;
  };
  const Case cases[] = {
      {"odd numbers",
       3,
       5,
       604,
       342,
       {"0,003", "0,005", "0,601", "0,337", "0,342", "0,604"},
       {601, 337, 3, 5}},
      {"right bar left of the left one",
       100,
       0,
       80,
       355,
       {"0,100", "0,000", "-0,020", "0,355", "0,355", "0,080"},
       {-20, 355, 100, 0}},
      {"base bar above the top one",
       0,
       200,
       635,
       193,
       {"0,000", "0,200", "0,635", "-0,007", "0,193", "0,635"},
       {635, -7, 0, 200}},
      {"off the canvas",
       -30,
       -12,
       2500,
       1500,
       {"-0,030", "-0,012", "2,530", "1,512", "1,500", "2,500"},
       {2530, 1512, -30, -12}},
      {"empty",
       50,
       60,
       50,
       60,
       {"0,050", "0,060", "0,000", "0,000", "0,060", "0,050"},
       {0, 0, 50, 60}},
      {"half pixels",
       2.5F,
       3.5F,
       103,
       105,
       {"0,003", "0,004", "0,100", "0,102", "0,105", "0,103"},
       {100, 102, 2, 4}},
  };
  LoadVideoOf(1920, 1080);
  for (const auto& [name, left, top, right, base, readOut, values] : cases) {
    Bar(LeftBar).setLeft(left);
    Bar(TopBar).setTop(top);
    Bar(RightBar).setLeft(right);
    Bar(BaseBar).setTop(base);
    MeasureRegion();
    EXPECT_EQ(RegionReadOuts(), readOut) << name;
    EXPECT_EQ(SharedValues(), values) << name;
  }
}

TEST_F(Region, DoesNotDependOnScrollingNorOnThePlayerOrItsHolder) {
  LoadVideoOf(640, 360);
  Get<Control>("wmp").setWidth(10);
  Get<PictureBox>("Picture1", HolderBox).setHeight(10);
  Canvas().setLeft(-60);
  Canvas().setTop(-70);
  MeasureRegion();
  EXPECT_EQ(RegionReadOuts(), (Texts{"0,000", "0,000", "0,635", "0,355", "0,355", "0,635"}));
  EXPECT_EQ(SharedValues(), (Values{635, 355, 0, 0}));
}

TEST_F(Region, ThatIsTooLargeFor32BitsShowsASizeOfZeroAndKeepsTheSharedValues) {
  LoadVideoOf(640, 360);
  MeasureRegion();
  constexpr float kFar = 3e9F;
  Bar(LeftBar).setLeft(-kFar);
  Bar(TopBar).setTop(-kFar);
  MeasureRegion();
  EXPECT_EQ(Number(RegionWidth), "0,000");
  EXPECT_EQ(Number(RegionHeight), "0,000");
  EXPECT_EQ(SharedValues(), (Values{635, 355, 0, 0}));
}

TEST_F(Region, IsShownWithTheLocalesGroupSeparator) {
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  LoadVideoOf(1920, 1080);
  MeasureRegion();
  const std::string width = Number(SourceWidth);
  const Texts readOut = RegionReadOuts();
  QLocale::setDefault(QLocale::c());
  EXPECT_EQ(width, "1.920");
  EXPECT_EQ(readOut, (Texts{"0.000", "0.000", "1.915", "1.075", "1.075", "1.915"}));
  EXPECT_EQ(SharedValues(), (Values{1915, 1075, 0, 0}));
  EXPECT_EQ(Canvas().Width(), 1920);
  EXPECT_EQ(Canvas().Height(), 1080);
}

TEST_F(Region, GoesOnBeingMeasuredAfterCommandsAndASecondLoad) {
  LoadVideoOf(640, 360);
  Give(ResetMarkers);
  Give(PauseVideo);
  Give(PreviewCroppedVideo);
  LoadVideoOf(320, 240);
  EXPECT_TRUE(Get<Timer>("Timer2").Enabled());
}

}  // namespace
}  // namespace kelvane::testing
