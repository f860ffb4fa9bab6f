// Loads and previews inside one another.
#include <QFile>

#include "shared/SharedValues.h"
#include "workspace/NestingTest.h"

namespace kelvane::testing {
namespace {

TEST_F(Nesting, ASecondLoadInsideTheFirstOnesDurationProbe) {
  const QString first = tools_.File(QStringLiteral("first.mp4"));
  const QString second = tools_.File(QStringLiteral("second.mp4"));
  const Gate gate(tools_.PathOf("gate"));
  tools_.SizeProbeDoes(Print(SizeText(640, 360)));
  tools_.DurationProbeDoes(Print(QStringLiteral("one\n")) + Wait(gate) +
                           Print(QStringLiteral("two, Duration: 00:00:11.00\n")) + Wait(gate) +
                           Print(QStringLiteral("three\n")));
  Texts inside;
  AfterBlock(QStringLiteral("one\n"), [&] {
    inside = {Path().Text().toStdString(), Number(SourceWidth), Number(SourceHeight)};
    Pick(second, SizeText(1920, 1080), QStringLiteral("Duration: 00:00:22.00\n"));
    gate.Open();
  });
  Before(Get<TextBox>("Text2").Change, [&](int) {
    if (Store().endsWith(QLatin1String("one\n"))) gate.Open();
  });
  Pick(first);

  EXPECT_EQ(inside, (Texts{first.toStdString(), "0,640", "0,360"}));
  EXPECT_EQ(tools_.Runs(),
            (Texts{SizeRun(first), DurationRun(first), SizeRun(second), DurationRun(second)}));
  EXPECT_EQ(Store().toStdString(),
            "width=640\nheight=360\none\nDuration: 00:00:22.00\ntwo, Duration: "
            "00:00:11.00\nthree\n");
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:22");
  EXPECT_EQ(Path().Text(), second);
  EXPECT_EQ(VideoPath, second);
  EXPECT_EQ(Number(SourceWidth), "1,920");
  EXPECT_EQ(Number(SourceHeight), "1,080");
  EXPECT_EQ(Canvas().size(), QSize(1920, 1080));
  EXPECT_TRUE(ProbeDimensionsDone);
}

TEST_F(Nesting, ASecondLoadInsideTheFirstOnesSizeProbe) {
  const QString first = tools_.File(QStringLiteral("first.mp4"));
  const QString second = tools_.File(QStringLiteral("second.mp4"));
  tools_.SizeProbeDoes(Print(SizeText(640, 360)));
  tools_.DurationProbeDoes(Print(QStringLiteral("text\n")));
  bool nested = false;
  Before(Path().Change, [&](int) {
    if (Path().Text() != first) return;
    AtNextDoEvents([&] {
      Pick(second);
      nested = true;
    });
  });
  const DialogAnswers answers({TypeFile(first)});
  Give(LoadVideo);
  EXPECT_TRUE(nested);
  EXPECT_EQ(tools_.Runs(),
            (Texts{SizeRun(first), SizeRun(second), DurationRun(second), DurationRun(second)}));
  EXPECT_EQ(answers.seen().size(), 1U);
  EXPECT_EQ(Path().Text(), second);
  EXPECT_EQ(VideoPath, second);
  EXPECT_EQ(Store().toStdString(), "width=640\nheight=360\ntext\nwidth=640\nheight=360\ntext\n");
}

TEST_F(Nesting, ALoadInsideAPreviewLeavesThePreviewsLaterBlocksTheirWayToTheStore) {
  const Gate gate(tools_.PathOf("gate"));
  ProbeDimensionsDone = true;
  tools_.PreviewDoes(Print(QStringLiteral("one\n")) + Wait(gate) + Print(QStringLiteral("two\n")));
  AfterBlock(QStringLiteral("one\n"), [&] {
    Pick(tools_.File(QStringLiteral("a.mp4")), SizeText(1920, 1080), QStringLiteral("loaded\n"));
  });
  Before(Get<TextBox>("Text2").Change, [&](int) {
    if (Store().endsWith(QLatin1String("one\n"))) gate.Open();
  });
  Give(PreviewCroppedVideo);
  EXPECT_EQ(Store().toStdString(), "one\nloaded\ntwo\n");
  EXPECT_EQ(Number(SourceWidth), "1,920");
}

// Where a load stands when the windows are served next, from its start on.
class Served : public Nesting {
 protected:
  Texts FirstTimeInALoadOf(int width, int height) const {
    tools_.SizeProbeDoes(Print(SizeText(width, height)));
    Texts state;
    Before(Path().Change, [&](int) {
      AtNextDoEvents([&] {
        state = {Number(SourceWidth), Number(SourceHeight),
                 ProbeDimensionsDone ? "size known" : "size unknown", Store().toStdString(),
                 "runs: " + std::to_string(tools_.Runs().size())};
      });
    });
    Pick(tools_.File(QStringLiteral("a.mp4")));
    return state;
  }
};

// Not by the block of the size, but by the empty one at its tool's end.
TEST_F(Served, NotWhileASizeIsTaken) {
  EXPECT_EQ(FirstTimeInALoadOf(1920, 1080), (Texts{"1,920", "1,080", "size known", "", "runs: 1"}));
}

TEST_F(Served, BeforeTheBlockOfASizeIsKeptAsText) {
  EXPECT_EQ(FirstTimeInALoadOf(640, 360), (Texts{"0,640", "0,360", "size known", "", "runs: 1"}));
}

TEST_F(Served, OnceForEachBlockOfTextBeforeItIsTaken) {
  const Gate gate(tools_.PathOf("gate"));
  tools_.SizeProbeDoes(Print(SizeText(1920, 1080)));
  tools_.DurationProbeDoes(Print(QStringLiteral("one\n")) + Wait(gate) +
                           Print(QStringLiteral("Duration: 00:00:01")) + Wait(gate) +
                           Print(QStringLiteral("\nthree\n")));
  Texts served;
  Get<TextBox>("Text2").Change = [&](int) {
    AtNextDoEvents([&] {
      served.push_back(Store().toStdString() + ", duration: " + VideoDuration.toStdString());
    });
    gate.Open();
  };
  Pick(tools_.File(QStringLiteral("a.mp4")));
  EXPECT_EQ(served, (Texts{"one\n, duration: ", "one\nDuration: 00:00:01, duration: 00:00:01",
                           "one\nDuration: 00:00:01\nthree\n, duration: 00:00:01"}));
}

TEST_F(Nesting, TheWindowsAreServedBeforeABlockIsKept) {
  ProbeDimensionsDone = true;
  tools_.PreviewDoes(Print(QStringLiteral("playing\n")));
  QString served = QStringLiteral("not served");
  AtNextDoEvents([&] { served = Store(); });
  Give(PreviewCroppedVideo);
  EXPECT_EQ(served.toStdString(), "");
  EXPECT_EQ(Store().toStdString(), "playing\n");
}

TEST_F(Nesting, APreviewInsideADurationProbe) {
  const QString video = tools_.File(QStringLiteral("a.mp4"));
  const Gate gate(tools_.PathOf("gate"));
  tools_.SizeProbeDoes(Print(SizeText(1920, 1080)));
  tools_.DurationProbeDoes(Print(QStringLiteral("one\n")) + Wait(gate) +
                           Print(QStringLiteral("Duration: 00:00:11.00\n")));
  tools_.PreviewDoes(Print(QStringLiteral("playing\n")));
  AfterBlock(QStringLiteral("one\n"), [&] { Give(PreviewCroppedVideo); });
  Before(Get<TextBox>("Text2").Change, [&](int) {
    if (Store().endsWith(QLatin1String("one\n"))) gate.Open();
  });
  Pick(video);
  EXPECT_EQ(Store().toStdString(), "one\nplaying\nDuration: 00:00:11.00\n");
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:11");
}

TEST_F(Nesting, APreviewEndsWhileAJobRunsOnTopOfItThoughNobodyTakesItsText) {
  const QString ended = tools_.Path() + QLatin1String("/ended");
  const Gate gate(tools_.PathOf("gate"));
  ProbeDimensionsDone = true;
  tools_.PreviewDoes(Print(QStringLiteral("playing\n")) + Wait(gate) + MuchTextAndThen(ended));
  tools_.CropDoes(WaitForFile(ended));
  bool endedDuringTheJob = false;
  AfterBlock(QStringLiteral("playing\n"), [&] {
    CropTo("/tmp/out.mp4");
    RunJob(*JobWindow());
    endedDuringTheJob = QFile::exists(ended);
  });
  Before(Get<TextBox>("Text2").Change, [&, opened = false](int) mutable {
    if (!std::exchange(opened, true)) gate.Open();
  });
  Give(PreviewCroppedVideo);
  EXPECT_TRUE(endedDuringTheJob);
  EXPECT_EQ(Store().size(), 8 + kMuchText);
}

TEST_F(Nesting, ThreePreviewsInsideEachOtherEndWhileTheInnermostRuns) {
  const QString ended = tools_.Path() + QLatin1String("/ended");
  ProbeDimensionsDone = true;
  // Each but the last has its text taken only when those inside it have ended.
  tools_.PreviewDoes(MuchTextAndThen(ended + QLatin1Char('1')));
  AtNextDoEvents([&] {
    tools_.PreviewDoes(MuchTextAndThen(ended + QLatin1Char('2')));
    AtNextDoEvents([&] {
      tools_.PreviewDoes(WaitForFile(ended + QLatin1Char('1')) +
                         WaitForFile(ended + QLatin1Char('2')) + Print(QStringLiteral("inside")));
      Give(PreviewCroppedVideo);
      EXPECT_TRUE(QFile::exists(ended + QLatin1Char('1')));
      EXPECT_TRUE(QFile::exists(ended + QLatin1Char('2')));
      EXPECT_EQ(Store().toStdString(), "inside");
    });
    Give(PreviewCroppedVideo);
    EXPECT_EQ(Store().size(), 6 + kMuchText);
  });
  Give(PreviewCroppedVideo);
  EXPECT_EQ(Store().size(), 6 + 2 * kMuchText);
}

}  // namespace
}  // namespace kelvane::testing
