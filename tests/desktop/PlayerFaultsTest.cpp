// A player library that can't be loaded, and threads that can't be started: the picture stays
// black, and everything else works.
#include <dlfcn.h>
#include <sys/resource.h>
#include <xcb/xcb.h>

#include <QDir>
#include <QFile>

#include "desktop/DesktopTest.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kSize(320, 240);

class PlayerFaults : public DesktopTest {
 protected:
  void ExpectThatRunShowsNothing() {
    window.Click(kRunVideo);
    EXPECT_TRUE(window.Answers());
    EXPECT_TRUE(HoldsFor([&] { return window.IsBlack(kSize); }, 300ms));
    EXPECT_EQ(screen.Windows().size(), 1) << "a message box is open";
  }

  void ExpectThatTheRestWorks() {
    for (const Command command : {kPauseVideo, kPauseVideo, kStopVideo}) window.Click(command);
    EXPECT_TRUE(window.Answers());
    EXPECT_TRUE(window.AwaitTimesWithoutVideo());
    const QString output = program.PathOf("cropped.mp4");
    ASSERT_NO_FATAL_FAILURE(StartCrop(output));
    ExpectEndAndCloseJob();
    EXPECT_EQ(VideoSize(output), QSize(314, 234));
  }
};

// The program finds `library` before the system's libmpv.
class PlayerLibraryFaults : public PlayerFaults {
 protected:
  PlayerLibraryFaults() {
    QDir(program.Folder()).mkdir("libraries");
    program.SetVariable("LD_LIBRARY_PATH", program.PathOf("libraries"));
  }
  QString library = program.PathOf("libraries/libmpv.so.2");
};

TEST_F(PlayerLibraryFaults, WithoutTheLibraryThePictureIsBlackUntilItCanBeLoaded) {
  WriteFile(library, "no library");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 30));
  ASSERT_NO_FATAL_FAILURE(ExpectThatRunShowsNothing());
  ASSERT_NO_FATAL_FAILURE(ExpectThatTheRestWorks());
  ASSERT_TRUE(QFile::remove(library));
  window.Click(kRunVideo);
  EXPECT_TRUE(window.AwaitMoving(kSize));
  CloseAndExpectEnd();
  EXPECT_EQ(program.Printed(), "");
}

TEST_F(PlayerLibraryFaults, WithALibraryThatLacksItsFunctionsThePictureIsBlack) {
  Dl_info other{};
  ASSERT_NE(dladdr(reinterpret_cast<void*>(&xcb_connect), &other), 0);
  ASSERT_TRUE(QFile::link(other.dli_fname, library));
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 5));
  ASSERT_NO_FATAL_FAILURE(ExpectThatRunShowsNothing());
  ASSERT_NO_FATAL_FAILURE(ExpectThatTheRestWorks());
  CloseAndExpectEnd();
  EXPECT_EQ(program.Printed(), "");
}

// libmpv aborts the program if it can't start a thread, so the program first tries to start
// sixteen, as many as a file may take.
TEST_F(PlayerFaults, RunVideoWithTooFewThreadsEndsThePlayingVideoAndShowsNoOther) {
  program.RunAsOrdinaryUser();
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 30));
  const auto leaveThreads = [&](int count) {
    const auto limit = static_cast<std::uint64_t>(program.Threads() + count);
    ASSERT_TRUE(program.SetLimit(RLIMIT_NPROC, limit));
  };
  const auto expectThatRunPlaysWithoutLimit = [&] {
    ASSERT_TRUE(program.LiftLimit(RLIMIT_NPROC));
    window.Click(kRunVideo);
    ASSERT_TRUE(window.AwaitMoving(kSize));
    ASSERT_TRUE(window.AwaitCaption("Label12", "0:00:30"));
  };
  ASSERT_NO_FATAL_FAILURE(leaveThreads(0));
  ASSERT_NO_FATAL_FAILURE(ExpectThatRunShowsNothing());
  ASSERT_NO_FATAL_FAILURE(expectThatRunPlaysWithoutLimit());
  for (const int threads : {0, 7, 15}) {
    SCOPED_TRACE(threads);
    ASSERT_NO_FATAL_FAILURE(leaveThreads(threads));
    window.Click(kRunVideo);
    EXPECT_TRUE(window.AwaitBlack(kSize));
    EXPECT_TRUE(window.AwaitTimesWithoutVideo());
    EXPECT_TRUE(HoldsFor([&] { return window.IsBlack(kSize); }, 500ms));
    ASSERT_NO_FATAL_FAILURE(expectThatRunPlaysWithoutLimit());
  }
  CloseAndExpectEnd();
}

}  // namespace
}  // namespace kelvane::desktop
