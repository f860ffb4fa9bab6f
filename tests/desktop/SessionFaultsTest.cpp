// A display that disappears, and a calendar clock that jumps.
#include <QDirIterator>
#include <QFileInfo>
#include <QRegularExpression>
#include <csignal>
#include <memory>

#include "desktop/DesktopTest.h"
#include "desktop/driver/PrivateDisplay.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kSize(320, 240);
// Qt's exit code for a program whose display is gone.
constexpr int kDisplayLost = 1;

TEST(LostDisplay, EndsAllPrograms) {
  const QTemporaryDir home;
  auto display = std::make_unique<PrivateDisplay>(home.path().toStdString());
  const QString name = QString::fromStdString(display->Name());
  Program main(KELVANE_PROGRAM_FOLDER, name);
  Program joiner(KELVANE_PROGRAM_FOLDER, name, "kelvane-joiner");
  Program sections(KELVANE_PROGRAM_FOLDER, name, "kelvane-sections");
  {
    const Screen screen(display->Name());
    for (Program* program : {&main, &joiner, &sections}) {
      program->Start();
      ASSERT_NE(screen.AwaitNew(screen.Windows()), 0U);
    }
  }
  display.reset();
  for (Program* program : {&main, &joiner, &sections}) {
    EXPECT_EQ(program->AwaitExit(5s), kDisplayLost) << program->Printed().toStdString();
  }
}

class LostConnection : public DesktopTest {
 protected:
  // Qt then exits without freeing memory that is in use.
  LostConnection() {
    program.SetVariable("ASAN_OPTIONS", qEnvironmentVariable("ASAN_OPTIONS") + ":detect_leaks=0");
  }
};

TEST_F(LostConnection, WhileAVideoPlaysEndsTheProgramAndRemovesItsLinks) {
  program.ReplaceTool("ffprobe", R"(exec "$real" "$@")");
  video = program.PathOf("a clip.mp4");
  ASSERT_TRUE(MakeVideo(video, kSize, 30));
  const QByteArray content = ContentOf(video);
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, video));
  ASSERT_TRUE(window.AwaitVideo(kSize));
  window.Click(kRunVideo);
  ASSERT_TRUE(window.AwaitMoving(kSize));
  const QFileInfo link(program.RunsOf("ffprobe").last().last());
  ASSERT_EQ(link.symLinkTarget(), video);
  screen.Disconnect(window.Id());
  EXPECT_EQ(program.AwaitExit(5s), kDisplayLost);
  EXPECT_FALSE(QFileInfo::exists(link.path()));
  EXPECT_EQ(ContentOf(video), content);
}

// The crop tool ignores that nobody reads its output any more.
TEST_F(LostConnection, DuringAJobEndsTheProgramAndTheCropToolFinishesItsFile) {
  program.ReplaceTool("ffmpeg", R"(exec "$real" -re "$@")");  // encodes as slowly as a player plays
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 4));
  const QString output = program.PathOf("cropped.mp4");
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  ASSERT_TRUE(WaitFor([&] { return job.Progress() > 0; }));
  const pid_t tool = Tool();
  ASSERT_NE(tool, 0);
  screen.Disconnect(window.Id());
  EXPECT_EQ(program.AwaitExit(5s), kDisplayLost);
  EXPECT_EQ(kill(tool, 0), 0) << "the tool has ended";
  EXPECT_TRUE(WaitFor([&] { return kill(tool, 0) != 0; }));
  EXPECT_EQ(Pictures(output), Pictures(video));
}

// A jump of that clock therefore delays no timer, no wait and no read-out.
TEST(CalendarClock, IsNotReadByTheProgram) {
  const QRegularExpression reading(
      R"(system_clock|high_resolution_clock|CLOCK_REALTIME|QDateTime|QTime::current|QDate\b)"
      R"(|gettimeofday|timedwait|\b(local|gm|mk)time\b|std::time\b|[^\w.>]time\((0|NULL|nullptr|&))");
  int sources = 0;
  QDirIterator files(KELVANE_PROJECT_FOLDER "/src", {"*.cpp", "*.h"}, QDir::Files,
                     QDirIterator::Subdirectories);
  while (files.hasNext()) {
    const QString path = files.next();
    ++sources;
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const auto match = reading.match(QString::fromUtf8(file.readAll()));
    EXPECT_FALSE(match.hasMatch()) << path.toStdString() << ": " << match.captured().toStdString();
  }
  EXPECT_GT(sources, 50);
}

}  // namespace
}  // namespace kelvane::desktop
