// Tools that can't be started for want of descriptors, processes or memory: the commands end at
// once and say nothing, or what they always say, and work again once there is room.
#include <sys/resource.h>

#include <cerrno>

#include "desktop/JoinerTest.h"
#include "desktop/faults/Faults.h"
#include "support/Sanitized.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kOldSize(640, 360);
constexpr QSize kNewSize(320, 240);
constexpr QSize kAnotherSize(400, 300);

class FaultsOfProcesses : public DesktopTest {
 protected:
  void OpenWindowWithOldVideo() {
    ASSERT_TRUE(MakeVideo(other, kNewSize, 1));
    ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kOldSize, 1));
  }

  // After a crop, and not before it: to check the type of an object of a class that it hasn't met,
  // the sanitizer opens a pipe.
  void OpenWindowThatHasCropped() {
    ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kOldSize, 1));
    ASSERT_NO_FATAL_FAILURE(ExpectCrops(program.PathOf("first.mp4"), QSize(634, 354)));
  }

  // No window may be opened meanwhile: Qt waits for its memory, which comes as a
  // descriptor.
  bool UseUpDescriptors() const {
    return program.SetLimit(RLIMIT_NOFILE,
                            static_cast<std::uint64_t>(program.LowestFreeDescriptor()));
  }

  void ExpectLoads(const QString& path, QSize size) {
    ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, path));
    EXPECT_TRUE(window.AwaitVideo(size));
    EXPECT_TRUE(window.AwaitBarsAround(size));
  }

  void ExpectNoFileFromCrop(const QString& output) {
    EXPECT_TRUE(job.AwaitSuccess());
    EXPECT_EQ(screen.Windows().size(), 2) << "no message";
    EXPECT_EQ(ContentOf(output), "(not there)");
    job.Cancel();
    ASSERT_TRUE(WaitFor([&] { return !job.Open(); }));
  }

  void ExpectCrops(const QString& output, QSize size) {
    ASSERT_NO_FATAL_FAILURE(StartCrop(output));
    EXPECT_TRUE(job.AwaitSuccess());
    EXPECT_EQ(VideoSize(output), size);
    job.Cancel();
    ASSERT_TRUE(WaitFor([&] { return !job.Open(); }));
  }

  QString other = program.PathOf("other.mp4");
  QString cropped = program.PathOf("cropped.mp4");
};

TEST_F(FaultsOfProcesses, UsedUpDescriptorsEndACropAtOnceWithoutAFile) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowThatHasCropped());
  ASSERT_NO_FATAL_FAILURE(StartCrop(cropped));
  ASSERT_TRUE(UseUpDescriptors());
  ExpectNoFileFromCrop(cropped);
  ASSERT_TRUE(program.LiftLimit(RLIMIT_NOFILE));
  ASSERT_NO_FATAL_FAILURE(ExpectCrops(cropped, QSize(634, 354)));
  CloseAndExpectEnd();
}

TEST_F(FaultsOfProcesses, UsedUpDescriptorsDoNotDisturbAJobInProgress) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowThatHasCropped());
  program.ReplaceTool("ffmpeg", program.TalkingGate("go") + R"(exec "$real" "$@")");
  ASSERT_NO_FATAL_FAILURE(StartCrop(cropped));
  ASSERT_TRUE(job.AwaitStatus("Progress: 00.00 % Complete: Status: Cropping..."));
  ASSERT_TRUE(UseUpDescriptors());
  ASSERT_TRUE(program.Open("go"));
  EXPECT_TRUE(job.AwaitSuccess());
  EXPECT_EQ(VideoSize(cropped), QSize(634, 354));
  EXPECT_EQ(Pictures(cropped), Pictures(video));
  job.Cancel();
  EXPECT_TRUE(WaitFor([&] { return !job.Open(); }));
  ASSERT_TRUE(program.LiftLimit(RLIMIT_NOFILE));
  CloseAndExpectEnd();
}

TEST_F(FaultsOfProcesses, AUserWithoutRoomForAProcessKeepsTheOldVideoUntilThereIsSome) {
  program.RunAsOrdinaryUser();
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithOldVideo());
  const QList<WindowId> known = screen.Windows();
  window.Click(kLoadVideo);
  const WindowId dialog = screen.AwaitNew(known);
  ASSERT_NE(dialog, 0U);
  ASSERT_TRUE(program.SetLimit(RLIMIT_NPROC, 0));
  ASSERT_TRUE(TypeFileName(screen, dialog, other));
  ExpectVideoUnderPath(kOldSize, other);
  ASSERT_NO_FATAL_FAILURE(StartCrop(cropped));
  ExpectNoFileFromCrop(cropped);
  ASSERT_TRUE(program.LiftLimit(RLIMIT_NPROC));
  ASSERT_NO_FATAL_FAILURE(ExpectLoads(video, kOldSize));
  ASSERT_NO_FATAL_FAILURE(ExpectCrops(cropped, QSize(634, 354)));
  CloseAndExpectEnd();
}

TEST_F(FaultsOfProcesses, AStepOfAStartThatFailsLeavesTheOldVideoWhicheverItIs) {
  Faults faults(program);
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithOldVideo());
  const QString another = program.PathOf("another.mp4");
  ASSERT_TRUE(MakeVideo(another, kAnotherSize, 1));
  // The pipe, the reading thread's descriptor, nine settings and the start itself.
  constexpr int kStepsOfAProbe = 12;
  const int descriptors = program.OpenDescriptors();
  for (int step = 1; step <= kStepsOfAProbe; ++step) {
    SCOPED_TRACE(step);
    // A path that is on show already would start nothing, and neither file has the old size.
    const QString& path = step % 2 == 1 ? other : another;
    faults.FailOne(Attempt::kStartTool, step, step % 4 < 2 ? EMFILE : ENOMEM);
    ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, path));
    ASSERT_NO_FATAL_FAILURE(ExpectVideoUnderPath(kOldSize, path));
    EXPECT_EQ(faults.Failed(Attempt::kStartTool), 1);
  }
  // No step is left out: the next is the first of the second run, for the duration alone.
  faults.FailOne(Attempt::kStartTool, kStepsOfAProbe + 1, EMFILE);
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, other));
  ASSERT_NO_FATAL_FAILURE(ExpectVideoUnderPath(kNewSize, other));
  EXPECT_EQ(faults.Failed(Attempt::kStartTool), 1);
  EXPECT_LE(program.OpenDescriptors(), descriptors) << "no pipe stays open";
  CloseAndExpectEnd();
}

TEST_F(FaultsOfProcesses, WithoutAThreadToReadAToolItIsNotStartedUntilThereIsOne) {
  Faults faults(program);
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithOldVideo());
  const int descriptors = program.OpenDescriptors();
  const QList<WindowId> known = screen.Windows();
  window.Click(kLoadVideo);
  const WindowId dialog = screen.AwaitNew(known);
  ASSERT_NE(dialog, 0U);
  faults.FailAll(Attempt::kStartThread, EAGAIN);
  ASSERT_TRUE(TypeFileName(screen, dialog, other));
  ASSERT_NO_FATAL_FAILURE(ExpectVideoUnderPath(kOldSize, other));
  EXPECT_GE(faults.Failed(Attempt::kStartThread), 2) << "one for each probe";
  EXPECT_LE(program.OpenDescriptors(), descriptors) << "no pipe stays open";
  faults.Heal(Attempt::kStartThread);
  ASSERT_NO_FATAL_FAILURE(ExpectLoads(video, kOldSize));
  CloseAndExpectEnd();
}

// No more memory is reserved than now, and none is for the stack on which a tool starts.
class FaultsOfMemory : public FaultsOfProcesses {
 protected:
  void SetUp() override {
    if (kSanitized) GTEST_SKIP() << "a sanitizer's own memory has no such limit";
  }
  bool UseUpMemory() const {
    constexpr std::uint64_t kKiB = 1024;
    return program.SetLimit(RLIMIT_AS, static_cast<std::uint64_t>(program.AddressSpace()) * kKiB);
  }
};

TEST_F(FaultsOfMemory, WhereNoneIsLeftForAToolACropEndsAtOnceWithoutAFile) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kOldSize, 1));
  const QHash<QString, QByteArray> before = Files();
  ASSERT_NO_FATAL_FAILURE(StartCrop(cropped));
  ASSERT_TRUE(UseUpMemory());
  ExpectNoFileFromCrop(cropped);
  EXPECT_EQ(Files(), before);
  ASSERT_TRUE(program.LiftLimit(RLIMIT_AS));
  ASSERT_NO_FATAL_FAILURE(ExpectCrops(cropped, QSize(634, 354)));
  CloseAndExpectEnd();
}

TEST_F(FaultsOfMemory, WhereNoneIsLeftForAToolAPreviewShowsNothingAndTheWindowLives) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kOldSize, 1));
  program.ReplaceTool("ffplay", "");
  ASSERT_TRUE(UseUpMemory());
  window.Click(kPreviewCroppedVideo);
  window.PointAt(kRunVideo);
  EXPECT_TRUE(WaitFor([&] { return window.Shows("Label14(1)", "Run Video", kLit); }));
  EXPECT_EQ(program.RunsOf("ffplay").size(), 0);
  EXPECT_EQ(screen.Windows().size(), 1) << "no message";
  ASSERT_TRUE(program.LiftLimit(RLIMIT_AS));
  window.Click(kPreviewCroppedVideo);
  EXPECT_TRUE(WaitFor([&] { return program.RunsOf("ffplay").size() == 1; }));
  CloseAndExpectEnd();
}

class FaultsOfJoinersProcesses : public JoinerTest {
 protected:
  FaultsOfJoinersProcesses() : faults(program) {}
  Faults faults;
};

TEST_F(FaultsOfJoinersProcesses, AToolThatCannotBeStartedLeavesASectionWithoutAStripAndNoOutput) {
  const QString clip = program.PathOf("clip.mp4");
  const QString output = program.PathOf("joined.mp4");
  ASSERT_TRUE(MakeVideo(clip, kNewSize, 20));
  faults.FailAll(Attempt::kStartTool, ENOMEM);
  ASSERT_NO_FATAL_FAILURE(Add(clip));
  EXPECT_TRUE(joiner.AwaitTotals(1, "00,000", "00:00:00"));
  ExpectPathWithoutStripOrRow(0);
  ASSERT_NO_FATAL_FAILURE(JoinTo(output));
  EXPECT_EQ(ContentOf(output), "(not there)");
  faults.Heal(Attempt::kStartTool);
  ASSERT_NO_FATAL_FAILURE(Add(clip));
  EXPECT_TRUE(joiner.AwaitTotals(2, "00,020", "00:00:20"));
  ASSERT_NO_FATAL_FAILURE(JoinTo(output));
  EXPECT_EQ(VideoSize(output), kNewSize);
  CloseJoinerAndExpectEnd();
}

}  // namespace
}  // namespace kelvane::desktop
