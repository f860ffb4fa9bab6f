// The join in the mode that makes a transport stream of each section.
#include <QDir>

#include "joiner/JoinTexts.h"
#include "joiner/JoinerWindowTest.h"
#include "support/PaintsOf.h"

namespace kelvane::testing {
namespace {

TEST(FolderOf, IsThePathUpToAndIncludingItsLastSeparator) {
  for (const auto& [path, folder] : {std::pair("/clips/a.mp4", "/clips/"),
                                     {"/a.mp4", "/"},
                                     {"/clips/more/", "/clips/more/"},
                                     {" Deleted Section ", ""},
                                     {"", ""}}) {
    EXPECT_EQ(FolderOf(path), QString(folder)) << path;
  }
}

TEST(ConcatListText, NumbersFilesFromZeroWithoutTheirFolders) {
  EXPECT_EQ(ConcatListText(0), QString("concat:"));
  EXPECT_EQ(ConcatListText(2), QString("concat:intermediate00.ts|intermediate01.ts"));
}

class Transcode : public JoinerWindowTest {
 protected:
  std::string Run(const char* source, const char* intermediate) const {
    return "ffmpeg | -i | " + Path(source) +
           " | -c | copy | -bsf:v | h264_mp4toannexb | -f | mpegts | -y | " + Path(intermediate);
  }
};

TEST_F(Transcode, WritesAStreamBesideEachSourceAndAsksForNoFile) {
  ASSERT_TRUE(QDir(tools_.Path()).mkdir("other"));
  for (const char* name : {"a.mp4", "other/b.mp4"}) AddSectionOf(name);
  const Texts runs = {Run("a.mp4", "intermediate01.ts"),
                      Run("other/b.mp4", "other/intermediate02.ts")};
  EXPECT_EQ(TranscodeAll(), Texts{kSuccess});
  EXPECT_EQ(FfmpegRuns(), runs);
  EXPECT_FALSE(QFile::exists(InFolder("files.txt")));
  EXPECT_EQ(TranscodeAll(), Texts{kSuccess});
  EXPECT_EQ(FfmpegRuns(), (Texts{runs[0], runs[1], runs[0], runs[1]})) << "a second time";
}

TEST_F(Transcode, SkipsRemovedSectionsAndPathsWithoutAFolderButNotTheirNumbers) {
  AddThree();
  Remove(3);
  Paths().setList(0, "no-folder.mp4");
  Texts captions;
  RecordCaptions(captions);
  TranscodeAll();
  EXPECT_EQ(FfmpegRuns(), Texts{Run("c.mp4", "intermediate03.ts")});
  EXPECT_EQ(captions, (Texts{"Process: Creating List Index", "Process: Transcoding Video 00",
                             "Process: Transcoding Video 01", "Process: Transcoding Video 02",
                             "Process: Video Created."}));
}

TEST_F(Transcode, GoesOnWithTheNextSectionIfTheToolFailsAndReportsSuccessEvenIfItIsMissing) {
  AddThree();
  tools_.FfmpegDoes("exit 1");
  EXPECT_EQ(TranscodeAll(), Texts{kSuccess});
  EXPECT_EQ(FfmpegRuns().size(), 3U);
  tools_.Remove("ffmpeg");
  EXPECT_EQ(TranscodeAll(), Texts{kSuccess});
}

TEST_F(Transcode, PaintsEachCaptionButServesNoEventsWhileTheToolsRun) {
  AddThree();
  ServePendingEvents();
  const PaintsOf paints(QStringLiteral("Label3(6)"));
  std::vector<int> paintedBefore;
  Get<Label>("Label3", ProcessLine).Change = [&](int) { paintedBefore.push_back(paints.Count()); };
  std::string served;
  AtNextDoEvents([&] { served = Shown(ProcessLine); });
  TranscodeAll();
  EXPECT_EQ(paintedBefore, (std::vector<int>{0, 0, 1, 2, 3}));
  EXPECT_EQ(served, "Process: Video Created.") << "events were served while the tools ran";
}

TEST_F(Transcode, LocksTheSectionsForTheLifeOfTheWindow) {
  AddThree();
  tools_.FfmpegDoes(PrintCommands("  Duration: 00:10:00.00, start: 0.0\n"));
  Get<TextBox>("Text1").setText("not touched");
  TranscodeAll();
  Choose(NoTranscode);
  EXPECT_EQ(JoinTo("/tmp/all.mp4"), (Texts{"Save Video As", kSuccess}));
  EXPECT_EQ(FfmpegRuns().back(), CopyRun("/tmp/all.mp4"));
  EXPECT_EQ(Rows().size(), 3U) << "one of the two runs has added a section";
  EXPECT_EQ(Shown(TotalDurationSeconds), "01,800");
  EXPECT_EQ(Get<TextBox>("Text1").Text(), QString("not touched"));
  {
    const DialogAnswers none({});
    Give(AddVideoSection);
  }
  EXPECT_EQ(Paths().ListCount(), 3);
  const DialogAnswers answers({CancelDialog()});
  Give(SaveVideoFileList);
  EXPECT_EQ(answers.seen(), Texts{"Save Video File List"}) << "the list can still be saved";
}

TEST_F(Transcode, StartedInsideAProbeLeavesThatSectionARowButNoStrip) {
  AddSectionOf("a.mp4");
  Get<TextBox>("Text1").Change = [&](int) {
    Get<TextBox>("Text1").Change = nullptr;
    TranscodeAll();
  };
  AddSectionOf("b.mp4");
  EXPECT_EQ(Rows().size(), 2U);
  EXPECT_EQ(Strips().size(), 1U);
}

}  // namespace
}  // namespace kelvane::testing
