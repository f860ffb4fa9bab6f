// The join by copy: what the tool is told, what is written, and in what order.
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <new>

#include "joiner/JoinerWindowTest.h"
#include "media/Module1.h"
#include "platform/App.h"

namespace kelvane::testing {
namespace {

using JoinByCopy = JoinerWindowTest;

TEST_F(JoinByCopy, ListsEveryPathForTheToolEvenThoseOfRemovedSections) {
  for (const char* name : {"a.mp4", "b.mp4", "it's ü 動.mp4"}) AddSectionOf(name);
  Remove(3);
  EXPECT_EQ(JoinTo("/tmp/all.mp4"), (Texts{"Save Video As", kSuccess}));
  EXPECT_EQ(ListFile(),
            ListLine("a.mp4") + "file 'Deleted Section'\r\n" + ListLine("it's ü 動.mp4"));
  EXPECT_EQ(FfmpegRuns(), Texts{CopyRun("/tmp/all.mp4")});
}

TEST_F(JoinByCopy, RunsTheToolOnAnEmptyListIfThereIsNoSection) {
  EXPECT_EQ(JoinTo("/tmp/all.mp4"), (Texts{"Save Video As", kSuccess}));
  EXPECT_EQ(ListFile(), "");
  EXPECT_EQ(FfmpegRuns(), Texts{CopyRun("/tmp/all.mp4")});
  EXPECT_EQ(TranscodeAll(), Texts{kSuccess});
  EXPECT_EQ(FfmpegRuns().size(), 1U) << "a tool has run to transcode nothing";
}

TEST_F(JoinByCopy, RunsTheToolWithoutAnOutputIfTheDialogIsCancelled) {
  JoinTo("/tmp/earlier.mp4");
  EXPECT_EQ(Join(CancelDialog()), (Texts{"Save Video As", kSuccess}));
  EXPECT_EQ(FfmpegRuns(), (Texts{CopyRun("/tmp/earlier.mp4"), CopyRun("")}));
}

TEST_F(JoinByCopy, ReplacesALinkInThePlaceOfItsListAndNotTheFileBehindIt) {
  AddSectionOf("a.mp4");
  const QString target = tools_.MakeFile("target.txt");
  const QString missing = InFolder("missing.txt");
  for (const QString& linked : {target, missing}) {
    QFile::remove(InFolder("files.txt"));
    ASSERT_TRUE(QFile::link(linked, InFolder("files.txt")));
    JoinTo("/tmp/all.mp4");
    EXPECT_FALSE(QFileInfo(InFolder("files.txt")).isSymLink());
    EXPECT_EQ(ListFile(), ListLine("a.mp4"));
  }
  EXPECT_EQ(ContentOf(target), "contents");
  EXPECT_FALSE(QFile::exists(missing));
}

TEST_F(JoinByCopy, KeepsAFolderThatHasTheNameOfItsListAndRunsTheTool) {
  ASSERT_TRUE(QDir(tools_.Path()).mkpath("files.txt/inside"));
  EXPECT_EQ(JoinTo("/tmp/all.mp4"), (Texts{"Save Video As", kSuccess}));
  EXPECT_EQ(FfmpegRuns(), Texts{CopyRun("/tmp/all.mp4")});
  EXPECT_TRUE(QDir(InFolder("files.txt/inside")).exists());
}

// The program's folder is a file here, so that not even root can make a list in it.
TEST_F(JoinByCopy, WritesAPrivateListIfTheProgramsFolderTakesNone) {
  AddSectionOf("a.mp4");
  App::setPath(tools_.MakeFile("no-folder").toStdString());
  EXPECT_EQ(JoinTo("/tmp/all.mp4"), (Texts{"Save Video As", kSuccess}));
  EXPECT_EQ(ContentOf(QString::fromStdString(PrivateListFile())), ListLine("a.mp4"));
}

TEST_F(JoinByCopy, ReportsSuccessEvenIfTheToolFailsOrIsMissing) {
  const QString output = tools_.MakeFile("all.mp4");
  for (const char* end : {"exit 1\n", "kill -KILL $$\n"}) {
    tools_.FfmpegDoes(end);
    EXPECT_EQ(JoinTo(output), (Texts{"Save Video As", kSuccess}));
  }
  tools_.Remove("ffmpeg");
  EXPECT_EQ(JoinTo(output), (Texts{"Save Video As", kSuccess}));
  EXPECT_EQ(ContentOf(output), "contents");
}

TEST_F(JoinByCopy, ShowsItsStepsAndIgnoresTheAnswerToItsMessage) {
  Texts captions;
  RecordCaptions(captions);
  const DialogAnswers answers({CancelDialog(), PressButton(QMessageBox::Cancel)});
  Give(JoinAllSections);
  EXPECT_EQ(captions, (Texts{"Process: Creating List Index", "Process: Joining Your Videos...",
                             "Process: Video Created."}));
}

TEST_F(JoinByCopy, ServesEventsForASecondBetweenTheListAndTheTool) {
  AddSectionOf("a.mp4");
  int served = 0;
  std::function<void()> step = [&] {
    EXPECT_EQ(ListFile(), ListLine("a.mp4"));
    EXPECT_EQ(FfmpegRuns(), Texts{});
    if (++served < 10) AtNextDoEvents(step);
  };
  DuringTheWait(step);
  QElapsedTimer clock;
  clock.start();
  JoinTo("/tmp/all.mp4");
  EXPECT_EQ(served, 10);
  EXPECT_GE(clock.elapsed(), 1000);
  EXPECT_EQ(FfmpegRuns(), Texts{CopyRun("/tmp/all.mp4")});
}

TEST_F(JoinByCopy, ServesEventsBetweenItsDialogAndTheList) {
  AddThree();
  std::string caption;
  Join([&](QDialog& dialog) {
    AtNextDoEvents([&] {
      caption = Shown(ProcessLine);
      Remove(2);
    });
    dialog.reject();
  });
  EXPECT_EQ(caption, "Process: Creating List Index");
  EXPECT_EQ(ListFile(), "file 'Deleted Section'\r\n" + ListLine("b.mp4") + ListLine("c.mp4"));
}

TEST_F(JoinByCopy, KeepsItsListIfSectionsChangeDuringTheWait) {
  AddSectionOf("a.mp4");
  DuringTheWait([&] {
    AddSectionOf("b.mp4");
    Remove(2);
  });
  JoinTo("/tmp/all.mp4");
  EXPECT_EQ(PathsListed(), (Texts{" Deleted Section ", Path("b.mp4")}));
  EXPECT_EQ(ListFile(), ListLine("a.mp4"));
}

TEST_F(JoinByCopy, RunsNoToolIfTheOtherModeIsChosenDuringTheWait) {
  DuringTheWait([&] { Choose(TranscodeAllSections); });
  EXPECT_EQ(JoinTo("/tmp/all.mp4"), (Texts{"Save Video As", kSuccess}));
  EXPECT_EQ(FfmpegRuns(), Texts{});
}

TEST_F(JoinByCopy, LetsASecondJoinDuringTheWaitEndFirstAndUsesTheSecondJoinsList) {
  AddThree();
  Texts captions;
  DuringTheWait([&] {
    RecordCaptions(captions);
    Remove(2);
    JoinTo("/tmp/second.mp4");
  });
  JoinTo("/tmp/first.mp4");
  EXPECT_EQ(FfmpegRuns(), (Texts{CopyRun("/tmp/second.mp4"), CopyRun("/tmp/first.mp4")}));
  EXPECT_EQ(ListFile(), "file 'Deleted Section'\r\n" + ListLine("b.mp4") + ListLine("c.mp4"));
  EXPECT_EQ(captions, (Texts{"Process: Creating List Index", "Process: Joining Your Videos...",
                             "Process: Video Created."}));
}

TEST_F(JoinByCopy, RunsTheToolEvenIfItsWindowIsClosedDuringTheWait) {
  DuringTheWait([&] { form_->close(); });
  EXPECT_EQ(JoinTo("/tmp/all.mp4"), (Texts{"Save Video As", kSuccess}));
  EXPECT_EQ(FfmpegRuns(), Texts{CopyRun("/tmp/all.mp4")});
  EXPECT_FALSE(form_->Loaded());
}

TEST_F(JoinByCopy, AddsASectionForADurationThatTheToolPrints) {
  AddSectionOf("a.mp4");
  tools_.FfmpegDoes(
      PrintCommands("Input #0, concat\n  Duration: N/A, start: 0.000000, bitrate: N/A\n"));
  JoinTo("/tmp/all.mp4");
  EXPECT_EQ(Rows(), (Texts{"1 | a.mp4 | 600", "2 | a.mp4 | 60"}));
  EXPECT_EQ(Strips(), (Texts{"1,1 60x17", "61,21 6x17"}));
  EXPECT_EQ(Shown(TotalDurationSeconds), "00,660");
  EXPECT_EQ(Paths().ListCount(), 1);
}

TEST_F(JoinByCopy, SkipsABlockForWhichMemoryIsShortAndReadsTheNext) {
  tools_.FfmpegDoes(PrintCommands("Duration: 00:10:00.00, start\nDuration: 00:05:00.00, start\n"));
  bool thrown = false;
  Get<TextBox>("Text1").Change = [&](int) {
    if (!std::exchange(thrown, true)) throw std::bad_alloc();
  };
  JoinTo("/tmp/all.mp4");
  EXPECT_TRUE(thrown);
  EXPECT_EQ(Rows(), Texts{"1 |  | 300"});
  EXPECT_EQ(Shown(ProcessLine), "Process: Video Created.");
}

// Nothing in the program reads this list, List2.
TEST_F(JoinByCopy, ListsAtEachStartTheIntermediatesOfRemainingSectionsWhosePathsHaveAFolder) {
  AddThree();
  AddSectionOf("d.mp4");
  Remove(3);
  Paths().setList(0, "no-folder.mp4");  // takes the number 01, but isn't listed
  const Texts once = {Path("intermediate02.ts"), Path("intermediate03.ts")};
  const auto& intermediates = Get<ListBox>("List2");
  Join([&](QDialog& dialog) {
    EXPECT_EQ(LinesOf(intermediates), once);
    dialog.reject();
  });
  Join(CancelDialog());
  EXPECT_EQ(LinesOf(intermediates), (Texts{once[0], once[1], once[0], once[1]}));
}

using JoinerTools = JoinerWindowTest;

TEST_F(JoinerTools, AreRunByAShortPathIfTheirFolderHasABlankInItsName) {
  const QString folder = InFolder("my program");
  ASSERT_TRUE(QDir().mkpath(folder));
  for (const char* tool : {"/ffmpeg", "/ffprobe"}) {
    ASSERT_TRUE(QFile::rename(tools_.Path() + tool, folder + tool));
  }
  App::setPath(folder.toStdString());
  AddSectionOf("a.mp4");
  EXPECT_EQ(Shown(TotalDurationSeconds), "00,600");
  JoinTo("/tmp/all.mp4");
  EXPECT_EQ(ContentOf(folder + "/files.txt"), ListLine("a.mp4"));
  TranscodeAll();
  ASSERT_EQ(FfmpegRuns().size(), 2U);
  EXPECT_EQ(FfmpegRuns()[0].find("my program"), std::string::npos);
}

}  // namespace
}  // namespace kelvane::testing
