// What playing leaves to others: the paint of what isn't the picture, and the processor.
#include <sched.h>

#include <QDir>

#include "platform/PlayerTest.h"
#include "platform/ScrollBars.h"
#include "support/PaintsOf.h"

namespace kelvane::testing {
namespace {

TEST(APicture, RepaintsNoControlThatLiesOverIt) {
  const QTemporaryDir files;
  const QString clip = files.filePath("clip.mp4");
  ASSERT_TRUE(MakeVideo(clip, QSize(320, 180), 3));
  TestForm form(Controls{{.name = "HScroll1",
                          .controlClass = ControlClass::kHScrollBar,
                          .place = {0, 2400, 4000, 255}},
                         {.name = "Picture1",
                          .controlClass = ControlClass::kPictureBox,
                          .place = {300, 300, 75, 1500}},
                         {.name = "wmp",
                          .controlClass = ControlClass::kWindowsMediaPlayer,
                          .place = {0, 0, 4800, 2700}}});
  form.Open();
  const PaintsOf pictures("wmp");
  const PaintsOf scrollBars("HScroll1");
  const PaintsOf bars("Picture1");
  form.Find<WindowsMediaPlayer>("wmp").setURL(clip);
  constexpr int kSome = 20;
  ASSERT_TRUE(PumpUntil([&] { return pictures.Count() > kSome; }));
  EXPECT_EQ(scrollBars.Count(), 0);
  EXPECT_EQ(bars.Count(), 0);
}

using PlayerPace = PlayerTest;

QStringList Threads() {
  return QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot);
}

// They work through a load: woken, they wait for a core rather than take one from a paint.
TEST_F(PlayerPace, ItsThreadsDoNotCutIn) {
  const QStringList before = Threads();
  player.setURL(MakePlain("red.mp4", "red", 20));
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  int threads = 0;
  for (const QString& thread : Threads()) {
    const int policy = sched_getscheduler(thread.toInt());
    const bool hasEnded = policy < 0;
    if (before.contains(thread) || hasEnded) continue;
    ++threads;
    EXPECT_EQ(policy, SCHED_BATCH) << thread.toStdString();
  }
  EXPECT_GT(threads, 1);
  EXPECT_EQ(sched_getscheduler(0), SCHED_OTHER);
}

TEST_F(PlayerPace, APolicyThatSomebodyChoseForTheProgramStays) {
  const sched_param noPriority{};
  ASSERT_EQ(sched_setscheduler(0, SCHED_BATCH, &noPriority), 0);
  player.setURL(MakePlain("red.mp4", "red", 2));
  EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
  EXPECT_EQ(sched_getscheduler(0), SCHED_BATCH);
  ASSERT_EQ(sched_setscheduler(0, SCHED_OTHER, &noPriority), 0);
}

}  // namespace
}  // namespace kelvane::testing
