// Forms from their Load to their Unload, and the end of the program after the last form's Unload.
#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/App.h"
#include "platform/Label.h"
#include "platform/MsgBox.h"
#include "platform/TestForm.h"
#include "platform/Timer.h"
#include "support/DialogAnswers.h"
#include "support/Events.h"

namespace kelvane::testing {
namespace {

// Deletes the objects whose deletion an event loop would now carry out.
void RunDeferredDeletions() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

void ProcessAllEvents() {
  for (int round = 0; round < 3; ++round) {
    DoEvents();
    RunDeferredDeletions();
  }
}

void RecordLife(TestForm& form, Events& events) {
  form.OnLoad = [&] { events.emplace_back("Load"); };
  form.OnQueryUnload = [&] { events.emplace_back("QueryUnload"); };
  form.OnUnload = [&] { events.emplace_back("Unload"); };
}

class FormLife : public ::testing::Test {
 protected:
  FormLife() { RecordLife(form, events); }

  TestForm form;
  Events events;
};

TEST_F(FormLife, BeginsWithLoadWhichRunsOnceAndShowsNothing) {
  EXPECT_FALSE(form.Loaded());
  form.OnLoad = [this] {
    events.emplace_back("Load");
    EXPECT_TRUE(form.Loaded());
    form.Load();
  };
  form.Load();
  form.Load();
  EXPECT_EQ(events, Events{"Load"});
  EXPECT_TRUE(form.Loaded());
  EXPECT_FALSE(form.isVisible());
  form.Show();
  EXPECT_TRUE(form.isVisible());
  EXPECT_FALSE(form.isModal());
}

TEST_F(FormLife, EndsWithUnloadWhichHidesTheFormAfterItsEvents) {
  form.Unload();
  EXPECT_EQ(events, Events{}) << "a form that isn't loaded has been unloaded";
  form.Open();
  events.clear();
  const auto record = [this](const char* event) {
    events.emplace_back(event);
    EXPECT_TRUE(form.Loaded());
    EXPECT_TRUE(form.isVisible());
    form.Unload();  // has no effect while the form is being unloaded
  };
  form.OnQueryUnload = [&] { record("QueryUnload"); };
  form.OnUnload = [&] {
    record("Unload");
    form.close();
  };
  form.Unload();
  form.Unload();
  EXPECT_EQ(events, (Events{"QueryUnload", "Unload"}));
  EXPECT_FALSE(form.Loaded());
  EXPECT_FALSE(form.isVisible());
}

TEST_F(FormLife, EndsWhenTheWindowIsClosedAndBeginsAnewWithTheNextLoad) {
  form.Open();
  form.windowHandle()->close();
  ASSERT_TRUE(WaitFor([this] { return !form.Loaded(); }));
  EXPECT_FALSE(form.isVisible());
  RunDeferredDeletions();
  form.Open();
  EXPECT_TRUE(form.Loaded());
  EXPECT_TRUE(form.isVisible());
  EXPECT_EQ(events, (Events{"Load", "QueryUnload", "Unload", "Load"}));
}

TEST_F(FormLife, EndsWithoutEventsWhenTheObjectIsDestroyed) {
  {
    TestForm other;
    RecordLife(other, events);
    other.Open();
    events.clear();
  }
  EXPECT_EQ(events, Events{});
}

TEST(OwnedForm, StaysInFrontOfItsOwnerAndOutlivesIt) {
  Events events;
  TestForm owned(FixedForm());
  RecordLife(owned, events);
  {
    TestForm owner;
    owner.Open();
    owned.Load();
    owned.Show(&owner);
    EXPECT_EQ(owned.windowHandle()->transientParent(), owner.windowHandle());
    EXPECT_FALSE(owned.isModal());
    owner.Unload();
    DoEvents();
    EXPECT_TRUE(owned.isVisible());
  }
  DoEvents();
  EXPECT_TRUE(owned.isVisible());
  EXPECT_EQ(events, Events{"Load"});
}

// A form for a FormInstance, with a label and a timer. It records its life and its deletion.
class RecordedForm : public TestForm {
 public:
  explicit RecordedForm(Events& record)
      : TestForm({Design(kLabel, "Label1", {0, 0, 50, 20})}), events(record) {
    RecordLife(*this, events);
  }
  ~RecordedForm() override { events.emplace_back("deleted"); }

  Events& events;
  Label& label = Find<Label>("Label1");
  Timer timer{*this, "Timer1", 1};
};

class FormInstanceTest : public ::testing::Test {
 protected:
  void WaitForEvent(const char* event) {
    ASSERT_TRUE(WaitFor([&] { return std::count(events.begin(), events.end(), event) > 0; }));
    RunDeferredDeletions();
  }

  Events events;
  FormInstance<RecordedForm> instance;
};

TEST_F(FormInstanceTest, KeepsAFormThatIsUnloadedInAHandlerUntilTheHandlerReturns) {
  using Handler = std::function<void()>;
  // Each makes `handler` the handler of an event of the form and causes that event.
  const std::function<void(RecordedForm&, const Handler&)> raisers[]{
      [](RecordedForm& form, const Handler& handler) {
        form.timer.Tick = handler;
        form.timer.setEnabled(true);
      },
      [](RecordedForm& form, const Handler& handler) {
        form.label.MouseUp = [handler](const MouseEvent&) { handler(); };
        Release(form.label);
      },
      [](RecordedForm& form, const Handler& handler) {
        form.label.Change = [handler](int) { handler(); };
        AtNextDoEvents([&form] { form.label.setCaption(u"go"_s); });
      }};
  for (const auto& raise : raisers) {
    RecordedForm& form = instance.Load(events);
    bool begun = false;
    raise(form, [this, &form, &begun] {
      if (std::exchange(begun, true)) return;
      form.Unload();
      ProcessAllEvents();
      form.label.setCaption(u"still here"_s);
      events.emplace_back("end");
    });
    WaitForEvent("end");
    EXPECT_EQ(std::exchange(events, {}),
              (Events{"Load", "QueryUnload", "Unload", "end", "deleted"}));
  }
}

TEST_F(FormInstanceTest, KeepsAFormThatIsUnloadedInFormLoadUntilThatReturns) {
  struct UnloadsAtOnce : RecordedForm {
    explicit UnloadsAtOnce(Events& record) : RecordedForm(record) {
      OnLoad = [this] {
        Unload();
        ProcessAllEvents();
        events.emplace_back("end");
      };
    }
  };
  FormInstance<UnloadsAtOnce> other;
  other.Load(events);
  EXPECT_FALSE(other.Loaded());
  RunDeferredDeletions();
  EXPECT_EQ(events, (Events{"QueryUnload", "Unload", "end", "deleted"}));
}

TEST_F(FormInstanceTest, KeepsAnUnloadedFormUntilTheOutermostOfItsHandlersReturns) {
  RecordedForm& form = instance.Load(events);
  int depth = 0;
  form.timer.Tick = [&] {
    const int mine = ++depth;
    if (mine == 1) {
      WaitFor([&] { return depth == 2; });
    } else {
      form.Unload();
    }
    RunDeferredDeletions();
    events.push_back("end " + std::to_string(mine));
  };
  form.timer.setEnabled(true);
  WaitForEvent("end 1");
  EXPECT_EQ(events, (Events{"Load", "QueryUnload", "Unload", "end 2", "end 1", "deleted"}));
}

TEST_F(FormInstanceTest, MakesTheFormAnewAtTheNextLoad) {
  EXPECT_FALSE(instance.Loaded());
  instance.Unload();
  RecordedForm& first = instance.Load(events);
  EXPECT_TRUE(instance.Loaded());
  EXPECT_FALSE(instance.Visible());
  EXPECT_EQ(&instance.Load(events), &first);
  first.Show();
  EXPECT_TRUE(instance.Visible());
  instance.Unload();
  EXPECT_FALSE(instance.Loaded());
  EXPECT_FALSE(instance.Visible());
  EXPECT_NE(&instance.Load(events), &first);
  RunDeferredDeletions();
  EXPECT_TRUE(instance.Loaded());
  EXPECT_EQ(events, (Events{"Load", "QueryUnload", "Unload", "Load", "deleted"}));
}

TEST_F(FormInstanceTest, KeepsAnUnloadedFormBesideItsSuccessorUntilItsHandlerReturns) {
  RecordedForm& first = instance.Load(events);
  first.timer.Tick = [&] {
    first.timer.setEnabled(false);
    first.Unload();
    instance.Load(events).label.setCaption(u"second"_s);
    RunDeferredDeletions();
    events.push_back("first: " + first.label.Caption().toStdString());
  };
  first.timer.setEnabled(true);
  WaitForEvent("first: ");
  EXPECT_EQ(events, (Events{"Load", "QueryUnload", "Unload", "Load", "first: ", "deleted"}));
  EXPECT_TRUE(instance.Loaded());
}

TEST_F(FormInstanceTest, DeletesItsFormWhenItIsItselfDestroyed) {
  {
    FormInstance<RecordedForm> other;
    other.Load(events);
  }
  EXPECT_EQ(events, (Events{"Load", "deleted"}));
}

class ProgramEnd : public ::testing::Test {
 protected:
  // Makes the program's event loop run `step` soon, in a handler of the form.
  void InAHandlerOf(Form& form, std::function<void()> step) {
    auto* timer = new Timer(form, "Timer1", 1);
    timer->Tick = [timer, step = std::move(step)] {
      timer->setEnabled(false);
      step();
    };
    timer->setEnabled(true);
  }
  void UnloadInAHandlerOf(Form& form) {
    InAHandlerOf(form, [this, &form] {
      events.emplace_back("last form unloads");
      form.Unload();
    });
  }
  // Runs the program's event loop to its end.
  static void Run() { EXPECT_EQ(QApplication::exec(), 0); }

  TestForm first;
  TestForm second;
  Events events;
};

TEST_F(ProgramEnd, ComesWhenTheLastFormIsUnloadedShownOrNot) {
  first.Load();
  first.Show();
  second.Load();
  InAHandlerOf(second, [this] {
    first.Unload();
    UnloadInAHandlerOf(second);
  });
  Run();
  EXPECT_EQ(events, Events{"last form unloads"});
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
  Run();
  EXPECT_EQ(events, Events{"still running"});
}

TEST_F(ProgramEnd, DoesNotComeWhereAHandlerLoadsAnotherFormAfterUnloadingTheLast) {
  first.Load();
  InAHandlerOf(first, [this] {
    first.Unload();
    second.Load();
    UnloadInAHandlerOf(second);
  });
  Run();
  EXPECT_EQ(events, Events{"last form unloads"});
}

}  // namespace
}  // namespace kelvane::testing
