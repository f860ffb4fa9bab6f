// Timers: when they tick, and when they don't.
#include "platform/Timer.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include "platform/App.h"
#include "platform/TestForm.h"
#include "support/Events.h"

namespace kelvane::testing {
namespace {

constexpr int kInterval = 20;  // ms

class ATimer : public ::testing::Test {
 protected:
  ATimer() {
    form.Load();
    timer.Tick = [this] { ++ticks; };
  }

  // Serves events for that long.
  static void PumpFor(int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    WaitFor([&] { return clock.hasExpired(milliseconds); });
  }
  // Keeps the thread busy for that long, without serving any event.
  static void WorkFor(int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    while (!clock.hasExpired(milliseconds)) continue;
  }

  TestForm form;
  Timer timer{form, "Timer1", kInterval};
  int ticks = 0;
};

TEST_F(ATimer, IsFoundByItsNameAndKnowsItsInterval) {
  EXPECT_EQ(&form.Find<Timer>("Timer1"), &timer);
  EXPECT_EQ(timer.Interval(), kInterval);
}

TEST_F(ATimer, IsOffUntilItIsEnabled) {
  EXPECT_FALSE(timer.Enabled());
  PumpFor(5 * kInterval);
  EXPECT_EQ(ticks, 0);
}

TEST_F(ATimer, TicksAgainAndAgainWhileItIsEnabled) {
  QElapsedTimer clock;
  clock.start();
  timer.setEnabled(true);
  EXPECT_TRUE(timer.Enabled());
  EXPECT_EQ(ticks, 0);
  EXPECT_TRUE(WaitFor([&] { return ticks == 4; }));
  EXPECT_GE(clock.elapsed(), 4 * kInterval - 4);
}

TEST_F(ATimer, TicksNoMoreOnceItIsDisabled) {
  timer.setEnabled(true);
  ASSERT_TRUE(WaitFor([&] { return ticks == 1; }));
  timer.setEnabled(false);
  EXPECT_FALSE(timer.Enabled());
  PumpFor(5 * kInterval);
  EXPECT_EQ(ticks, 1);
}

TEST_F(ATimer, WaitsAWholeIntervalWhenItIsEnabledAnew) {
  timer.setEnabled(true);
  PumpFor(kInterval / 2);
  timer.setEnabled(false);
  ticks = 0;
  timer.setEnabled(true);
  QElapsedTimer clock;
  clock.start();
  ASSERT_TRUE(WaitFor([&] { return ticks == 1; }));
  EXPECT_GE(clock.elapsed(), kInterval - 1);
}

TEST_F(ATimer, IsNotHeldBackByBeingEnabledWhileItIs) {
  timer.setEnabled(true);
  QElapsedTimer clock;
  clock.start();
  EXPECT_TRUE(WaitFor([&] {
    timer.setEnabled(true);
    return ticks == 3 || clock.hasExpired(100 * kInterval);
  }));
  EXPECT_EQ(ticks, 3);
}

TEST_F(ATimer, MayDisableItselfInItsTick) {
  timer.Tick = [this] {
    ++ticks;
    timer.setEnabled(false);
  };
  timer.setEnabled(true);
  ASSERT_TRUE(WaitFor([&] { return ticks == 1; }));
  PumpFor(5 * kInterval);
  EXPECT_EQ(ticks, 1);
  timer.setEnabled(true);
  EXPECT_TRUE(WaitFor([&] { return ticks == 2; }));
}

TEST_F(ATimer, TicksAtTheDoEventsOfItsOwnHandler) {
  Events events;
  timer.Tick = [&] {
    const int tick = ++ticks;
    events.push_back("begin " + std::to_string(tick));
    if (tick <= 2) {
      QElapsedTimer clock;
      clock.start();
      while (ticks == tick && !clock.hasExpired(100 * kInterval)) DoEvents();
    } else {
      timer.setEnabled(false);
    }
    events.push_back("end " + std::to_string(tick));
  };
  timer.setEnabled(true);
  ASSERT_TRUE(WaitFor([&] { return events.size() >= 6; }));
  EXPECT_EQ(events, (Events{"begin 1", "begin 2", "begin 3", "end 3", "end 2", "end 1"}));
}

TEST_F(ATimer, TicksOnceForAllTheTicksThatFoundNobodyPumping) {
  timer.setEnabled(true);
  WorkFor(6 * kInterval);
  DoEvents();
  EXPECT_EQ(ticks, 1);
  DoEvents();
  EXPECT_EQ(ticks, 1);
  EXPECT_TRUE(WaitFor([&] { return ticks == 2; }));
}

TEST_F(ATimer, WithNobodyToTellIsNoTrouble) {
  timer.Tick = nullptr;
  timer.setEnabled(true);
  PumpFor(3 * kInterval);
  EXPECT_TRUE(timer.Enabled());
}

TEST_F(ATimer, TicksWhetherItsFormIsOnTheScreenOrNot) {
  timer.setEnabled(true);
  EXPECT_TRUE(WaitFor([&] { return ticks == 1; }));
  form.Show();
  EXPECT_TRUE(WaitFor([&] { return ticks == 3; }));
}

TEST_F(ATimer, IsStoppedByTheUnloadingOfItsForm) {
  timer.setEnabled(true);
  form.Unload();
  EXPECT_FALSE(timer.Enabled());
  PumpFor(5 * kInterval);
  EXPECT_EQ(ticks, 0);
}

TEST_F(ATimer, DoesNotTickForAFormThatIsNotLoaded) {
  form.Unload();
  timer.setEnabled(true);
  PumpFor(5 * kInterval);
  EXPECT_EQ(ticks, 0);
  form.Load();
  EXPECT_TRUE(WaitFor([&] { return ticks == 1; }));
}

TEST_F(ATimer, EnabledByAHandlerThatOutlivesTheUnloadingDoesNotTick) {
  int other = 0;
  Timer second(form, "Timer2", kInterval);
  second.Tick = [&] { ++other; };
  timer.Tick = [&] {
    form.Unload();
    second.setEnabled(true);
  };
  timer.setEnabled(true);
  ASSERT_TRUE(WaitFor([&] { return !form.Loaded(); }));
  PumpFor(5 * kInterval);
  EXPECT_EQ(other, 0);
}

TEST_F(ATimer, RunsBesideOthersOfTheSameForm) {
  int other = 0;
  Timer second(form, "Timer2", 3 * kInterval);
  second.Tick = [&] { ++other; };
  second.setEnabled(true);
  timer.setEnabled(true);
  ASSERT_TRUE(WaitFor([&] { return other == 2; }));
  EXPECT_GE(ticks, 3);
  EXPECT_LE(ticks, 7);
}

}  // namespace
}  // namespace kelvane::testing
