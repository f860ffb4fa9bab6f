// Crops and previews with the real tools, and the web pages that the menus open.
#include <QFile>
#include <QFileInfo>

#include "desktop/DesktopTest.h"

namespace kelvane::desktop {
namespace {

using Crop = DesktopTest;

TEST_F(Crop, WritesWhatTheBareCommandWrites) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(640, 360), 20));
  const QByteArray source = ContentOf(video);
  const QString output = program.PathOf("cropped.mp4");
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  EXPECT_TRUE(job.AwaitStatus("Progress: 00.00 % Complete: Status: Getting Crop Regions"));
  EXPECT_TRUE(job.ShowsOutput(output));
  EXPECT_TRUE(WaitFor([&] { return job.Progress() > 0 && window.Progress() > 0; }));
  EXPECT_TRUE(job.AwaitEndStatus(60s));
  // The crop filter rounds 635 by 355 down to whole colour samples.
  EXPECT_EQ(VideoSize(output), QSize(634, 354));
  const QString bare = program.PathOf("bare.mp4");
  ASSERT_TRUE(RunTool("ffmpeg", {"-i", video, "-vf", "crop=635:355:0:0", bare}));
  EXPECT_EQ(ContentOf(output), ContentOf(bare));
  EXPECT_EQ(ContentOf(video), source);
  ExpectEndAndCloseJob();
  CloseAndExpectEnd();
}

// Outputs that the tool doesn't write.
class CropOutput : public DesktopTest {
 protected:
  // Crops to that file, and expects that the tool prints this complaint and that no file changes.
  void ExpectNoFileChanges(const QString& output, const QByteArray& complaint,
                           const char* moreArguments = "") {
    ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(320, 240), 1));
    const QString printed = program.PathOf("log/printed");
    program.ReplaceTool(
        "ffmpeg", QString(R"("$real" %1 "$@" 2>&1 | tee '%2' >&2)").arg(moreArguments, printed));
    const QHash<QString, QByteArray> before = Files();
    ASSERT_NO_FATAL_FAILURE(StartCrop(output));
    ExpectEndAndCloseJob();
    EXPECT_TRUE(ContentOf(printed).contains(complaint)) << ContentOf(printed).toStdString();
    EXPECT_EQ(Files(), before);
  }
};

TEST_F(CropOutput, AnExistingFileIsKept) {
  const QString existing = program.PathOf("existing.mp4");
  WriteFile(existing, "somebody's work");
  ExpectNoFileChanges(existing, "already exists");
}

TEST_F(CropOutput, IsKeptIfItIsTheInput) {
  ExpectNoFileChanges(program.PathOf("video.mp4"), "already exists");
}

// Nobody can make a file in /proc, not even root.
TEST_F(CropOutput, IsNotMadeInAFolderThatTakesNoFiles) {
  const QString output = program.PathOf("cropped.mp4");
  ASSERT_TRUE(QFile::link("/proc/cropped.mp4", output));
  ExpectNoFileChanges(output, output.toLocal8Bit() + ": No such file or directory");
}

// Without -y the tool would refuse to write to a device.
TEST_F(CropOutput, OnAFullDiskShowsNoMessage) {
  const QString full = program.PathOf("full.mp4");
  ASSERT_TRUE(QFile::link("/dev/full", full));
  ExpectNoFileChanges(full, "No space left on device", "-y");
}

using Preview = DesktopTest;

TEST_F(Preview, ShowsTheCropRegionThroughALinkIfTheVideosNameHasABlank) {
  program.ReplaceTool("ffplay", R"(exec "$real" "$@")");
  video = program.PathOf("my video.mp4");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(640, 360), 20));
  window.Click(kPreviewCroppedVideo);
  const WindowId player = screen.AwaitNew({window.Id()});
  ASSERT_NE(player, 0U);
  EXPECT_TRUE(WaitFor([&] { return screen.Place(player).size() == QSize(634, 354); }));
  constexpr int kManyColours = 100;
  EXPECT_TRUE(
      WaitFor([&] { return Colours(screen.Picture(screen.Place(player))) > kManyColours; }));
  EXPECT_TRUE(window.Answers());
  EXPECT_EQ(QFileInfo(program.RunsOf("ffplay").value(0).value(1)).symLinkTarget(), video);
  EXPECT_TRUE(screen.Title(player).endsWith("/my_video.mp4")) << screen.Title(player).toStdString();

  screen.Activate(player);
  ASSERT_TRUE(WaitFor([&] { return screen.Active(player); }));
  screen.PressKey('q');
  EXPECT_TRUE(WaitFor([&] { return !screen.Exists(player); }));
  EXPECT_TRUE(WaitFor([&] { return program.Children().isEmpty(); }));
  EXPECT_TRUE(window.AwaitBarsAround(QSize(640, 360)));
  CloseAndExpectEnd();
}

using WebPages = DesktopTest;

TEST_F(WebPages, AreOpenedByXdgOpen) {
  const QString opened = program.PathOf("opened");
  program.AddCommand("xdg-open", "echo \"$@\" >> '" + opened + "'");
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  constexpr int kUpdates = 1;
  constexpr int kDonate = 2;
  window.ChooseFirstItem(kUpdates);
  EXPECT_TRUE(WaitFor([&] { return ContentOf(opened) == KELVANE_HOME_PAGE "/updates\n"; }))
      << ContentOf(opened).toStdString();
  window.ChooseFirstItem(kDonate);
  EXPECT_TRUE(WaitFor([&] { return ContentOf(opened).endsWith("/donate\n"); }))
      << ContentOf(opened).toStdString();
}

}  // namespace
}  // namespace kelvane::desktop
