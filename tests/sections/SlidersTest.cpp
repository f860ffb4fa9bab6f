// The sliders of the options: their scales, read-outs and limits. Places in a track are in twips.
#include "sections/SectionWindowTest.h"

namespace kelvane::testing {
namespace {

class Sliders : public SectionWindowTest {};

TEST_F(Sliders, HaveAScaleOfACentreLineAndTicksEvery200And1000Twips) {
  QImage scale(537, 25, QImage::Format_RGB32);
  scale.fill(QColor(0x232323));
  for (int x = 0; x < 537; ++x) scale.setPixel(x, 12, 0xff464646);
  const auto drawTick = [&scale](int twips, int first, int last, QRgb color) {
    for (int y = first; y <= last; ++y) scale.setPixel((twips + 7) / 15, y, color);
  };
  // A minor tick covers the middle of each major tick but the first.
  for (int twips = 0; twips < 8055; twips += 1000) drawTick(twips, 8, 15, 0xffe6e6e6);
  for (int twips = 200; twips < 8055; twips += 200) drawTick(twips, 10, 13, 0xffc8c8c8);
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    for (Control* child : Track(slider).findChildren<Control*>()) child->setVisible(false);
    EXPECT_EQ(Picture(Track(slider)), scale) << slider;
  }
}

TEST_F(Sliders, ShowThePlaceOfTheirThumbDividedByTheirDivisor) {
  struct Case {
    OptionSlider slider;
    float left;
    const char* value;
  };
  for (const auto& [slider, left, value] :
       {Case{StepSize, 720, "03"}, Case{StepSize, 2500, "10"}, Case{Shakiness, 0, "00"},
        Case{Shakiness, 2500, "10"}, Case{Accuracy, 374, "01"}, Case{Accuracy, 375, "02"},
        Case{Zoom, 720, "009"}, Case{Zoom, 7900, "100"}, Case{Zoom, 79, "001"},
        Case{Smoothing, 7920, "32"}, Case{UnSharpLX, 3750, "15"}, Case{UnSharpLY, 625, "03"}}) {
    DragTo(Thumb(slider), left);
    EXPECT_EQ(Thumb(slider).Left(), left) << slider;
    EXPECT_EQ(Value(slider), value) << slider << " at " << left;
  }
}

TEST_F(Sliders, KeepTheirFirstValueUntilTheyAreDragged) {
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    Label& thumb = Thumb(slider);
    const std::string before = Value(slider);
    MoveOver(thumb);
    thumb.MouseDown(At(thumb, kLeftButton, 2));
    thumb.MouseUp(At(thumb, kLeftButton, 2));
    MoveOver(Track(slider));
    EXPECT_EQ(Value(slider), before);
    Drag(thumb, 2, 2);
    EXPECT_EQ(Value(slider), slider == Zoom ? "009" : "03");
  }
}

// A press halfway between two twips counts as one at the even twip: at 60.5 as at 60.
TEST_F(Sliders, MoveWithTheLeftButtonAloneByTheDistanceFromTheLastPressOfAnyButton) {
  Label& thumb = Thumb(Accuracy);
  thumb.MouseDown(At(thumb, kRightButton, 60.5));
  for (const int buttons : {0, 2, 4, 3, 5}) thumb.MouseMove(At(thumb, buttons, 500));
  EXPECT_EQ(thumb.Left(), 720);
  EXPECT_EQ(Value(Accuracy), "05");
  thumb.MouseMove(At(thumb, kLeftButton, 360));
  EXPECT_EQ(thumb.Left(), 1020);
  thumb.MouseMove(At(thumb, kLeftButton, 45));
  EXPECT_EQ(thumb.Left(), 1005);
}

TEST_F(Sliders, DoNotMoveUnderAPointerThatRestsBetweenTwoPixels) {
  DragBetweenPixels(Thumb(Accuracy));
  EXPECT_EQ(Thumb(Accuracy).Left(), 720 + 50 * 15);
  EXPECT_EQ(Value(Accuracy), "06");
}

TEST_F(Sliders, PlaceTheOutlinesOfAllThumbsWhenAnyThumbIsDragged) {
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) MoveOutlineAway(slider);
  Thumb(Shakiness).setLeft(3000);
  DragTo(Thumb(Accuracy), 5000);
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    ExpectOutlineAround(slider, Thumb(slider).Left());
  }
}

TEST_F(Sliders, ExceptForStepSizeAndZoomHaveNoLimit) {
  for (const OptionSlider slider : {Shakiness, Accuracy, Smoothing, UnSharpLX, UnSharpLY}) {
    DragTo(Thumb(slider), -1000);
    EXPECT_EQ(Thumb(slider).Left(), -1000);
    EXPECT_EQ(Value(slider), "-04");
    DragTo(Thumb(slider), 30000);
    EXPECT_EQ(Thumb(slider).Left(), 30000);
    EXPECT_EQ(Value(slider), "120");
  }
}

using ZoomSlider = Sliders;

TEST_F(ZoomSlider, LimitsItsReadOutButNotItsThumb) {
  for (const auto& [left, value] :
       {std::pair(7900.F, "100"), {9000.F, "100"}, {79.F, "001"}, {39.F, "001"}, {-500.F, "001"}}) {
    DragTo(Thumb(Zoom), left);
    EXPECT_EQ(Thumb(Zoom).Left(), left);
    EXPECT_EQ(Value(Zoom), value) << left;
  }
}

// Events of any thumb or track bring the thumb of Step Size back between 135 and 7920 twips.
class StepSizeSlider : public SectionWindowTest {
 protected:
  static constexpr float kStart = 135;
  static constexpr float kEnd = 7920;

  void PutAt(float left, const char* value = "04") const {
    Thumb(StepSize).setLeft(left);
    Get<Label>("Label2", OptionReadOut(StepSize)).setCaption(value);
  }
  void Expect(float left, const char* value) const {
    EXPECT_EQ(Thumb(StepSize).Left(), left);
    EXPECT_EQ(Value(StepSize), value);
  }
};

TEST_F(StepSizeSlider, ShowsAtMostThirtyWhoeverWritesItsReadOut) {
  for (const char* more : {"31", "30.5", "40 and more"}) {
    PutAt(720, more);
    EXPECT_EQ(Value(StepSize), "30") << more;
  }
  for (const char* kept : {"30", "29", "-5", "no number"}) {
    PutAt(720, kept);
    EXPECT_EQ(Value(StepSize), kept);
  }
  DragTo(Thumb(StepSize), 7625);
  Expect(7625, "30");
  Get<Label>("Label2", OptionReadOut(Shakiness)).setCaption("31");
  EXPECT_EQ(Value(Shakiness), "31");
}

TEST_F(StepSizeSlider, IsHeldAtItsStartByAMoveOverAnyThumb) {
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    for (const int button : {kNoButton, kLeftButton, kRightButton, kMiddleButton}) {
      PutAt(100);
      Thumb(slider).MouseMove(At(Thumb(slider), button, 1));
      Expect(kStart, "1");
    }
  }
  DragTo(Thumb(StepSize), kStart);
  Expect(kStart, "01");
  DragTo(Thumb(StepSize), 100);
  Expect(kStart, "1");
  EXPECT_EQ(ThumbOutline(StepSize).Left(), 99) << "the outline isn't where the drag put it";
}

TEST_F(StepSizeSlider, IsHeldAtItsEndByAReleaseOverAnyThumb) {
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    for (const int button : {kLeftButton, kRightButton, kMiddleButton}) {
      PutAt(9000);
      Thumb(slider).MouseUp(At(Thumb(slider), button, 2));
      Expect(kEnd, "30");
    }
  }
  PutAt(kEnd);
  Thumb(StepSize).MouseUp(At(Thumb(StepSize), kLeftButton, 2));
  Expect(kEnd, "04");
}

TEST_F(StepSizeSlider, IsNotHeldAtItsEndByAMoveWithoutAButtonNorAtItsStartByARelease) {
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    PutAt(9000);
    MoveOver(Thumb(slider));
    Expect(9000, "04");
    PutAt(100);
    Thumb(slider).MouseUp(At(Thumb(slider), kLeftButton, 2));
    Expect(100, "04");
  }
}

TEST_F(StepSizeSlider, IsHeldAtBothEndsByAMoveOverAnyTrack) {
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    PutAt(9000);
    MoveOver(Track(slider));
    Expect(kEnd, "30");
    PutAt(-40);
    MoveOver(Track(slider));
    Expect(kStart, "1");
  }
  PutAt(9000);
  MoveOver(Track(StepSize));
  EXPECT_EQ(ThumbOutline(StepSize).Left(), 8999);
}

TEST_F(StepSizeSlider, GoesToItsEndBeforeTheNextMoveOfADragAndAtTheRelease) {
  Label& thumb = Thumb(StepSize);
  thumb.MouseDown(At(thumb, kLeftButton, 2));
  thumb.MouseMove(At(thumb, kLeftButton, 9002));
  Expect(9720, "30");
  thumb.MouseMove(At(thumb, kLeftButton, 12));
  Expect(kEnd + 10, "30");
  EXPECT_EQ(ThumbOutline(StepSize).Left(), kEnd + 9);
  thumb.MouseUp(At(thumb, kLeftButton, 2));
  Expect(kEnd, "30");
  EXPECT_EQ(ThumbOutline(StepSize).Left(), kEnd + 9) << "the release has moved the outline";
}

TEST_F(StepSizeSlider, KeepsItsReadOutWhenTheDragOfAnotherThumbMovesItToItsEnd) {
  PutAt(9000);
  Drag(Thumb(Zoom), 2, 102);
  Expect(kEnd, "04");
  EXPECT_EQ(ThumbOutline(StepSize).Left(), kEnd - 1);
}

}  // namespace
}  // namespace kelvane::testing
