// The time line under its arrows, the hidden thumb, and the light on the arrows.
#include <QScrollBar>

#include "sections/SectionWindowTest.h"

namespace kelvane::testing {
namespace {

class Scrolling : public SectionWindowTest {
 protected:
  Label& ArrowButton(Arrow arrow) const { return Get<Label>("Label7", arrow); }
  void ClickArrow(Arrow arrow, int times = 1, Qt::MouseButton button = Qt::LeftButton) const {
    for (int click = 0; click < times; ++click) Click(ArrowButton(arrow), button);
  }
  HScrollBar& Bar() const { return Get<HScrollBar>("HScroll1"); }
};

TEST_F(Scrolling, AClickTowardsTheEndIsTwoStepsOfTwenty) {
  Press(ArrowButton(TowardsEnd));
  EXPECT_EQ(Strip().Left(), -20);
  Release(ArrowButton(TowardsEnd));
  EXPECT_EQ(Strip().Left(), -40);
}

TEST_F(Scrolling, AClickTowardsTheStartIsTwoStepsOfTwoHundred) {
  ClickArrow(TowardsEnd, 15);
  ASSERT_EQ(Strip().Left(), -600);
  Press(ArrowButton(TowardsStart));
  EXPECT_EQ(Strip().Left(), -400);
  Release(ArrowButton(TowardsStart));
  EXPECT_EQ(Strip().Left(), -200);
}

TEST_F(Scrolling, AClickTowardsTheStartAtTheStartLeavesItThere) {
  ClickArrow(TowardsStart);
  EXPECT_EQ(Strip().Left(), 0);
}

TEST_F(Scrolling, AClickBackAfterOneForwardEndsAtTheStart) {
  ClickArrow(TowardsEnd);
  ClickArrow(TowardsStart);
  EXPECT_EQ(Strip().Left(), 0);
}

TEST_F(Scrolling, AClickBackStopsAtTheStart) {
  ClickArrow(TowardsEnd, 8);
  ASSERT_EQ(Strip().Left(), -320);
  ClickArrow(TowardsStart);
  EXPECT_EQ(Strip().Left(), 0);
}

TEST_F(Scrolling, ADoubleClickIsAStepForItsPressItsReleaseAndItsDoubleClick) {
  Label& arrow = ArrowButton(TowardsEnd);
  // A double-click brings press, release, double-click, release.
  arrow.MouseDown(At(arrow, kLeftButton, 1));
  arrow.MouseUp(At(arrow, kLeftButton, 1));
  EXPECT_EQ(Strip().Left(), -40);
  arrow.DblClick(At(arrow, kLeftButton, 1));
  EXPECT_EQ(Strip().Left(), -60);
  arrow.MouseUp(At(arrow, kLeftButton, 1));
  EXPECT_EQ(Strip().Left(), -80);
}

TEST_F(Scrolling, EveryButtonMovesTheTimeLine) {
  ClickArrow(TowardsEnd, 1, Qt::RightButton);
  EXPECT_EQ(Strip().Left(), -40);
  ClickArrow(TowardsEnd, 1, Qt::MiddleButton);
  EXPECT_EQ(Strip().Left(), -80);
  ClickArrow(TowardsStart, 1, Qt::RightButton);
  EXPECT_EQ(Strip().Left(), 0);
}

// The stop is tested before the step: the right end comes up to 20 pixels inside.
TEST_F(Scrolling, StopsOnceTheRightEndLiesInsideTheFrame) {
  ClickArrow(TowardsEnd, 23);
  EXPECT_EQ(Strip().Left(), -920);
  Press(ArrowButton(TowardsEnd));
  EXPECT_EQ(Strip().Left(), -940) << "the end lies at 885, behind the frame's 881";
  Release(ArrowButton(TowardsEnd));
  EXPECT_EQ(Strip().Left(), -960) << "and now at 865";
  ClickArrow(TowardsEnd, 5);
  EXPECT_EQ(Strip().Left(), -960);
  ClickArrow(TowardsStart);
  EXPECT_EQ(Strip().Left(), -560);
}

TEST_F(Scrolling, StepsOnWhereTheEndsMeet) {
  Strip().setLeft(881 - 1825);
  Press(ArrowButton(TowardsEnd));
  EXPECT_EQ(Strip().Left(), -964);
  Release(ArrowButton(TowardsEnd));
  EXPECT_EQ(Strip().Left(), -964);
}

TEST_F(Scrolling, NeverMovesAStripThatIsShorterThanItsFrame) {
  Strip().setWidth(880);
  ClickArrow(TowardsEnd, 3);
  EXPECT_EQ(Strip().Left(), 0);
}

TEST_F(Scrolling, SetsTheRangeOfTheScrollBarWithEveryStep) {
  EXPECT_EQ(Bar().Max(), 32767);
  Press(ArrowButton(TowardsStart));
  EXPECT_EQ(Bar().Max(), 1825);
  Strip().setWidth(2000.5);
  Release(ArrowButton(TowardsStart));
  EXPECT_EQ(Bar().Max(), 2000) << "half to even";
  Strip().setWidth(300);
  Press(ArrowButton(TowardsEnd));
  EXPECT_EQ(Bar().Max(), 300) << "also where the strip stays";
}

TEST_F(Scrolling, KeepsTheRangeWhereTheWidthIsTooLargeForIt) {
  ClickArrow(TowardsStart);
  Strip().setWidth(32768);
  ClickArrow(TowardsEnd);
  EXPECT_EQ(Bar().Max(), 1825);
  EXPECT_EQ(Strip().Left(), -40);
  Strip().setWidth(32767);
  ClickArrow(TowardsEnd);
  EXPECT_EQ(Bar().Max(), 32767);
}

TEST_F(Scrolling, TheScrollBarMovesNothing) {
  ClickArrow(TowardsEnd);
  Bar().setValue(500);
  EXPECT_EQ(Strip().Left(), -40);
}

TEST_F(Scrolling, TakesNeedlesAndLinesAlongAndLeavesTheReadOuts) {
  DragTo(NeedleBox(StartNeedle), 300);
  const std::string start = Time(SectionStart);
  const QPoint needle = NeedleBox(StartNeedle).mapTo(form_.get(), QPoint());
  const QPoint hairline = Get<Line>("Line3", StartNeedle).mapTo(form_.get(), QPoint());
  const QPoint span = Get<Line>("Line8").mapTo(form_.get(), QPoint());
  ClickArrow(TowardsEnd);
  EXPECT_EQ(NeedleBox(StartNeedle).mapTo(form_.get(), QPoint()), needle - QPoint(40, 0));
  EXPECT_EQ(Get<Line>("Line3", StartNeedle).mapTo(form_.get(), QPoint()), hairline - QPoint(40, 0));
  EXPECT_EQ(Get<Line>("Line8").mapTo(form_.get(), QPoint()), span - QPoint(40, 0));
  EXPECT_EQ(NeedleBox(StartNeedle).Left(), 300);
  EXPECT_EQ(Time(SectionStart), start);
}

// The hidden thumb, in a bar of 881 pixels.
class HiddenThumb : public SectionWindowTest {
 protected:
  PictureBox& Box() const { return Get<PictureBox>("Picture6"); }
};

struct Stop {
  float thumb;
  float strip;
};

TEST_F(HiddenThumb, HasThreeStops) {
  for (const auto& [thumb, strip] : std::vector<Stop>{{0, 0},
                                                      {100, 0},
                                                      {220, 0},
                                                      {220.25, 0},  // the last test wins
                                                      {220.5, -220.25},
                                                      {300, -220.25},
                                                      {440, -220.25},
                                                      {440.5, -440.5},
                                                      {700, -440.5},
                                                      {5000, -440.5},
                                                      {-300, 0}}) {
    DragTo(Box(), thumb);
    EXPECT_EQ(Box().Left(), thumb);
    EXPECT_EQ(Strip().Left(), strip) << thumb;
  }
}

TEST_F(HiddenThumb, MovesByThePlaceWhereItWasPressedHalfToEven) {
  struct Row {
    float pressedAt;
    float left;
  };
  for (const auto& [pressedAt, left] : std::vector<Row>{{4.5F, 106}, {5.5F, 104}, {4.4F, 106}}) {
    Box().setLeft(100);
    Box().MouseDown(At(Box(), kLeftButton, pressedAt));
    Box().MouseMove(At(Box(), kLeftButton, 10));
    EXPECT_EQ(Box().Left(), left) << pressedAt;
  }
}

TEST_F(HiddenThumb, MovesWithTheLeftButtonAlone) {
  const float before = Box().Left();
  Box().MouseDown(At(Box(), kRightButton, 2));
  for (const int buttons : {0, 2, 4, 3}) Box().MouseMove(At(Box(), buttons, 50));
  EXPECT_EQ(Box().Left(), before);
  EXPECT_EQ(Strip().Left(), 0);
}

TEST_F(HiddenThumb, IsPressedByAnyButton) {
  const float before = Box().Left();
  for (const int button : {kRightButton, kMiddleButton}) {
    Box().setLeft(before);
    Box().MouseDown(At(Box(), kLeftButton, 0));
    Box().MouseDown(At(Box(), button, 5));
    Box().MouseMove(At(Box(), kLeftButton, 10));
    EXPECT_EQ(Box().Left(), before + 5) << button;
  }
}

TEST_F(HiddenThumb, IsNeverShown) {
  DragTo(Box(), 300);
  Click(Get<Label>("Label7", TowardsEnd));
  EXPECT_FALSE(Box().Visible());
}

class LightOnArrows : public SectionWindowTest {
 protected:
  std::string Look(Arrow arrow) const {
    const auto& label = Get<Label>("Label7", arrow);
    return Hex(label.ForeColor()) + (label.FontBold() ? " bold " : " plain ") +
           std::to_string(label.font().pixelSize());
  }
};

constexpr const char* kRest = "0xc0c0c0 plain 11";
constexpr const char* kLit = "0xffffff bold 13";

TEST_F(LightOnArrows, FallsOnTheOneUnderTheMouse) {
  EXPECT_EQ(Look(TowardsStart), kRest);
  MovePointerOver(Get<Label>("Label7", TowardsStart));
  EXPECT_EQ(Look(TowardsStart), kLit);
  EXPECT_EQ(Look(TowardsEnd), kRest);
  MovePointerOver(Get<Label>("Label7", TowardsEnd));
  EXPECT_EQ(Look(TowardsStart), kRest);
  EXPECT_EQ(Look(TowardsEnd), kLit);
}

TEST_F(LightOnArrows, GoesOutOnTheBarAndOnTheWindow) {
  MovePointerOver(Get<Label>("Label7", TowardsStart));
  MovePointerOver(Get<PictureBox>("Picture5"));
  EXPECT_EQ(Look(TowardsStart), kRest);
  MovePointerOver(Get<Label>("Label7", TowardsEnd));
  MoveOverTheWindow();
  EXPECT_EQ(Look(TowardsEnd), kRest);
}

TEST_F(LightOnArrows, StaysOnAnyOtherControl) {
  MovePointerOver(Get<Label>("Label7", TowardsStart));
  for (const char* name : {"Picture3(0)", "Picture3(1)", "Picture8", "Label12(0)", "Picture2(0)",
                           "Label1(0)", "Picture4(0)"}) {
    MovePointerOver(Get<Control>(name));
    EXPECT_EQ(Look(TowardsStart), kLit) << name;
  }
}

}  // namespace
}  // namespace kelvane::testing
