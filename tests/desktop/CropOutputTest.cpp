// Outputs that the real tool can't write: the window says that the job succeeded all the same, and
// nothing is touched.
#include <QFile>

#include "desktop/DesktopTest.h"

namespace kelvane::desktop {
namespace {

class CropOutput : public DesktopTest {
 protected:
  // Crops to that file, and expects that every file stays as it is and that the tool complains so.
  void ExpectNothingIsTouchedBy(const QString& output, const QByteArray& complaint,
                                const char* moreArguments = "") {
    ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(320, 240), 1));
    const QString said = program.PathOf("log/said");
    program.ReplaceTool("ffmpeg", QStringLiteral(R"("$real" %1 "$@" 2>&1 | tee '%2' >&2)")
                                      .arg(QLatin1String(moreArguments), said));
    const QHash<QString, QByteArray> before = Files();
    ASSERT_NO_FATAL_FAILURE(StartCrop(output.isEmpty() ? video : output));
    EXPECT_TRUE(job.AwaitSuccess());
    EXPECT_EQ(screen.Windows().size(), 2) << "no message";
    EXPECT_TRUE(ContentOf(said).contains(complaint)) << ContentOf(said).toStdString();
    EXPECT_EQ(Files(), before);
    job.Cancel();
    EXPECT_TRUE(WaitFor([&] { return !job.Open(); }));
    CloseAndExpectEnd();
  }
};

TEST_F(CropOutput, AnExistingFileIsKept) {
  const QString existing = program.PathOf("existing.mp4");
  ASSERT_NO_FATAL_FAILURE(WriteFile(existing, "somebody's work"));
  ExpectNothingIsTouchedBy(existing, "already exists");
}

TEST_F(CropOutput, TheInputIsKept) { ExpectNothingIsTouchedBy({}, "already exists"); }

// A link into a folder where nobody can make a file, not even root.
TEST_F(CropOutput, AFolderWithoutRoomForFilesStaysAsItIs) {
  const QString output = program.PathOf("cropped.mp4");
  ASSERT_TRUE(QFile::link("/proc/cropped.mp4", output));
  ExpectNothingIsTouchedBy(output, output.toLocal8Bit() + ": No such file or directory");
}

// The tool would ask about a device's name; the switch answers, so that it comes to write.
TEST_F(CropOutput, AFullDiskIsNoReasonForAMessage) {
  const QString full = program.PathOf("full.mp4");
  ASSERT_TRUE(QFile::link("/dev/full", full));
  ExpectNothingIsTouchedBy(full, "No space left on device", "-y");
}

}  // namespace
}  // namespace kelvane::desktop
