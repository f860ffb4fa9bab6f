// These tests load, cancel and reload the job window.
#include <QFile>
#include <QtTest/QTest>

#include "cropjob/JobWindowTest.h"
#include "support/TabOrder.h"

namespace kelvane::testing {
namespace {

class JobLife : public JobWindowTest {};

TEST_F(JobLife, EndsWhenAnyButtonIsReleasedOverCancel) {
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
    LoadJob();
    Press(Get<Label>("Label2"), button);
    EXPECT_TRUE(job_.Loaded()) << button;
    Release(Get<Label>("Label2"), button);
    EXPECT_FALSE(job_.Loaded()) << button;
    ServePendingEvents();
    EXPECT_FALSE(JobIsThere()) << button;
    EXPECT_TRUE(mainWindow_.isVisible());
  }
}

// The key that accepted the file dialog, Enter, may still be down when the window opens.
TEST_F(JobLife, EndsBySpaceAndEnterOnlyAfterTab) {
  for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) {
    LoadJob();
    Job().activateWindow();
    ASSERT_TRUE(WaitFor([this] { return Job().isActiveWindow(); }));
    QTest::keyClick(Job().windowHandle(), key);
    EXPECT_TRUE(job_.Loaded()) << key;
    EXPECT_EQ(TabOrder(Job()), "Label2");
    QTest::keyClick(Job().windowHandle(), key);
    EXPECT_FALSE(job_.Loaded()) << key;
    ServePendingEvents();
  }
}

TEST_F(JobLife, GoesOnWhenAnythingButCancelIsClicked) {
  LoadJob();
  for (Control* control : Job().findChildren<Control*>()) {
    if (control->objectName() != QLatin1String("Label2")) Click(*control);
  }
  EXPECT_TRUE(Job().isVisible());
}

TEST_F(JobLife, GoesOnAfterTheJobUntilCancel) {
  LoadJob();
  Run();
  ServePendingEvents();
  ASSERT_TRUE(JobIsThere());
  EXPECT_TRUE(Job().isVisible());
  Cancel();
  ServePendingEvents();
  EXPECT_FALSE(JobIsThere());
}

TEST_F(JobLife, CancelIsBlackUnderThePointerUntilItMovesOverTheBareWindow) {
  LoadJob();
  const auto expectAfterMovesOverOthers = [this](const char* color) {
    for (const char* name : {"Label1(0)", "Label1(1)", "Label1(2)", "Label3", "Picture1", "pbar"}) {
      MovePointerOver(Get<Control>(name));
      EXPECT_EQ(Hex(Get<Label>("Label3").BackColor()), color) << name;
    }
  };
  expectAfterMovesOverOthers("0x232323");
  MovePointerOver(Get<Label>("Label2"));
  expectAfterMovesOverOthers("0x000000");
  MovePointerOver(*Job().findChild<ContentArea*>(QString(), Qt::FindDirectChildrenOnly));
  expectAfterMovesOverOthers("0x232323");
}

TEST_F(JobLife, ASecondLoadHasNoEffect) {
  Form2& job = LoadJob("00:00:10");
  Tick(JobTimer());
  MainBar().setValue(4);
  Bar().setValue(3);
  OutputPath = "/tmp/second.mp4";
  EXPECT_EQ(&LoadJob("00:01:00"), &job);
  EXPECT_EQ(Bar().Max(), 10);
  EXPECT_EQ(Bar().Value(), 3);
  EXPECT_EQ(MainBar().Value(), 4);
  EXPECT_EQ(Get<Label>("Label1(1)").Caption(), "/tmp/out.mp4");
  Tick(JobTimer());  // the second tick since the load
  EXPECT_EQ(tools_.Runs().size(), 1U);
}

TEST_F(JobLife, CancelBeforeTheSecondTickRunsNoTool) {
  LoadJob();
  Tick(JobTimer());
  Cancel();
  EXPECT_FALSE(JobTimer().Enabled());
  EXPECT_TRUE(tools_.Runs().empty());
}

TEST_F(JobLife, CancelDuringAJobLetsTheToolFinishAndUpdateTheMainWindow) {
  const QString output = tools_.Path() + QLatin1String("/whole");
  const Gate gate(tools_.PathOf("gate"));
  LoadJob("00:00:10");
  Texts titles;
  mainWindow_.TitleSet = [&] { titles.push_back(Title()); };
  MainWindowMinimised = true;
  AtNextDoEvents([&] {
    Cancel();
    EXPECT_FALSE(job_.Loaded());
    EXPECT_FALSE(Job().isVisible());
    EXPECT_FALSE(QFile::exists(output));
    gate.Open();
  });
  Run(PrintBlocks({"time=00:00:02.00"}) + WaitCommands(gate) +
      PrintBlocks({"time=00:00:05.00", "time=00:00:07.00"}) +
      QStringLiteral("echo whole > '%1'\n").arg(output));
  EXPECT_TRUE(QFile::exists(output));
  EXPECT_EQ(titles, (Texts{"Crop: 00.00%", "Crop: 20.00%", "Crop: 50.00%"}));
  EXPECT_EQ(MainBar().Value(), 7);
  ServePendingEvents();
  EXPECT_FALSE(JobIsThere());
}

TEST_F(JobLife, ASecondJobCanRunDuringACancelledOne) {
  const Gate gate(tools_.PathOf("gate"));
  LoadJob("00:00:10");
  const QPointer<Form2> first = shown_;
  AtNextDoEvents([&] {
    Cancel();
    OutputPath = "/tmp/second.mp4";
    LoadJob("00:00:20");
    EXPECT_NE(&Job(), first);
    Run(PrintBlocks({"time=00:00:15.00"}));
    EXPECT_EQ(Status(), kSuccessful);
    EXPECT_EQ(Bar().Value(), 15);
    gate.Open();
  });
  tools_.FfmpegDoes(PrintCommands("one\n") + WaitCommands(gate) +
                    PrintCommands("time=00:00:09.00\n"));
  Timer& timer = JobTimer();
  Tick(timer);
  Tick(timer);
  EXPECT_EQ(tools_.Runs().size(), 2U);
  EXPECT_EQ(MainBar().Value(), 9);
  EXPECT_EQ(Bar().Value(), 15);
  EXPECT_EQ(Status(), kSuccessful);
}

}  // namespace
}  // namespace kelvane::testing
