// The section window as a screen reader finds it.
#include "sections/SectionWindowTest.h"
#include "support/ScreenReader.h"

namespace kelvane::testing {
namespace {

class SectionWindowReading : public SectionWindowTest {};

TEST_F(SectionWindowReading, TellsEverythingThatShowsAndNothingElse) {
  EXPECT_EQ(HeardIn(*form_), R"tree(
Window "Advanced 2-Pass Video Stabilization"
  Button "Select Video To Extract Section From"
  EditableText "Video to extract a section from": ""
  StaticText "Video Duration hh:mm:ss: 00:00:00"
  StaticText "Video Duration Seconds:"
  StaticText "1825" (Video Duration in seconds)
  Grouping "Time line"
    Slider "Start of the section" = 8
    Slider "End of the section" = 136
    Button "Towards the start of the time line"
    Button "Towards the end of the time line"
  StaticText "Testing Stabalization Settings on short sample of video"
  StaticText "Video first cut"
  StaticText "00:00:00" (Video first cut)
  StaticText "Video final cut"
  StaticText "00:00:00" (Video final cut)
  StaticText "Sample of video duration run time"
  StaticText "00:00:00" (Sample of video duration run time)
  StaticText "Extract short section of Video to test Stabilization Settings"
  StaticText "View Selected Region"
  StaticText "Extract Selected Region"
  StaticText "Extracting Video Section Progress:"
  StaticText "00.00%" (Extracting Video Section)
  ProgressBar "Extracting Video Section" = 0
  StaticText "Step Size Range 1/30"
  Slider "Step Size" = 4
  StaticText "Step Size"
  StaticText "04" (Step Size)
  StaticText "Shakiness Range 1/10"
  Slider "Shakiness" = 3
  StaticText "Shakiness Value"
  StaticText "03" (Shakiness)
  StaticText "Accuracy Range 1/15"
  Slider "Accuracy" = 5
  StaticText "Accuracy Value"
  StaticText "05" (Accuracy)
  StaticText "Zoom Range 1/100"
  Slider "Zoom" = 10
  StaticText "Zoom Value"
  StaticText "010" (Zoom)
  StaticText "Smoothing Range 1/100"
  Slider "Smoothing" = 25
  StaticText "Smoothing Value"
  StaticText "025" (Smoothing)
  StaticText "UnSharp LX Range 3/15"
  Slider "UnSharp LX" = 6
  StaticText "UnSharp LX Value"
  StaticText "06" (UnSharp LX)
  StaticText "UnSharp LY Range 3/15"
  Slider "UnSharp LY" = 6
  StaticText "UnSharp LY Value"
  StaticText "06" (UnSharp LY)
  Graphic "Video"
  StaticText "Select Video that needs to be Stabilized"
  StaticText "Load Video"
  EditableText "Video that needs to be Stabilized": ""
  StaticText "De-Shake & Stabilize Options"
  StaticText "Test Settings"
  StaticText "Apply De-Shake & Stabilize Settings"
  StaticText "Reset All Settings"
  StaticText "Play"
  StaticText "Pause"
  StaticText "Stop"
  StaticText "Rewind"
  StaticText "Mapping Vectors"
  StaticText "Progress 00.00%" (Mapping Vectors)
  StaticText "Pass 1 of 2"
  ProgressBar "Mapping Vectors" = 0
  StaticText "Applying Corrections"
  StaticText "Progress 00.00%" (Applying Corrections)
  StaticText "Pass 2 of 2"
  ProgressBar "Applying Corrections" = 0
)tree");
}

TEST_F(SectionWindowReading, OffersNoPressOfACaptionThatDoesNothing) {
  for (const char* name : {"Label14(0)", "Label14(1)", "Label10(0)", "Label10(1)", "Label10(2)",
                           "Label10(3)", "Label12(0)", "Label12(2)", "Label12(3)", "Label12(4)"}) {
    EXPECT_EQ(NodeOf(Get<Label>(name)).actionInterface(), nullptr) << name;
  }
}

// At the start thumb and read-out don't agree.
TEST_F(SectionWindowReading, TellsOfAnOptionWhatItsReadOutSays) {
  QAccessibleValueInterface& smoothing = *NodeOf(Thumb(Smoothing)).valueInterface();
  EXPECT_EQ(smoothing.currentValue().toDouble(), 25);
  DragTo(Thumb(Smoothing), 5000);
  EXPECT_EQ(Value(Smoothing), "20");
  EXPECT_EQ(smoothing.currentValue().toDouble(), 20);
}

TEST_F(SectionWindowReading, DragsANeedleThatIsGivenAValue) {
  NodeOf(NeedleBox(StartNeedle)).valueInterface()->setCurrentValue(100);
  EXPECT_TRUE(WaitFor([this] { return Time(SectionStart) == "00:01:42"; }));
  EXPECT_EQ(NeedleBox(StartNeedle).Left(), 100);
}

TEST_F(SectionWindowReading, StepsTheTimeLineByThePressOfAnArrow) {
  NodeOf(Get<Label>("Label7", TowardsEnd))
      .actionInterface()
      ->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(WaitFor([this] { return Strip().Left() == -40; }));
}

}  // namespace
}  // namespace kelvane::testing
