// The main window as a screen reader finds it on the accessibility bus.
#include <QFile>
#include <QRegularExpression>

#include "desktop/DesktopTest.h"
#include "desktop/driver/ScreenReader.h"

namespace kelvane::desktop {
namespace {

constexpr const char* kButton = "push button";
constexpr const char* kLabel = "label";
constexpr const char* kBar = "progress bar";

// The part of the window text that says what a screen reader is told, with the bus's role names.
QString ExpectedTree() {
  QFile file(KELVANE_PROJECT_FOLDER "/tests/windows/Form1.txt");
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  QString tree = QString::fromUtf8(file.readAll()).section("A screen reader is told:\n\n", 1);
  for (const auto& [role, onTheBus] : {std::pair("Window", "frame"),
                                       {"MenuBar", "menu bar"},
                                       {"MenuItem", "menu item"},
                                       {"StaticText", kLabel},
                                       {"EditableText", "text"},
                                       {"ProgressBar", kBar},
                                       {"Grouping", "panel"},
                                       {"ScrollBar", "scroll bar"},
                                       {"Button", kButton}}) {
    tree.replace(QRegularExpression(QString("\\b%1(?= \")").arg(role)), onTheBus);
  }
  // The first tick of the timer changes the captions of duration and position.
  return tree.replace("\"00:00:00\"", "\"0:00:00\"").replace("\"00\"", "\"00:00\"");
}

class AccessibilityBus : public DesktopTest {
 protected:
  void SetUp() override {
    program.SetVariable("DBUS_SESSION_BUS_ADDRESS", reader.Address());
    program.Start();
    root = reader.AwaitWindow("Kelvane");
    ASSERT_EQ(root.Name(), "Kelvane");
    ASSERT_TRUE(window.Await()) << "the main window doesn't come";
  }

  // Presses a button and types the path into the file dialog that this opens.
  void ChooseFileBy(const QString& button, const QString& path) {
    const QList<WindowId> known = screen.Windows();
    ASSERT_TRUE(root.Find(kButton, button).Invoke("Press")) << button.toStdString();
    const WindowId dialog = screen.AwaitNew(known);
    ASSERT_NE(dialog, 0U);
    ASSERT_TRUE(TypeFileName(screen, dialog, path));
  }

  ScreenReader reader{program.PathOf("runtime")};
  AccessibleNode root;
};

TEST_F(AccessibilityBus, HasTheWholeMainWindow) {
  ASSERT_TRUE(window.AwaitTimesWithoutVideo());
  EXPECT_EQ(root.Tree().toStdString(), ExpectedTree().toStdString());
}

TEST_F(AccessibilityBus, AnnouncesTheFocus) {
  for (const char* command : {"Load Video", "Run Video"}) {
    const AccessibleNode node = root.Find(kButton, command);
    EXPECT_FALSE(reader.HasAnnounced("focused", node)) << command;
    screen.PressKey(kTab);
    EXPECT_TRUE(WaitFor([&] { return reader.HasAnnounced("focused", node); })) << command;
  }
}

TEST_F(AccessibilityBus, LoadsAndCropsAVideoAndAnnouncesWhatChanges) {
  program.ReplaceTool("ffmpeg", "printf 'time=00:00:01.00\\r' >&2\n" +
                                    program.PrintingGate("half") + "exec \"$real\" \"$@\"");
  video = program.PathOf("video.mp4");
  ASSERT_TRUE(MakeVideo(video, QSize(320, 240), 2));
  ASSERT_NO_FATAL_FAILURE(ChooseFileBy("Load Video", video));
  const AccessibleNode width = root.Find(kLabel, "Width of the crop region in pixels");
  ASSERT_TRUE(WaitFor([&] { return width.Name() == "0,315"; }));
  EXPECT_TRUE(WaitFor([&] { return reader.HasAnnounced("accessible-name", width); }));
  const AccessibleNode group = root.Find("panel", "Video and crop region");
  EXPECT_TRUE(WaitFor([&] { return reader.HasAnnounced("add", group); }))
      << "the bars aren't announced";
  EXPECT_EQ(root.Find(kLabel, "Width of the video in pixels").Name(), "0,320");
  EXPECT_TRUE(root.Tree().contains("text \"Selected Video\": \"" + video));

  const AccessibleNode leftBar = root.Find("slider", "Left Bar");
  leftBar.SetValue(101);
  EXPECT_TRUE(WaitFor([&] { return width.Name() == "0,214"; }));
  EXPECT_EQ(leftBar.Value(), 101);
  EXPECT_TRUE(WaitFor([&] { return reader.HasAnnounced("accessible-value", leftBar); }));
  EXPECT_FALSE(reader.HasAnnounced("accessible-name", root.Find(kButton, "Load Video")));

  const QString output = program.PathOf("cropped.mp4");
  ASSERT_NO_FATAL_FAILURE(ChooseFileBy("Crop Video", output));
  const AccessibleNode jobRoot = reader.AwaitWindow("Saving Video");
  const AccessibleNode status =
      jobRoot.Find(kLabel, "Progress: 00.00 % Complete: Status: Getting Crop Regions");
  const AccessibleNode cancel = jobRoot.Find(kButton, "Cancel");
  EXPECT_EQ(jobRoot.Find(kLabel, "Saving As").Name(), output);
  ASSERT_FALSE(status.Name().isEmpty());

  constexpr double kHalf = 50000;
  for (const AccessibleNode& bar :
       {jobRoot.Find(kBar, "Progress of the crop"), root.Find(kBar, "Crop and save Status")}) {
    EXPECT_TRUE(WaitFor([&] { return bar.Value() == kHalf; })) << bar.Name().toStdString();
  }
  EXPECT_EQ(status.Name(), "Progress: 00.00% Complete: Status: Cropping Video");
  ASSERT_TRUE(program.Open("half"));
  EXPECT_TRUE(WaitFor(
      [&] { return status.Name() == "Progress: 100 % Complete: Status: Cropping Successful"; }));
  EXPECT_EQ(VideoSize(output), QSize(214, 234));

  EXPECT_TRUE(cancel.Invoke("Press"));
  EXPECT_TRUE(WaitFor([&] { return !job.Open(); }));
  CloseAndExpectEnd();
}

}  // namespace
}  // namespace kelvane::desktop
