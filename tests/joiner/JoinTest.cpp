// The join in both modes: what the tools are told, what is written, and in what order.
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>

#include "joiner/JoinerWindowTest.h"
#include "media/Module1.h"
#include "platform/App.h"
#include "support/AllocationFailure.h"
#include "support/PaintsOf.h"

namespace kelvane::testing {
namespace {

constexpr const char* kSuccess =
    "Kelvane | Your Videos have been joined successfully. | exclamation | OK Cancel";

class JoinTest : public JoinerWindowTest {
 protected:
  void AddThree() const {
    for (const char* name : {"a.mp4", "b.mp4", "c.mp4"}) AddSectionOf(name, "00:10:00.00");
  }
  std::string Path(const char* name) const { return InFolder(name).toStdString(); }
  std::string ListFile() const { return ContentOf(InFolder("files.txt")); }
  Texts RunsOf(const char* tool) const {
    Texts runs;
    for (const std::string& run : tools_.Runs()) {
      if (run.starts_with(tool)) runs.push_back(run);
    }
    return runs;
  }
  std::string CopyRun(const std::string& output) const {
    return "ffmpeg | -f | concat | -safe | 0 | -i | " + Path("files.txt") + " | -c | copy | -y" +
           (output.empty() ? "" : " | " + output);
  }
  std::string WrapRun(const char* source, const char* intermediate) const {
    return "ffmpeg | -i | " + Path(source) +
           " | -c | copy | -bsf:v | h264_mp4toannexb | -f | mpegts | -y | " + Path(intermediate);
  }
  // The process line's captions from now on.
  void WriteCaptionsDown(Texts& captions) const {
    Get<Label>("Label3", ProcessLine).Change = [&](int) { captions.push_back(Shown(ProcessLine)); };
  }
  // When the process line says this, at the next serving of the windows.
  void DuringTheWait(std::function<void()> step) const {
    Get<Label>("Label3", ProcessLine).Change = [this, step = std::move(step)](int) mutable {
      if (step && Shown(ProcessLine) == "Process: Joining Your Videos...") {
        AtNextDoEvents(std::exchange(step, nullptr));
      }
    };
  }
};

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

TEST_F(Joining, AToolThatFailsSucceedsAllTheSame) {
  tools_.CropDoes("echo 'files.txt: Invalid data' >&2; exit 1\n");
  EXPECT_EQ(JoinTo("/tmp/all.mp4"), (Texts{"Save Video As", kSuccess}));
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
  const QString folder = InFolder("my program");
  ASSERT_TRUE(QDir().mkpath(folder));
  ASSERT_TRUE(QFile::copy(InFolder("ffmpeg"), folder + "/ffmpeg"));
  App::setPath(folder.toStdString());
  JoinTo("/tmp/all.mp4");
  ASSERT_EQ(RunsOf("ffmpeg").size(), 1U);
  EXPECT_EQ(RunsOf("ffmpeg")[0].find("my program"), std::string::npos);
  EXPECT_EQ(ContentOf(folder + "/files.txt"), "");
}

TEST_F(Joining, ABlockThatCannotBeReadForLackOfMemoryDoesNotStopTheTool) {
  const Gate gate(tools_);
  tools_.CropDoes(Print(BlockEndingIn("Duration: 00:10:00.00, start\n")) + gate.Wait() +
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

using Transcoding = JoinTest;

TEST_F(Transcoding, WrapsEachSectionInItsSourcesFolderAndAsksNothing) {
  AddThree();
  EXPECT_EQ(TranscodeAll(), Texts{kSuccess});
  EXPECT_EQ(RunsOf("ffmpeg"),
            (Texts{WrapRun("a.mp4", "intermediate01.ts"), WrapRun("b.mp4", "intermediate02.ts"),
                   WrapRun("c.mp4", "intermediate03.ts")}));
  EXPECT_FALSE(QFile::exists(InFolder("files.txt")));
}

TEST_F(Transcoding, KeepsTheNumberOfARemovedSectionFreeAndNamesItAllTheSame) {
  AddThree();
  Remove(3);
  Texts captions;
  WriteCaptionsDown(captions);
  TranscodeAll();
  EXPECT_EQ(RunsOf("ffmpeg"),
            (Texts{WrapRun("a.mp4", "intermediate01.ts"), WrapRun("c.mp4", "intermediate03.ts")}));
  EXPECT_EQ(captions, (Texts{"Process: Creating List Index", "Process: Transcoding Video 00",
                             "Process: Transcoding Video 01", "Process: Transcoding Video 02",
                             "Process: Video Created."}));
}

TEST_F(Transcoding, OfNoSectionRunsNothing) {
  EXPECT_EQ(TranscodeAll(), Texts{kSuccess});
  EXPECT_EQ(tools_.Runs(), Texts{});
}

TEST_F(Transcoding, PassesOverAPathWithoutAFolder) {
  AddThree();
  Paths().setList(0, "bare.mp4");
  TranscodeAll();
  EXPECT_EQ(RunsOf("ffmpeg").size(), 2U);
}

TEST_F(Transcoding, ABlankCutsTheInputButNotTheOutput) {
  ASSERT_TRUE(QDir(tools_.Path()).mkdir("my clips"));
  AddSectionOf("my clips/a.mp4", "00:10:00.00");
  TranscodeAll();
  EXPECT_EQ(RunsOf("ffmpeg"),
            Texts{"ffmpeg | -i | " + Path("my") + " | clips/a.mp4" +
                  " | -c | copy | -bsf:v | h264_mp4toannexb | -f | mpegts | -y | " +
                  Path("my clips/intermediate01.ts")});
}

TEST_F(Transcoding, PutsEachTransportStreamBesideItsOwnSource) {
  ASSERT_TRUE(QDir(tools_.Path()).mkdir("other"));
  for (const char* name : {"a.mp4", "other/b.mp4", "c.mp4"}) AddSectionOf(name, "00:10:00.00");
  TranscodeAll();
  Texts outputs;
  for (const std::string& run : RunsOf("ffmpeg")) outputs.push_back(run.substr(run.rfind(' ') + 1));
  EXPECT_EQ(outputs, (Texts{Path("intermediate01.ts"), Path("other/intermediate02.ts"),
                            Path("intermediate03.ts")}));
}

TEST_F(Transcoding, LocksTheListAndIgnoresWhatTheToolsPrint) {
  AddThree();
  tools_.CropDoes(Print("  Duration: 00:10:00.00, start: 0.0\n"));
  Get<TextBox>("Text1").setText("?");
  TranscodeAll();
  EXPECT_EQ(Rows().size(), 3U);
  EXPECT_EQ(Strips().size(), 3U);
  EXPECT_EQ(Get<TextBox>("Text1").Text(), QString("?"));
  EXPECT_EQ(Shown(TotalDurationSeconds), "01,800");
}

TEST_F(Transcoding, PaintsEachOfItsCaptions) {
  AddThree();
  PumpOnce();
  const PaintsOf paints(QStringLiteral("Label3(6)"));
  std::vector<int> painted;
  Get<Label>("Label3", ProcessLine).Change = [&](int) { painted.push_back(paints.Count()); };
  TranscodeAll();
  EXPECT_EQ(painted, (std::vector<int>{0, 0, 1, 2, 3})) << "before each caption";
}

TEST_F(Transcoding, DoesNotServeTheWindowsWhileTheToolsRun) {
  AddThree();
  Texts seen;
  AtNextDoEvents([&] { seen.push_back(Shown(ProcessLine)); });
  TranscodeAll();
  EXPECT_EQ(seen, Texts{"Process: Video Created."}) << "by the last message alone";
}

TEST_F(Transcoding, AJoinInTheOtherModeBehindItRunsAndItsBlocksMakeNoSections) {
  AddThree();
  TranscodeAll();
  Choose(NoTranscode);
  tools_.CropDoes(Print("  Duration: 00:10:00.00, start: 0.0\n"));
  EXPECT_EQ(JoinTo("/tmp/all.mp4"), (Texts{"Save Video As", kSuccess}));
  EXPECT_EQ(RunsOf("ffmpeg").back(), CopyRun("/tmp/all.mp4"));
  EXPECT_EQ(Rows().size(), 3U);
  const DialogAnswers none({});
  Give(AddVideoSection);
  EXPECT_EQ(Paths().ListCount(), 3) << "no section comes in any more";
}

}  // namespace
}  // namespace kelvane::testing
