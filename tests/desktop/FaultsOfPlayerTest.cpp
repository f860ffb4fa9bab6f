// A player that can't be had, or only in part: the picture stays black, and everything else works.
#include <cerrno>

#include "desktop/PlayingTest.h"
#include "desktop/faults/Faults.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kSize(320, 240);

class FaultsOfPlayer : public Playing {
 protected:
  void RunInVain() {
    window.Click(kRunVideo);
    EXPECT_TRUE(Lives());
    EXPECT_TRUE(HoldsFor([&] { return IsBlack(kSize); }, 300ms));
    EXPECT_EQ(screen.Windows().size(), 1) << "no message";
  }

  // Everything else that is said to the player, and what the main window is for.
  void ExpectTheRestWorks() {
    for (const Command command : {kPauseVideo, kPauseVideo, kStopVideo}) window.Click(command);
    EXPECT_TRUE(Lives());
    EXPECT_TRUE(window.Shows("Label12", "0:00:00"));
    EXPECT_TRUE(window.Shows("Label13", "00:00"));
    const QString output = program.PathOf("cropped.mp4");
    ASSERT_NO_FATAL_FAILURE(StartCrop(output));
    EXPECT_TRUE(job.AwaitSuccess());
    EXPECT_EQ(VideoSize(output), QSize(314, 234));
    job.Cancel();
    EXPECT_TRUE(WaitFor([&] { return !job.Open(); }));
  }
};

TEST_F(FaultsOfPlayer, ALibraryThatCannotBeLoadedLeavesThePictureBlackUntilItCan) {
  Faults faults(program);
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 30));
  faults.FailAll(Attempt::kLoadPlayer, ENOENT);
  ASSERT_NO_FATAL_FAILURE(RunInVain());
  EXPECT_GT(faults.Failed(Attempt::kLoadPlayer), 0);
  ASSERT_NO_FATAL_FAILURE(ExpectTheRestWorks());
  faults.Heal(Attempt::kLoadPlayer);
  window.Click(kRunVideo);
  EXPECT_TRUE(AwaitMoving(kSize));
  CloseAndExpectEnd();
  EXPECT_EQ(program.Printed(), "");
}

TEST_F(FaultsOfPlayer, ALibraryWithoutItsFunctionsLeavesThePictureBlack) {
  program.SetVariable("LD_LIBRARY_PATH", KELVANE_EMPTY_PLAYER_FOLDER);
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 5));
  const QString library = QStringLiteral(KELVANE_EMPTY_PLAYER_FOLDER "/libmpv.so.2");
  EXPECT_FALSE(program.HasInMemory(library));
  ASSERT_NO_FATAL_FAILURE(RunInVain());
  EXPECT_TRUE(program.HasInMemory(library)) << "it is the one that was taken";
  ASSERT_NO_FATAL_FAILURE(ExpectTheRestWorks());
  CloseAndExpectEnd();
  EXPECT_EQ(program.Printed(), "");
}

TEST_F(FaultsOfPlayer, ThreadsThatCannotBeStartedLeaveThePictureBlackUntilTheyCan) {
  Faults faults(program);
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 30));
  for (const int thread : {1, 8, 16}) {
    SCOPED_TRACE(thread);
    faults.FailOne(Attempt::kStartThread, thread, EAGAIN);
    ASSERT_NO_FATAL_FAILURE(RunInVain());
    EXPECT_EQ(faults.Failed(Attempt::kStartThread), 1);
  }
  faults.Heal(Attempt::kStartThread);
  window.Click(kRunVideo);
  EXPECT_TRUE(AwaitMoving(kSize));
  CloseAndExpectEnd();
}

TEST_F(FaultsOfPlayer, AFileForWhichNoThreadsAreLeftEndsTheOneBefore) {
  Faults faults(program);
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 30));
  window.Click(kRunVideo);
  ASSERT_TRUE(AwaitMoving(kSize));
  ASSERT_TRUE(WaitFor([&] { return window.Shows("Label12", "0:00:30"); }));
  faults.FailAll(Attempt::kStartThread, EAGAIN);
  window.Click(kRunVideo);
  EXPECT_TRUE(AwaitBlack(kSize));
  EXPECT_TRUE(Lives());
  EXPECT_TRUE(WaitFor([&] { return window.Shows("Label12", "0:00:00"); }));
  EXPECT_TRUE(window.Shows("Label13", "00:00"));
  faults.Heal(Attempt::kStartThread);
  window.Click(kRunVideo);
  EXPECT_TRUE(AwaitMoving(kSize));
  CloseAndExpectEnd();
}

}  // namespace
}  // namespace kelvane::desktop
