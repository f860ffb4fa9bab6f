// Timers. A second timer tells the tests when an interval has passed.
#include "platform/Timer.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QThread>

#include "platform/App.h"
#include "platform/TestForm.h"
#include "support/Events.h"

namespace kelvane::testing {
namespace {

constexpr int kInterval = 20;  // ms

class TimerTest : public ::testing::Test {
 protected:
  TimerTest() {
    form.Load();
    other.Load();
    timer.Tick = [this] { ++ticks; };
  }

  bool AwaitTicks(int count) {
    return WaitFor([&] { return ticks >= count; });
  }
  // Processes events until a timer that is enabled now would have ticked.
  void PassAnInterval() {
    Timer witness(other, "Witness", 2 * kInterval);
    witness.setEnabled(true);
    ASSERT_TRUE(WaitForTicks(witness, 1));
  }

  TestForm form;
  TestForm other;
  Timer timer{form, "Timer1", kInterval};
  int ticks = 0;
};

TEST_F(TimerTest, TicksAtMostOnceInEachIntervalWhileItIsEnabled) {
  PassAnInterval();
  EXPECT_EQ(ticks, 0);
  QElapsedTimer clock;
  clock.start();
  timer.setEnabled(true);
  EXPECT_TRUE(timer.Enabled());
  EXPECT_EQ(ticks, 0);
  EXPECT_TRUE(AwaitTicks(4));
  EXPECT_GE(clock.elapsed(), 4 * kInterval - 4) << "a tick came over a millisecond early";
  timer.setEnabled(false);
  EXPECT_FALSE(timer.Enabled());
  const int before = ticks;
  PassAnInterval();
  EXPECT_EQ(ticks, before);
}

TEST_F(TimerTest, WaitsAWholeIntervalWhenItIsEnabledAnew) {
  timer.setEnabled(true);
  QThread::msleep(kInterval / 2);
  timer.setEnabled(false);
  QElapsedTimer clock;
  clock.start();
  timer.setEnabled(true);
  ASSERT_TRUE(AwaitTicks(1));
  EXPECT_GE(clock.elapsed(), kInterval - 1);
}

TEST_F(TimerTest, IsNotDelayedByBeingEnabledAgainWhileItIsEnabled) {
  EXPECT_TRUE(WaitFor([&] {
    timer.setEnabled(true);
    return ticks == 3;
  }));
}

TEST_F(TimerTest, MayDisableItselfInItsTick) {
  timer.Tick = [this] {
    ++ticks;
    timer.setEnabled(false);
  };
  timer.setEnabled(true);
  ASSERT_TRUE(AwaitTicks(1));
  PassAnInterval();
  EXPECT_EQ(ticks, 1);
  timer.setEnabled(true);
  EXPECT_TRUE(AwaitTicks(2));
}

TEST_F(TimerTest, TicksDuringTheDoEventsOfItsOwnHandler) {
  Events events;
  timer.Tick = [&] {
    const int tick = ++ticks;
    events.push_back("begin " + std::to_string(tick));
    if (tick <= 2) {
      while (ticks == tick) DoEvents();
    } else {
      timer.setEnabled(false);
    }
    events.push_back("end " + std::to_string(tick));
  };
  timer.setEnabled(true);
  ASSERT_TRUE(WaitFor([&] { return events.size() >= 6; }));
  EXPECT_EQ(events, (Events{"begin 1", "begin 2", "begin 3", "end 3", "end 2", "end 1"}));
}

TEST_F(TimerTest, TicksOnceForAllTheIntervalsInWhichNoEventWasProcessed) {
  timer.setEnabled(true);
  QThread::msleep(6 * kInterval);
  DoEvents();
  EXPECT_EQ(ticks, 1);
  EXPECT_TRUE(AwaitTicks(2));
}

TEST_F(TimerTest, TicksOnlyWhileItsFormIsLoadedEvenIfItIsNotShown) {
  form.Unload();
  timer.setEnabled(true);
  PassAnInterval();
  EXPECT_EQ(ticks, 0);
  form.Load();
  EXPECT_TRUE(AwaitTicks(1));
  form.Show();
  EXPECT_TRUE(AwaitTicks(3));
  form.Unload();
  EXPECT_FALSE(timer.Enabled());
}

}  // namespace
}  // namespace kelvane::testing
