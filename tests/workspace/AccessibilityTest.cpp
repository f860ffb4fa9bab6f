// The main window as a screen reader finds it.
#include "support/ScreenReader.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class MainWindowReading : public MainWindowTest {};

TEST_F(MainWindowReading, TellsEverythingThatShowsAndNothingElse) {
  EXPECT_EQ(HeardIn(*form_), R"tree(
Window "Kelvane"
  MenuBar ""
    MenuItem "Open"
    MenuItem "Updates"
    MenuItem "Donate"
  StaticText "Selected Video"
  EditableText "Caption of the selected video": "Source Video"
  EditableText "Selected Video": ""
  StaticText "Source Video Dimensions (pixels)"
  StaticText "Crop Region (pixels)"
  StaticText "Crop and save Status"
  StaticText "Width"
  StaticText "0,000" (Width of the video in pixels)
  StaticText "Height"
  StaticText "0,000" (Height of the video in pixels)
  StaticText "Left"
  StaticText "0,000" (Left of the crop region in pixels)
  StaticText "Top"
  StaticText "0,000" (Top of the crop region in pixels)
  StaticText "Width"
  StaticText "0,000" (Width of the crop region in pixels)
  StaticText "Height"
  StaticText "0,000" (Height of the crop region in pixels)
  StaticText "Base"
  StaticText "0,000" (Base of the crop region in pixels)
  StaticText "Right"
  StaticText "0,000" (Right of the crop region in pixels)
  ProgressBar "Crop and save Status" = 0
  Grouping "Video and crop region"
    ScrollBar "Scroll the video up and down" = 0
    ScrollBar "Scroll the video sideways" = 0
  StaticText "Options"
  Button "Load Video"
  Button "Run Video"
  Button "Pause Video"
  Button "Stop Video"
  Button "Preview Cropped Video"
  Button "Crop Video"
  Button "Reset Markers"
  StaticText "Video Duration"
  StaticText "00:00:00" (Video Duration)
  StaticText "Current Position"
  StaticText "00" (Current Position)
)tree");
}

TEST_F(MainWindowReading, TellsAVideoItsBarsAndItsNumbers) {
  Get<Timer>("Timer3").setEnabled(false);
  const QString file = LoadVideoOf(640, 360);
  Bar(LeftBar).setLeft(12);
  Tick(Get<Timer>("Timer2"));
  EXPECT_EQ(HeardIn(*form_), R"tree(
Window "Kelvane"
  MenuBar ""
    MenuItem "Open"
    MenuItem "Updates"
    MenuItem "Donate"
  StaticText "Selected Video"
  EditableText "Caption of the selected video": "Source Video"
  EditableText "Selected Video": ")tree" +
                                 file.toStdString() + R"tree("
  StaticText "Source Video Dimensions (pixels)"
  StaticText "Crop Region (pixels)"
  StaticText "Crop and save Status"
  StaticText "Width"
  StaticText "0,640" (Width of the video in pixels)
  StaticText "Height"
  StaticText "0,360" (Height of the video in pixels)
  StaticText "Left"
  StaticText "0,012" (Left of the crop region in pixels)
  StaticText "Top"
  StaticText "0,000" (Top of the crop region in pixels)
  StaticText "Width"
  StaticText "0,623" (Width of the crop region in pixels)
  StaticText "Height"
  StaticText "0,355" (Height of the crop region in pixels)
  StaticText "Base"
  StaticText "0,355" (Base of the crop region in pixels)
  StaticText "Right"
  StaticText "0,635" (Right of the crop region in pixels)
  ProgressBar "Crop and save Status" = 0
  Grouping "Video and crop region"
    Slider "Top Bar" = 0
    Graphic "Video"
    Slider "Base Bar" = 355
    Slider "Left Bar" = 12
    Slider "Right Bar" = 635
    ScrollBar "Scroll the video up and down" = 0
    ScrollBar "Scroll the video sideways" = 0
  StaticText "Options"
  Button "Load Video"
  Button "Run Video"
  Button "Pause Video"
  Button "Stop Video"
  Button "Preview Cropped Video"
  Button "Crop Video"
  Button "Reset Markers"
  StaticText "Video Duration"
  StaticText "00:00:00" (Video Duration)
  StaticText "Current Position"
  StaticText "00" (Current Position)
)tree");
}

TEST_F(MainWindowReading, TellsTheProgressOfACrop) {
  auto& bar = Get<ProgressBar>("pbar");
  bar.setMax(10);
  bar.setValue(2.5F);
  EXPECT_NE(FindHeard(*form_, "ProgressBar \"Crop and save Status\" = 25000"), nullptr);
}

TEST_F(MainWindowReading, DragsABarThatIsGivenAValueWithItsPartners) {
  LoadVideoOf(640, 360);
  NodeOf(Bar(LeftBar)).valueInterface()->setCurrentValue(100);
  EXPECT_TRUE(WaitFor([this] { return Bar(LeftBar).Left() == 100; }));
  EXPECT_EQ(Bar(TopBar).Left(), 100);
  EXPECT_EQ(Bar(TopBar).Width(), 535);
}

TEST_F(MainWindowReading, LoadsAVideoByThePressOfItsCommand) {
  const QString file = tools_.File(QStringLiteral("clip.mp4"));
  tools_.SizeProbeDoes(Print(SizeText(640, 360)));
  const DialogAnswers answers({TypeFile(file)});
  NodeOf(Get<Label>("Label14", LoadVideo))
      .actionInterface()
      ->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(WaitFor([&] { return Path().Text() == file; }));
}

}  // namespace
}  // namespace kelvane::testing
