// A display that disappears, and a calendar clock that jumps.
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QSaveFile>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <utility>

#include "desktop/DesktopTest.h"
#include "desktop/driver/PrivateDisplay.h"
#include "support/Sanitized.h"

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
  Program stabiliser(KELVANE_PROGRAM_FOLDER, name, "kelvane-stabiliser");
  {
    const Screen screen(display->Name());
    for (Program* program : {&main, &joiner, &sections, &stabiliser}) {
      program->Start();
      ASSERT_NE(screen.AwaitNew(screen.Windows()), 0U);
    }
  }
  display.reset();
  for (Program* program : {&main, &joiner, &sections, &stabiliser}) {
    EXPECT_EQ(program->AwaitExit(5s), kDisplayLost) << program->Printed().toStdString();
  }
}

class LostConnection : public DesktopTest {
 protected:
  // Qt then exits without freeing memory that is in use.
  LostConnection() { program.AllowLeaks(); }
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
TEST_F(LostConnection, DuringAJobEndsTheProgramWhileTheCropToolFinishesItsFile) {
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
  EXPECT_EQ(PicturesWithoutComplaint(output), PicturesWithoutComplaint(video));
}

// The calendar clock is that of libfaketime, which reads its offset from a file.
class JumpingClock : public DesktopTest, public ::testing::WithParamInterface<const char*> {
 protected:
  JumpingClock() {
    SetOffset("+0");
    for (const auto& [name, value] :
         {std::pair<QString, QString>("LD_PRELOAD", "/usr/$LIB/faketime/libfaketimeMT.so.1"),
          {"FAKETIME_TIMESTAMP_FILE", program.PathOf("offset")},
          {"FAKETIME_NO_CACHE", "1"},
          {"FAKETIME_DONT_FAKE_MONOTONIC", "1"}}) {
      program.SetVariable(name, value);
      environment_.insert(name, value);
    }
  }

  // Replaces the file as a whole: libfaketime ends the program if it reads an empty one.
  void SetOffset(const QByteArray& offset) {
    QSaveFile file(program.PathOf("offset"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(offset);
    ASSERT_TRUE(file.commit());
  }

  // The time, in seconds since 1970, that a tool reads from the calendar clock of libfaketime.
  qint64 Time() const {
    QProcess date;
    date.setProcessEnvironment(environment_);
    date.start("date", {"+%s"});
    return date.waitForFinished() ? date.readAll().trimmed().toLongLong() : 0;
  }

 private:
  QProcessEnvironment environment_ = QProcessEnvironment::systemEnvironment();
};

// libmpv of Debian 12 waits by that clock: after a jump back the video may stand still, and the
// test clicks "Run Video" again.
TEST_P(JumpingClock, LeavesAVideoPlayableAndAJobUndisturbed) {
  if (kSanitized) GTEST_SKIP() << "a sanitizer's library must be loaded before libfaketime";
  program.ReplaceTool("ffmpeg", program.PrintingGate("jumped") + R"(exec "$real" "$@")");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 30));
  window.Click(kRunVideo);
  ASSERT_TRUE(window.AwaitMoving(kSize));
  ASSERT_TRUE(ContentOf(QStringLiteral("/proc/%1/maps").arg(program.Id())).contains("faketime"));
  const qint64 before = Time();
  SetOffset(GetParam());
  ASSERT_GT(std::abs(Time() - before), 3000);
  if (*GetParam() == '-') window.Click(kRunVideo);
  EXPECT_TRUE(window.AwaitCaption("Label13", "00:04"));
  EXPECT_TRUE(window.AwaitMoving(kSize));
  const QString output = program.PathOf("cropped.mp4");
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  SetOffset("+0");
  ASSERT_TRUE(program.Open("jumped"));
  ASSERT_NO_FATAL_FAILURE(ExpectEndAndCloseJob());
  EXPECT_EQ(PicturesWithoutComplaint(output), PicturesWithoutComplaint(video));
  CloseAndExpectEnd();
}

INSTANTIATE_TEST_SUITE_P(Session, JumpingClock, ::testing::Values("+3600", "-3600"),
                         [](const auto& jump) { return *jump.param == '-' ? "Back" : "Ahead"; });

}  // namespace
}  // namespace kelvane::desktop
