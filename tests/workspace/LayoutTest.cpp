// What the main window shows, what a screen reader hears of it, and its layout when its size
// changes.
#include "shared/SharedValues.h"
#include "support/ScreenReader.h"
#include "support/WindowText.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

TEST(MainWindowLayout, IsAsTheWindowTextSays) {
  ForgetSharedValues();
  Form1 form;
  ExpectWindowText(form, {{1201, 551}, {1289, 731}});
  EXPECT_FALSE(form.windowIcon().isNull());
  form.Unload();
}

class MainWindowAccessibility : public MainWindowTest {};

TEST_F(MainWindowAccessibility, ListsThePathTheNumbersAndTheBarsOfAVideo) {
  Get<Timer>("Timer3").setEnabled(false);
  const QString file = LoadVideoOf(640, 360);
  Bar(LeftBar).setLeft(12);
  MeasureRegion();
  const std::string told = HeardIn(*form_);
  const std::string bars = R"(
  Grouping "Video and crop region"
    Slider "Top Bar" = 0
    Graphic "Video"
    Slider "Base Bar" = 355
    Slider "Left Bar" = 12
    Slider "Right Bar" = 635
    ScrollBar "Scroll the video up and down" = 0
    ScrollBar "Scroll the video sideways" = 0
)";
  for (const std::string& lines :
       {"  EditableText \"Selected Video\": \"" + file.toStdString() + "\"\n",
        std::string("  StaticText \"0,640\" (Width of the video in pixels)\n"),
        std::string("  StaticText \"0,012\" (Left of the crop region in pixels)\n"), bars}) {
    EXPECT_NE(told.find(lines), std::string::npos) << lines << "\nin" << told;
  }
}

class MainWindowSize : public MainWindowTest {
 protected:
  // `width` and `height` are in twips.
  void ExpectSize(float width, float height, QSize pixels) const {
    EXPECT_EQ(form_->Width(), width);
    EXPECT_EQ(form_->Height(), height);
    EXPECT_EQ(form_->size(), pixels);
    EXPECT_EQ(Get<Control>("Shape6").Width(), form_->ScaleWidth() - 4);
    EXPECT_EQ(Get<Control>("Shape6").Height(), form_->ScaleHeight() - 4);
  }
};

TEST_F(MainWindowSize, IsThatOfTheDesignExceptForTheHeight) {
  ExpectSize(19335, 11265, {1289, 751});
}

TEST_F(MainWindowSize, IsNeverLessThanTheLeastSize) {
  form_->setWidth(16664);
  form_->setHeight(6499);
  ExpectSize(16665, 6500, {1111, 433});
  for (const QSize size : {QSize(300, 433), QSize(1111, 100), QSize(10, 10)}) {
    form_->resize(size);
    ServePendingEvents();
    ExpectSize(16665, 6500, {1111, 433});
  }
}

TEST_F(MainWindowSize, ChangeByMinimisingLeavesTheLayoutUntilTheWindowIsRestored) {
  auto& command = Get<Control>("Label14(0)");
  auto& frame = Get<Control>("Picture1(0)");
  const float commandTop = command.Top();
  const float frameWidth = frame.Width();
  command.setTop(1);
  frame.setWidth(7);

  form_->showMinimized();
  ASSERT_TRUE(WaitFor([&] { return MainWindowMinimised; }));
  EXPECT_EQ(command.Top(), 1);
  EXPECT_EQ(frame.Width(), 7);

  form_->showNormal();
  ASSERT_TRUE(WaitFor([&] { return !MainWindowMinimised; }));
  EXPECT_EQ(command.Top(), commandTop);
  EXPECT_EQ(frame.Width(), frameWidth);
}

TEST_F(MainWindowSize, ChangePutsViewportAndScrollBarBackIntoTheirCorner) {
  auto& viewport = Get<Control>("Picture1(1)");
  auto& across = Get<Control>("HScroll1");
  viewport.setLeft(9);
  viewport.setTop(8);
  across.setLeft(7);
  form_->setWidth(24000);
  EXPECT_EQ(viewport.Left(), 0);
  EXPECT_EQ(viewport.Top(), 0);
  EXPECT_EQ(across.Left(), 0);
}

TEST_F(MainWindowSize, ChangeDoesNotMoveCanvasAndBars) {
  Canvas().setLeft(-30);
  Canvas().setTop(-50);
  Bar(LeftBar).setLeft(33);
  form_->setWidth(24000);
  form_->setHeight(12000);
  EXPECT_EQ(Canvas().Left(), -30);
  EXPECT_EQ(Canvas().Top(), -50);
  EXPECT_EQ(Canvas().Width(), 417);
  EXPECT_EQ(Canvas().Height(), 249);
  EXPECT_EQ(Bar(LeftBar).Left(), 33);
}

}  // namespace
}  // namespace kelvane::testing
