// The windows by way of the accessibility bus, as a screen reader and its user have them: nothing
// here looks at the screen or points at it.
#include "desktop/DesktopTest.h"
#include "desktop/driver/ScreenReader.h"

namespace kelvane::desktop {
namespace {

const QString kPress = QStringLiteral("Press");
const QString kButton = QStringLiteral("push button");
const QString kLabel = QStringLiteral("label");
const QString kBar = QStringLiteral("progress bar");
const QString kSlider = QStringLiteral("slider");

class Reading : public DesktopTest {
 protected:
  using DesktopTest::DesktopTest;

  void OpenAndRead(const QString& title) {
    program.SetVariable(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), reader.Address());
    program.Start();
    spoken = reader.AwaitWindow(title);
    ASSERT_EQ(spoken.Name(), title);
    ASSERT_NE(screen.Await(title), 0U) << "it may be read before it is on the screen";
  }

  SpokenNode Find(const QString& role, const QString& text) const {
    return ScreenReader::Find(spoken, role, text);
  }

  // Presses a button and types the path into the file dialog that comes, by the keyboard alone.
  void ChooseFileBy(const QString& button, const QString& path) {
    const QList<WindowId> known = screen.Windows();
    ASSERT_TRUE(Find(kButton, button).Do(kPress)) << button.toStdString();
    const WindowId dialog = screen.AwaitNew(known);
    ASSERT_NE(dialog, 0U);
    ASSERT_TRUE(TypeFileName(screen, dialog, path));
  }

  ScreenReader reader{program.PathOf(QStringLiteral("runtime"))};
  SpokenNode spoken;
};

class ReadingTheMainWindow : public Reading {
 protected:
  void SetUp() override { ASSERT_NO_FATAL_FAILURE(OpenAndRead(QStringLiteral("Kelvane"))); }

  void LoadByTheBus(QSize size, int seconds) {
    video = program.PathOf(QStringLiteral("video.mp4"));
    ASSERT_TRUE(MakeVideo(video, size, seconds));
    ASSERT_NO_FATAL_FAILURE(ChooseFileBy(QStringLiteral("Load Video"), video));
  }
};

TEST_F(ReadingTheMainWindow, FindsAllOfIt) {
  const SpokenNode duration = Find(kLabel, QStringLiteral("Video Duration"));
  EXPECT_TRUE(WaitFor([&] { return duration.Name() == QLatin1String("0:00:00"); }));
  EXPECT_EQ(ScreenReader::HeardIn(spoken).toStdString(), R"tree(
frame "Kelvane"
  menu bar ""
    menu item "Open"
    menu item "Updates"
    menu item "Donate"
  label "Selected Video"
  text "Caption of the selected video": "Source Video"
  text "Selected Video": ""
  label "Source Video Dimensions (pixels)"
  label "Crop Region (pixels)"
  label "Crop and save Status"
  label "Width"
  label "0,000" (Width of the video in pixels)
  label "Height"
  label "0,000" (Height of the video in pixels)
  label "Left"
  label "0,000" (Left of the crop region in pixels)
  label "Top"
  label "0,000" (Top of the crop region in pixels)
  label "Width"
  label "0,000" (Width of the crop region in pixels)
  label "Height"
  label "0,000" (Height of the crop region in pixels)
  label "Base"
  label "0,000" (Base of the crop region in pixels)
  label "Right"
  label "0,000" (Right of the crop region in pixels)
  progress bar "Crop and save Status" = 0
  panel "Video and crop region"
    scroll bar "Scroll the video up and down" = 0
    scroll bar "Scroll the video sideways" = 0
  label "Options"
  push button "Load Video"
  push button "Run Video"
  push button "Pause Video"
  push button "Stop Video"
  push button "Preview Cropped Video"
  push button "Crop Video"
  push button "Reset Markers"
  label "Video Duration"
  label "0:00:00" (Video Duration)
  label "Current Position"
  label "00:00" (Current Position)
)tree");
}

TEST_F(ReadingTheMainWindow, CropsAVideoAndFollowsTheProgressToItsEnd) {
  program.ReplaceTool(QStringLiteral("ffmpeg"),
                      QStringLiteral("printf 'time=00:00:01.00\\r' >&2\n") +
                          program.TalkingGate(QStringLiteral("half")) +
                          QStringLiteral("exec \"$real\" \"$@\""));
  ASSERT_NO_FATAL_FAILURE(LoadByTheBus(QSize(320, 240), 2));
  const SpokenNode width = Find(kLabel, QStringLiteral("Width of the crop region in pixels"));
  ASSERT_TRUE(WaitFor([&] { return width.Name() == QLatin1String("0,315"); }));
  EXPECT_EQ(Find(kLabel, QStringLiteral("Width of the video in pixels")).Name(), "0,320");
  EXPECT_TRUE(ScreenReader::HeardIn(spoken).contains("text \"Selected Video\": \"" + video));

  const SpokenNode leftBar = Find(kSlider, QStringLiteral("Left Bar"));
  leftBar.SetValue(101);
  EXPECT_TRUE(WaitFor([&] { return width.Name() == QLatin1String("0,214"); }));
  EXPECT_EQ(leftBar.Value(), 101);

  const SpokenNode mainBar = Find(kBar, QStringLiteral("Crop and save Status"));
  EXPECT_EQ(mainBar.Value(), 0);
  const QString output = program.PathOf(QStringLiteral("cropped.mp4"));
  ASSERT_NO_FATAL_FAILURE(ChooseFileBy(QStringLiteral("Crop Video"), output));

  const SpokenNode jobWindow = reader.AwaitWindow(QStringLiteral("Saving Video"));
  const SpokenNode status = ScreenReader::Find(
      jobWindow, kLabel,
      QStringLiteral("Progress: 00.00 % Complete: Status: Getting Crop Regions"));
  const SpokenNode jobBar =
      ScreenReader::Find(jobWindow, kBar, QStringLiteral("Progress of the crop"));
  const SpokenNode cancel = ScreenReader::Find(jobWindow, kButton, QStringLiteral("Cancel"));
  EXPECT_EQ(ScreenReader::Find(jobWindow, kLabel, QStringLiteral("Saving As")).Name(), output);
  ASSERT_FALSE(status.Name().isEmpty());

  constexpr double kHalf = 50000;
  EXPECT_TRUE(WaitFor([&] { return jobBar.Value() == kHalf; })) << jobBar.Value();
  EXPECT_TRUE(WaitFor([&] { return mainBar.Value() == kHalf; })) << mainBar.Value();
  EXPECT_EQ(status.Name(), "Progress: 00.00% Complete: Status: Cropping Video");
  ASSERT_TRUE(program.Open(QStringLiteral("half")));
  EXPECT_TRUE(WaitFor([&] {
    return status.Name() == QLatin1String("Progress: 100 % Complete: Status: Cropping Successful");
  }));
  EXPECT_EQ(VideoSize(output), QSize(214, 234));

  EXPECT_TRUE(cancel.Do(kPress));
  EXPECT_TRUE(WaitFor([&] { return !job.Open(); }));
  ASSERT_TRUE(window.Await());
  CloseAndExpectEnd();
}

TEST_F(ReadingTheMainWindow, IsToldWhatChanges) {
  const SpokenNode group = Find(QStringLiteral("panel"), QStringLiteral("Video and crop region"));
  const SpokenNode width = Find(kLabel, QStringLiteral("Width of the video in pixels"));
  ASSERT_NO_FATAL_FAILURE(LoadByTheBus(QSize(320, 240), 1));
  EXPECT_TRUE(WaitFor([&] { return reader.Told(QStringLiteral("accessible-name"), width); }));
  EXPECT_TRUE(WaitFor([&] { return reader.Told(QStringLiteral("add"), group); }))
      << "the bars come with the canvas";
  const SpokenNode rightBar = Find(kSlider, QStringLiteral("Right Bar"));
  rightBar.SetValue(200);
  EXPECT_TRUE(WaitFor([&] { return reader.Told(QStringLiteral("accessible-value"), rightBar); }));
  EXPECT_FALSE(
      reader.Told(QStringLiteral("accessible-name"), Find(kButton, QStringLiteral("Load Video"))));
}

TEST_F(ReadingTheMainWindow, PressesNothingBehindADialog) {
  const QList<WindowId> known = screen.Windows();
  const SpokenNode load = Find(kButton, QStringLiteral("Load Video"));
  ASSERT_TRUE(load.Do(kPress));
  const WindowId dialog = screen.AwaitNew(known);
  ASSERT_NE(dialog, 0U);
  const QList<WindowId> withDialog = screen.Windows();
  ASSERT_TRUE(load.Do(kPress));
  EXPECT_TRUE(HoldsFor([&] { return screen.Windows() == withDialog; }, 300ms));
}

class ReadingTheJoiner : public Reading {
 protected:
  ReadingTheJoiner() : Reading(QStringLiteral("kelvane-joiner")) {}
};

TEST_F(ReadingTheJoiner, FindsASectionInTheChartTheTableAndTheList) {
  const QString file = program.PathOf(QStringLiteral("a.mp4"));
  ASSERT_TRUE(MakeVideo(file, QSize(64, 48), 1));
  program.ReplaceTool(QStringLiteral("ffprobe"),
                      QStringLiteral("echo '  Duration: 00:03:20.00, start' >&2"));
  ASSERT_NO_FATAL_FAILURE(OpenAndRead(QStringLiteral("Video Joiner")));
  ASSERT_NO_FATAL_FAILURE(ChooseFileBy(QStringLiteral("Add Video Section"), file));
  ASSERT_TRUE(WaitFor([&] {
    return Find(kLabel, QStringLiteral("Total Combined Video Duration in seconds")).Name() ==
           QLatin1String("00,200");
  }));
  const QString heard = ScreenReader::HeardIn(spoken);
  for (const QString& line :
       {QStringLiteral("list \"Video sections on the time chart\"\n"
                       "      list item \"Video Index: 01 Title: a.mp4\"\n"),
        QStringLiteral("list \"Paths of the video sections\"\n    list item \"%1\"\n").arg(file),
        QStringLiteral(" \"a.mp4\"\n"), QStringLiteral("label \"Total Sections: 01\"\n"),
        QStringLiteral("push button \"Join All Sections\"\n")}) {
    EXPECT_TRUE(heard.contains(line)) << line.toStdString() << heard.toStdString();
  }
}

class ReadingTheSectionWindow : public Reading {
 protected:
  ReadingTheSectionWindow() : Reading(QStringLiteral("kelvane-sections")) {}
};

TEST_F(ReadingTheSectionWindow, FindsTheSlidersValues) {
  ASSERT_NO_FATAL_FAILURE(OpenAndRead(QStringLiteral("Advanced 2-Pass Video Stabilization")));
  const QList<std::pair<const char*, double>> values = {
      {"Step Size", 4},  {"Shakiness", 3},  {"Accuracy", 5},  {"Zoom", 10},
      {"Smoothing", 25}, {"UnSharp LX", 6}, {"UnSharp LY", 6}};
  for (const auto& [name, value] : values) {
    EXPECT_EQ(Find(kSlider, QLatin1String(name)).Value(), value) << name;
  }
  Find(kSlider, QStringLiteral("Start of the section")).SetValue(100);
  const SpokenNode start = Find(kLabel, QStringLiteral("Video first cut"));
  EXPECT_TRUE(WaitFor([&] { return start.Name() == QLatin1String("00:01:42"); }));
}

}  // namespace
}  // namespace kelvane::desktop
