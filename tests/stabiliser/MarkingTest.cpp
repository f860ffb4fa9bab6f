// The needles on the time line of a selected video: how they are moved, and what they show.
#include <QApplication>
#include <QTest>
#include <vector>

#include "stabiliser/StabiliserWindowTest.h"
#include "support/ScreenReader.h"
#include "support/TabOrder.h"
#include "support/Videos.h"

namespace kelvane::testing {
namespace {

// A video of a minute is selected, which has 14 pixels a second on the time line.
class Marking : public StabiliserWindowTest {
 protected:
  Marking() { Select(60); }

  void ExpectMark(Needle needle, double seconds, const char* time) const {
    EXPECT_EQ(NeedleBox(needle).Left(), static_cast<float>(14 * seconds) - 2);
    EXPECT_EQ(Time(needle == StartNeedle ? SectionStart : SectionEnd), time);
    EXPECT_EQ(Get<Line>("Line3", needle).X1(), NeedleBox(needle).Left() + 2);
  }
  bool Key(Needle needle, int key, int shift = 0) const {
    return NeedleBox(needle).KeyDown({.Index = needle, .Key = key, .Shift = shift});
  }
  static void Turn(const Control& box, float notches) {
    box.MouseWheel({.Index = box.Index(), .Shift = 0, .Notches = notches});
  }
};

TEST_F(Marking, ByADragSnapsToTenthsAndStopsAtTheEndsOfTheTimeLine) {
  DragNeedle(StartNeedle, 14 * 10 + 3);
  ExpectMark(StartNeedle, 10.2, "00:00:10.2");
  EXPECT_EQ(Time(SectionSpan), "00:00:49.8");
  DragNeedle(EndNeedle, -14 * 20);
  ExpectMark(EndNeedle, 40, "00:00:40.0");
  EXPECT_EQ(Time(SectionSpan), "00:00:29.8");
  EXPECT_EQ(Get<Line>("Line8").X1(), NeedleBox(StartNeedle).Left());
  EXPECT_EQ(Get<Line>("Line8").X2(), NeedleBox(EndNeedle).Left());
  DragNeedle(StartNeedle, -1000);
  ExpectMark(StartNeedle, 0, "00:00:00.0");
  DragNeedle(EndNeedle, 1000);
  ExpectMark(EndNeedle, 60, "00:01:00.0");
}

TEST_F(Marking, ByTheArrowKeysMovesByASecondAndWithShiftByTen) {
  EXPECT_TRUE(Key(StartNeedle, Qt::Key_Right));
  ExpectMark(StartNeedle, 1, "00:00:01.0");
  EXPECT_TRUE(Key(StartNeedle, Qt::Key_Right, 1));
  ExpectMark(StartNeedle, 11, "00:00:11.0");
  EXPECT_TRUE(Key(EndNeedle, Qt::Key_Left, 1));
  ExpectMark(EndNeedle, 50, "00:00:50.0");
  EXPECT_FALSE(Key(EndNeedle, Qt::Key_Up));
}

TEST_F(Marking, ByTheMenuSetsNeedleReadOutSpanAndLines) {
  const auto mark = [this](const char* entry, float x) {
    Strip().MouseMove({.Index = TimeLineStrip, .Button = 0, .Shift = 0, .X = x, .Y = 5});
    Get<Menu>(entry).Click();
  };
  mark("mnu_Start", 14 * 20);
  ExpectMark(StartNeedle, 20, "00:00:20.0");
  mark("mnu_End", 14 * 30);
  ExpectMark(EndNeedle, 30, "00:00:30.0");
  EXPECT_EQ(Time(SectionSpan), "00:00:10.0");
  mark("mnu_Start", 14 * 25);
  ExpectMark(StartNeedle, 25, "00:00:25.0");
}

TEST_F(Marking, ReadsTheTimeUnderThePointerAlsoOverTheFrame) {
  Select(3600);
  Strip().setLeft(-100);
  auto& frame = Get<PictureBox>("Picture3", TimeLineFrame);
  frame.MouseMove({.Index = TimeLineFrame, .Button = 0, .Shift = 0, .X = 50, .Y = 5});
  EXPECT_EQ(Strip().ToolTipText(), "00:02:30");
  Get<Menu>("mnu_Start").Click();
  EXPECT_EQ(Time(SectionStart), "00:02:30");
}

TEST_F(Marking, IsReachedByTabBetweenTheCommandsAboveAndBelow) {
  form_->setFocus();
  EXPECT_EQ(TabOrder(*form_),
            "Label6(0)\nPicture4(0)\nPicture4(1)\nLabel7(0)\nLabel7(1)\nLabel14(1)\nLabel14(0)\n"
            "Label12(4)\nLabel12(2)\nLabel12(0)\nLabel12(3)\nLabel10(0)\nLabel10(1)\nLabel10(2)\n"
            "Label10(3)");
}

TEST_F(Marking, ByTheKeyboardScrollsToTheNeedle) {
  Select(3600);
  const auto isInFrame = [this](Needle needle) {
    const float left = Strip().Left() + NeedleBox(needle).Left();
    return left >= -2 && left + 5 <= Get<PictureBox>("Picture3", TimeLineFrame).ScaleWidth();
  };
  form_->activateWindow();
  ASSERT_TRUE(WaitFor([this] { return form_->isActiveWindow(); }));
  NeedleBox(StartNeedle).setFocus(Qt::TabFocusReason);
  EXPECT_EQ(Strip().Left(), 0);
  EXPECT_FALSE(isInFrame(EndNeedle));
  QTest::keyClick(&NeedleBox(StartNeedle), Qt::Key_Tab);
  EXPECT_TRUE(isInFrame(EndNeedle));
  QTest::keyClick(&NeedleBox(EndNeedle), Qt::Key_Backtab);
  EXPECT_TRUE(isInFrame(StartNeedle));
  for (int i = 0; i < 100; ++i) Key(StartNeedle, Qt::Key_Right, 1);
  EXPECT_EQ(Time(SectionStart), "00:16:40");
  EXPECT_TRUE(isInFrame(StartNeedle));
  Strip().setLeft(-2000);
  QWidget other;
  Caption("Label6", 0).setEnabled(false);
  for (QWidget* former : std::initializer_list<QWidget*>{nullptr, &other, &Caption("Label6", 0)}) {
    emit qApp->focusChanged(former, &NeedleBox(StartNeedle));
    EXPECT_EQ(Strip().Left(), -2000)
        << "the time line scrolled although the user hadn't pressed Tab";
  }
}

TEST_F(Marking, ShowsThePictureAtANeedleOfAVideoWhoseRateIsUnknown) {
  const QString path = tools_.Path() + "/moving.mp4";
  ASSERT_TRUE(MakeVideo(path, QSize(160, 90), 4));
  tools_.StreamProbeDoes(
      "printf '%s\\n' width=160 height=90 pix_fmt=yuv420p avg_frame_rate=0/0 duration=N/A "
      "format_name=mov,mp4 start_time=0.0 duration=4");
  {
    const DialogAnswers answers({TypeFile(path)});
    Click(Caption("Label6", 0));
  }
  DragNeedle(StartNeedle, NeedleBox(EndNeedle).Left() / 2);
  EXPECT_NEAR(Get<WindowsMediaPlayer>("wmp").controls.currentPosition(), 2, 0.2);
}

TEST_F(Marking, IsReportedIfItStartsAfterTheLastPicture) {
  tools_.StreamProbeDoes(
      "printf '%s\\n' width=640 height=360 pix_fmt=yuv420p avg_frame_rate=25/1 duration=30 "
      "format_name=mov,mp4 start_time=0.0 duration=60");
  {
    const DialogAnswers answers({TypeFile(tools_.MakeFile("long sound.mp4"))});
    Click(Caption("Label6", 0));
  }
  DragNeedle(StartNeedle, 14 * 40);
  EXPECT_NE(MessageOf(Caption("Label14", ViewRegion)).find("starts after the end"),
            std::string::npos);
  EXPECT_EQ(Runs(), Texts{});
}

TEST_F(Marking, IsInSecondsForAScreenReader) {
  QAccessibleValueInterface& end = *NodeOf(NeedleBox(EndNeedle)).valueInterface();
  EXPECT_EQ(end.currentValue(), QVariant(60.0));
  EXPECT_EQ(end.minimumValue(), QVariant(0.0));
  EXPECT_EQ(end.maximumValue(), QVariant(60.0));
  end.setCurrentValue(40.3);
  EXPECT_TRUE(WaitFor([&] { return Time(SectionEnd) == "00:00:40.3"; }));
  EXPECT_EQ(end.currentValue(), QVariant(40.3));
}

TEST_F(Marking, ScrollsTheTimeLineByTheWheelUpToBothEnds) {
  Select(3600);
  Turn(Strip(), -1);
  EXPECT_EQ(Strip().Left(), -100);
  Turn(NeedleBox(StartNeedle), -0.5);
  EXPECT_EQ(Strip().Left(), -150);
  Turn(Get<PictureBox>("Picture5"), 1);
  EXPECT_EQ(Strip().Left(), -50);
  Turn(Caption("Label7", TowardsEnd), -1);
  EXPECT_EQ(Strip().Left(), -150);
  Turn(Strip(), 3);
  EXPECT_EQ(Strip().Left(), 0);
  Turn(Strip(), -1000);
  EXPECT_EQ(Strip().Left(), Get<PictureBox>("Picture3", TimeLineFrame).ScaleWidth() - 3603);
}

TEST_F(Marking, IsReportedIfItLeavesNoSectionBetweenTheNeedles) {
  Label& view = Caption("Label14", ViewRegion);
  DragNeedle(EndNeedle, -14 * 60);
  EXPECT_NE(MessageOf(view).find("ends before it starts"), std::string::npos);
  EXPECT_EQ(Runs(), Texts{});
}

TEST(CommandsWithoutAVideo, SayThatAVideoIsNeededAndRunNoTool) {
  Stabiliser form;
  form.Load();
  const RecordingTools tools;
  for (const char* name : {"Label14(0)", "Label14(1)", "Label12(0)", "Label12(2)"}) {
    const DialogAnswers answers({PressButton(QMessageBox::Ok)});
    form.Find<Label>(QLatin1String(name)).SendMouse(Qt::LeftButton);
    EXPECT_NE(answers.seen().front().find("first."), std::string::npos) << name;
  }
  EXPECT_EQ(tools.Runs(), Texts{});
  form.Unload();
}

}  // namespace
}  // namespace kelvane::testing
