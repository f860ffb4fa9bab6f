// Join All Sections with a real pointer and recording tools: command lines, captions, the lock, and
// what goes wrong.
#include <QDir>

#include "desktop/JoinerTest.h"
#include "desktop/driver/Windows.h"

namespace kelvane::desktop {
namespace {

using Runs = QList<QStringList>;

class JoinerJoin : public JoinerTest {
 protected:
  void SetUp() override {
    program.ReplaceTool("ffmpeg", "exit 0");
    JoinerTest::SetUp();
  }
  QString Output() const { return program.PathOf("all.mp4"); }
  QByteArray ListOf(const QStringList& paths) const {
    QString lines;
    for (const QString& path : paths) lines += "file '" + path + "'\r\n";
    return lines.toUtf8();
  }
};

TEST_F(JoinerJoin, TellsTheToolTheListFileAndTheOutput) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  const WindowId dialog = joiner.OpenDialog(JoinerButton::kJoinSections);
  ASSERT_NE(dialog, 0U);
  EXPECT_EQ(screen.Title(dialog), "Save Video As");
  EXPECT_TRUE(joiner.AwaitProcess("Process: Creating List Index"));
  ASSERT_TRUE(TypeFileName(screen, dialog, Output()));
  EXPECT_TRUE(joiner.AwaitProcess("Process: Joining Your Videos..."));
  ASSERT_TRUE(ConfirmJoin(screen));
  EXPECT_TRUE(joiner.AwaitProcess("Process: Video Created."));
  EXPECT_EQ(program.RunsOf("ffmpeg"), Runs{CopyRun({Output()})});
  EXPECT_EQ(ContentOf(ListFile()), ListOf(added));
  CloseJoinerAndExpectEnd();
}

TEST_F(JoinerJoin, WritesATombstoneAsALineAsWell) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  ASSERT_TRUE(joiner.RemoveSection(1));
  ASSERT_NO_FATAL_FAILURE(JoinTo(Output()));
  EXPECT_EQ(ContentOf(ListFile()), ListOf({added[0], "Deleted Section", added[2]}));
}

TEST_F(JoinerJoin, OfNoSectionRunsTheToolOnAnEmptyList) {
  ASSERT_NO_FATAL_FAILURE(JoinTo(Output()));
  EXPECT_EQ(ContentOf(ListFile()), "");
  EXPECT_EQ(program.RunsOf("ffmpeg"), Runs{CopyRun({Output()})});
}

TEST_F(JoinerJoin, WritesBlanksApostrophesAndAnyLettersAsTheyStand) {
  PretendProbing();
  ASSERT_NO_FATAL_FAILURE(Add(Pretended(QString::fromUtf8("it's my ü 動.mp4"), "00:03:20.00")));
  ASSERT_NO_FATAL_FAILURE(JoinTo(Output()));
  EXPECT_EQ(ContentOf(ListFile()), ListOf(added));
}

TEST_F(JoinerJoin, ABlankInTheOutputsNameSplitsIt) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  ASSERT_NO_FATAL_FAILURE(JoinTo(program.PathOf("my all.mp4")));
  EXPECT_EQ(program.RunsOf("ffmpeg"), Runs{CopyRun({program.PathOf("my"), "all.mp4"})});
}

TEST_F(JoinerJoin, ACancelledDialogRunsOnWithoutAnOutput) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  ASSERT_TRUE(joiner.CancelFile(JoinerButton::kJoinSections));
  ASSERT_TRUE(ConfirmJoin(screen));
  EXPECT_EQ(program.RunsOf("ffmpeg"), Runs{CopyRun({})});
  EXPECT_TRUE(joiner.AwaitProcess("Process: Video Created."));
}

TEST_F(JoinerJoin, AToolThatFailsIsASuccessAllTheSame) {
  program.ReplaceTool("ffmpeg", "echo no >&2; exit 1");
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  ASSERT_NO_FATAL_FAILURE(WriteFile(Output(), "somebody's work"));
  const QHash<QString, QByteArray> before = Files();
  ASSERT_NO_FATAL_FAILURE(JoinTo(Output()));
  EXPECT_TRUE(joiner.AwaitProcess("Process: Video Created."));
  EXPECT_EQ(program.RunsOf("ffmpeg"), Runs{CopyRun({Output()})});
  EXPECT_EQ(Files(), before);
}

TEST_F(JoinerJoin, AMissingToolIsASuccessAllTheSame) {
  program.RemoveTool("ffmpeg");
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  const QHash<QString, QByteArray> before = Files();
  ASSERT_NO_FATAL_FAILURE(JoinTo(Output()));
  EXPECT_TRUE(joiner.AwaitProcess("Process: Video Created."));
  EXPECT_EQ(Files(), before) << "no output";
  CloseJoinerAndExpectEnd();
}

TEST_F(JoinerJoin, AListFileThatCannotBeWrittenIsPassedOver) {
  program.ReplaceTool("ffmpeg", "exec \"$real\" \"$@\"");
  const QString clip = program.PathOf("clip.mp4");
  ASSERT_TRUE(MakeVideo(clip, QSize(320, 240), 1));
  ASSERT_NO_FATAL_FAILURE(Add(clip));
  ASSERT_TRUE(QDir().mkpath(ListFile() + "/full"));
  const QHash<QString, QByteArray> before = Files();
  ASSERT_NO_FATAL_FAILURE(JoinTo(Output()));
  EXPECT_EQ(program.RunsOf("ffmpeg"), Runs{CopyRun({Output()})});
  EXPECT_EQ(Files(), before) << "no output";
  EXPECT_EQ(QDir(ListFile()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
            QStringList{"full"});
}

TEST_F(JoinerJoin, TheToolsWordsMakeASection) {
  program.ReplaceTool("ffmpeg", "printf '  Duration: 00:01:40.00, start: 0.0\\n' >&2");
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  ASSERT_NO_FATAL_FAILURE(JoinTo(Output()));
  EXPECT_TRUE(WaitFor([&] { return joiner.Strip(3) == QRect(112, 61, 10, 17); }, 5s));
  EXPECT_TRUE(joiner.AwaitRow(3, "4", "c.mp4", "100"));
  EXPECT_TRUE(joiner.AwaitTotals(3, "01,213", "00:20:13"));
}

TEST_F(JoinerJoin, ASecondJoinMayBeginDuringTheWait) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kJoinSections, Output()));
  const QString inner = program.PathOf("inner.mp4");
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kJoinSections, inner));
  ASSERT_TRUE(ConfirmJoin(screen));
  ASSERT_TRUE(ConfirmJoin(screen)) << "the first one's box";
  EXPECT_EQ(program.RunsOf("ffmpeg"), (Runs{CopyRun({inner}), CopyRun({Output()})}));
  CloseJoinerAndExpectEnd();
}

// The box at the end comes before the window looks at the wish to close it, and stands in its way.
TEST_F(JoinerJoin, ClosedWhileTheToolRunsTheWindowLivesOnAndCanBeClosedAfterIt) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  program.ReplaceTool("ffmpeg", program.Gate("join"));
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kJoinSections, Output()));
  ASSERT_TRUE(WaitFor([&] { return !program.RunsOf("ffmpeg").isEmpty(); }));
  screen.Close(joiner.Id());
  ASSERT_TRUE(program.Open("join"));
  ASSERT_TRUE(ConfirmJoin(screen));
  EXPECT_TRUE(joiner.AwaitProcess("Process: Video Created."));
  EXPECT_TRUE(HoldsFor([&] { return program.Running(); }, 300ms));
  CloseJoinerAndExpectEnd();
}

TEST_F(JoinerJoin, ClosedDuringTheWaitTheJoinStillRuns) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kJoinSections, Output()));
  screen.Close(joiner.Id());
  ASSERT_TRUE(ConfirmJoin(screen));
  EXPECT_EQ(program.RunsOf("ffmpeg"), Runs{CopyRun({Output()})});
  EXPECT_EQ(program.AwaitExit(), 0);
}

TEST_F(JoinerJoin, TheOtherModeWrapsEachSectionUnderItsNumberAndAsksForNoOutput) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  ASSERT_TRUE(joiner.RemoveSection(1));
  joiner.Choose(JoinerMode::kTransportStreams);
  screen.Click(joiner.ButtonCentre(JoinerButton::kJoinSections));
  ASSERT_TRUE(ConfirmJoin(screen));
  EXPECT_EQ(program.RunsOf("ffmpeg"),
            (Runs{WrapRun(added[0], "intermediate01.ts"), WrapRun(added[2], "intermediate03.ts")}));
  EXPECT_FALSE(QFile::exists(ListFile()));
  EXPECT_TRUE(joiner.AwaitProcess("Process: Video Created."));
}

TEST_F(JoinerJoin, TheOtherModeTellsTheSectionThatItIsAt) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  program.ReplaceTool("ffmpeg", "case \"$*\" in\n*intermediate01*) " + program.Gate("first") +
                                    ";;\n*) " + program.Gate("last") + ";;\nesac");
  ASSERT_TRUE(joiner.RemoveSection(1));
  joiner.Choose(JoinerMode::kTransportStreams);
  screen.Click(joiner.ButtonCentre(JoinerButton::kJoinSections));
  EXPECT_TRUE(joiner.AwaitProcess("Process: Transcoding Video 00"));
  ASSERT_TRUE(program.Open("first"));
  EXPECT_TRUE(joiner.AwaitProcess("Process: Transcoding Video 02"));
  ASSERT_TRUE(program.Open("last"));
  ASSERT_TRUE(ConfirmJoin(screen));
  EXPECT_TRUE(joiner.AwaitProcess("Process: Video Created."));
}

TEST_F(JoinerJoin, TheOtherModeLocksTheSectionsForGood) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  joiner.Choose(JoinerMode::kTransportStreams);
  screen.Click(joiner.ButtonCentre(JoinerButton::kJoinSections));
  ASSERT_TRUE(ConfirmJoin(screen));
  screen.Click(joiner.ButtonCentre(JoinerButton::kAddSection));
  EXPECT_TRUE(HoldsFor([&] { return screen.Windows() == QList{joiner.Id()}; }, 500ms))
      << "no dialog comes";
  const QString list = program.PathOf("list.txt");
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kSaveList, list));
  EXPECT_TRUE(WaitFor([&] { return ContentOf(list).count("\r\n") == 3; }, 5s));
  joiner.Choose(JoinerMode::kCopy);
  program.ReplaceTool("ffmpeg", "echo '  Duration: 00:01:40.00, start: 0.0' >&2");
  ASSERT_NO_FATAL_FAILURE(JoinTo(Output()));
  EXPECT_EQ(program.RunsOf("ffmpeg").last(), CopyRun({Output()}));
  EXPECT_TRUE(joiner.Strip(3).isEmpty()) << "no section comes of the tool's words any more";
}

}  // namespace
}  // namespace kelvane::desktop
