// Failures of the program itself, not of a tool, in a load or a preview.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <functional>
#include <new>
#include <optional>
#include <string>
#include <utility>

#include "media/Module1.h"
#include "platform/App.h"
#include "shared/SharedValues.h"
#include "support/AllocationFailure.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class Failure : public MainWindowTest {
 protected:
  // Loads the video, while an allocation fails, and expects the message of a failed load.
  void FailToLoad(const QString& video) const {
    const DialogAnswers answers({TypeFile(video), PressButton(QMessageBox::Ok)});
    Give(LoadVideo);
    EXPECT_TRUE(EndAllocationFailure());
    ASSERT_EQ(answers.seen().size(), 2U);
    EXPECT_EQ(answers.seen()[1],
              "Kelvane | An Error Occurred trying to get Video Dimensions. | no icon | OK");
    EXPECT_EQ(VideoPath, video);
    EXPECT_TRUE(Canvas().Visible());
  }
};

TEST_F(Failure, OfALoadBeforeTheSizeProbeShowsAMessageAndTheNextLoadWorks) {
  Before(Path().Change, [first = true](int) mutable {
    if (std::exchange(first, false)) FailAllocation();
  });
  FailToLoad(tools_.MakeFile("a.mp4"));
  EXPECT_TRUE(tools_.Runs().empty());
  EXPECT_FALSE(ProbeDimensionsDone);
  LoadVideoOf(640, 360);
  EXPECT_EQ(Number(SourceWidth), "0,640");
}

TEST_F(Failure, OfALoadAfterTheSizeProbeShowsAMessageAndKeepsTheSize) {
  const QString video = tools_.MakeFile("a.mp4");
  tools_.StreamProbeDoes(PrintCommands(SizeText(1280, 720)));
  Get<Timer>("Timer2").Tick = nullptr;  // otherwise the failure could be that of a tick
  // The load first calls DoEvents at the end of the size probe.
  Before(Path().Change, [](int) {
    AtNextDoEvents([] {
      ServePendingEvents();  // so that no other event is left whose handling allocates memory
      FailAllocation();
    });
  });
  FailToLoad(video);
  EXPECT_EQ(tools_.Runs(), Texts{SizeRun(video)});
  EXPECT_EQ(Number(SourceWidth), "1,280");
}

TEST_F(Failure, OfAPreviewShowsAMessageAndTheNextPreviewWorks) {
  Before(Get<Label>("Label14", PreviewCroppedVideo).MouseUp,
         [first = true](const MouseEvent&) mutable {
           if (std::exchange(first, false)) FailAllocation();
         });
  {
    const DialogAnswers answers({PressButton(QMessageBox::Ok)});
    Give(PreviewCroppedVideo);
    EXPECT_TRUE(EndAllocationFailure());
    EXPECT_EQ(answers.seen(),
              Texts{"Kelvane | An Error Occurred trying to create Video preview. | no icon | OK"});
  }
  EXPECT_TRUE(tools_.Runs().empty());
  Give(PreviewCroppedVideo);
  EXPECT_EQ(tools_.Runs().size(), 1U);
}

// There are no tools, so that no event is raised or processed: whatever a load or a preview
// allocates is for its runner, its command lines and its runs.
class FailureAnywhere : public MainWindowTest {
 protected:
  FailureAnywhere() { App::setPath("/a/missing/folder"); }

  // Raises the event once for each allocation of its handler, lets that allocation fail, and
  // expects the message.
  template <class Handler>
  static void ExpectMessage(Handler& handler, const std::function<void()>& raise,
                            const std::string& message) {
    const Handler wired = handler;
    std::optional<std::size_t> failing;
    std::size_t before = 0;
    std::size_t count = 0;
    Before(handler, [&](const auto&... /*event*/) {
      before = Allocations();
      if (failing) FailAllocation(*failing);
    });
    After(handler, [&](const auto&... /*event*/) { count = Allocations() - before; });
    raise();
    raise();  // counted anew: only the first call reserves memory for the process ids of tools
    const std::size_t all = count;
    EXPECT_GT(all, 0U);
    for (failing = 0; *failing < all; ++*failing) {
      const DialogAnswers answers({PressButton(QMessageBox::Ok)});
      raise();
      EXPECT_TRUE(EndAllocationFailure());
      EXPECT_EQ(answers.seen(), Texts{"Kelvane | " + message + " | no icon | OK"}) << *failing;
    }
    handler = wired;
  }
};

TEST_F(FailureAnywhere, InALoadShowsItsMessage) {
  ExpectMessage(
      Path().Change,
      [&, number = 1000]() mutable {
        ProbeDimensionsDone = false;
        Path().setText(QStringLiteral("/some/video%1.mp4").arg(++number));
      },
      "An Error Occurred trying to get Video Dimensions.");
}

TEST_F(FailureAnywhere, InAPreviewShowsItsMessage) {
  ExpectMessage(
      Get<Label>("Label14", PreviewCroppedVideo).MouseUp, [&] { Give(PreviewCroppedVideo); },
      "An Error Occurred trying to create Video preview.");
}

TEST_F(Failure, WhileABlockIsReadSkipsTheBlockAndLetsTheToolFinish) {
  const Gate gate(tools_.PathOf("gate"));
  const QString whole = tools_.Path() + "/whole";
  tools_.StreamProbeDoes(PrintCommands(SizeText(1920, 1080)));
  tools_.DurationProbeDoes(PrintCommands("one\n") + WaitCommands(gate) +
                           PrintCommands("Duration: 00:00:05.00\n") +
                           QStringLiteral("echo whole > '%1'\n").arg(whole));
  Get<TextBox>("Text2").Change = [&, first = true](int) mutable {
    if (!std::exchange(first, false)) return;
    gate.Open();
    throw std::bad_alloc();
  };
  Pick(tools_.MakeFile("a.mp4"));
  EXPECT_TRUE(QFile::exists(whole));
  EXPECT_EQ(VideoDuration, "00:00:05");
}

TEST_F(Failure, ToMakeAShortPathShowsAMessageAndEmptiesThePath) {
  Pick(tools_.MakeFile("one more clip.mp4"));
  // Takes the name that the next short path would have.
  QFile taken(QFileInfo(Path().Text()).dir().filePath("another_clip.mov"));
  ASSERT_TRUE(taken.open(QIODevice::WriteOnly));
  const DialogAnswers answers(
      {TypeFile(tools_.MakeFile("another clip.mov")), PressButton(QMessageBox::Ok)});
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
  const std::string video = tools_.MakeFile("my clip.mp4").toStdString();
  std::string shown;
  FailAllocation();
  EXPECT_EQ(GetShortFileName(video, [&](const std::string& text,
                                        const std::string& /*title*/) { shown = text; }),
            "");
  EXPECT_TRUE(EndAllocationFailure());
  EXPECT_EQ(shown,
            "An error occurred while obtaining the file path.\n\n"
            "The error number was:\t12\nThe error description:\tstd::bad_alloc");
}

}  // namespace
}  // namespace kelvane::testing
