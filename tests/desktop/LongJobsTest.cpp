// What a desktop's services hear of the programs' long jobs.
#include <csignal>

#include "desktop/JoinerTest.h"
#include "desktop/driver/StabiliserWindow.h"
#include "support/SessionServices.h"

namespace kelvane::desktop {
namespace {

// A desktop session around a program. The program's `ffmpeg` runs the shell commands
// `printProgress`, which by default print the progress of one second, and waits at the gate "go".
template <class ProgramTest>
class InASession : public ProgramTest {
 protected:
  explicit InASession(
      const QString& printProgress = "echo 'frame=1 time=00:00:01.00 bitrate=1'\n") {
    this->program.SetVariable("DBUS_SESSION_BUS_ADDRESS", services.SessionAddress());
    this->program.SetVariable("DBUS_SYSTEM_BUS_ADDRESS", services.SystemAddress());
    this->program.ReplaceTool(
        "ffmpeg", printProgress + this->program.PrintingGate("go") + R"(exec "$real" "$@")");
  }
  bool AwaitInhibited() const {
    return WaitFor([this] { return services.Inhibited(); });
  }
  bool AwaitNotInhibited() const {
    return WaitFor([this] { return !services.Inhibited(); });
  }
  bool AwaitProgress(const QString& progress) const {
    return WaitFor([&] { return services.Progress() == progress; });
  }

  testing::SessionServices services;
};

using LongCrop = InASession<DesktopTest>;

TEST_F(LongCrop, KeepsTheSessionFromSuspensionAndShowsItsProgressInTheLauncherUntilItEnds) {
  services.OfferPortal();
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(320, 240), 2));
  EXPECT_EQ(services.Asked(), QStringList()) << "a service is asked before the first job";
  ASSERT_NO_FATAL_FAILURE(StartCrop(program.PathOf("cropped.mp4")));
  EXPECT_TRUE(AwaitInhibited());
  EXPECT_EQ(services.Asked(), QStringList("portal: 4, Cropping a video"));
  EXPECT_TRUE(AwaitProgress("application://kelvane.desktop 50%"));
  EXPECT_TRUE(program.Open("go"));
  ExpectEndAndCloseJob();
  EXPECT_TRUE(AwaitNotInhibited());
  EXPECT_TRUE(AwaitProgress(""));
  CloseAndExpectEnd();
}

TEST_F(LongCrop, ConnectsToNoBusBeforeItStartsAndPassesTheToolNoDescriptor) {
  services.OfferLogind();
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(320, 240), 2));
  EXPECT_EQ(services.SystemBusConnections(), 0);
  ASSERT_NO_FATAL_FAILURE(StartCrop(program.PathOf("cropped.mp4")));
  EXPECT_TRUE(AwaitInhibited());
  EXPECT_EQ(services.SystemBusConnections(), 1);
  EXPECT_EQ(services.Asked(), QStringList("logind: sleep, Kelvane, Cropping a video, block"));
  // The tool, which waits at the gate, outlives the program.
  ASSERT_EQ(kill(static_cast<pid_t>(program.Id()), SIGKILL), 0);
  EXPECT_TRUE(AwaitNotInhibited());
  EXPECT_TRUE(WaitFor([this] { return services.SystemBusConnections() == 0; }));
}

// Like the real tool, this one prints "Duration:". The window takes that for one more section and
// adds a length to the total. The progress must still refer to the total at the start of the join.
class LongJoin : public InASession<JoinerTest> {
 protected:
  LongJoin()
      : InASession(
            "echo '  Duration: N/A, start: 0.000000, bitrate: 0 kb/s'\n"
            "echo 'frame=1 time=00:00:20.00 bitrate=1'\n") {}
};

TEST_F(LongJoin, KeepsTheSessionFromSuspensionAndShowsItsProgressInTheLauncherUntilItEnds) {
  services.OfferPortal();
  for (const char* name : {"a.mp4", "b.mp4"}) {
    ASSERT_TRUE(MakePlainVideo(program.PathOf(name), "teal", 20));
    ASSERT_NO_FATAL_FAILURE(Add(program.PathOf(name)));
  }
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kJoinSections, program.PathOf("joined.mp4")));
  EXPECT_TRUE(AwaitInhibited());
  EXPECT_TRUE(AwaitProgress("application://kelvane-joiner.desktop 50%"));
  EXPECT_TRUE(program.Open("go"));
  ASSERT_TRUE(CloseJoinMessage(screen));
  EXPECT_TRUE(AwaitNotInhibited());

  screen.Click(joiner.Place("Option1(1)").center());
  screen.Click(joiner.ButtonCentre(JoinerButton::kJoinSections));
  EXPECT_TRUE(AwaitInhibited());
  EXPECT_TRUE(program.Open("go"));
  EXPECT_TRUE(AwaitProgress("application://kelvane-joiner.desktop 50%"))
      << "the launcher doesn't show half of the progress after the first of the two sections";
  EXPECT_TRUE(program.Open("go"));
  ASSERT_TRUE(CloseJoinMessage(screen));
  EXPECT_TRUE(AwaitNotInhibited());
  EXPECT_EQ(services.Asked(),
            (QStringList{"portal: 4, Joining videos", "portal: 4, Transcoding videos"}));
  CloseJoinerAndExpectEnd();
}

class StabiliserProgram : public DesktopTest {
 protected:
  StabiliserProgram() : DesktopTest("kelvane-stabiliser") {}
};
using LongStabilising = InASession<StabiliserProgram>;

TEST_F(LongStabilising,
       KeepsTheSessionFromSuspensionAndShowsItsProgressInTheLauncherUntilItIsCancelled) {
  constexpr const char* kApply = "Label12(0)";
  services.OfferPortal();
  ASSERT_TRUE(MakeVideo(program.PathOf("video.mp4"), QSize(320, 240), 2));
  program.Start();
  StabiliserWindow stabiliser(screen);
  ASSERT_TRUE(stabiliser.Await());
  ASSERT_TRUE(stabiliser.ChooseFile("Label6(0)", program.PathOf("video.mp4")));
  ASSERT_TRUE(stabiliser.AwaitTime(TimeReadOut::kEnd, "00:00:02.0"));
  EXPECT_EQ(services.Asked(), QStringList());
  ASSERT_TRUE(stabiliser.ChooseFile(kApply, program.PathOf("steady.mp4")));
  EXPECT_TRUE(AwaitInhibited());
  EXPECT_TRUE(AwaitProgress("application://kelvane-stabiliser.desktop 50%"));
  EXPECT_TRUE(program.Open("go"));
  EXPECT_TRUE(WaitFor([&] { return program.RunsOf("ffmpeg").size() == 2; }));
  // Without this click the next one would be taken for the second one of a double-click.
  screen.Click(stabiliser.BareGround());
  stabiliser.Click(kApply);
  EXPECT_TRUE(AwaitNotInhibited());
  EXPECT_TRUE(AwaitProgress(""));
  EXPECT_EQ(services.Asked(), QStringList("portal: 4, Stabilising a video"));
  screen.Close(stabiliser.Id());
  EXPECT_EQ(program.AwaitExit(), 0);
}

}  // namespace
}  // namespace kelvane::desktop
