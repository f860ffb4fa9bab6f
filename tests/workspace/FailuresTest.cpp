// These tests let the program itself fail in a load or a preview.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <limits>
#include <new>
#include <utility>

#include "media/Module1.h"
#include "shared/SharedValues.h"
#include "support/AllocationFailure.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

void FailTheNextAllocation() { FailNextAllocation(0, std::numeric_limits<std::size_t>::max()); }

class Failure : public MainWindowTest {
 protected:
  // Loads the video and expects the message that this has failed.
  void FailToLoad(const QString& video) const {
    const DialogAnswers answers({TypeFile(video), PressButton(QMessageBox::Ok)});
    Give(LoadVideo);
    EXPECT_TRUE(AllocationHasFailed());
    ASSERT_EQ(answers.seen().size(), 2U);
    EXPECT_EQ(answers.seen()[1],
              "Kelvane | An Error Occurred trying to get Video Dimensions. | no icon | OK");
    EXPECT_EQ(VideoPath, video);
    EXPECT_TRUE(Canvas().Visible());
  }
};

TEST_F(Failure, OfALoadBeforeTheSizeProbeShowsAMessageAndTheNextLoadWorks) {
  Before(Path().Change, [first = true](int) mutable {
    if (std::exchange(first, false)) FailTheNextAllocation();
  });
  FailToLoad(tools_.File("a.mp4"));
  EXPECT_TRUE(tools_.Runs().empty());
  EXPECT_FALSE(ProbeDimensionsDone);
  LoadVideoOf(640, 360);
  EXPECT_EQ(Number(SourceWidth), "0,640");
}

TEST_F(Failure, OfALoadAfterTheSizeProbeShowsAMessageAndKeepsTheSize) {
  const QString video = tools_.File("a.mp4");
  tools_.SizeProbeDoes(Print(SizeText(1280, 720)));
  // Events are first handled at the end of the size probe.
  Get<Timer>("Timer2").Tick = nullptr;
  Before(Path().Change, [](int) {
    AtNextDoEvents([] {
      PumpOnce();  // so that no other event is left whose handling allocates memory
      FailTheNextAllocation();
    });
  });
  FailToLoad(video);
  EXPECT_EQ(tools_.Runs(), Texts{SizeRun(video)});
  EXPECT_EQ(Number(SourceWidth), "1,280");
}

TEST_F(Failure, OfAPreviewShowsAMessageAndTheNextPreviewWorks) {
  Before(Get<Label>("Label14", PreviewCroppedVideo).MouseUp,
         [first = true](const MouseEvent&) mutable {
           if (std::exchange(first, false)) FailTheNextAllocation();
         });
  {
    const DialogAnswers answers({PressButton(QMessageBox::Ok)});
    Give(PreviewCroppedVideo);
    EXPECT_TRUE(AllocationHasFailed());
    EXPECT_EQ(answers.seen(),
              Texts{"Kelvane | An Error Occurred trying to create Video preview. | no icon | OK"});
  }
  EXPECT_TRUE(tools_.Runs().empty());
  Give(PreviewCroppedVideo);
  EXPECT_EQ(tools_.Runs().size(), 1U);
}

TEST_F(Failure, WhileABlockIsReadSkipsTheBlockAndLetsTheToolFinish) {
  const Gate gate(tools_.PathOf("gate"));
  const QString whole = tools_.Path() + "/whole";
  tools_.SizeProbeDoes(Print(SizeText(1920, 1080)));
  tools_.DurationProbeDoes(Print("one\n") + Wait(gate) + Print("Duration: 00:00:05.00\n") +
                           QStringLiteral("echo whole > '%1'\n").arg(whole));
  Get<TextBox>("Text2").Change = [&, first = true](int) mutable {
    if (!std::exchange(first, false)) return;
    gate.Open();
    throw std::bad_alloc();
  };
  Pick(tools_.File("a.mp4"));
  EXPECT_TRUE(QFile::exists(whole));
  EXPECT_EQ(VideoDuration, "00:00:05");
}

TEST_F(Failure, ToMakeAShortPathShowsAMessageAndEmptiesThePath) {
  Pick(tools_.File("one more clip.mp4"));
  // Takes the name that the next short path would have.
  const QFileInfo former(Path().Text());
  QFile taken(former.dir().filePath(QString::number(former.baseName().toInt() + 1) + ".mov"));
  ASSERT_TRUE(taken.open(QIODevice::WriteOnly));
  const DialogAnswers answers(
      {TypeFile(tools_.File("another clip.mov")), PressButton(QMessageBox::Ok)});
  Give(LoadVideo);
  taken.remove();
  ASSERT_EQ(answers.seen().size(), 2U);
  EXPECT_EQ(answers.seen()[1],
            "Error | An error occurred while obtaining the file path.\n\n"
            "The error number was:\t17\nThe error description:\tFile exists | exclamation | OK");
  EXPECT_EQ(Path().Text(), "");
  EXPECT_TRUE(Canvas().Visible());
}

TEST_F(Failure, ToAllocateMemoryForAShortPathIsReportedWithTheSystemsNumber) {
  const std::string video = tools_.File("my clip.mp4").toStdString();
  std::string shown;
  FailTheNextAllocation();
  EXPECT_EQ(GetShortFileName(video, [&](const std::string& text,
                                        const std::string& /*title*/) { shown = text; }),
            "");
  EXPECT_TRUE(AllocationHasFailed());
  EXPECT_EQ(shown,
            "An error occurred while obtaining the file path.\n\n"
            "The error number was:\t12\nThe error description:\tstd::bad_alloc");
}

}  // namespace
}  // namespace kelvane::testing
