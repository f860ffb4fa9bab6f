// What the start sets up, and how the window is laid out.
#include <QHeaderView>
#include <QListView>
#include <QScrollBar>
#include <QTreeView>

#include "joiner/JoinerWindowTest.h"
#include "platform/App.h"
#include "support/WindowText.h"

namespace kelvane::testing {
namespace {

TEST(JoinerLayout, IsAsTheWindowTextSays) {
  Form4 form;
  ExpectWindowText(form, {{1201, 601}, {1519, 845}});
  form.Unload();
}

class JoinerStart : public JoinerWindowTest {};

TEST(JoinersChartScrollBar, BeginsAtNoughtAndIsNoTabStopWhateverItWasBefore) {
  Form4 form;
  auto& bar = form.Find<HScrollBar>(QStringLiteral("HScroll1"));
  bar.setMin(5);
  bar.setTabStop(true);
  form.Load();
  const auto* widget = bar.findChild<QScrollBar*>();
  EXPECT_EQ(widget->minimum(), 0);
  EXPECT_EQ(widget->focusPolicy() & Qt::TabFocus, 0);
}

TEST_F(JoinerStart, TheTableHasThreeColumnsOfTheDefaultWidthAndWholeRows) {
  const auto* table = Table().findChild<QTreeView*>();
  Texts headings;
  for (int column = 0; column < table->model()->columnCount(); ++column) {
    headings.push_back(table->model()->headerData(column, Qt::Horizontal).toString().toStdString());
  }
  EXPECT_EQ(headings, (Texts{"Index", "Title", "Duration (seconds)"}));
  EXPECT_EQ(table->columnWidth(0), 96);
  EXPECT_EQ(table->columnWidth(1), 96);
  EXPECT_EQ(table->columnWidth(2), 96);
  EXPECT_EQ(table->selectionBehavior(), QAbstractItemView::SelectRows);
}

TEST_F(JoinerStart, TheChartLiesBelowTheRulerAndBothAreSevenThousandPixelsWide) {
  const auto& ruler = Get<PictureBox>("Picture5");
  const auto& chart = Get<PictureBox>("Picture1", Chart);
  EXPECT_EQ(QRectF(ruler.Left(), ruler.Top(), ruler.Width(), ruler.Height()),
            QRectF(0, 0, 7000, 25));
  EXPECT_EQ(QRectF(chart.Left(), chart.Top(), chart.Width(), chart.Height()),
            QRectF(0, 25, 7000, 1000));
}

TEST_F(JoinerStart, TheHeaderIsFlatAndTheListOfPathsScrollsOver900Pixels) {
  EXPECT_FALSE(Table().HeaderButtons());
  EXPECT_EQ(Paths().HorizontalExtent(), 900);
  form_->Load();
  EXPECT_FALSE(Table().HeaderButtons()) << "a second load does nothing";
}

TEST(JoinerStartAlone, TakesOverTheIconThatItIsGivenAtTheLoad) {
  QPixmap red(16, 16);
  red.fill(Qt::red);
  Form4 form{QIcon(red)};
  EXPECT_TRUE(form.windowIcon().isNull());
  form.Load();
  EXPECT_EQ(form.windowIcon().pixmap(16).toImage(), red.toImage());
  form.Unload();
}

TEST(JoinerStartAlone, HasTheProgramsOwnIconWhereNoneIsGiven) {
  Form4 form;
  form.Load();
  EXPECT_EQ(form.windowIcon().pixmap(32).toImage(), ProductIcon().pixmap(32).toImage());
  form.Unload();
}

TEST(JoinerStartAlone, RunsTheLayoutRuleNoLaterThanAtTheFirstShow) {
  Form4 form;
  form.Load();
  form.Show();
  EXPECT_EQ(form.Find<Control>("Shape2").Left(), 20);
  form.Unload();
}

class JoinerTooSmall : public JoinerWindowTest {
 protected:
  // Of the content area.
  void SetArea(QSize area) const {
    const int bar = form_->height() - static_cast<int>(form_->ScaleHeight());
    form_->resize(area.width(), area.height() + bar);
    PumpOnce();
    ASSERT_EQ(form_->ScaleWidth(), static_cast<float>(area.width()));
    ASSERT_EQ(form_->ScaleHeight(), static_cast<float>(area.height()));
  }
  std::string PlaceOf(const char* name) const {
    const auto& control = Get<Control>(name);
    return Text(control.Left(), control.Top(), control.Width(), control.Height());
  }
  static std::string Text(float left, float top, float width, float height) {
    return QStringLiteral("%1,%2 %3x%4")
        .arg(static_cast<double>(left))
        .arg(static_cast<double>(top))
        .arg(static_cast<double>(width))
        .arg(static_cast<double>(height))
        .toStdString();
  }
  std::string EndsOf(const char* name) const {
    const auto& line = Get<Line>(name);
    return Text(line.X1(), line.Y1(), line.X2(), line.Y2());
  }
};

TEST_F(JoinerTooSmall, SizesThatWouldBeNegativeStayAsTheyWereAndPlacesDoNot) {
  ASSERT_NO_FATAL_FAILURE(SetArea({340, 120}));
  // The command bar's top is 27, the right column's left 7.
  EXPECT_EQ(PlaceOf("Picture3"), Text(30, 27, 290, 73));
  EXPECT_EQ(PlaceOf("Picture1(0)"), Text(30, 40, 1146, 702))
      << "27 - 10 - 40 and 7 - 10 - 30 are refused";
  EXPECT_EQ(PlaceOf("List1"), Text(7, 60, 313, 324.5)) << "27 - 5 - 60 is refused";
  EXPECT_EQ(PlaceOf("ListView1"), Text(7, 40, 313, 10));
  EXPECT_EQ(PlaceOf("Shape2"), Text(20, 30, 310, 75));
  EXPECT_EQ(EndsOf("Line2"), Text(2, 30, 2, 26));
  EXPECT_EQ(PlaceOf("Label3(6)"), Text(290 - 209 - 10, 48, 209, 17));

  ASSERT_NO_FATAL_FAILURE(SetArea({30, 10}));
  EXPECT_EQ(PlaceOf("Picture3"), Text(30, -83, 290, 73)) << "the width of -20 is refused";
  EXPECT_EQ(PlaceOf("ListView1"), Text(-303, 40, 313, 10)) << "the height of -45 is refused";
  EXPECT_EQ(PlaceOf("Shape2"), Text(20, 30, 0, 75)) << "the height of -35 is refused";
}

TEST_F(JoinerTooSmall, AFrameTooSmallForItsScrollBarsLeavesTheirSizesAndTheViewports) {
  ASSERT_NO_FATAL_FAILURE(SetArea({388, 158}));
  EXPECT_EQ(PlaceOf("Picture1(0)"), Text(30, 40, 15, 15));
  EXPECT_EQ(PlaceOf("VScroll1"), Text(-2, 0, 17, 685));
  EXPECT_EQ(PlaceOf("HScroll1"), Text(0, -2, 1129, 17));
  EXPECT_EQ(PlaceOf("Picture1(1)"), Text(0, 0, 1128, 684));
}

TEST_F(JoinerTooSmall, TheWindowComesBackFromIt) {
  ASSERT_NO_FATAL_FAILURE(SetArea({30, 10}));
  ASSERT_NO_FATAL_FAILURE(SetArea({1519, 845}));
  EXPECT_EQ(PlaceOf("Picture1(0)"), Text(30, 40, 1146, 702));
  EXPECT_EQ(PlaceOf("List1"), Text(1186, 422.5, 313, 324.5));
  EXPECT_EQ(PlaceOf("Shape2"), Text(20, 30, 1489, 800));
}

class ChartScrolling : public JoinerWindowTest {
 protected:
  void ScrollTo(int value) const {
    Get<HScrollBar>("HScroll1").setValue(static_cast<std::int16_t>(value));
  }
  // Of the chart and of the ruler, which move together.
  float Left() const {
    EXPECT_EQ(Get<PictureBox>("Picture5").Left(), Get<PictureBox>("Picture1", Chart).Left());
    return Get<PictureBox>("Picture5").Left();
  }
};

TEST_F(ChartScrolling, TheFirstEventMakesTheRangeTheChartsWidth) {
  EXPECT_EQ(Get<HScrollBar>("HScroll1").Max(), 32767);
  ScrollTo(2);
  EXPECT_EQ(Get<HScrollBar>("HScroll1").Max(), 7000);
  EXPECT_EQ(Left(), -2);
}

TEST_F(ChartScrolling, ChartAndRulerMoveToTheLeftByTheValue) {
  ScrollTo(100);
  EXPECT_EQ(Left(), -100);
  ScrollTo(7000);
  EXPECT_EQ(Left(), -7000) << "out of view";
  ScrollTo(0);
  EXPECT_EQ(Left(), 0);
}

TEST_F(ChartScrolling, TheEndOfAShortListIsAnEmptyChartAndAnEmptyRuler) {
  AddSectionOf("a.mp4", "00:10:00.00");
  ScrollTo(7000);
  const QImage shown = Picture(Get<QWidget>("Picture1", ChartViewport));
  QImage grey(shown.size(), QImage::Format_RGB32);
  grey.fill(QColor(0x808080));
  EXPECT_EQ(shown, grey);
}

TEST_F(ChartScrolling, AFirstValueBeyondTheChartIsCutToItsWidth) {
  ScrollTo(20000);
  EXPECT_EQ(Get<HScrollBar>("HScroll1").Value(), 7000);
  EXPECT_EQ(Left(), -7000);
}

TEST_F(ChartScrolling, FollowsTheThumbWhileItIsDragged) {
  auto* bar = Get<HScrollBar>("HScroll1").findChild<QScrollBar*>();
  bar->setSliderDown(true);
  bar->setValue(50);
  EXPECT_EQ(Left(), -50);
  EXPECT_EQ(bar->maximum(), 7000);
  bar->setValue(60);
  EXPECT_EQ(Left(), -60);
  bar->setSliderDown(false);
  EXPECT_EQ(Left(), -60);
}

TEST_F(ChartScrolling, TheUprightBarMovesAndNothingFollows) {
  AddSectionOf("a.mp4", "00:10:00.00");
  const QImage before = form_->grab(Get<QWidget>("Picture1", ChartViewport).rect()).toImage();
  Get<VScrollBar>("VScroll1").setValue(32767);
  EXPECT_EQ(Get<VScrollBar>("VScroll1").Value(), 32767);
  EXPECT_EQ(Get<PictureBox>("Picture1", Chart).Top(), 25);
  EXPECT_EQ(form_->grab(Get<QWidget>("Picture1", ChartViewport).rect()).toImage(), before);
}

}  // namespace
}  // namespace kelvane::testing
