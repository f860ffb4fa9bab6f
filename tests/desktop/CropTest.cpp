// One crop: what the job's window and the main window show, and what the tool is told.
#include <QFile>

#include "desktop/DesktopTest.h"

namespace kelvane::desktop {
namespace {

constexpr const char* kBeforeTheStart = "Progress: 00.00 % Complete: Status: Getting Crop Regions";

class Crop : public DesktopTest {
 protected:
  // The tool prints the time of a frame, and goes on printing until the gate of this name is
  // opened.
  QString PrintTime(const QString& time, const QString& gate) {
    return QStringLiteral("printf 'size=    1kB time=%1.00 bitrate= 8.0kbits/s speed=2x\\r' >&2\n")
               .arg(time) +
           program.TalkingGate(gate);
  }

  // A bar of this width, filled to this share.
  static void ExpectFilled(int filled, int width, double share) {
    EXPECT_NEAR(filled, width * share, 2);
  }

  QString output = program.PathOf("cropped.mp4");
};

TEST_F(Crop, WritesAFileOfTheSizeThatTheBarsSaid) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(640, 360), 20));
  const QByteArray source = ContentOf(video);
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  EXPECT_TRUE(job.AwaitStatus(kBeforeTheStart));
  EXPECT_TRUE(job.ShowsOutput(output));
  int jobProgress = 0;
  int mainProgress = 0;
  EXPECT_TRUE(WaitFor(
      [&] {
        jobProgress = std::max(jobProgress, job.Progress());
        mainProgress = std::max(mainProgress, window.Progress());
        return job.AwaitSuccess(0ms);
      },
      60s));
  EXPECT_GT(jobProgress, 0);
  EXPECT_GT(mainProgress, 0);
  // 635 by 355, rounded down by the crop filter to whole colour samples.
  EXPECT_EQ(VideoSize(output), QSize(634, 354));
  EXPECT_EQ(Pictures(output), Pictures(video));
  EXPECT_EQ(ContentOf(video), source);

  EXPECT_TRUE(HoldsFor([&] { return job.Open(); }, 300ms));
  job.Cancel();
  EXPECT_TRUE(WaitFor([&] { return !job.Open(); }));
  CloseAndExpectEnd();
}

TEST_F(Crop, GivesWhatTheBareCommandGives) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(322, 202), 2));
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  ASSERT_TRUE(job.AwaitSuccess());
  const QString bare = program.PathOf("bare.mp4");
  ASSERT_TRUE(RunTool("ffmpeg", {"-i", video, "-vf", "crop=317:197:0:0", bare}));
  EXPECT_EQ(VideoSize(output), VideoSize(bare));
  EXPECT_EQ(ContentOf(output), ContentOf(bare));
}

TEST_F(Crop, TellsTheToolTheRegionAndTheOutput) {
  ReplaceProbe("00:00:10.00");
  program.ReplaceTool("ffmpeg", "");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  ASSERT_TRUE(job.AwaitSuccess());
  EXPECT_EQ(program.RunsOf("ffmpeg"),
            (QList<QStringList>{{"-i", video, "-vf", "crop=635:355:0:0", output}}));
}

TEST_F(Crop, RunsWithoutAVideoAllTheSame) {
  program.ReplaceTool("ffmpeg", "");
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  ASSERT_TRUE(job.AwaitSuccess());
  EXPECT_EQ(program.RunsOf("ffmpeg"), (QList<QStringList>{{"-i", "-vf", "crop=0:0:0:0", output}}));
}

TEST_F(Crop, ShowsAFigureThatTrailsItsBarsByOneUpdate) {
  ReplaceProbe("00:00:10.00");
  program.ReplaceTool("ffmpeg", program.TalkingGate("start") + PrintTime("00:00:02", "second") +
                                    PrintTime("00:00:05", "third") + PrintTime("N/A", "end"));
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  const int jobWidth = 409;
  const int mainWidth = window.Place("pbar").width();

  EXPECT_TRUE(job.AwaitStatus(kBeforeTheStart));
  EXPECT_TRUE(job.AwaitStatus("Progress: 00.00 % Complete: Status: Cropping..."));
  EXPECT_EQ(job.Progress(), 0);
  ASSERT_TRUE(program.Open("start"));
  EXPECT_TRUE(job.AwaitStatus("Progress: 00.00% Complete: Status: Cropping Video"));
  EXPECT_TRUE(WaitFor([&] { return window.Progress() > 0; }));
  ExpectFilled(job.Progress(), jobWidth, 0.2);
  ExpectFilled(window.Progress(), mainWidth, 0.2);
  ASSERT_TRUE(program.Open("second"));
  EXPECT_TRUE(job.AwaitStatus("Progress: 20.00% Complete: Status: Cropping Video"));
  ExpectFilled(job.Progress(), jobWidth, 0.5);
  EXPECT_TRUE(WaitFor([&] { return window.Progress() > mainWidth * 0.4; }));
  ExpectFilled(window.Progress(), mainWidth, 0.5);
  // What is no time leaves the bars where they are; the figure catches up.
  ASSERT_TRUE(program.Open("third"));
  EXPECT_TRUE(job.AwaitStatus("Progress: 50.00% Complete: Status: Cropping Video"));
  ExpectFilled(job.Progress(), jobWidth, 0.5);
  ASSERT_TRUE(program.Open("end"));
  EXPECT_TRUE(job.AwaitSuccess());
  ExpectFilled(job.Progress(), jobWidth, 0.5);
  ExpectFilled(window.Progress(), mainWidth, 0.5);
}

TEST_F(Crop, CountsSecondsAsPercentWithoutADuration) {
  ReplaceProbe("N/A");
  program.ReplaceTool("ffmpeg", PrintTime("00:00:30", "first") + PrintTime("00:02:00", "second"));
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  ASSERT_TRUE(WaitFor([&] { return job.Progress() > 0; }));
  ExpectFilled(job.Progress(), 409, 0.3);
  ASSERT_TRUE(program.Open("first"));
  EXPECT_TRUE(job.AwaitStatus("Progress: 30.00% Complete: Status: Cropping Video"));
  ExpectFilled(job.Progress(), 409, 0.3);
  ASSERT_TRUE(program.Open("second"));
  EXPECT_TRUE(job.AwaitSuccess());
}

TEST_F(Crop, PutsTheFigureIntoTheTitleOfAMinimisedWindowAlone) {
  ReplaceProbe("00:00:10.00");
  program.ReplaceTool("ffmpeg", program.TalkingGate("start") + PrintTime("00:00:02", "first") +
                                    PrintTime("00:00:04", "second") +
                                    PrintTime("00:00:06", "third"));
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  ASSERT_TRUE(job.AwaitStatus("Progress: 00.00 % Complete: Status: Cropping..."));
  ASSERT_TRUE(program.Open("start"));
  ASSERT_TRUE(WaitFor([&] { return window.Progress() > 0; }));
  EXPECT_EQ(screen.Title(window.Id()), "Kelvane");

  screen.Minimise(window.Id());
  ASSERT_TRUE(WaitFor([&] { return screen.Minimised(window.Id()); }));
  EXPECT_TRUE(HoldsFor([&] { return screen.Title(window.Id()) == "Kelvane"; }, 300ms))
      << "until the next update";
  ASSERT_TRUE(program.Open("first"));
  EXPECT_TRUE(WaitFor([&] { return screen.Title(window.Id()) == "Crop: 20.00%"; }))
      << screen.Title(window.Id()).toStdString();

  screen.Activate(window.Id());
  ASSERT_TRUE(WaitFor([&] { return !screen.Minimised(window.Id()); }));
  EXPECT_TRUE(HoldsFor([&] { return screen.Title(window.Id()) == "Crop: 20.00%"; }, 300ms))
      << "until the next update";
  ASSERT_TRUE(program.Open("second"));
  EXPECT_TRUE(WaitFor([&] { return screen.Title(window.Id()) == "Kelvane"; }));
  ASSERT_TRUE(program.Open("third"));
  EXPECT_TRUE(job.AwaitSuccess());
}

TEST_F(Crop, IsFiredByAnyMouseButton) {
  program.ReplaceTool("ffmpeg", "");
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  for (const PointerButton button : {kLeftButton, kMiddleButton, kRightButton}) {
    SCOPED_TRACE(button);
    const QList<WindowId> known = screen.Windows();
    window.Click(kCropVideo, button);
    const WindowId dialog = screen.AwaitNew(known);
    ASSERT_NE(dialog, 0U);
    EXPECT_EQ(screen.Title(dialog), "Save Cropped Video As");
    ASSERT_TRUE(TypeFileName(screen, dialog, output));
    ASSERT_TRUE(job.Await());
    ASSERT_TRUE(job.AwaitSuccess());
    job.Cancel(button);
    ASSERT_TRUE(WaitFor([&] { return !job.Open(); }));
  }
  EXPECT_EQ(program.RunsOf("ffmpeg").size(), 3);
}

TEST_F(Crop, StartsNothingWhenTheDialogIsCancelled) {
  program.ReplaceTool("ffmpeg", "");
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  window.Click(kCropVideo);
  const WindowId dialog = screen.Await("Save Cropped Video As");
  ASSERT_TRUE(WaitFor([&] { return screen.Active(dialog); }));
  screen.Strike(kEscape);
  ASSERT_TRUE(WaitFor([&] { return !screen.Exists(dialog); }));
  EXPECT_TRUE(HoldsFor([&] { return !job.Open(); }, 2500ms));
  EXPECT_TRUE(program.RunsOf("ffmpeg").isEmpty());
}

TEST_F(Crop, AddsNoExtensionAndAsksNoQuestionAboutAnExistingFile) {
  program.ReplaceTool("ffmpeg", "");
  const QString bare = program.PathOf("existing");
  ASSERT_NO_FATAL_FAILURE(WriteFile(bare, "keep me"));
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  ASSERT_NO_FATAL_FAILURE(StartCrop(bare));
  EXPECT_EQ(screen.Windows().size(), 2) << "the two windows of the program and no question";
  EXPECT_TRUE(WaitFor([&] { return job.ShowsOutput(bare); }));
  ASSERT_TRUE(job.AwaitSuccess());
  EXPECT_EQ(program.RunsOf("ffmpeg").value(0).value(3), bare);
}

TEST_F(Crop, BlackensCancelUnderThePointer) {
  ReplaceProbe("00:00:10.00");
  program.ReplaceTool("ffmpeg", "");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  ASSERT_TRUE(job.AwaitSuccess());
  const QPoint plate = job.CancelButton() + QPoint(-45, 0);
  EXPECT_EQ(screen.Pixel(plate), kDark);
  screen.MovePointer(job.CancelButton());
  EXPECT_TRUE(WaitFor([&] { return screen.Pixel(plate) == kBlack; }));
  const QPoint ground = screen.Place(job.Id()).topLeft() + QPoint(8, 8);
  screen.MovePointer(ground);
  EXPECT_TRUE(WaitFor([&] { return screen.Pixel(plate) == kDark; }));
}

TEST_F(Crop, PutsTheBarsBackWithoutAVideo) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  window.Click(kResetMarkers);
  window.PointAtGround();
  EXPECT_TRUE(WaitFor([&] { return window.Shows("Label14(6)", "Reset Markers"); }));
  EXPECT_TRUE(window.Bars().isEmpty()) << "the canvas stays hidden";
  EXPECT_EQ(screen.Windows().size(), 1);
  CloseAndExpectEnd();
}

}  // namespace
}  // namespace kelvane::desktop
