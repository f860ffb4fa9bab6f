// The program ends when its last loaded form has been unloaded and every handler has returned.
#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>

#include "platform/App.h"
#include "platform/MsgBox.h"
#include "platform/TestForm.h"
#include "platform/Timer.h"
#include "support/DialogAnswers.h"
#include "support/Events.h"

namespace kelvane::testing {
namespace {

// The event loop of the application object that main() has made.
int RunProgram() { return QApplication::exec(); }

class ProgramEnd : public ::testing::Test {
 protected:
  // Runs `step` in a handler of the form, soon after the program has begun.
  void InAHandlerOf(Form& form, std::function<void()> step) {
    auto* timer = new Timer(form, "Timer1", 1);
    timer->Tick = [timer, step = std::move(step)] {
      timer->setEnabled(false);
      step();
    };
    timer->setEnabled(true);
  }
  void UnloadSecondLater() {
    InAHandlerOf(second, [this] {
      events.emplace_back("second unloads");
      second.Unload();
    });
  }

  TestForm first;
  TestForm second;
  Events events;
};

TEST_F(ProgramEnd, ComesWhenTheUserClosesTheOnlyForm) {
  first.Load();
  first.Show();
  AtNextDoEvents([this] { first.close(); });
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_FALSE(first.Loaded());
}

TEST_F(ProgramEnd, ComesWithTheUnloadingOfTheLastFormShownOrNot) {
  first.Load();
  first.Show();
  second.Load();
  InAHandlerOf(second, [this] {
    first.Unload();
    events.emplace_back("first unloaded");
    UnloadSecondLater();
  });
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_EQ(events, (Events{"first unloaded", "second unloads"}));
}

TEST_F(ProgramEnd, WaitsForTheHandlerThatUnloadedTheLastForm) {
  first.Load();
  const DialogAnswers answers({PressButton(QMessageBox::Ok)});
  InAHandlerOf(first, [this] {
    first.Unload();
    for (int round = 0; round < 3; ++round) DoEvents();
    MsgBox("An error occurred.");
    events.emplace_back("still running");
  });
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_EQ(events, Events{"still running"});
}

TEST_F(ProgramEnd, DoesNotComeWhereTheLastFormLoadsAnother) {
  first.Load();
  InAHandlerOf(first, [this] {
    first.Unload();
    second.Load();
    UnloadSecondLater();
  });
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_EQ(events, Events{"second unloads"});
}

TEST_F(ProgramEnd, CountsAFormThatIsUnloadedWhileItUnloadsOnce) {
  first.Load();
  second.Load();
  first.OnUnload = [this] { first.Unload(); };
  InAHandlerOf(second, [this] {
    first.Unload();
    UnloadSecondLater();
  });
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_EQ(events, Events{"second unloads"});
}

TEST_F(ProgramEnd, ComesAfterTheDeletionOfDroppedForms) {
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
