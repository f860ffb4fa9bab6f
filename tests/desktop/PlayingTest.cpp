// The video plays beneath the bars, and the commands that drive it.
#include "desktop/PlayingTest.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kVideo(640, 360);
const QList<QRgb> kColours = {0xffff0000, 0xff0000ff, 0xffffff00};

// How far the colours of two pictures of one size are apart, on average, of 255.
double Distance(const QImage& one, const QImage& other) {
  qint64 sum = 0;
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < one.width(); ++x) {
      const QRgb a = one.pixel(x, y);
      const QRgb b = other.pixel(x, y);
      sum += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
             std::abs(qBlue(a) - qBlue(b));
    }
  }
  return static_cast<double>(sum) / (3.0 * one.width() * one.height());
}

constexpr int kRounding = 12;  // of colours, by encodings and conversions

TEST_F(Playing, ShowsTheVideoPixelForPixelBeneathTheBars) {
  // One picture without two equal neighbours, again and again.
  const QString still = program.PathOf("still.mp4");
  const QString frame = program.PathOf("frame.png");
  ASSERT_TRUE(
      RunTool("ffmpeg", {"-v", "error", "-f", "lavfi", "-i",
                         "nullsrc=size=640x360:duration=0.04,geq=lum=random(1)*255:cb=128:cr=128,"
                         "loop=-1:1,trim=end_frame=250",
                         "-pix_fmt", "yuv420p", "-crf", "1", "-preset", "ultrafast", still}));
  ASSERT_TRUE(RunTool("ffmpeg", {"-v", "error", "-i", still, "-frames:v", "1", frame}));
  const QImage expected = QImage(frame).convertToFormat(QImage::Format_RGB32);
  ASSERT_EQ(expected.size(), kVideo);
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  ASSERT_NO_FATAL_FAILURE(LoadAndRun(still, kVideo));
  const QRect inside = InsideBars(kVideo);
  ASSERT_TRUE(WaitFor([&] { return !IsBlack(kVideo); }));
  const QImage shown = window.Inside(kVideo);
  // The tool and the player round colours each in its own way; a picture one pixel off, or one that
  // has been scaled, is much farther away.
  constexpr double kRoundedOff = 3;
  constexpr double kOnePixelOff = 30;
  EXPECT_LT(Distance(shown, expected.copy(inside)), kRoundedOff);
  for (const QPoint off : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)}) {
    EXPECT_GT(Distance(shown, expected.copy(inside.translated(off))), kOnePixelOff);
  }
  EXPECT_TRUE(BarsLieOver(kVideo));
}

TEST_F(Playing, ShowsEachSecondInItsTurn) {
  video = program.PathOf("colours.mp4");
  ASSERT_TRUE(MakeColours(video, kVideo, kColours));
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  ASSERT_NO_FATAL_FAILURE(LoadAndRun(video, kVideo));
  for (const QRgb colour : kColours) {
    EXPECT_TRUE(WaitFor(
        [&] { return IsNear(window.Inside(kVideo).pixel(300, 100), colour, kRounding); }, 5s))
        << colour;
    const QImage inside = window.Inside(kVideo);
    EXPECT_TRUE(AllOf(inside, inside.rect(), inside.pixel(0, 0)));
  }
  // One pass.
  EXPECT_TRUE(AwaitBlack(kVideo));
  EXPECT_TRUE(HoldsFor([&] { return IsBlack(kVideo); }, 1s));
  EXPECT_EQ(program.Printed(), "");
}

TEST_F(Playing, TicksDurationAndPosition) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(160, 120), 75));
  EXPECT_TRUE(window.AwaitCaption("Label12", "0:00:00")) << "a loaded video isn't played yet";
  window.Click(kRunVideo);
  EXPECT_TRUE(window.AwaitCaption("Label12", "0:01:15"));
  EXPECT_TRUE(window.AwaitCaption("Label13", "00:01"));
  EXPECT_TRUE(window.AwaitCaption("Label13", "00:02"));
  EXPECT_TRUE(window.Shows("Label12", "0:01:15"));
  window.Click(kStopVideo);
  EXPECT_TRUE(window.AwaitCaption("Label13", "00:00"));
}

TEST_F(Playing, PausesAndGoesOnInTurn) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kVideo, 30));
  window.Click(kRunVideo);
  ASSERT_TRUE(AwaitMoving(kVideo));
  window.Click(kPauseVideo);
  EXPECT_TRUE(AwaitStill(kVideo));
  EXPECT_FALSE(IsBlack(kVideo));
  window.Click(kPauseVideo);
  EXPECT_TRUE(AwaitMoving(kVideo));

  // Run plays a paused video from its beginning and leaves the toggle at "Paused": the next Pause
  // plays once more what plays already, and the one after it pauses.
  window.Click(kPauseVideo);
  EXPECT_TRUE(AwaitStill(kVideo));
  window.Click(kRunVideo);
  EXPECT_TRUE(AwaitMoving(kVideo));
  window.Click(kPauseVideo);
  EXPECT_TRUE(HoldsFor([&] { return AwaitMoving(kVideo); }, 500ms));
  window.Click(kPauseVideo);
  EXPECT_TRUE(AwaitStill(kVideo));
}

TEST_F(Playing, StopsToABlackPictureAndRunsAgain) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kVideo, 30));
  window.Click(kPauseVideo);
  window.Click(kPauseVideo);
  window.Click(kStopVideo);
  EXPECT_TRUE(IsBlack(kVideo)) << "nothing plays before the first Run";
  window.Click(kRunVideo);
  ASSERT_TRUE(AwaitMoving(kVideo));
  window.Click(kStopVideo);
  EXPECT_TRUE(AwaitBlack(kVideo));
  EXPECT_TRUE(HoldsFor([&] { return IsBlack(kVideo); }, 300ms));
  EXPECT_TRUE(window.AwaitBarsAround(kVideo));
  // The toggle knows nothing of it: the first Pause pauses what stands, the second one plays.
  window.Click(kPauseVideo);
  EXPECT_TRUE(HoldsFor([&] { return IsBlack(kVideo); }, 300ms));
  window.Click(kPauseVideo);
  EXPECT_TRUE(AwaitMoving(kVideo));
  window.Click(kStopVideo);
  EXPECT_TRUE(AwaitBlack(kVideo));
  window.Click(kRunVideo, kRightButton);
  EXPECT_TRUE(AwaitMoving(kVideo));
}

TEST_F(Playing, IsDrivenByTheMenuOfTheRightButtonOverThePictureAsWell) {
  constexpr int kEntries = 3;  // Play, Pause, Stop
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kVideo, 30));
  window.Click(kRunVideo);
  ASSERT_TRUE(AwaitMoving(kVideo));
  const auto choose = [&](int entry) {
    const QRect menu = screen.OpenMenu(window.OnCanvas({300, 100}));
    ASSERT_FALSE(menu.isEmpty());
    const int middle = menu.height() * (2 * entry + 1) / (2 * kEntries);
    screen.Click(QPoint(menu.center().x(), menu.top() + middle));
  };
  ASSERT_NO_FATAL_FAILURE(choose(1));
  EXPECT_TRUE(AwaitStill(kVideo));
  EXPECT_FALSE(IsBlack(kVideo));
  ASSERT_NO_FATAL_FAILURE(choose(0));
  EXPECT_TRUE(AwaitMoving(kVideo));
  ASSERT_NO_FATAL_FAILURE(choose(2));
  EXPECT_TRUE(AwaitBlack(kVideo));
}

TEST_F(Playing, GoesOnBeneathDraggedAndScrolledBars) {
  video = program.PathOf("colours.mp4");
  ASSERT_TRUE(MakeColours(video, kVideo, QList<QRgb>(20, 0xffff0000) + kColours));
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  ASSERT_NO_FATAL_FAILURE(LoadAndRun(video, kVideo));
  const auto isRed = [&](QPoint place) {
    return IsNear(screen.Pixel(window.OnCanvas(place)), 0xffff0000, kRounding);
  };
  ASSERT_TRUE(WaitFor([&] { return isRed({300, 100}); }));
  screen.Drag(window.OnCanvas({2, 180}), {100, 0});
  screen.Drag(window.OnCanvas({320, 2}), {0, 50});
  screen.Drag(window.OnCanvas({637, 180}), {-200, 0});
  screen.Drag(window.OnCanvas({320, 357}), {0, -100});
  const MarkerBars bars = {
      {100, 50, 5, 205}, {100, 50, 335, 5}, {435, 50, 5, 210}, {100, 255, 335, 5}};
  EXPECT_TRUE(window.AwaitBars(bars, QRect(QPoint(), kVideo)));
  EXPECT_TRUE(window.AwaitRegion(RegionOf(bars)));
  for (const QPoint place : {QPoint(0, 0), QPoint(2, 180), QPoint(320, 2), QPoint(639, 180),
                             QPoint(320, 359), QPoint(106, 100), QPoint(434, 254)}) {
    EXPECT_TRUE(isRed(place)) << place.x() << ", " << place.y() << ": no bar is left standing";
  }
  const QRect down = window.Place("VScroll1");
  screen.Click(down.bottomRight() - QPoint(down.width() / 2, down.width() / 2));
  EXPECT_TRUE(window.AwaitBars(bars, QRect(QPoint(0, -10), kVideo)));
  EXPECT_TRUE(isRed({639, 349}));
  EXPECT_FALSE(isRed({320, 350})) << "the canvas ends here";
}

// What lies out of view isn't drawn: it must be once it comes in, without a new picture as well.
TEST_F(Playing, ShowsThePartsOfAPausedVideoThatAreScrolledIntoView) {
  const QSize large(1920, 1080);
  video = program.PathOf("large.mp4");
  ASSERT_TRUE(MakeColours(video, large, QList<QRgb>(3, 0xffff0000)));
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  ASSERT_NO_FATAL_FAILURE(LoadAndRun(video, large));
  ASSERT_TRUE(WaitFor([&] { return !IsBlack(large); }));
  window.Click(kPauseVideo);
  ASSERT_TRUE(AwaitStill(large));
  window.ScrollToTheFarCorner();
  // The far corner of the canvas lies at (1920 - 768, 1080 - 720).
  const auto allShown = [&] {
    const QImage shown = screen.Picture(QRect(window.OnCanvas({0, 0}), QSize(1147, 355)));
    const QRgb color = shown.pixel(0, 0);
    return qRed(color) > 200 && qBlue(color) < 50 && AllOf(shown, shown.rect(), color);
  };
  EXPECT_TRUE(WaitFor(allShown));
  screen.Resize(window.Id(), QSize(1700, 1000));
  EXPECT_TRUE(WaitFor(allShown));
}

TEST_F(Playing, GoesOnDuringAPreviewAndPausesForACrop) {
  program.ReplaceTool("ffplay", program.TalkingGate("preview"));
  program.ReplaceTool("ffmpeg", "");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kVideo, 60));
  window.Click(kRunVideo);
  ASSERT_TRUE(AwaitMoving(kVideo));
  screen.Drag(window.OnCanvas({2, 180}), {100, 0});
  ASSERT_TRUE(window.AwaitRegion({100, 0, 635, 355}));
  window.Click(kPreviewCroppedVideo);
  ASSERT_TRUE(WaitFor([&] { return !program.RunsOf("ffplay").isEmpty(); }));
  EXPECT_TRUE(AwaitMoving(kVideo));
  ASSERT_TRUE(program.Open("preview"));
  ASSERT_TRUE(WaitFor([&] { return program.Children("RSDTZ").isEmpty(); }));
  EXPECT_TRUE(AwaitMoving(kVideo));

  const QString output = program.PathOf("cropped.mp4");
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  screen.Activate(window.Id());
  EXPECT_TRUE(AwaitStill(kVideo));
  ASSERT_TRUE(job.AwaitSuccess());
  EXPECT_EQ(program.RunsOf("ffmpeg"),
            (QList<QStringList>{{"-i", video, "-vf", "crop=535:355:100:0", output}}));
  // The toggle wasn't told.
  job.Cancel();
  window.Click(kPauseVideo);
  window.Click(kPauseVideo);
  EXPECT_TRUE(AwaitMoving(kVideo));
}

TEST_F(Playing, TakesASecondVideoOfAnotherSize) {
  const QSize smaller(320, 240);
  const QString second = program.PathOf("second.mp4");
  ASSERT_TRUE(MakeColours(second, smaller, QList<QRgb>(20, 0xff0000ff)));
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kVideo, 30));
  window.Click(kRunVideo);
  ASSERT_TRUE(AwaitMoving(kVideo));
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, second));
  ASSERT_TRUE(window.AwaitVideo(smaller));
  EXPECT_TRUE(AwaitMoving(smaller)) << "the first one plays on until the second one is run";
  window.Click(kRunVideo);
  EXPECT_TRUE(WaitFor([&] {
    const QImage inside = window.Inside(smaller);
    return IsNear(inside.pixel(0, 0), 0xff0000ff, kRounding) &&
           AllOf(inside, inside.rect(), inside.pixel(0, 0));
  }));
  EXPECT_TRUE(window.AwaitBarsAround(smaller));
}

class Ending : public Playing {};

TEST_F(Ending, IsCleanWhileTheVideoPlays) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kVideo, 30));
  window.Click(kRunVideo);
  ASSERT_TRUE(AwaitMoving(kVideo));
  CloseAndExpectEnd();
  EXPECT_EQ(program.Printed(), "");
}

TEST_F(Ending, IsCleanWhileTheVideoIsBeingOpened) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(1920, 1080), 5));
  window.Click(kRunVideo);
  CloseAndExpectEnd();
  EXPECT_EQ(program.Printed(), "");
}

TEST_F(Ending, IsCleanWhileTheVideoPlaysBesideAJob) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kVideo, 30));
  program.ReplaceTool("ffmpeg", program.TalkingGate("end"));
  window.Click(kRunVideo);
  ASSERT_NO_FATAL_FAILURE(StartCrop(program.PathOf("cropped.mp4")));
  ASSERT_TRUE(job.AwaitStatus("Progress: 00.00 % Complete: Status: Cropping..."));
  screen.Activate(window.Id());
  window.Click(kRunVideo);
  ASSERT_TRUE(AwaitMoving(kVideo));
  screen.Close(window.Id());
  ASSERT_TRUE(WaitFor([&] { return !screen.Exists(window.Id()); }));
  ASSERT_TRUE(program.Open("end"));
  ASSERT_TRUE(job.AwaitSuccess());
  job.Cancel();
  EXPECT_EQ(program.AwaitExit(), 0);
  EXPECT_EQ(program.Printed(), "");
}

}  // namespace
}  // namespace kelvane::desktop
