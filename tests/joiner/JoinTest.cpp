// The join by copy: what the tools are told, what is written, and in what order.
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <fstream>

#include "joiner/JoinTest.h"
#include "media/Module1.h"
#include "platform/App.h"
#include "support/AllocationFailure.h"

namespace kelvane::testing {
namespace {

using Joining = JoinTest;

TEST_F(Joining, TellsTheToolTheListFileAndTheOutput) {
  AddThree();
  EXPECT_EQ(JoinTo("/tmp/all.mp4"), (Texts{"Save Video As", kSuccess}));
  EXPECT_EQ(RunsOf("ffmpeg"), Texts{CopyRun("/tmp/all.mp4")});
}

TEST_F(Joining, AsksForTheOutputUnderItsTitleWithAFilterForMp4) {
  Texts seen;
  Join([&](QDialog& dialog) {
    auto& files = dynamic_cast<QFileDialog&>(dialog);
    seen = {files.windowTitle().toStdString(),
            files.nameFilters().join(QLatin1Char(';')).toStdString()};
    EXPECT_EQ(files.acceptMode(), QFileDialog::AcceptSave);
    dialog.reject();
  });
  EXPECT_EQ(seen, (Texts{"Save Video As", "MP4 File (*.mp4) (*.mp4)"}));
}

TEST_F(Joining, WritesALineForEachSectionInOrder) {
  AddThree();
  JoinTo("/tmp/all.mp4");
  EXPECT_EQ(ListFile(), "file '" + Path("a.mp4") + "'\r\nfile '" + Path("b.mp4") + "'\r\nfile '" +
                            Path("c.mp4") + "'\r\n");
}

TEST_F(Joining, WritesARemovedSectionAsALineAsWell) {
  AddThree();
  Remove(3);
  JoinTo("/tmp/all.mp4");
  EXPECT_EQ(ListFile(), "file '" + Path("a.mp4") + "'\r\nfile 'Deleted Section'\r\nfile '" +
                            Path("c.mp4") + "'\r\n");
}

TEST_F(Joining, WritesPathsWithBlanksApostrophesAndAnyLettersAsTheyStand) {
  tools_.DurationProbeDoes(Print(DurationText("00:10:00.00")));
  const QString file = tools_.File(QString::fromUtf8("it's ü 動.mp4"));
  Add(file);
  JoinTo("/tmp/all.mp4");
  EXPECT_EQ(ListFile(), "file '" + file.toStdString() + "'\r\n");
}

TEST_F(Joining, OfOneSectionIsNothingSpecial) {
  AddSectionOf("a.mp4", "00:10:00.00");
  JoinTo("/tmp/all.mp4");
  EXPECT_EQ(ListFile(), "file '" + Path("a.mp4") + "'\r\n");
  EXPECT_EQ(RunsOf("ffmpeg"), Texts{CopyRun("/tmp/all.mp4")});
}

TEST_F(Joining, OfNoSectionWritesAnEmptyListAndRunsTheToolOnIt) {
  EXPECT_EQ(JoinTo("/tmp/all.mp4"), (Texts{"Save Video As", kSuccess}));
  EXPECT_EQ(ListFile(), "");
  EXPECT_EQ(RunsOf("ffmpeg"), Texts{CopyRun("/tmp/all.mp4")});
}

TEST_F(Joining, RunsOnWithoutAnOutputWhereTheDialogIsCancelled) {
  AddThree();
  EXPECT_EQ(Join(CancelDialog()), (Texts{"Save Video As", kSuccess}));
  EXPECT_EQ(RunsOf("ffmpeg"), Texts{CopyRun("")});
  EXPECT_EQ(Shown(ProcessLine), "Process: Video Created.");
}

TEST_F(Joining, ForgetsTheOutputOfAnEarlierJoin) {
  JoinTo("/tmp/all.mp4");
  Join(CancelDialog());
  EXPECT_EQ(RunsOf("ffmpeg"), (Texts{CopyRun("/tmp/all.mp4"), CopyRun("")}));
}

TEST_F(Joining, ABlankInTheOutputCutsTheCommandLine) {
  JoinTo("/tmp/my all.mp4");
  EXPECT_EQ(RunsOf("ffmpeg"), Texts{CopyRun("/tmp/my | all.mp4")});
}

TEST_F(Joining, BlanksRoundTheOutputAreDropped) {
  JoinTo("/tmp/all.mp4 ");
  EXPECT_EQ(RunsOf("ffmpeg"), Texts{CopyRun("/tmp/all.mp4")});
}

TEST_F(Joining, ReplacesTheListFileOfAnEarlierJoinWhole) {
  AddThree();
  JoinTo("/tmp/all.mp4");
  const std::string first = ListFile();
  Paths().setList(0, "/x");
  Paths().setList(1, "/y");
  Paths().setList(2, "/z");
  JoinTo("/tmp/all.mp4");
  EXPECT_LT(ListFile().size(), first.size());
  EXPECT_EQ(ListFile(), "file '/x'\r\nfile '/y'\r\nfile '/z'\r\n");
}

TEST_F(Joining, WritesNothingThroughALinkInTheListFilesPlace) {
  const QString victim = tools_.File("victim.txt");
  ASSERT_TRUE(QFile::link(victim, InFolder("files.txt")));
  AddSectionOf("a.mp4", "00:10:00.00");
  JoinTo("/tmp/all.mp4");
  EXPECT_EQ(ContentOf(victim), "contents");
  EXPECT_EQ(ListFile(), "file '" + Path("a.mp4") + "'\r\n");
}

TEST_F(Joining, MakesNoFileWhereALinkInTheListFilesPlaceLeadsNowhere) {
  const QString nowhere = InFolder("nowhere.txt");
  ASSERT_TRUE(QFile::link(nowhere, InFolder("files.txt")));
  AddSectionOf("a.mp4", "00:10:00.00");
  JoinTo("/tmp/all.mp4");
  EXPECT_FALSE(QFileInfo::exists(nowhere));
  EXPECT_FALSE(QFileInfo(InFolder("files.txt")).isSymLink());
  EXPECT_EQ(ListFile(), "file '" + Path("a.mp4") + "'\r\n");
}

TEST_F(Joining, RunsOnWithWhatIsThereWhereTheListFileCannotBeWritten) {
  ASSERT_TRUE(QDir(tools_.Path()).mkpath("files.txt/inside"));
  AddSectionOf("a.mp4", "00:10:00.00");
  EXPECT_EQ(JoinTo("/tmp/all.mp4"), (Texts{"Save Video As", kSuccess}));
  EXPECT_EQ(RunsOf("ffmpeg"), Texts{CopyRun("/tmp/all.mp4")});
  EXPECT_TRUE(QFileInfo(InFolder("files.txt")).isDir());
}

// The folder is a file: it takes no other, not even from root.
TEST_F(Joining, WritesAPrivateListWhereTheProgramsFolderTakesNone) {
  AddThree();
  const std::string folder = App::Path();
  App::setPath(tools_.File("no-folder").toStdString());
  std::string list;
  DuringTheWait([&] { list = ContentOf(QString::fromStdString(PrivateListFile())); });
  EXPECT_EQ(JoinTo("/tmp/all.mp4"), (Texts{"Save Video As", kSuccess}));
  App::setPath(folder);
  EXPECT_EQ(list, "file '" + Path("a.mp4") + "'\r\nfile '" + Path("b.mp4") + "'\r\nfile '" +
                      Path("c.mp4") + "'\r\n");
}

TEST_F(Joining, AMissingToolSucceedsAllTheSame) {
  tools_.Remove("ffmpeg");
  EXPECT_EQ(JoinTo("/tmp/all.mp4"), (Texts{"Save Video As", kSuccess}));
  EXPECT_EQ(Shown(ProcessLine), "Process: Video Created.");
}

TEST_F(Joining, AToolThatFailsSucceedsAllTheSameAndTheOutputThatIsThereStays) {
  tools_.CropDoes("echo 'files.txt: Invalid data' >&2; exit 1\n");
  const QString output = InFolder("all.mp4");
  std::ofstream(output.toStdString()) << "somebody's work";
  EXPECT_EQ(JoinTo(output), (Texts{"Save Video As", kSuccess}));
  EXPECT_EQ(ContentOf(output), "somebody's work");
}

TEST_F(Joining, TheAnswerToTheLastMessageIsIgnored) {
  const DialogAnswers answers({CancelDialog(), PressButton(QMessageBox::Cancel)});
  Give(JoinAllSections);
  EXPECT_EQ(Shown(ProcessLine), "Process: Video Created.");
}

TEST_F(Joining, TheProcessLineTellsTheStepsInTheirOrder) {
  Texts captions;
  WriteCaptionsDown(captions);
  Join(CancelDialog());
  EXPECT_EQ(captions, (Texts{"Process: Creating List Index", "Process: Joining Your Videos...",
                             "Process: Video Created."}));
}

TEST_F(Joining, TheListIsWrittenBeforeTheWaitAndTheToolRunsBehindIt) {
  AddThree();
  Texts seen;
  DuringTheWait([&] { seen = {ListFile(), std::to_string(RunsOf("ffmpeg").size())}; });
  QElapsedTimer clock;
  clock.start();
  JoinTo("/tmp/all.mp4");
  ASSERT_EQ(seen.size(), 2U);
  EXPECT_EQ(seen[0], ListFile());
  EXPECT_EQ(seen[1], "0");
  EXPECT_GE(clock.elapsed(), 1000) << "the second is always waited";
}

TEST_F(Joining, ServesTheWindowsOnceBeforeTheCaptionOfTheJoin) {
  std::string served;
  const DialogAnswers answers({[&](QDialog& dialog) {
                                 AtNextDoEvents([&] { served = Shown(ProcessLine); });
                                 dialog.reject();
                               },
                               PressButton(QMessageBox::Ok)});
  Give(JoinAllSections);
  EXPECT_EQ(served, "Process: Creating List Index");
}

TEST_F(Joining, ASectionRemovedWhenTheWindowsAreFirstServedIsNoneInTheList) {
  AddThree();
  const DialogAnswers answers({[&](QDialog& dialog) {
                                 AtNextDoEvents([&] { Remove(2); });
                                 dialog.reject();
                               },
                               PressButton(QMessageBox::Ok)});
  Give(JoinAllSections);
  EXPECT_EQ(ListFile().find("a.mp4"), std::string::npos) << ListFile();
  EXPECT_NE(ListFile().find("b.mp4"), std::string::npos) << ListFile();
}

TEST_F(Joining, ServesTheWindowsAgainAndAgainDuringTheWait) {
  int served = 0;
  std::function<void()> again = [&] {
    if (++served < 10) AtNextDoEvents(again);
  };
  DuringTheWait(again);
  JoinTo("/tmp/all.mp4");
  EXPECT_EQ(served, 10);
}

TEST_F(Joining, TheCommandsWorkDuringTheWait) {
  AddThree();
  DuringTheWait([&] { Remove(2); });
  JoinTo("/tmp/all.mp4");
  EXPECT_EQ(Details(2), " Deleted Section ");
  EXPECT_NE(ListFile().find("a.mp4"), std::string::npos) << "the list was written before";
}

TEST_F(Joining, IsNotRunWhereTheOtherModeIsChosenDuringTheWait) {
  DuringTheWait([&] { Choose(TranscodeAllSections); });
  EXPECT_EQ(JoinTo("/tmp/all.mp4"), (Texts{"Save Video As", kSuccess}));
  EXPECT_EQ(RunsOf("ffmpeg"), Texts{});
}

TEST_F(Joining, ASecondJoinDuringTheWaitIsDoneWithBeforeTheFirstGoesOn) {
  AddThree();
  Texts captions;
  DuringTheWait([&] {
    WriteCaptionsDown(captions);
    Remove(2);
    JoinTo("/tmp/second.mp4");
  });
  JoinTo("/tmp/first.mp4");
  EXPECT_EQ(RunsOf("ffmpeg"), (Texts{CopyRun("/tmp/second.mp4"), CopyRun("/tmp/first.mp4")}));
  EXPECT_EQ(ListFile().find("a.mp4"), std::string::npos) << "both join the second one's list";
  EXPECT_EQ(captions, (Texts{"Process: Creating List Index", "Process: Joining Your Videos...",
                             "Process: Video Created."}));
}

TEST_F(Joining, ASectionAddedDuringTheWaitIsNotJoined) {
  AddSectionOf("a.mp4", "00:10:00.00");
  DuringTheWait([&] { AddSectionOf("b.mp4", "00:10:00.00"); });
  JoinTo("/tmp/all.mp4");
  EXPECT_EQ(Rows().size(), 2U);
  EXPECT_EQ(ListFile(), "file '" + Path("a.mp4") + "'\r\n");
  EXPECT_EQ(RunsOf("ffmpeg"), Texts{CopyRun("/tmp/all.mp4")});
}

TEST_F(Joining, AWindowThatIsClosedDuringTheWaitJoinsAllTheSame) {
  AddThree();
  DuringTheWait([&] { form_->close(); });
  EXPECT_EQ(JoinTo("/tmp/all.mp4"), (Texts{"Save Video As", kSuccess}));
  EXPECT_EQ(RunsOf("ffmpeg"), Texts{CopyRun("/tmp/all.mp4")});
  EXPECT_FALSE(form_->Loaded());
}

TEST_F(Joining, ABlockOfTheToolWithADurationMakesASectionOfTheLastFilesTitle) {
  AddSectionOf("a.mp4", "00:10:00.00");
  tools_.CropDoes(Print("Input #0, concat\n  Duration: N/A, start: 0.000000, bitrate: N/A\n"));
  JoinTo("/tmp/all.mp4");
  EXPECT_EQ(Rows(), (Texts{"1 | a.mp4 | 600", "2 | a.mp4 | 60"}));
  EXPECT_EQ(Strips(), (Texts{"1,1 60x17", "61,21 6x17"}));
  EXPECT_EQ(Shown(TotalDurationSeconds), "00,660");
  EXPECT_EQ(Paths().ListCount(), 1);
}

TEST_F(Joining, RunsTheToolsOfAFolderWithABlankInItsNameUnderAShortName) {
  const QString folder = MoveToolsToAFolderWithABlank();
  JoinTo("/tmp/all.mp4");
  ASSERT_EQ(RunsOf("ffmpeg").size(), 1U);
  EXPECT_EQ(RunsOf("ffmpeg")[0].find("my program"), std::string::npos);
  EXPECT_EQ(ContentOf(folder + "/files.txt"), "");
}

TEST_F(Joining, ABlockThatCannotBeReadForLackOfMemoryDoesNotStopTheTool) {
  const Gate gate(tools_.PathOf("gate"));
  tools_.CropDoes(Print(BlockEndingIn("Duration: 00:10:00.00, start ")) + Wait(gate) +
                  Print("Duration: 00:05:00.00, start\n"));
  Get<TextBox>("Text1").Change = [&](int) {
    if (Get<TextBox>("Text1").Text().size() != 256) return;
    constexpr std::size_t kBlock = 257;  // with its end
    FailNextAllocation(kBlock, 2 * kBlock);
    gate.Open();
  };
  JoinTo("/tmp/all.mp4");
  EXPECT_TRUE(AllocationHasFailed());
  EXPECT_EQ(Rows(), Texts{"1 |  | 300"}) << "that of the second block";
  EXPECT_EQ(Shown(ProcessLine), "Process: Video Created.");
}

}  // namespace
}  // namespace kelvane::testing
