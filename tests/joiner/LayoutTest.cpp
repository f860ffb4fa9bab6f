// What the start sets up, the ruler, the layout rule, and the scrolling of the chart.
#include <QPainter>
#include <QScrollBar>

#include "joiner/JoinerWindowTest.h"
#include "support/WindowText.h"

namespace kelvane::testing {
namespace {

TEST(JoinerLayout, IsAsTheWindowTextSays) {
  Form4 form;
  ExpectWindowText(form, {{1201, 601}, {1519, 845}});
  form.Unload();
}

TEST(JoinerIcon, IsTheGivenIconOrElseTheProductsFromTheLoadOn) {
  QPixmap red(16, 16);
  red.fill(Qt::red);
  Form4 given{QIcon(red)};
  EXPECT_TRUE(given.windowIcon().isNull());
  given.Load();
  EXPECT_EQ(given.windowIcon().pixmap(16).toImage(), red.toImage());
  Form4 own;
  own.Load();
  EXPECT_EQ(own.windowIcon().pixmap(32).toImage(), ProductIcon().pixmap(32).toImage());
  own.Unload();
  given.Unload();
}

class JoinerStart : public JoinerWindowTest {
 protected:
  // Resizes the content area.
  void ResizeTo(QSize area) const {
    const int menuBar = form_->height() - static_cast<int>(form_->ScaleHeight());
    form_->resize(area.width(), area.height() + menuBar);
    ServePendingEvents();
    ASSERT_EQ(form_->ScaleWidth(), static_cast<float>(area.width()));
    ASSERT_EQ(form_->ScaleHeight(), static_cast<float>(area.height()));
  }
  std::string PlaceOf(const char* name) const { return PlaceText(Get<Control>(name)); }
};

TEST(JoinersChartScrollBar, BeginsAtZeroAndIsOutOfTheTabOrderWhateverItWasBefore) {
  Form4 form;
  auto& bar = form.Find<HScrollBar>("HScroll1");
  bar.setMin(5);
  bar.setTabStop(true);
  form.Load();
  const auto* widget = bar.findChild<QScrollBar*>();
  EXPECT_EQ(widget->minimum(), 0);
  EXPECT_EQ(widget->focusPolicy() & Qt::TabFocus, 0);
  form.Unload();
}

TEST_F(JoinerStart, FlattensTheHeaderAndWidensTheList) {
  EXPECT_FALSE(Table().HeaderButtons());
  EXPECT_EQ(Paths().HorizontalExtent(), 900);
}

TEST_F(JoinerStart, DrawsTheRulerWithTicksToItsEndAndLabelsAsFarAs32000Seconds) {
  constexpr QRgb kLight = 0xffc0c0c0;
  constexpr QRgb kWhite = 0xffffffff;
  QImage drawn(7000, 25, QImage::Format_RGB32);
  drawn.fill(QColor(0x404040));
  const auto drawTick = [&drawn](int x, int height, QRgb color) {
    for (int y = 0; y < height; ++y) drawn.setPixel(x, y, color);
  };
  for (int x = 0; x < 7000; ++x) drawn.setPixel(x, 20, kLight);
  // A minor tick covers the upper half of each major tick but the first.
  for (int x = 0; x < 7000; x += 50) drawTick(x, 6, kWhite);
  for (int x = 10; x < 7000; x += 10) drawTick(x, 3, kLight);
  QPainter painter(&drawn);
  QFont font("Arial");
  font.setPixelSize(11);
  painter.setFont(font);
  painter.setPen(QColor(kLight));
  for (int seconds = 0; seconds <= 32000; seconds += 1000) {
    const QString text = QTime(0, 0).addSecs(seconds).toString("hh:mm:ss");
    painter.drawText(seconds / 10, 6 + QFontMetrics(font).ascent(), text);
  }
  painter.end();
  EXPECT_EQ(Picture(Get<PictureBox>("Picture5")), drawn);
}

TEST_F(JoinerStart, LayoutKeepsSizesThatWouldBecomeNegativeAndRecovers) {
  ASSERT_NO_FATAL_FAILURE(ResizeTo({340, 120}));
  EXPECT_EQ(PlaceOf("Picture3"), "30,27 290x73");
  EXPECT_EQ(PlaceOf("Picture1(0)"), "30,40 1146x702")
      << "the height 27 - 10 - 40 and the width 7 - 10 - 30 must be refused";
  EXPECT_EQ(PlaceOf("List1"), "7,60 313x324.5") << "the height 27 - 5 - 60 must be refused";
  EXPECT_EQ(PlaceOf("ListView1"), "7,40 313x10");
  EXPECT_EQ(PlaceOf("Shape2"), "20,30 310x75");

  ASSERT_NO_FATAL_FAILURE(ResizeTo({388, 158}));
  EXPECT_EQ(PlaceOf("Picture1(0)"), "30,40 15x15") << "too small for its scroll bars";
  EXPECT_EQ(PlaceOf("VScroll1"), "-2,0 17x685");
  EXPECT_EQ(PlaceOf("HScroll1"), "0,-2 1129x17");
  EXPECT_EQ(PlaceOf("Picture1(1)"), "0,0 1128x684");

  ASSERT_NO_FATAL_FAILURE(ResizeTo({1519, 845}));
  EXPECT_EQ(PlaceOf("Picture1(0)"), "30,40 1146x702");
  EXPECT_EQ(PlaceOf("List1"), "1186,422.5 313x324.5");
  EXPECT_EQ(PlaceOf("Shape2"), "20,30 1489x800");
}

class ChartScrolling : public JoinerWindowTest {
 protected:
  HScrollBar& Bar() const { return Get<HScrollBar>("HScroll1"); }
  QImage ShownChart() const {
    return form_->grab(Get<QWidget>("Picture1", ChartViewport).rect()).toImage();
  }
  void ExpectChartAndRulerAt(float left) const {
    EXPECT_EQ(TimeChart().Left(), left);
    EXPECT_EQ(Get<PictureBox>("Picture5").Left(), left);
  }
};

TEST_F(ChartScrolling, MovesChartAndRulerToTheLeftByTheValueEvenOutOfSight) {
  AddSectionOf("a.mp4");
  ASSERT_EQ(Bar().Max(), 32767);
  Bar().setValue(2);
  EXPECT_EQ(Bar().Max(), 7000) << "from the first change on";
  ExpectChartAndRulerAt(-2);
  Bar().setValue(7000);
  ExpectChartAndRulerAt(-7000);
  const QImage shown = Picture(Get<QWidget>("Picture1", ChartViewport));
  EXPECT_TRUE(AllOf(shown, shown.rect(), 0x808080));
  Bar().setValue(0);
  ExpectChartAndRulerAt(0);
}

TEST_F(ChartScrolling, LimitsAFirstValueBeyondTheChartToItsWidth) {
  Bar().setValue(20000);
  EXPECT_EQ(Bar().Value(), 7000);
  ExpectChartAndRulerAt(-7000);
}

TEST_F(ChartScrolling, FollowsTheThumbWhileItIsDragged) {
  auto* bar = Bar().findChild<QScrollBar*>();
  bar->setSliderDown(true);
  bar->setValue(50);
  ExpectChartAndRulerAt(-50);
  EXPECT_EQ(Bar().Max(), 7000);
  bar->setValue(60);
  ExpectChartAndRulerAt(-60);
}

TEST_F(ChartScrolling, IsNotDoneByTheVerticalBar) {
  AddSectionOf("a.mp4");
  const QImage before = ShownChart();
  Get<VScrollBar>("VScroll1").setValue(32767);
  EXPECT_EQ(PlaceText(TimeChart()), "0,25 7000x1000");
  EXPECT_EQ(ShownChart(), before);
}

}  // namespace
}  // namespace kelvane::testing
