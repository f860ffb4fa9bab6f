// The main window as a screen reader finds it.
#include "support/ScreenReader.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class MainWindowReading : public MainWindowTest {};

TEST_F(MainWindowReading, TellsAVideoItsBarsAndItsNumbers) {
  Get<Timer>("Timer3").setEnabled(false);
  const QString file = LoadVideoOf(640, 360);
  Bar(LeftBar).setLeft(12);
  Tick(Get<Timer>("Timer2"));
  const std::string told = HeardIn(*form_);
  for (const std::string& lines :
       {"  EditableText \"Selected Video\": \"" + file.toStdString() + "\"\n",
        std::string("  StaticText \"0,640\" (Width of the video in pixels)\n"),
        std::string("  StaticText \"0,012\" (Left of the crop region in pixels)\n"), std::string(R"(
  Grouping "Video and crop region"
    Slider "Top Bar" = 0
    Graphic "Video"
    Slider "Base Bar" = 355
    Slider "Left Bar" = 12
    Slider "Right Bar" = 635
    ScrollBar "Scroll the video up and down" = 0
    ScrollBar "Scroll the video sideways" = 0
)")}) {
    EXPECT_NE(told.find(lines), std::string::npos) << lines << "\nin" << told;
  }
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
