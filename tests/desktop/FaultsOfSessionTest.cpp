// A session that changes under the program: its display goes away, its numbers look another way,
// its clock jumps.
#include <QDir>
#include <QProcess>
#include <cerrno>
#include <csignal>
#include <memory>

#include "desktop/JoinerTest.h"
#include "desktop/PlayingTest.h"
#include "desktop/driver/PrivateDisplay.h"
#include "desktop/faults/Faults.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kSize(320, 240);
// What Qt ends a program with that has lost its display.
constexpr int kDisplayLost = 1;

class ADisplay : public Playing {
 protected:
  // Qt ends the program in the middle of what it does: what is in use then is no leak.
  ADisplay() {
    program.SetVariable("ASAN_OPTIONS", qEnvironmentVariable("ASAN_OPTIONS") + ":detect_leaks=0");
  }
  // Begins a crop and cuts the program off once its tool, whose number `tool` then is, is at work.
  void LoseDisplayDuringCrop(const QString& output) {
    ASSERT_NO_FATAL_FAILURE(StartCrop(output));
    ASSERT_TRUE(WaitFor([&] { return job.Progress() > 0; }));
    const QList<qint64> tools = program.Children("RSD");
    ASSERT_EQ(tools.size(), 1);
    tool = static_cast<pid_t>(tools.first());
    screen.Disconnect(window.Id());
    EXPECT_EQ(program.AwaitExit(5s), kDisplayLost);
  }
  // The folder of temporary names that holds one for this file; empty if there is none.
  static QString FolderNaming(const QString& path) {
    const QString pattern = QStringLiteral("kelvane-%1-*").arg(geteuid());
    for (const QFileInfo& folder : QDir("/tmp").entryInfoList({pattern}, QDir::Dirs)) {
      for (const QFileInfo& name : QDir(folder.filePath()).entryInfoList(QDir::Files)) {
        if (name.symLinkTarget() == path) return folder.filePath();
      }
    }
    return {};
  }

  pid_t tool = 0;
};

TEST(ADisplayServer, ThatGoesAwayEndsEveryProgramOfItsDisplay) {
  const QTemporaryDir home;
  auto display = std::make_unique<PrivateDisplay>(home.path().toStdString());
  const QString name = QString::fromStdString(display->Name());
  Program main(QStringLiteral(KELVANE_PROGRAM_FOLDER), name);
  Program joiner(QStringLiteral(KELVANE_PROGRAM_FOLDER), name, "kelvane-joiner");
  Program sections(QStringLiteral(KELVANE_PROGRAM_FOLDER), name, "kelvane-sections");
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

TEST_F(ADisplay, ThatGoesAwayWhileAVideoPlaysEndsTheProgramAndItsTemporaryNames) {
  const QString blank = program.PathOf("a clip.mp4");
  ASSERT_TRUE(MakeVideo(blank, kSize, 30));
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  ASSERT_NO_FATAL_FAILURE(LoadAndRun(blank, kSize));
  ASSERT_TRUE(AwaitMoving(kSize));
  const QByteArray content = ContentOf(blank);
  const QString folder = FolderNaming(blank);
  ASSERT_FALSE(folder.isEmpty());
  screen.Disconnect(window.Id());
  EXPECT_EQ(program.AwaitExit(5s), kDisplayLost);
  EXPECT_FALSE(QFile::exists(folder));
  EXPECT_EQ(ContentOf(blank), content);
}

TEST_F(ADisplay, ThatGoesAwayDuringAJobEndsTheProgramAndTheTool) {
  ReplaceProbe("00:00:10.00");
  program.ReplaceTool(
      "ffmpeg",
      "for output; do :; done\n"
      "while echo 'time=00:00:03.00'; do echo part >> \"$output\"; sleep 0.02; done");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
  const QString output = program.PathOf("cropped.mp4");
  ASSERT_NO_FATAL_FAILURE(LoseDisplayDuringCrop(output));
  EXPECT_TRUE(WaitFor([&] { return kill(tool, 0) != 0; })) << "nobody reads what it prints";
  EXPECT_TRUE(ContentOf(output).startsWith("part\n")) << "what it had written stays";
  EXPECT_EQ(ContentOf(video), "no video");
}

// The crop tool takes no notice of an output that nobody reads, once it is at work.
TEST_F(ADisplay, ThatGoesAwayDuringAJobLeavesTheCropToolToFinishItsFile) {
  program.ReplaceTool("ffmpeg", "exec \"$real\" -re \"$@\"");  // no faster than it is played
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 4));
  const QByteArray content = ContentOf(video);
  const QString output = program.PathOf("cropped.mp4");
  ASSERT_NO_FATAL_FAILURE(LoseDisplayDuringCrop(output));
  EXPECT_EQ(kill(tool, 0), 0) << "it goes on";
  EXPECT_TRUE(WaitFor([&] { return kill(tool, 0) != 0; }));
  EXPECT_EQ(Pictures(output), Pictures(video));
  EXPECT_EQ(ContentOf(video), content);
}

// French numbers: a comma divides, and what groups takes three bytes.
QString French(const char* number) { return QString::fromUtf8(number).replace(' ', QChar(0x202f)); }

void SpeakFrench(Program& program) {
  const QString locales = program.PathOf("locales");
  const QString locale = QStringLiteral("fr_FR.UTF-8");
  ASSERT_TRUE(QDir().mkpath(locales));
  ASSERT_TRUE(
      RunTool("localedef", {"--no-archive", "-i", "fr_FR", "-f", "UTF-8", locales + '/' + locale}))
      << "the definitions of locales are missing";
  program.SetVariable("LOCPATH", locales);
  program.SetVariable("LANG", locale);
}

class FrenchSession : public Playing {
 protected:
  FrenchSession() { SpeakFrench(program); }
};

TEST_F(FrenchSession, MeasuresPlaysAndCropsAsAnyOther) {
  const QSize size(1920, 1080);
  video = program.PathOf("video.mp4");
  const QString output = program.PathOf("cropped.mp4");
  ASSERT_TRUE(MakeVideo(video, size, 2));
  program.ReplaceTool("ffmpeg", R"(exec "$real" "$@")");
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, video));
  for (const auto& [label, caption] : {std::pair("Label1(1)", "1 920"),
                                       {"Label1(3)", "1 080"},
                                       {"Label1(5)", "0 000"},
                                       {"Label1(9)", "1 915"},
                                       {"Label1(11)", "1 075"},
                                       {"Label1(15)", "1 915"}}) {
    EXPECT_TRUE(window.AwaitCaption(label, French(caption))) << label;
  }
  ASSERT_TRUE(window.AwaitCanvas());
  window.Click(kRunVideo);
  EXPECT_TRUE(AwaitMoving(size));
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  EXPECT_TRUE(job.AwaitSuccess());
  EXPECT_EQ(program.RunsOf("ffmpeg").value(0).value(3), "crop=1915:1075:0:0");
  EXPECT_EQ(VideoSize(output), QSize(1914, 1074));
  job.Cancel();
  EXPECT_TRUE(WaitFor([&] { return !job.Open(); }));
  CloseAndExpectEnd();
}

TEST_F(FrenchSession, ShowsAJobsFigureWithAComma) {
  ReplaceProbe("00:00:10.00");
  program.ReplaceTool("ffmpeg",
                      "printf 'time=00:00:03.00\\r' >&2\n" + program.TalkingGate("first") +
                          "printf 'time=00:00:08.00\\r' >&2\n" + program.TalkingGate("second"));
  video = program.PathOf("pretended.mp4");
  ASSERT_NO_FATAL_FAILURE(WriteFile(video, "no video"));
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, video));
  ASSERT_TRUE(window.AwaitCanvas());
  ASSERT_NO_FATAL_FAILURE(StartCrop(program.PathOf("cropped.mp4")));
  EXPECT_TRUE(job.AwaitStatus("Progress: 00,00% Complete: Status: Cropping Video"));
  ASSERT_TRUE(program.Open("first"));
  EXPECT_TRUE(job.AwaitStatus("Progress: 30,00% Complete: Status: Cropping Video"));
  ASSERT_TRUE(program.Open("second"));
  EXPECT_TRUE(job.AwaitSuccess());
}

class FrenchJoiner : public JoinerTest {
 protected:
  FrenchJoiner() { SpeakFrench(program); }
};

TEST_F(FrenchJoiner, CountsAndJoinsAsAnyOther) {
  PretendProbing();
  ASSERT_NO_FATAL_FAILURE(Add(Pretended("a.mp4", "00:10:10.90")));
  ASSERT_NO_FATAL_FAILURE(Add(Pretended("b.mp4", "00:10:10.90")));
  EXPECT_TRUE(joiner.AwaitTotals(2, French("01 220"), "00:20:20"));
  program.ReplaceTool("ffmpeg", "");
  const QString output = program.PathOf("joined.mp4");
  ASSERT_NO_FATAL_FAILURE(JoinTo(output));
  EXPECT_EQ(program.RunsOf("ffmpeg"), QList<QStringList>{CopyRun({output})});
  CloseJoinerAndExpectEnd();
}

constexpr std::chrono::hours kDay(24);

struct Jump {
  const char* name;
  std::chrono::hours time;
};

void PrintTo(const Jump& jump, std::ostream* stream) { *stream << jump.name; }

const auto kJumps = ::testing::Values(Jump{"Ahead", 365 * kDay}, Jump{"Back", -kDay});
constexpr auto kNameOfJump = [](const auto& jump) { return jump.param.name; };

// The program itself times what it does by another clock, and only its libraries read this one.
class AClockThatJumps : public Playing, public ::testing::WithParamInterface<Jump> {
 protected:
  // The times that are shown of a video go on.
  void ExpectPositionMoves() {
    const QRect position = window.Place("Label13");
    const QImage before = screen.Picture(position);
    EXPECT_TRUE(WaitFor([&] { return screen.Picture(position) != before; }, 5s));
  }
  Faults faults{program};
};

INSTANTIATE_TEST_SUITE_P(FaultsOfSession, AClockThatJumps, kJumps, kNameOfJump);

// The player's library of Debian 12 waits for moments of this clock, and may stand still after a
// jump back; the one of Debian 13 doesn't read it.
TEST_P(AClockThatJumps, LeavesTheWindowAliveAndAVideoThatMovesOrCanBeRunAgain) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 60));
  window.Click(kRunVideo);
  ASSERT_TRUE(AwaitMoving(kSize));
  ASSERT_TRUE(faults.PutClockAhead(GetParam().time));
  if (GetParam().time > std::chrono::hours::zero()) {
    EXPECT_TRUE(AwaitMoving(kSize));
    ExpectPositionMoves();
  }
  EXPECT_TRUE(Lives());
  screen.Drag(window.OnCanvas({2, kSize.height() / 2}), {40, 0});
  EXPECT_TRUE(window.AwaitCaption("Label1(5)", "0,040")) << "the region's read-outs";
  window.Click(kRunVideo);
  EXPECT_TRUE(AwaitMoving(kSize));
  ExpectPositionMoves();
  CloseAndExpectEnd();
}

TEST_P(AClockThatJumps, HoldsUpNoJob) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(640, 360), 1));
  const QString output = program.PathOf("cropped.mp4");
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  ASSERT_TRUE(faults.PutClockAhead(GetParam().time));
  EXPECT_TRUE(job.AwaitSuccess());
  EXPECT_EQ(VideoSize(output), QSize(634, 354));
  job.Cancel();
  EXPECT_TRUE(WaitFor([&] { return !job.Open(); }));
  CloseAndExpectEnd();
}

class AJoinersClockThatJumps : public JoinerTest, public ::testing::WithParamInterface<Jump> {
 protected:
  AJoinersClockThatJumps() : faults(program) {}
  Faults faults;
};

INSTANTIATE_TEST_SUITE_P(FaultsOfSession, AJoinersClockThatJumps, kJumps, kNameOfJump);

TEST_P(AJoinersClockThatJumps, HoldsUpNoJoin) {
  program.ReplaceTool("ffmpeg", program.TalkingGate("end"));
  const QString output = program.PathOf("joined.mp4");
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kJoinSections, output));
  ASSERT_TRUE(joiner.AwaitProcess("Process: Joining Your Videos...")) << "it waits for a second";
  // Late, the jump falls into the tool's run.
  ASSERT_TRUE(faults.PutClockAhead(GetParam().time));
  ASSERT_TRUE(WaitFor([&] { return Tool() != 0; })) << "the wait is over";
  ASSERT_TRUE(program.Open("end"));
  EXPECT_TRUE(ConfirmJoin(screen));
  EXPECT_EQ(program.RunsOf("ffmpeg").size(), 1);
  CloseJoinerAndExpectEnd();
}

}  // namespace
}  // namespace kelvane::desktop
