// The join in the mode that wraps each section: what the tools are told, and in what order.
#include <QDir>

#include "joiner/JoinTest.h"
#include "support/PaintsOf.h"

namespace kelvane::testing {
namespace {

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

TEST_F(Transcoding, AToolThatFailsLeavesTheNextSectionItsTurn) {
  AddThree();
  tools_.CropDoes("exit 1");
  EXPECT_EQ(TranscodeAll(), Texts{kSuccess});
  EXPECT_EQ(RunsOf("ffmpeg").size(), 3U);
}

TEST_F(Transcoding, WithoutTheToolComesToItsEndAsWell) {
  AddThree();
  tools_.Remove("ffmpeg");
  Texts captions;
  WriteCaptionsDown(captions);
  EXPECT_EQ(TranscodeAll(), Texts{kSuccess});
  EXPECT_EQ(captions, (Texts{"Process: Creating List Index", "Process: Transcoding Video 00",
                             "Process: Transcoding Video 01", "Process: Transcoding Video 02",
                             "Process: Video Created."}));
}

TEST_F(Transcoding, ASecondTimeWrapsThemAllAgain) {
  AddThree();
  TranscodeAll();
  const Texts first = RunsOf("ffmpeg");
  EXPECT_EQ(TranscodeAll(), Texts{kSuccess});
  Texts twice = first;
  twice.insert(twice.end(), first.begin(), first.end());
  EXPECT_EQ(RunsOf("ffmpeg"), twice);
}

TEST_F(Transcoding, RunsTheToolsOfAFolderWithABlankInItsNameUnderAShortName) {
  AddThree();
  MoveToolsToAFolderWithABlank();
  TranscodeAll();
  EXPECT_EQ(RunsOf("ffmpeg").size(), 3U);
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

TEST_F(Transcoding, ASectionWhoseBlockWasBeingReadGetsARowAndNoStrip) {
  AddSectionOf("a.mp4", "00:10:00.00");
  Get<TextBox>("Text1").Change = [&](int) {
    Get<TextBox>("Text1").Change = nullptr;
    TranscodeAll();
  };
  AddSectionOf("b.mp4", "00:10:00.00");
  EXPECT_EQ(Rows().size(), 2U);
  EXPECT_EQ(Strips().size(), 1U);
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
