// The program ends when its last loaded form has been unloaded and every handler has returned.
#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include "platform/App.h"
#include "platform/MsgBox.h"
#include "platform/TestForm.h"
#include "platform/Timer.h"
#include "support/DialogAnswers.h"
#include "support/Events.h"

namespace kelvane::testing {
namespace {

// The message loop of the application object that main() has made.
int RunProgram() { return QApplication::exec(); }

class TheProgram : public ::testing::Test {
 protected:
  TheProgram() {
    // A program that doesn't end by itself is ended, and the test told.
    constexpr int kTooLong = 10000;  // ms
    QObject::connect(&watchdog, &QTimer::timeout, [this] {
      events.emplace_back("too long");
      first.Unload();
      second.Unload();
      QCoreApplication::exit(1);
    });
    watchdog.setSingleShot(true);
    watchdog.start(kTooLong);
  }

  // Runs `step` in a handler of the form, soon after the program has begun.
  void InAHandlerOf(Form& form, std::function<void()> step) {
    auto* timer = new Timer(form, "Timer1", 1);
    timer->Tick = [timer, step = std::move(step)] {
      timer->setEnabled(false);
      step();
    };
    timer->setEnabled(true);
  }

  TestForm first;
  TestForm second;
  Events events;
  QTimer watchdog;
};

TEST_F(TheProgram, EndsWhenTheUserClosesItsOnlyForm) {
  first.Load();
  first.Show();
  AtNextDoEvents([this] { first.close(); });
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_FALSE(first.Loaded());
  EXPECT_EQ(events, Events{});
}

TEST_F(TheProgram, GoesOnUntilTheLastFormIsUnloadedShownOrNot) {
  first.Load();
  first.Show();
  second.Load();
  InAHandlerOf(second, [this] {
    first.Unload();
    events.emplace_back("first unloaded");
    InAHandlerOf(second, [this] {
      events.emplace_back("second unloads");
      second.Unload();
    });
  });
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_EQ(events, (Events{"first unloaded", "second unloads"}));
}

TEST_F(TheProgram, EndsAfterTheHandlerThatUnloadedTheLastFormHasReturned) {
  first.Load();
  InAHandlerOf(first, [this] {
    first.Unload();
    for (int round = 0; round < 3; ++round) DoEvents();
    events.emplace_back("still running");
  });
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_EQ(events, Events{"still running"});
}

TEST_F(TheProgram, StillAsksInAHandlerThatGoesOn) {
  first.Load();
  const DialogAnswers answers({PressButton(QMessageBox::Ok)});
  InAHandlerOf(first, [this] {
    first.Unload();
    MsgBox(u"An error occurred."_s);
  });
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_EQ(answers.seen(), Events{"Kelvane | An error occurred. | no icon | OK"});
}

TEST_F(TheProgram, GoesOnWithAFormThatTheLastOneLoadsOnItsWayOut) {
  first.Load();
  InAHandlerOf(first, [this] {
    first.Unload();
    second.Load();
    InAHandlerOf(second, [this] {
      events.emplace_back("second");
      second.Unload();
    });
  });
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_EQ(events, Events{"second"});
}

TEST_F(TheProgram, CountsAFormThatIsUnloadedWhileItUnloadsOnce) {
  first.Load();
  second.Load();
  first.OnUnload = [this] { first.Unload(); };
  InAHandlerOf(second, [this] {
    first.Unload();
    InAHandlerOf(second, [this] {
      events.emplace_back("second");
      second.Unload();
    });
  });
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_EQ(events, Events{"second"});
}

TEST_F(TheProgram, DeletesTheFormsThatWereDropped) {
  struct Dropped : TestForm {
    explicit Dropped(Events& record) : events(record) {}
    ~Dropped() override { events.emplace_back("deleted"); }
    Events& events;
  };
  FormInstance<Dropped> instance;
  first.Load();
  InAHandlerOf(first, [&] {
    instance.Load(events);
    instance.Unload();
    InAHandlerOf(first, [this] {
      events.emplace_back("first unloads");
      first.Unload();
    });
  });
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_EQ(events, (Events{"deleted", "first unloads"}));
}

}  // namespace
}  // namespace kelvane::testing
