// The stabiliser on a real screen, with the real tools.
#include <QFileInfo>
#include <csignal>

#include "desktop/DesktopTest.h"
#include "desktop/driver/StabiliserWindow.h"

namespace kelvane::desktop {
namespace {

constexpr const char* kSelect = "Label6(0)";
constexpr const char* kLoad = "Label12(4)";
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

  // Makes a video of four seconds and opens the window. Once the video is selected, a second takes
  // 219 pixels of the time line.
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
  EXPECT_TRUE(stabiliser.AwaitColour(kBlue)) << "the dragged needle's frame isn't shown";
  EXPECT_TRUE(stabiliser.AwaitTime(TimeReadOut::kStart, "00:00:02.0"));
  EXPECT_TRUE(stabiliser.AwaitTime(TimeReadOut::kSpan, "00:00:02.0"));

  const QList<WindowId> known = screen.Windows();
  // Without -autoexit the player runs on at the end of the file, so the program must end it.
  program.ReplaceTool(
      "ffplay",
      "for each; do shift; [ \"$each\" = -autoexit ] || set -- \"$@\" \"$each\"; done\n"
      "exec \"$real\" \"$@\"");
  stabiliser.Click(kView);
  const WindowId player = screen.AwaitNew(known);
  ASSERT_NE(player, 0U);
  EXPECT_TRUE(
      WaitFor([&] { return IsNear(screen.Pixel(screen.Place(player).center()), kBlue, 24); }));
  EXPECT_TRUE(WaitFor([&] { return !screen.Exists(player); })) << "the player isn't ended";
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

// The only key frame is red. With a seek, even to the beginning, the player would miss it and show
// nothing.
TEST_F(StabiliserOnScreen, ViewsNothingButTheMarkedSectionOfATransportStream) {
  const QString stream = program.PathOf("one group.ts");
  ASSERT_TRUE(RunTool("ffmpeg", {"-i", std::exchange(video, stream), "-c:v", "libx264", "-g", "250",
                                 "-sc_threshold", "0", stream}));
  ASSERT_NO_FATAL_FAILURE(Select());
  stabiliser.DragNeedle(SectionWindow::kStartNeedle, 219);
  ASSERT_TRUE(stabiliser.AwaitTime(TimeReadOut::kStart, "00:00:01.0"));
  stabiliser.DragNeedle(SectionWindow::kEndNeedle, -219 * 2);
  ASSERT_TRUE(stabiliser.AwaitTime(TimeReadOut::kSpan, "00:00:01.0"));

  const QList<WindowId> known = screen.Windows();
  stabiliser.Click(kView);
  const WindowId player = screen.AwaitNew(known);
  ASSERT_NE(player, 0U);
  const QPoint middle = screen.Place(player).center();
  int greens = 0;
  EXPECT_TRUE(WaitFor([&] {
    const QRgb shown = screen.Pixel(middle);
    if (!screen.Exists(player)) return true;
    if (IsNear(shown, kGreen, 24)) ++greens;
    for (const QRgb other : {kRed, kBlue, kYellow}) {
      EXPECT_FALSE(IsNear(shown, other, 24)) << std::hex << other;
    }
    return false;
  }));
  EXPECT_GT(greens, 0);
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

TEST_F(StabiliserOnScreen, EndsWithASessionWhileADialogIsOpen) {
  const QList<WindowId> known = screen.Windows();
  stabiliser.Click(kSelect);
  ASSERT_NE(screen.AwaitNew(known), 0U);
  ASSERT_EQ(kill(static_cast<pid_t>(program.Id()), SIGHUP), 0);
  EXPECT_EQ(program.AwaitExit(), 0);
}

TEST_F(StabiliserOnScreen, AcceptsTypedPathsAndTheTimeLinesWheelAndMenu) {
  const QString longVideo = program.PathOf("long video.mp4");
  ASSERT_TRUE(RunTool(
      "ffmpeg", {"-f", "lavfi", "-i", "color=red:size=64x64:rate=1:duration=2000", longVideo}));
  screen.Click(stabiliser.Place("Text1").center());
  screen.Type(longVideo);
  screen.PressKey(kReturn);
  ASSERT_TRUE(stabiliser.AwaitTime(TimeReadOut::kEnd, "00:33:20"));
  EXPECT_FALSE(stabiliser.OnTimeLine(SectionWindow::kStartNeedle).isEmpty());

  const QPoint middle = stabiliser.TimeLine().center() - stabiliser.TimeLine().topLeft();
  screen.MovePointer(stabiliser.TimeLine().center());
  for (const PointerButton wheel : {kWheelDown, kWheelDown}) {
    screen.Press(wheel);
    screen.Release(wheel);
  }
  EXPECT_TRUE(
      WaitFor([&] { return stabiliser.OnTimeLine(SectionWindow::kStartNeedle).isEmpty(); }));
  const QPoint setStart = stabiliser.OpenMenuAt({100, middle.y()}, 0);
  ASSERT_FALSE(setStart.isNull());
  screen.Click(setStart);
  EXPECT_TRUE(stabiliser.AwaitTime(TimeReadOut::kStart, "00:05:00"));

  screen.Click(stabiliser.Place("Text5").center());
  screen.PressKey('a', kControl);
  screen.Type(program.PathOf("no video.mp4"));
  stabiliser.Click(kApply);
  ASSERT_TRUE(stabiliser.ConfirmMessage(kPatience)) << "no message says that the file is missing";
  EXPECT_TRUE(WaitFor([&] {
    const QRect box = stabiliser.Place("Text5").adjusted(2, 2, -2, -2);
    return ShowsText(screen.Picture(box), longVideo, kDark);
  }));
  CloseAndExpectNothingLeft();
}

// What the window waits for: a tool whose command line contains `part`, after a click on `command`.
struct Phase {
  const char* name;
  const char* tool;
  const char* part;
  const char* command;
};

constexpr Phase kExtraction = {"Extraction", "ffmpeg", "-ss", kExtract};
constexpr Phase kFirstPass = {"FirstPass", "ffmpeg", "vidstabdetect", kApply};
constexpr Phase kSecondPass = {"SecondPass", "ffmpeg", "vidstabtransform", kApply};
constexpr Phase kFirstPassOfATest = {"FirstPassOfATest", "ffmpeg", "vidstabdetect", kTest};
constexpr Phase kSecondPassOfATest = {"SecondPassOfATest", "ffmpeg", "vidstabtransform", kTest};

void PrintTo(const Phase& phase, std::ostream* out) { *out << phase.name; }

class StabiliserAtWork : public StabiliserOnScreen {
 protected:
  // Starts the phase, whose tool runs the commands `first`, prints a time and runs on.
  void Begin(const Phase& phase, const QString& first = {}) {
    if (!Is(phase, kSelect)) {
      ASSERT_NO_FATAL_FAILURE(Select());
    }
    Replace(phase, first + "echo time=00:00:01.00 x; exec sleep 1000");
    ASSERT_TRUE(Start(phase));
    ASSERT_TRUE(WaitFor([&] {
      const QList<QStringList> runs = program.RunsOf(phase.tool);
      return Tool() != 0 && !runs.isEmpty() && runs.last().join(' ').contains(phase.part);
    }));
  }
  // The phase's tool runs these shell commands first.
  void Replace(const Phase& phase, const QString& commands) {
    program.ReplaceTool(phase.tool, QString("case \"$*\" in\n*%1*) %2 ;;\nesac\n"
                                            "exec \"$real\" \"$@\"")
                                        .arg(phase.part, commands));
  }
  bool Start(const Phase& phase) {
    if (Is(phase, kSelect) || Is(phase, kLoad)) return stabiliser.ChooseFile(phase.command, video);
    if (Is(phase, kExtract) || Is(phase, kApply))
      return stabiliser.ChooseFile(phase.command, Output());
    stabiliser.Click(phase.command);
    return true;
  }
  static bool Is(const Phase& phase, const char* command) {
    return QLatin1String(phase.command) == QLatin1String(command);
  }
  QString Output() const { return program.PathOf("new.mp4"); }
  void ExpectNoOutput() const {
    EXPECT_TRUE(Temporaries().isEmpty()) << Temporaries().join(' ').toStdString();
    EXPECT_FALSE(QFileInfo::exists(Output()));
  }
};

// A tool that ignores SIGTERM is killed after five seconds.
TEST_F(StabiliserAtWork, EndsItselfAndItsToolWhenTheSessionAsksTwice) {
  ASSERT_NO_FATAL_FAILURE(Begin(kFirstPass, "trap '' TERM; "));
  const pid_t tool = Tool();
  for (const int signal : {SIGHUP, SIGTERM}) {
    ASSERT_EQ(kill(static_cast<pid_t>(program.Id()), signal), 0);
    ASSERT_TRUE(WaitFor([&] { return !screen.Exists(stabiliser.Id()); }));
  }
  EXPECT_EQ(program.AwaitExit(), 0);
  EXPECT_NE(kill(tool, 0), 0) << "the tool runs on";
  ExpectNoOutput();
}

class StabiliserOnALostDisplay : public StabiliserAtWork {
 protected:
  // Qt then exits without freeing memory that is in use.
  StabiliserOnALostDisplay() { program.AllowLeaks(); }
};

TEST_F(StabiliserOnALostDisplay, EndsItsTool) {
  ASSERT_NO_FATAL_FAILURE(Begin(kFirstPass));
  const pid_t tool = Tool();
  screen.Disconnect(stabiliser.Id());
  constexpr int kDisplayLost = 1;
  EXPECT_EQ(program.AwaitExit(), kDisplayLost);
  EXPECT_TRUE(WaitFor([&] { return kill(tool, 0) != 0; })) << "the tool runs on";
  ExpectNoOutput();
}

std::string NameOf(const ::testing::TestParamInfo<Phase>& tested) { return tested.param.name; }

class StabiliserPhase : public StabiliserAtWork, public ::testing::WithParamInterface<Phase> {};

TEST_P(StabiliserPhase, IsCancelledWithoutATrace) {
  ASSERT_NO_FATAL_FAILURE(Begin(GetParam()));
  EXPECT_TRUE(stabiliser.AwaitCommand(GetParam().command, "Cancel"));
  // Without this click the next one would be taken for the second one of a double-click.
  screen.Click(stabiliser.BareGround());
  stabiliser.Click(GetParam().command);
  EXPECT_TRUE(WaitFor([&] { return Tool() == 0; }));
  EXPECT_TRUE(WaitFor([&] { return Temporaries().isEmpty(); }));
  EXPECT_FALSE(QFileInfo::exists(Output()));
  EXPECT_TRUE(WaitFor([&] { return stabiliser.Progress("pbar(0)") == 0; }));
  CloseAndExpectNothingLeft();
}

TEST_P(StabiliserPhase, EndsWithTheWindow) {
  ASSERT_NO_FATAL_FAILURE(Begin(GetParam()));
  screen.Close(stabiliser.Id());
  EXPECT_EQ(program.AwaitExit(), 0);
  ExpectNoOutput();
}

INSTANTIATE_TEST_SUITE_P(
    Phases, StabiliserPhase,
    ::testing::Values(Phase{"Probe", "ffprobe", "", kSelect},
                      Phase{"ProbeOfTheOtherVideo", "ffprobe", "", kLoad},
                      Phase{"View", "ffplay", "", kView}, kExtraction,
                      Phase{"ProbeOfTheSection", "ffprobe", ".kelvane-", kExtract},
                      kFirstPassOfATest, kSecondPassOfATest,
                      Phase{"ProbeOfATest", "ffprobe", "work-test", kTest}, kFirstPass, kSecondPass,
                      Phase{"ProbeOfTheSteadyVideo", "ffprobe", ".kelvane-", kApply}),
    NameOf);

class StabiliserOnAFullDisk : public StabiliserAtWork,
                              public ::testing::WithParamInterface<Phase> {};

// A limit to the size of files stands for a full disk.
TEST_P(StabiliserOnAFullDisk, ShowsAMessageAndLeavesNothing) {
  ASSERT_NO_FATAL_FAILURE(Select());
  Replace(GetParam(), "ulimit -f 1; trap '' XFSZ");
  ASSERT_TRUE(Start(GetParam()));
  ASSERT_TRUE(stabiliser.ConfirmMessage(kRunTime));
  EXPECT_FALSE(QFileInfo::exists(Output()));
  CloseAndExpectNothingLeft();
}

INSTANTIATE_TEST_SUITE_P(Phases, StabiliserOnAFullDisk,
                         ::testing::Values(kExtraction, kFirstPassOfATest, kSecondPassOfATest,
                                           kFirstPass, kSecondPass),
                         NameOf);

}  // namespace
}  // namespace kelvane::desktop
