// The main window on a real screen: its layout, its title, and the video beneath the bars.
#include "desktop/DesktopTest.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kVideo(640, 360);
constexpr QRgb kRed = 0xffff0000;
constexpr QRgb kBlue = 0xff0000ff;
constexpr int kRounding = 24;

// Allows for rounding, and for large videos, whose colour space differs from that of small ones.
bool IsRed(QRgb color) { return qRed(color) > 200 && qGreen(color) < 50 && qBlue(color) < 50; }

class MainWindowOnScreen : public DesktopTest {
 protected:
  void ExpectLaidOut(QSize size) {
    EXPECT_TRUE(
        WaitFor([&] { return screen.Place(window.Id()).size() == size && window.IsLaidOut(); }, 5s))
        << size.width() << " by " << size.height();
  }

  void OpenAndRunRedVideo(QSize size) {
    video = program.PathOf("red.mp4");
    ASSERT_TRUE(MakeColours(video, size, QList<QRgb>(20, kRed)));
    ASSERT_NO_FATAL_FAILURE(OpenWindow());
    ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, video));
    ASSERT_TRUE(window.AwaitBarsAround(size));
    window.Click(kRunVideo);
    ASSERT_TRUE(WaitFor([&] { return IsRed(window.Inside(size).pixel(0, 0)); }));
  }
};

TEST_F(MainWindowOnScreen, IsLaidOutAtEverySizeDownToItsLeastSize) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  EXPECT_EQ(screen.Windows(), QList<WindowId>{window.Id()});
  ExpectLaidOut(QSize(1289, 751));
  for (const auto& [asked, given] : {std::pair(QSize(1753, 1000), QSize(1753, 1000)),
                                     {QSize(1200, 601), QSize(1200, 601)},
                                     {QSize(900, 300), QSize(1111, 433)},
                                     {QSize(1000, 600), QSize(1111, 600)},
                                     {QSize(1300, 200), QSize(1300, 433)}}) {
    screen.Resize(window.Id(), asked);
    ExpectLaidOut(given);
  }
  screen.Minimise(window.Id());
  ASSERT_TRUE(WaitFor([&] { return screen.Minimised(window.Id()); }));
  screen.Activate(window.Id());
  ExpectLaidOut(QSize(1300, 433));
}

TEST_F(MainWindowOnScreen, ShowsTheProgressInItsTitleWhileItIsMinimised) {
  ReplaceProbe();
  // Each line has 512 bytes. The program handles at most 256 at a time, so it handles each time by
  // itself.
  program.ReplaceTool("ffmpeg", program.PrintingGate("minimised") +
                                    "printf '%-511s\\n' time=00:00:02.00 time=00:00:04.00\n" +
                                    program.PrintingGate("restored") + "echo time=00:00:06.00\n" +
                                    program.PrintingGate("end"));
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithFakeVideo());
  ASSERT_NO_FATAL_FAILURE(StartCrop(program.PathOf("cropped.mp4")));
  ASSERT_TRUE(job.AwaitStatus("Progress: 00.00 % Complete: Status: Cropping..."));
  const auto awaitTitle = [&](const char* title) {
    return WaitFor([&] { return screen.Title(window.Id()) == title; });
  };
  EXPECT_TRUE(awaitTitle("Kelvane"));
  screen.Minimise(window.Id());
  ASSERT_TRUE(WaitFor([&] { return screen.Minimised(window.Id()); }));
  ASSERT_TRUE(program.Open("minimised"));
  EXPECT_TRUE(awaitTitle("Crop: 20.00%")) << screen.Title(window.Id()).toStdString();
  screen.Activate(window.Id());
  ASSERT_TRUE(WaitFor([&] { return !screen.Minimised(window.Id()); }));
  ASSERT_TRUE(program.Open("restored"));
  EXPECT_TRUE(awaitTitle("Kelvane"));
  ASSERT_TRUE(program.Open("end"));
  ExpectEndAndCloseJob();
}

TEST_F(MainWindowOnScreen, RunsPausesAndStopsAVideoAndEndsCleanlyWhileItPlays) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kVideo, 30));
  EXPECT_TRUE(window.IsBlack(kVideo)) << "the video plays before it is run";
  window.Click(kRunVideo);
  EXPECT_TRUE(window.AwaitMoving(kVideo));
  EXPECT_TRUE(window.AwaitCaption("Label12", "0:00:30"));
  EXPECT_TRUE(window.AwaitCaption("Label13", "00:02"));
  window.Click(kPauseVideo);
  EXPECT_TRUE(window.AwaitStill(kVideo));
  EXPECT_FALSE(window.IsBlack(kVideo));
  window.Click(kPauseVideo);
  EXPECT_TRUE(window.AwaitMoving(kVideo));
  window.Click(kStopVideo);
  EXPECT_TRUE(window.AwaitBlack(kVideo));
  EXPECT_TRUE(window.AwaitCaption("Label13", "00:00"));
  window.Click(kRunVideo, kRightButton);
  EXPECT_TRUE(window.AwaitMoving(kVideo));

  ASSERT_TRUE(window.ChooseOnPicture(PictureEntry::kPause));
  EXPECT_TRUE(window.AwaitStill(kVideo));
  EXPECT_FALSE(window.IsBlack(kVideo));
  window.Click(kRunVideo);
  EXPECT_TRUE(window.AwaitMoving(kVideo));
  CloseAndExpectEnd();
  EXPECT_EQ(program.Printed(), "");
}

TEST_F(MainWindowOnScreen, CanBeUsedWithTheKeyboardAndFramesTheFocusedCommand) {
  constexpr QRgb kFrame = 0xffffff;
  video = program.PathOf("clip.mp4");
  ASSERT_TRUE(MakeVideo(video, kVideo, 30));
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  const auto hasFrame = [&](Command command) {
    const QRect place = window.Place(MainWindow::NameOf(command));
    return WaitFor([&] {
      return screen.Pixel(place.topLeft()) == (kFrame | 0xff000000) &&
             screen.Pixel(place.bottomRight()) == (kFrame | 0xff000000);
    });
  };
  screen.PressKey(kTab);
  EXPECT_TRUE(hasFrame(kLoadVideo));
  const QList<WindowId> known = screen.Windows();
  screen.PressKey(kReturn);
  const WindowId dialog = screen.AwaitNew(known);
  ASSERT_NE(dialog, 0U);
  ASSERT_TRUE(TypeFileName(screen, dialog, video));
  ASSERT_TRUE(window.AwaitBarsAround(kVideo));
  EXPECT_TRUE(hasFrame(kLoadVideo)) << "the focus isn't back";
  screen.PressKey(kTab);
  EXPECT_TRUE(hasFrame(kRunVideo));
  screen.PressKey(' ');
  EXPECT_TRUE(window.AwaitMoving(kVideo));
  screen.PressKey(kTab);
  screen.PressKey(kReturn);
  EXPECT_TRUE(window.AwaitStill(kVideo));
  EXPECT_FALSE(window.IsBlack(kVideo));
  screen.PressKey(kTab, kShift);
  EXPECT_TRUE(hasFrame(kRunVideo));
  CloseAndExpectEnd();
}

TEST_F(MainWindowOnScreen, ShowsTheMomentThatIsChosenInThePicturesMenu) {
  video = program.PathOf("red and blue.mp4");
  const QList<QRgb> red(10, kRed);
  ASSERT_TRUE(MakeColours(video, kVideo, red + QList<QRgb>(10, kBlue)));
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, video));
  ASSERT_TRUE(window.AwaitBarsAround(kVideo));
  window.Click(kRunVideo);
  const auto shows = [&](QRgb colour) {
    return WaitFor([&] { return IsNear(window.Inside(kVideo).pixel(0, 0), colour, kRounding); });
  };
  EXPECT_TRUE(window.AwaitCaption("Label13", "00:02"));
  ASSERT_TRUE(window.ChooseOnPicture(PictureEntry::kNextFrame));
  EXPECT_TRUE(window.AwaitCaption("Label13", "00:02")) << "the video isn't paused";
  EXPECT_TRUE(shows(kRed));
  ASSERT_TRUE(window.ChooseOnPicture(PictureEntry::kForward));
  EXPECT_TRUE(shows(kBlue));
  EXPECT_TRUE(window.AwaitCaption("Label13", "00:12"));
  ASSERT_TRUE(window.ChooseOnPicture(PictureEntry::kBeginning));
  EXPECT_TRUE(shows(kRed));
  ASSERT_TRUE(window.ChooseOnPicture(PictureEntry::kForward));
  EXPECT_TRUE(shows(kBlue));
  ASSERT_TRUE(window.ChooseOnPicture(PictureEntry::kPreviousFrame));
  EXPECT_TRUE(shows(kRed));
  EXPECT_TRUE(window.AwaitCaption("Label13", "00:09"));
  CloseAndExpectEnd();
}

TEST_F(MainWindowOnScreen, MovesDraggedBarsOverAPlayingVideoAndResetsThem) {
  ASSERT_NO_FATAL_FAILURE(OpenAndRunRedVideo(kVideo));
  const auto drag = [&](QPoint place, QPoint way) { screen.Drag(window.OnCanvas(place), way); };
  drag({2, 180}, {100, 40});
  drag({320, 2}, {40, 50});
  drag({637, 180}, {-200, 40});
  drag({320, 357}, {40, -100});
  const MarkerBars bars = {
      {100, 50, 5, 205}, {100, 50, 335, 5}, {435, 50, 5, 210}, {100, 255, 335, 5}};
  EXPECT_TRUE(window.AwaitBars(bars, QRect({}, kVideo)));
  EXPECT_TRUE(window.AwaitRegion(RegionOf(bars)));
  for (const QPoint place : {QPoint(2, 180), QPoint(320, 2), QPoint(637, 180), QPoint(320, 357),
                             QPoint(106, 100), QPoint(434, 254)}) {
    EXPECT_TRUE(IsRed(screen.Pixel(window.OnCanvas(place))))
        << place.x() << ", " << place.y() << ": a bar has left a trace";
  }
  // The left bar goes past the right one.
  drag({102, 180}, {400, 0});
  EXPECT_TRUE(window.AwaitRegion({.left = 500, .top = 50, .right = 435, .base = 255}));
  window.Click(kResetMarkers);
  EXPECT_TRUE(window.AwaitBarsAround(kVideo));
  EXPECT_TRUE(window.AwaitVideo(kVideo));
}

// The player draws only what is visible, so a paused video must be drawn again when it is scrolled.
TEST_F(MainWindowOnScreen, ShowsAPausedVideoAndItsBarsThatAreScrolledIntoView) {
  constexpr QSize kLarge(1920, 1080);
  ASSERT_NO_FATAL_FAILURE(OpenAndRunRedVideo(kLarge));
  window.Click(kPauseVideo);
  ASSERT_TRUE(window.AwaitStill(kLarge));
  window.ScrollToTheFarCorner();
  const QRect canvas(QPoint(-768, -720), kLarge);
  EXPECT_TRUE(window.AwaitBars(BarsAround(kLarge), canvas));
  // The visible part of the picture ends at the right and base bars.
  const auto allIsRed = [&] {
    const QImage shown = screen.Picture(QRect(window.OnCanvas({}), QSize(1147, 355)));
    return IsRed(shown.pixel(0, 0)) && AllOf(shown, shown.rect(), shown.pixel(0, 0));
  };
  EXPECT_TRUE(WaitFor(allIsRed));
  screen.Resize(window.Id(), QSize(1700, 1000));
  EXPECT_TRUE(WaitFor([&] { return screen.Place(window.Id()).size() == QSize(1700, 1000); }));
  (void)screen.Still();  // the window manager moves the window as well
  EXPECT_TRUE(allIsRed());

  screen.Drag(window.OnCanvas(QPoint(1917, 900) + canvas.topLeft()), QPoint(-300, 40));
  screen.Drag(window.OnCanvas(QPoint(1200, 1077) + canvas.topLeft()), QPoint(40, -200));
  const MarkerBars bars = {{0, 0, 5, 875}, {0, 0, 1615, 5}, {1615, 0, 5, 880}, {0, 875, 1615, 5}};
  EXPECT_TRUE(window.AwaitBars(bars, canvas));
  EXPECT_TRUE(window.AwaitRegion(RegionOf(bars)));
}

}  // namespace
}  // namespace kelvane::desktop
