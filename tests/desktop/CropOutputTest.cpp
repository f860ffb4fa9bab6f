// Outputs that can't be written, and tools that fail: the window says that the job succeeded all
// the same, and nothing is touched that wasn't named as output.
#include <QFile>
#include <csignal>

#include "desktop/DesktopTest.h"

namespace kelvane::desktop {
namespace {

class CropOutput : public DesktopTest {
 protected:
  // Has the real tool note what it prints in "said".
  void NoteWhatTheToolSays(const QString& moreArguments = {}) {
    said = program.PathOf("log/said");
    program.ReplaceTool("ffmpeg",
                        "\"$real\" " + moreArguments + " \"$@\" 2>&1 | tee '" + said + "' >&2");
  }

  void CropTo(const QString& output) {
    ASSERT_NO_FATAL_FAILURE(StartCrop(output));
    EXPECT_TRUE(job.AwaitSuccess());
    EXPECT_EQ(screen.Windows().size(), 2) << "no message";
  }

  void LeaveInPeace() {
    job.Cancel();
    EXPECT_TRUE(WaitFor([&] { return !job.Open(); }));
    CloseAndExpectEnd();
  }

  QString said;
};

TEST_F(CropOutput, AnExistingFileIsKept) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(320, 240), 1));
  NoteWhatTheToolSays();
  const QString existing = program.PathOf("existing.mp4");
  ASSERT_NO_FATAL_FAILURE(WriteFile(existing, "somebody's work"));
  const QHash<QString, QByteArray> before = Files();
  ASSERT_NO_FATAL_FAILURE(CropTo(existing));
  EXPECT_TRUE(ContentOf(said).contains("already exists")) << ContentOf(said).toStdString();
  EXPECT_EQ(Files(), before);
  LeaveInPeace();
}

TEST_F(CropOutput, TheInputIsKept) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(320, 240), 1));
  NoteWhatTheToolSays();
  const QHash<QString, QByteArray> before = Files();
  ASSERT_NO_FATAL_FAILURE(CropTo(video));
  EXPECT_EQ(Files(), before);
  EXPECT_EQ(VideoSize(video), QSize(320, 240));
  LeaveInPeace();
}

TEST_F(CropOutput, ABlankInThePathCutsIt) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(320, 240), 1));
  NoteWhatTheToolSays();
  const QHash<QString, QByteArray> before = Files();
  ASSERT_NO_FATAL_FAILURE(CropTo(program.PathOf("my clip.mp4")));
  EXPECT_EQ(program.RunsOf("ffmpeg"), (QList<QStringList>{{"-i", video, "-vf", "crop=315:235:0:0",
                                                           program.PathOf("my"), "clip.mp4"}}));
  EXPECT_EQ(Files(), before);
  LeaveInPeace();
}

// A link into a folder where nobody can make a file, not even root.
TEST_F(CropOutput, AFolderWithoutRoomForFilesStaysAsItIs) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(320, 240), 1));
  NoteWhatTheToolSays();
  const QString output = program.PathOf("cropped.mp4");
  ASSERT_TRUE(QFile::link("/proc/cropped.mp4", output));
  const QHash<QString, QByteArray> before = Files();
  ASSERT_NO_FATAL_FAILURE(CropTo(output));
  EXPECT_TRUE(ContentOf(said).contains(output.toLocal8Bit() + ": No such file or directory"))
      << ContentOf(said).toStdString();
  EXPECT_EQ(Files(), before);
  LeaveInPeace();
}

// The tool would ask about a device's name; the switch answers, so that it comes to write.
TEST_F(CropOutput, AFullDiskIsNoReasonForAMessage) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(320, 240), 1));
  NoteWhatTheToolSays("-y");
  const QString full = program.PathOf("full.mp4");
  ASSERT_TRUE(QFile::link("/dev/full", full));
  const QHash<QString, QByteArray> before = Files();
  ASSERT_NO_FATAL_FAILURE(CropTo(full));
  EXPECT_TRUE(ContentOf(said).contains("No space left on device")) << ContentOf(said).toStdString();
  EXPECT_EQ(Files(), before);
  LeaveInPeace();
}

TEST_F(CropOutput, AMissingToolEndsTheJobAtOnce) {
  program.RemoveTool("ffmpeg");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(320, 240), 1));
  const QHash<QString, QByteArray> before = Files();
  ASSERT_NO_FATAL_FAILURE(CropTo(program.PathOf("cropped.mp4")));
  EXPECT_EQ(Files(), before);
  LeaveInPeace();
}

TEST_F(CropOutput, AToolThatIsKilledEndsTheJob) {
  ReplaceProbe("00:00:10.00");
  program.ReplaceTool("ffmpeg", "while echo 'time=00:00:03.00'; do sleep 0.05; done");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
  ASSERT_NO_FATAL_FAILURE(StartCrop(program.PathOf("cropped.mp4")));
  ASSERT_TRUE(WaitFor([&] { return job.Progress() > 0; }));
  const QList<qint64> tools = program.Children("RSD");
  ASSERT_EQ(tools.size(), 1);
  ASSERT_EQ(kill(static_cast<pid_t>(tools.first()), SIGKILL), 0);
  EXPECT_TRUE(job.AwaitSuccess());
  EXPECT_TRUE(WaitFor([&] { return program.Children("Z").isEmpty(); }));
  LeaveInPeace();
}

TEST_F(CropOutput, AToolThatFailsEndsTheJob) {
  ReplaceProbe("00:00:10.00");
  program.ReplaceTool("ffmpeg", "echo 'Conversion failed!' >&2; exit 1");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
  const QString existing = program.PathOf("cropped.mp4");
  ASSERT_NO_FATAL_FAILURE(WriteFile(existing, "somebody's work"));
  const QHash<QString, QByteArray> before = Files();
  ASSERT_NO_FATAL_FAILURE(CropTo(existing));
  EXPECT_EQ(program.RunsOf("ffmpeg").size(), 1);
  EXPECT_EQ(Files(), before);
  LeaveInPeace();
}

}  // namespace
}  // namespace kelvane::desktop
