// What the real probe tool says of files that trip the readings, and what becomes of it.
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

#include "platform/App.h"
#include "shared/SharedValues.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class RealTools : public MainWindowTest {
 protected:
  RealTools() {
    const QString probe = QStandardPaths::findExecutable(QStringLiteral("ffprobe"));
    App::setPath(QFileInfo(probe).path().toStdString());
  }

  // Makes a file with ffmpeg and loads it.
  void LoadMade(const QString& name, const QStringList& arguments) const {
    const QString file = tools_.Path() + QLatin1Char('/') + name;
    QProcess tool;
    tool.start(QStringLiteral("ffmpeg"),
               QStringList{"-v", "error"} + arguments + QStringList{file});
    ASSERT_TRUE(tool.waitForFinished());
    ASSERT_EQ(tool.exitCode(), 0) << tool.readAllStandardError().toStdString();
    Pick(file);
    ASSERT_EQ(Path().Text(), file);
  }
  static QStringList Source(const char* size) {
    return {"-f", "lavfi", "-i", QStringLiteral("testsrc2=duration=2:size=%1").arg(size)};
  }
};

TEST_F(RealTools, SizeAndDurationOfAnOrdinaryVideo) {
  LoadMade("clip.mp4", Source("1280x720"));
  EXPECT_EQ(Number(SourceWidth), "1,280");
  EXPECT_EQ(Number(SourceHeight), "0,720");
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:02");
}

TEST_F(RealTools, AWidthOfTwoDigitsCutsTheHeightShort) {
  LoadMade("small.mp4", Source("64x48"));
  EXPECT_EQ(Number(SourceWidth), "0,064");
  EXPECT_EQ(Number(SourceHeight), "0,008");
}

TEST_F(RealTools, AWidthOfFiveDigitsLeavesTheHeightsTextAsItIs) {
  LoadMade("wide.png", Source("10240x16") + QStringList{"-frames:v", "1"});
  EXPECT_EQ(Number(SourceWidth), "10,240");
  EXPECT_EQ(Number(SourceHeight), "t=16\r\n");
  EXPECT_EQ(Canvas().Width(), 10240);
}

// The tool prints the second picture's size behind the first one's. Where both arrive in one block
// the height is read to the block's end; where they don't, it is the first one's.
TEST_F(RealTools, TwoPicturesInAFileMayLeaveTheHeightsTextAsItIs) {
  LoadMade("two.mkv",
           Source("640x360") + Source("320x240") + QStringList{"-map", "0", "-map", "1"});
  EXPECT_EQ(Number(SourceWidth), "0,640");
  const std::string height = Number(SourceHeight);
  EXPECT_TRUE(height == "360\r\nwidth=320\r\nheight=240\r\n" || height == "0,360") << height;
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:02");
}

TEST_F(RealTools, ADurationThatIsNotAvailableIsTakenAsItStands) {
  LoadMade("bare.h264", Source("640x360"));
  EXPECT_EQ(Number(SourceWidth), "0,640");
  EXPECT_EQ(Number(SourceHeight), "0,360");
  EXPECT_EQ(VideoDuration.toStdString(), "N/A, bit");
}

// The system gives such a file to nobody, whoever asks.
TEST_F(RealTools, AFileThatCannotBeReadKeepsTheOldState) {
  LoadMade("clip.mp4", Source("640x360"));
  Pick(QStringLiteral("/proc/self/mem"));
  EXPECT_EQ(Path().Text(), QStringLiteral("/proc/self/mem"));
  EXPECT_EQ(Number(SourceWidth), "0,640");
  EXPECT_EQ(Number(SourceHeight), "0,360");
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:02");
}

}  // namespace
}  // namespace kelvane::testing
