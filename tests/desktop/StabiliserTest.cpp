// The stabiliser on a real screen, with the real tools.
#include <QFileInfo>
#include <csignal>

#include "desktop/DesktopTest.h"
#include "desktop/driver/StabiliserWindow.h"

namespace kelvane::desktop {
namespace {

constexpr const char* kSelect = "Label6(0)";
constexpr const char* kView = "Label14(1)";
constexpr const char* kExtract = "Label14(0)";
constexpr const char* kTest = "Label12(2)";
constexpr const char* kStop = "Label10(2)";
constexpr const char* kApply = "Label12(0)";
constexpr const char* kApplyCaption = "Apply De-Shake & Stabilize Settings";
constexpr QRgb kRed = 0xff0000;
constexpr QRgb kGreen = 0x00ff00;
constexpr QRgb kBlue = 0x0000ff;
constexpr QRgb kYellow = 0xffff00;
constexpr std::chrono::seconds kRunTime(60);

class StabiliserOnScreen : public DesktopTest {
 protected:
  StabiliserOnScreen() : DesktopTest("kelvane-stabiliser") {}

  // Opens the window with a second of each of four colours: 219 pixels a second.
  void SetUp() override {
    video = program.PathOf("four colours.mp4");
    ASSERT_TRUE(MakeColours(video, QSize(320, 180), {kRed, kGreen, kBlue, kYellow}));
    program.Start();
    ASSERT_TRUE(stabiliser.Await()) << "the window doesn't come";
  }
  void Select() {
    ASSERT_TRUE(stabiliser.ChooseFile(kSelect, video));
    ASSERT_TRUE(stabiliser.AwaitColour(kRed)) << "the first picture isn't shown";
    ASSERT_TRUE(stabiliser.AwaitTime(TimeReadOut::kEnd, "00:00:04.0"));
  }
  void CloseAndExpectNothingLeft() {
    const QHash<QString, QByteArray> files = Files();
    screen.Close(stabiliser.Id());
    EXPECT_EQ(program.AwaitExit(), 0);
    EXPECT_TRUE(program.Children("RSDT").isEmpty());
    EXPECT_EQ(Files().size(), files.size());
    EXPECT_TRUE(Temporaries().isEmpty()) << Temporaries().join(' ').toStdString();
  }
  QStringList Temporaries() const {
    return QDir(program.Folder()).entryList({".kelvane-*"}, QDir::Files | QDir::Hidden);
  }

  StabiliserWindow stabiliser{screen};
};

TEST_F(StabiliserOnScreen, MarksViewsExtractsTestsAndStabilises) {
  ASSERT_NO_FATAL_FAILURE(Select());
  stabiliser.DragNeedle(SectionWindow::kStartNeedle, 219 * 2);
  EXPECT_TRUE(stabiliser.AwaitColour(kBlue)) << "a dragged needle shows its frame";
  EXPECT_TRUE(stabiliser.AwaitTime(TimeReadOut::kStart, "00:00:02.0"));
  EXPECT_TRUE(stabiliser.AwaitTime(TimeReadOut::kSpan, "00:00:02.0"));

  const QList<WindowId> known = screen.Windows();
  stabiliser.Click(kView);
  const WindowId player = screen.AwaitNew(known);
  ASSERT_NE(player, 0U);
  EXPECT_TRUE(
      WaitFor([&] { return IsNear(screen.Pixel(screen.Place(player).center()), kBlue, 24); }));
  EXPECT_TRUE(WaitFor([&] { return !screen.Exists(player); })) << "it doesn't end by itself";
  ASSERT_TRUE(stabiliser.AwaitCommand(kView, "View Selected Region "));

  const QString part = program.PathOf("my part.mp4");
  ASSERT_TRUE(stabiliser.ChooseFile(kExtract, part));
  ASSERT_TRUE(stabiliser.ConfirmMessage(kRunTime));
  EXPECT_EQ(DecodedPictures(part), 50);

  stabiliser.Click(kStop);
  ASSERT_TRUE(stabiliser.AwaitColour(0x000000));
  stabiliser.Click(kTest);
  EXPECT_TRUE(stabiliser.AwaitColour(kBlue)) << "the result isn't played";
  ASSERT_TRUE(stabiliser.AwaitCommand(kTest, "Test Settings"));

  const QString steady = program.PathOf("steady.mp4");
  ASSERT_TRUE(stabiliser.ChooseFile(kApply, steady));
  ASSERT_TRUE(stabiliser.ConfirmMessage(kRunTime));
  EXPECT_EQ(DecodedPictures(steady), 100);
  EXPECT_TRUE(stabiliser.AwaitCommand(kApply, kApplyCaption));
  CloseAndExpectNothingLeft();
}

TEST_F(StabiliserOnScreen, TellsThatTheSourceVanishedBetweenThePassesAndLeavesNothing) {
  ASSERT_NO_FATAL_FAILURE(Select());
  program.ReplaceTool("ffmpeg", QString("case \"$*\" in\n*vidstabtransform*) rm '%1' ;;\nesac\n"
                                        "exec \"$real\" \"$@\"")
                                    .arg(video));
  const QString steady = program.PathOf("steady.mp4");
  ASSERT_TRUE(stabiliser.ChooseFile(kApply, steady));
  ASSERT_TRUE(stabiliser.ConfirmMessage(kRunTime));
  EXPECT_FALSE(QFileInfo::exists(steady));
  CloseAndExpectNothingLeft();
}

// Each phase: the tool begins and prints nothing more.
class StabiliserPhase : public StabiliserOnScreen,
                        public ::testing::WithParamInterface<const char*> {
 protected:
  void Begin() {
    program.ReplaceTool("ffmpeg",
                        QString("case \"$*\" in\n*%1*) echo time=00:00:01.00 x; exec sleep "
                                "1000 ;;\n*) exec \"$real\" \"$@\" ;;\nesac")
                            .arg(GetParam()));
    ASSERT_NO_FATAL_FAILURE(Select());
    ASSERT_TRUE(stabiliser.ChooseFile(Running(), program.PathOf("new.mp4")));
    ASSERT_TRUE(WaitFor([&] { return Tool() != 0 && !program.RunsOf("ffmpeg").isEmpty(); }));
    ASSERT_TRUE(
        WaitFor([&] { return program.RunsOf("ffmpeg").last().join(' ').contains(GetParam()); }));
  }
  const char* Running() const { return QString(GetParam()) == "-ss" ? kExtract : kApply; }
};

TEST_P(StabiliserPhase, IsCancelledWithoutATrace) {
  ASSERT_NO_FATAL_FAILURE(Begin());
  EXPECT_TRUE(stabiliser.AwaitCommand(Running(), "Cancel"));
  // So that the next click isn't taken for the second one of a double-click.
  screen.Click(stabiliser.BareGround());
  stabiliser.Click(Running());
  EXPECT_TRUE(WaitFor([&] { return Tool() == 0; }));
  EXPECT_TRUE(WaitFor([&] { return Temporaries().isEmpty(); }));
  EXPECT_FALSE(QFileInfo::exists(program.PathOf("new.mp4")));
  EXPECT_TRUE(WaitFor([&] { return stabiliser.Progress("pbar(0)") == 0; }));
  CloseAndExpectNothingLeft();
}

TEST_P(StabiliserPhase, EndsWithTheWindow) {
  ASSERT_NO_FATAL_FAILURE(Begin());
  screen.Close(stabiliser.Id());
  EXPECT_EQ(program.AwaitExit(), 0);
  EXPECT_TRUE(Temporaries().isEmpty());
  EXPECT_FALSE(QFileInfo::exists(program.PathOf("new.mp4")));
}

TEST_P(StabiliserPhase, EndsWithASession) {
  ASSERT_NO_FATAL_FAILURE(Begin());
  ASSERT_EQ(kill(static_cast<pid_t>(program.Id()), SIGTERM), 0);
  EXPECT_EQ(program.AwaitExit(), 0);
  EXPECT_TRUE(Temporaries().isEmpty());
  EXPECT_FALSE(QFileInfo::exists(program.PathOf("new.mp4")));
}

TEST_P(StabiliserPhase, EndsWithALostDisplay) {
  program.SetVariable("ASAN_OPTIONS", qEnvironmentVariable("ASAN_OPTIONS") + ":detect_leaks=0");
  ASSERT_NO_FATAL_FAILURE(Begin());
  const pid_t tool = Tool();
  screen.Disconnect(stabiliser.Id());
  constexpr int kDisplayLost = 1;
  EXPECT_EQ(program.AwaitExit(), kDisplayLost);
  EXPECT_TRUE(WaitFor([&] { return kill(tool, 0) != 0; })) << "the tool runs on";
  EXPECT_TRUE(Temporaries().isEmpty());
  EXPECT_FALSE(QFileInfo::exists(program.PathOf("new.mp4")));
}

// A limit to the size of files stands for a full disk.
TEST_P(StabiliserPhase, TellsThatTheDiskIsFullAndLeavesNothing) {
  ASSERT_NO_FATAL_FAILURE(Select());
  const QString output = program.PathOf("new.mp4");
  program.ReplaceTool("ffmpeg", QString("case \"$*\" in\n*%1*) ulimit -f 1; trap '' XFSZ ;;\nesac\n"
                                        "exec \"$real\" \"$@\"")
                                    .arg(GetParam()));
  ASSERT_TRUE(stabiliser.ChooseFile(Running(), output));
  ASSERT_TRUE(stabiliser.ConfirmMessage(kRunTime));
  EXPECT_FALSE(QFileInfo::exists(output));
  CloseAndExpectNothingLeft();
}

INSTANTIATE_TEST_SUITE_P(Phases, StabiliserPhase,
                         ::testing::Values("-ss", "vidstabdetect", "vidstabtransform"),
                         [](const ::testing::TestParamInfo<const char*>& tested) {
                           return std::string(tested.index == 0   ? "Extraction"
                                              : tested.index == 1 ? "FirstPass"
                                                                  : "SecondPass");
                         });

}  // namespace
}  // namespace kelvane::desktop
