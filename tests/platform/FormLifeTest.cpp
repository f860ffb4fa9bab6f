// Forms live by Load, Show, Unload.
#include <gtest/gtest.h>

#include <QPointer>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/App.h"
#include "platform/Label.h"
#include "platform/Pointer.h"
#include "platform/TestForm.h"
#include "platform/Timer.h"
#include "support/Events.h"

namespace kelvane::testing {
namespace {

// What an application's event loop does with forms that are to be deleted; also in a handler, as
// any code that is called there might.
void DeleteWhatMayBeDeleted() {
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void ProcessAllEventsAFewTimes() {
  for (int round = 0; round < 3; ++round) {
    DoEvents();
    DeleteWhatMayBeDeleted();
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

TEST_F(FormLife, BeginsWithLoadWhichShowsNothing) {
  EXPECT_FALSE(form.Loaded());
  EXPECT_FALSE(form.isVisible());
  bool loadedInside = false;
  form.OnLoad = [&] { loadedInside = form.Loaded(); };
  form.Load();
  EXPECT_TRUE(loadedInside);
  EXPECT_TRUE(form.Loaded());
  EXPECT_FALSE(form.isVisible());
}

TEST_F(FormLife, IsNotChangedByLoadingALoadedForm) {
  form.OnLoad = [this] {
    events.emplace_back("Load");
    form.Load();
  };
  form.Load();
  form.Load();
  EXPECT_EQ(events, Events{"Load"});
}

TEST_F(FormLife, IsVisibleAndModelessAfterShow) {
  form.Open();
  EXPECT_TRUE(form.isVisible());
  EXPECT_FALSE(form.isModal());
  form.Show();
  EXPECT_TRUE(form.isVisible());
  EXPECT_EQ(events, Events{"Load"});
}

TEST_F(FormLife, EndsWithUnloadWhichHidesTheFormAfterItsEvents) {
  form.Open();
  events.clear();
  const auto record = [this](const char* event) {
    events.emplace_back(event);
    EXPECT_TRUE(form.Loaded());
    EXPECT_TRUE(form.isVisible());
    form.Unload();  // has no effect once more
  };
  form.OnQueryUnload = [&] { record("QueryUnload"); };
  form.OnUnload = [&] {
    record("Unload");
    form.close();
  };
  form.Unload();
  EXPECT_EQ(events, (Events{"QueryUnload", "Unload"}));
  EXPECT_FALSE(form.Loaded());
  EXPECT_FALSE(form.isVisible());
}

TEST_F(FormLife, IsNotChangedByUnloadingAFormThatIsNotLoaded) {
  form.Unload();
  EXPECT_EQ(events, Events{});
  form.Load();
  form.Unload();
  form.Unload();
  EXPECT_EQ(events, (Events{"Load", "QueryUnload", "Unload"}));
}

TEST_F(FormLife, EndsWhenTheWindowIsClosedAndBeginsAnewWithTheNextLoad) {
  form.Open();
  form.windowHandle()->close();
  ASSERT_TRUE(WaitFor([this] { return !form.Loaded(); }));
  EXPECT_FALSE(form.isVisible());
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
  const auto expectThatItLives = [&] {
    DoEvents();
    EXPECT_TRUE(owned.Loaded());
    EXPECT_TRUE(owned.isVisible());
  };
  {
    TestForm owner;
    owner.Open();
    owned.Load();
    owned.Show(&owner);
    EXPECT_EQ(owned.windowHandle()->transientParent(), owner.windowHandle());
    EXPECT_EQ(owned.parent(), nullptr);
    EXPECT_FALSE(owned.isModal());
    owner.Unload();
    expectThatItLives();
  }
  expectThatItLives();
  EXPECT_EQ(events, Events{"Load"});
}

// A form that is dropped when it has been unloaded, with a button, a timer and a record.
class Dropped : public TestForm {
 public:
  explicit Dropped(Events& record)
      : TestForm({Design(kLabel, "Label1", {0, 0, 50, 20})}), events(record) {
    RecordLife(*this, events);
  }
  ~Dropped() override { events.emplace_back("deleted"); }

  Events& events;
  Label& label = Find<Label>("Label1");
  Timer timer{*this, "Timer1", 1};
};

class DroppedForm : public ::testing::Test {
 protected:
  // What a handler does that unloads its own form and goes on.
  std::function<void()> Handler() {
    return [this] {
      Dropped& form = instance.Load(events);
      events.emplace_back("begin");
      form.Unload();
      ProcessAllEventsAFewTimes();
      form.label.setCaption(u"still here"_s);
      events.emplace_back("end");
    };
  }

  void WaitForEvent(const char* event) {
    ASSERT_TRUE(WaitFor([&] { return std::count(events.begin(), events.end(), event) > 0; }));
    DeleteWhatMayBeDeleted();
  }

  void ExpectDeletionAfterTheHandler() {
    WaitForEvent("end");
    EXPECT_EQ(events, (Events{"Load", "begin", "QueryUnload", "Unload", "end", "deleted"}));
  }

  Events events;
  FormInstance<Dropped> instance;
};

TEST_F(DroppedForm, OutlivesItsUnloadingInATick) {
  Dropped& form = instance.Load(events);
  form.timer.Tick = Handler();
  form.timer.setEnabled(true);
  ExpectDeletionAfterTheHandler();
}

TEST_F(DroppedForm, OutlivesItsUnloadingInAMouseEvent) {
  Dropped& form = instance.Load(events);
  form.Open();
  form.label.MouseUp = [run = Handler()](const MouseEvent&) { run(); };
  Pointer pointer(form);
  pointer.MoveTo(form.label, {5, 5});
  pointer.Click();
  ExpectDeletionAfterTheHandler();
}

TEST_F(DroppedForm, OutlivesItsUnloadingInAChange) {
  Dropped& form = instance.Load(events);
  form.label.Change = [run = Handler(), begun = false](int) mutable {
    if (!std::exchange(begun, true)) run();
  };
  AtNextDoEvents([&form] { form.label.setCaption(u"go"_s); });
  ExpectDeletionAfterTheHandler();
}

TEST_F(DroppedForm, OutlivesItsUnloadingInFormLoad) {
  struct Impatient : Dropped {
    explicit Impatient(Events& record) : Dropped(record) {
      OnLoad = [this] {
        events.emplace_back("begin");
        Unload();
        ProcessAllEventsAFewTimes();
        events.emplace_back("end");
      };
    }
  };
  FormInstance<Impatient> impatient;
  impatient.Load(events);
  EXPECT_FALSE(impatient.Loaded());
  DeleteWhatMayBeDeleted();
  EXPECT_EQ(events, (Events{"begin", "QueryUnload", "Unload", "end", "deleted"}));
}

TEST_F(DroppedForm, OutlivesItsClosingInANestedDoEvents) {
  Dropped& form = instance.Load(events);
  form.Show();
  form.timer.Tick = [&] {
    form.timer.setEnabled(false);
    events.emplace_back("begin");
    AtNextDoEvents([&] { form.close(); });
    ProcessAllEventsAFewTimes();
    events.push_back(form.Loaded() ? "loaded" : "not loaded");
    events.emplace_back("end");
  };
  form.timer.setEnabled(true);
  WaitForEvent("end");
  EXPECT_EQ(events,
            (Events{"Load", "begin", "QueryUnload", "Unload", "not loaded", "end", "deleted"}));
}

TEST_F(DroppedForm, LivesUntilTheOutermostOfItsHandlersReturns) {
  Dropped& form = instance.Load(events);
  int depth = 0;
  form.timer.Tick = [&] {
    const int mine = ++depth;
    events.push_back("begin " + std::to_string(mine));
    if (mine == 1) {
      WaitFor([&] { return depth == 2; });
    } else {
      form.Unload();
    }
    DeleteWhatMayBeDeleted();
    events.push_back("end " + std::to_string(mine));
  };
  form.timer.setEnabled(true);
  WaitForEvent("end 1");
  EXPECT_EQ(events, (Events{"Load", "begin 1", "begin 2", "QueryUnload", "Unload", "end 2", "end 1",
                            "deleted"}));
}

TEST_F(DroppedForm, IsMadeAnewByTheNextLoad) {
  EXPECT_FALSE(instance.Loaded());
  instance.Unload();
  Dropped& first = instance.Load(events);
  EXPECT_TRUE(instance.Loaded());
  EXPECT_FALSE(instance.Visible());
  EXPECT_EQ(&instance.Load(events), &first);
  EXPECT_EQ(events, Events{"Load"});
  first.Show();
  EXPECT_TRUE(instance.Visible());
  instance.Unload();
  EXPECT_FALSE(instance.Loaded());
  EXPECT_FALSE(instance.Visible());
  const Dropped& second = instance.Load(events);
  EXPECT_NE(&second, &first);
  DeleteWhatMayBeDeleted();
  EXPECT_TRUE(instance.Loaded());
  EXPECT_EQ(events, (Events{"Load", "QueryUnload", "Unload", "Load", "deleted"}));
}

TEST_F(DroppedForm, LivesBesideItsSuccessorUntilItsHandlerReturns) {
  Dropped& first = instance.Load(events);
  first.timer.Tick = [&] {
    first.timer.setEnabled(false);
    first.Unload();
    instance.Load(events).label.setCaption(u"second"_s);
    DeleteWhatMayBeDeleted();
    events.push_back("first: " + first.label.Caption().toStdString());
  };
  first.timer.setEnabled(true);
  WaitForEvent("first: ");
  EXPECT_EQ(events, (Events{"Load", "QueryUnload", "Unload", "Load", "first: ", "deleted"}));
  EXPECT_TRUE(instance.Loaded());
}

TEST_F(DroppedForm, IsDeletedWithItsFormInstance) {
  {
    FormInstance<Dropped> other;
    other.Load(events);
  }
  EXPECT_EQ(events, (Events{"Load", "deleted"}));
}

TEST(FormOnTheStack, IsNotDeletedWhenItIsUnloaded) {
  TestForm form;
  const QPointer<Form> still(&form);
  form.Open();
  form.Unload();
  DeleteWhatMayBeDeleted();
  EXPECT_EQ(still, &form);
}

}  // namespace
}  // namespace kelvane::testing
