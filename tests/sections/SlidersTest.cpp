// The options' sliders: readings, bounds, and what has none.
#include "sections/SectionWindowTest.h"

namespace kelvane::testing {
namespace {

class Sliders : public SectionWindowTest {};

struct Reading {
  OptionSlider slider;
  float left;
  const char* value;
};

TEST_F(Sliders, ReadThePlaceOfTheirThumbByTheirDivisor) {
  const std::vector<Reading> readings = {
      {StepSize, 720, "03"},   {StepSize, 1250, "05"},  {StepSize, 2500, "10"},
      {Shakiness, 720, "03"},  {Shakiness, 0, "00"},    {Shakiness, 2500, "10"},
      {Accuracy, 3750, "15"},  {Accuracy, 374, "01"},   {Accuracy, 375, "02"},
      {Accuracy, 376, "02"},   {Zoom, 720, "009"},      {Zoom, 790, "010"},
      {Zoom, 7900, "100"},     {Zoom, 79, "001"},       {Smoothing, 5000, "20"},
      {Smoothing, 7920, "32"}, {UnSharpLX, 750, "03"},  {UnSharpLX, 3750, "15"},
      {UnSharpLY, 625, "03"},  {UnSharpLY, 7920, "32"},
  };
  for (const auto& [slider, left, value] : readings) {
    DragTo(Thumb(slider), left);
    EXPECT_EQ(Thumb(slider).Left(), left) << slider;
    EXPECT_EQ(Value(slider), value) << slider << " at " << left;
  }
}

TEST_F(Sliders, KeepTheirStartValueUntilTheyAreDragged) {
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    MoveOver(Thumb(slider));
    Thumb(slider).MouseDown(At(Thumb(slider), kLeftButton, 2));
    Thumb(slider).MouseUp(At(Thumb(slider), kLeftButton, 2));
    MoveOver(Track(slider));
  }
  EXPECT_EQ(Value(StepSize), "04");
  EXPECT_EQ(Value(Smoothing), "025");
  Drag(Thumb(StepSize), 0);
  EXPECT_EQ(Value(StepSize), "03");
  Drag(Thumb(Smoothing), 0);
  EXPECT_EQ(Value(Smoothing), "03");
}

TEST_F(Sliders, MoveFromWhereTheyWerePressed) {
  Label& thumb = Thumb(Accuracy);
  thumb.MouseDown(At(thumb, kLeftButton, 60));
  thumb.MouseMove(At(thumb, kLeftButton, 360));
  EXPECT_EQ(thumb.Left(), 1020);
  thumb.MouseMove(At(thumb, kLeftButton, 45));
  EXPECT_EQ(thumb.Left(), 1005);
}

TEST_F(Sliders, RestUnderAPointerThatRestsBetweenTwoPixels) {
  Label& thumb = Thumb(Accuracy);
  const QPointF start = thumb.mapToGlobal(QPointF(2.4, 5.7));
  const QPointF there = start + QPointF(50.5, 0);
  DragThrough(thumb, {start, start, start, there, there, there});
  EXPECT_EQ(thumb.Left(), 720 + 50 * 15);
  EXPECT_EQ(Value(Accuracy), "06");
}

TEST_F(Sliders, ThePlaceOfThePressIsRoundedHalfToEven) {
  Label& thumb = Thumb(Accuracy);
  for (const auto& [pressedAt, left] :
       std::vector<std::pair<float, float>>{{60.5F, 760}, {61.5F, 758}, {61.4F, 759}}) {
    thumb.setLeft(720);
    thumb.MouseDown(At(thumb, kRightButton, pressedAt));
    thumb.MouseMove(At(thumb, kLeftButton, 100));
    EXPECT_EQ(thumb.Left(), left) << pressedAt;
  }
}

TEST_F(Sliders, MoveWithTheLeftButtonAlone) {
  for (const int buttons : {0, 2, 4, 3, 5}) {
    Thumb(Zoom).MouseMove(At(Thumb(Zoom), buttons, 500));
    EXPECT_EQ(Thumb(Zoom).Left(), 720) << buttons;
  }
  EXPECT_EQ(Value(Zoom), "010");
}

TEST_F(Sliders, TheirOutlinesFollowAllTogether) {
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    Disarrange(Get<Shape>("Shape2", slider));
  }
  Thumb(Shakiness).setLeft(3000);
  DragTo(Thumb(Accuracy), 5000);
  EXPECT_EQ(Get<Shape>("Shape2", Accuracy).Left(), 4999);
  EXPECT_EQ(Get<Shape>("Shape2", Shakiness).Left(), 2999);
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    const auto& outline = Get<Shape>("Shape2", slider);
    EXPECT_EQ(outline.Left(), Thumb(slider).Left() - 1);
    EXPECT_EQ(outline.Top(), -1);
    EXPECT_EQ(outline.Width(), 137);
    EXPECT_EQ(outline.Height(), 377);
  }
}

// The five that nothing holds.
TEST_F(Sliders, GoOffTheirTracksOnEitherSide) {
  for (const OptionSlider slider : {Shakiness, Accuracy, Smoothing, UnSharpLX, UnSharpLY}) {
    DragTo(Thumb(slider), -1000);
    EXPECT_EQ(Thumb(slider).Left(), -1000);
    EXPECT_EQ(Value(slider), "-04");
    DragTo(Thumb(slider), 25000);
    EXPECT_EQ(Thumb(slider).Left(), 25000);
    EXPECT_EQ(Value(slider), "100");
  }
}

class Zooming : public SectionWindowTest {};

TEST_F(Zooming, IsHeldByItsReadOutAndNotByItsThumb) {
  for (const auto& [left, value] : std::vector<std::pair<float, const char*>>{{7900, "100"},
                                                                              {7940, "100"},
                                                                              {9000, "100"},
                                                                              {79, "001"},
                                                                              {40, "001"},
                                                                              {39, "001"},
                                                                              {0, "001"},
                                                                              {-500, "001"}}) {
    DragTo(Thumb(Zoom), left);
    EXPECT_EQ(Thumb(Zoom).Left(), left);
    EXPECT_EQ(Value(Zoom), value) << left;
  }
}

TEST_F(Zooming, TheOthersAreNotHeldToItsRange) {
  DragTo(Thumb(Smoothing), 30000);
  EXPECT_EQ(Value(Smoothing), "120");
}

class SteppingSize : public SectionWindowTest {
 protected:
  static constexpr float kEnd = 8055 - 135;

  float OutlineLeft() const { return Get<Shape>("Shape2", StepSize).Left(); }
};

TEST_F(SteppingSize, IsCutToThirtyByItsReadOut) {
  DragTo(Thumb(StepSize), 7500);
  EXPECT_EQ(Value(StepSize), "30");
  DragTo(Thumb(StepSize), 7625);
  EXPECT_EQ(Value(StepSize), "30") << "31";
  DragTo(Thumb(StepSize), kEnd);
  EXPECT_EQ(Value(StepSize), "30") << "32";
}

TEST_F(SteppingSize, IsCutWhoeverWritesTheReadOut) {
  auto& readOut = Get<Label>("Label2", 1);
  for (const char* more : {"31", "99", "30.5", "40 and more"}) {
    readOut.setCaption(QLatin1String(more));
    EXPECT_EQ(Value(StepSize), "30") << more;
  }
  for (const char* kept : {"30", "29", "1", "-5", "no number"}) {
    readOut.setCaption(QLatin1String(kept));
    EXPECT_EQ(Value(StepSize), kept);
  }
  Get<Label>("Label2", 3).setCaption(QStringLiteral("31"));
  EXPECT_EQ(Value(Shakiness), "31") << "no other read-out is";
}

TEST_F(SteppingSize, MayBeDraggedPastItsEndAndIsPutBackOnTheRelease) {
  Label& thumb = Thumb(StepSize);
  thumb.MouseDown(At(thumb, kLeftButton, 2));
  thumb.MouseMove(At(thumb, kLeftButton, 9000));
  EXPECT_EQ(thumb.Left(), 720 + 9000 - 2);
  EXPECT_EQ(Value(StepSize), "30");
  thumb.MouseUp(At(thumb, kLeftButton, 2));
  EXPECT_EQ(thumb.Left(), kEnd);
  EXPECT_EQ(Value(StepSize), "30");
}

TEST_F(SteppingSize, IsPutBackBeforeTheNextMoveOfTheDrag) {
  Label& thumb = Thumb(StepSize);
  thumb.setLeft(9000);
  thumb.MouseDown(At(thumb, kLeftButton, 2));
  thumb.MouseMove(At(thumb, kLeftButton, 12));
  EXPECT_EQ(thumb.Left(), kEnd + 10) << "back to the end, and then by ten";
  EXPECT_EQ(OutlineLeft(), kEnd + 9) << "which is where the outline was put";
}

// It is put round the thumb before that is put back.
TEST_F(SteppingSize, LeavesItsOutlineBehindWhereItIsPutBack) {
  DragTo(Thumb(StepSize), 9000);
  EXPECT_EQ(Thumb(StepSize).Left(), kEnd);
  EXPECT_EQ(OutlineLeft(), 8999);
  DragTo(Thumb(StepSize), 100);
  EXPECT_EQ(Thumb(StepSize).Left(), 135);
  EXPECT_EQ(OutlineLeft(), 99);
}

TEST_F(SteppingSize, ExactlyAtItsEndIsNotPutAnywhere) {
  Label& thumb = Thumb(StepSize);
  thumb.setLeft(kEnd);
  thumb.MouseUp(At(thumb, kLeftButton, 2));
  EXPECT_EQ(Value(StepSize), "04");
}

TEST_F(SteppingSize, IsPutBackFromItsStartByAnyMove) {
  DragTo(Thumb(StepSize), 100);
  EXPECT_EQ(Thumb(StepSize).Left(), 135);
  EXPECT_EQ(Value(StepSize), "1") << "one digit";
}

TEST_F(SteppingSize, ExactlyAtItsStartReadsWhatItIs) {
  DragTo(Thumb(StepSize), 135);
  EXPECT_EQ(Thumb(StepSize).Left(), 135);
  EXPECT_EQ(Value(StepSize), "01");
}

// Whichever thumb the mouse is on.
class SharedBounds : public SectionWindowTest, public ::testing::WithParamInterface<int> {
 protected:
  Label& Moved() const { return Thumb(GetParam()); }
};

TEST_P(SharedBounds, AMoveWithAnyButtonOrNonePutsStepSizeBackFromItsStart) {
  for (const int button : {kNoButton, kLeftButton, kRightButton, kMiddleButton}) {
    Thumb(StepSize).setLeft(100);
    Get<Label>("Label2", 1).setCaption(QStringLiteral("04"));
    Moved().MouseMove(At(Moved(), button, 1));
    EXPECT_EQ(Thumb(StepSize).Left(), 135) << button;
    EXPECT_EQ(Value(StepSize), "1") << button;
  }
}

TEST_P(SharedBounds, AMoveWithoutAButtonLeavesItBeyondItsEnd) {
  Thumb(StepSize).setLeft(9000);
  MoveOver(Moved());
  EXPECT_EQ(Thumb(StepSize).Left(), 9000);
  EXPECT_EQ(Value(StepSize), "04");
}

TEST_P(SharedBounds, AReleaseByAnyButtonPutsItBackFromItsEnd) {
  for (const int button : {kLeftButton, kRightButton, kMiddleButton}) {
    Thumb(StepSize).setLeft(9000);
    Moved().MouseUp(At(Moved(), button, 2));
    EXPECT_EQ(Thumb(StepSize).Left(), 7920);
    EXPECT_EQ(Value(StepSize), "30");
  }
}

TEST_P(SharedBounds, AReleaseLeavesItBeforeItsStart) {
  Thumb(StepSize).setLeft(100);
  Moved().MouseUp(At(Moved(), kLeftButton, 2));
  EXPECT_EQ(Thumb(StepSize).Left(), 100);
  EXPECT_EQ(Value(StepSize), "04");
}

TEST_P(SharedBounds, AMoveOverATrackPutsItBackFromBothSides) {
  Thumb(StepSize).setLeft(9000);
  MoveOver(Track(GetParam()));
  EXPECT_EQ(Thumb(StepSize).Left(), 7920);
  EXPECT_EQ(Value(StepSize), "30");
  Thumb(StepSize).setLeft(-40);
  MoveOver(Track(GetParam()));
  EXPECT_EQ(Thumb(StepSize).Left(), 135);
  EXPECT_EQ(Value(StepSize), "1");
}

INSTANTIATE_TEST_SUITE_P(Sections, SharedBounds, ::testing::Range(0, 7));

TEST_F(Sliders, ADragOfAnotherThumbPutsStepSizeBackFromItsEndWithoutATextForIt) {
  Thumb(StepSize).setLeft(9000);
  Drag(Thumb(Zoom), 100);
  EXPECT_EQ(Thumb(StepSize).Left(), 7920);
  EXPECT_EQ(Get<Shape>("Shape2", StepSize).Left(), 7919) << "its outline comes after it";
  EXPECT_EQ(Value(StepSize), "04");
}

TEST_F(Sliders, ResetAllSettingsLeavesThem) {
  DragTo(Thumb(Zoom), 7900);
  Click(Get<Label>("Label12(3)"));
  EXPECT_EQ(Value(Zoom), "100");
  EXPECT_EQ(Thumb(Zoom).Left(), 7900);
}

}  // namespace
}  // namespace kelvane::testing
