// Where in a load or a preview its own error comes: the message is the same, and what was done
// before it stands.
#include "media/CommandLines.h"
#include "platform/App.h"
#include "shared/SharedValues.h"
#include "support/AllocationFailure.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

// Of all that is allotted, nothing but the line is as long as it is.
void FailNextLine(const std::string& line) { FailNextAllocation(line.size() + 1, line.size() + 1); }

// In the run the line is taken to pieces, letter by letter. A piece gets twice its room each time
// that it is full, and the path of the video alone comes to need so much.
void FailNextRun(const std::string& /*line*/) {
  constexpr std::size_t kRoomForThePath = 480;
  FailNextAllocation(kRoomForThePath + 1, kRoomForThePath + 1);
}

struct PlaceOfError {
  const char* name;
  void (*order)(const std::string& line);
};

void PrintTo(const PlaceOfError& place, std::ostream* out) { *out << place.name; }

class TrapPlaces : public MainWindowTest, public ::testing::WithParamInterface<PlaceOfError> {
 protected:
  TrapPlaces() { tools_.SizeProbeDoes(Print(SizeText(1280, 720))); }

  // The load of the video, which says that it has failed; whatever was ordered has come.
  void FailToLoad() const {
    const DialogAnswers answers({TypeFile(video_), PressButton(QMessageBox::Ok)});
    Give(LoadVideo);
    EXPECT_TRUE(AllocationHasFailed());
    ASSERT_EQ(answers.seen().size(), 2U);
    EXPECT_EQ(answers.seen()[1],
              "Kelvane | An Error Occurred trying to get Video Dimensions. | no icon | OK");
    EXPECT_EQ(VideoPath, video_);
  }

  const std::string folder_ = App::Path();
  const QString video_ = tools_.File(QString(220, 'a') + QLatin1String(".mp4"));
};

TEST_P(TrapPlaces, OfALoadsFirstRunProbeNothing) {
  Before(Path().Change, [this, first = true](int) mutable {
    if (!std::exchange(first, false)) return;
    GetParam().order(SizeProbeCommandLine(folder_, video_.toStdString()));
  });
  FailToLoad();
  EXPECT_EQ(tools_.Runs(), Texts{});
  EXPECT_FALSE(ProbeDimensionsDone);
  EXPECT_EQ(Number(SourceWidth), "0,000");

  LoadVideoOf(640, 360);
  EXPECT_EQ(Number(SourceWidth), "0,640");
}

TEST_P(TrapPlaces, OfALoadsSecondRunLeaveTheSizeThatTheFirstHasRead) {
  // The windows are first served at the end of the size probe.
  Before(Path().Change, [this, first = true](int) mutable {
    if (!std::exchange(first, false)) return;
    AtNextDoEvents(
        [this] { GetParam().order(DurationProbeCommandLine(folder_, video_.toStdString())); });
  });
  FailToLoad();
  EXPECT_EQ(tools_.Runs(), Texts{SizeRun(video_)});
  EXPECT_TRUE(ProbeDimensionsDone);
  EXPECT_EQ(Number(SourceWidth), "1,280");

  LoadVideoOf(640, 360);
  EXPECT_EQ(Number(SourceWidth), "0,640");
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:10");
}

TEST_P(TrapPlaces, OfAPreviewPlayNothing) {
  Pick(video_);
  const std::size_t runs = tools_.Runs().size();
  {
    const DialogAnswers answers({PressButton(QMessageBox::Ok)});
    Before(Get<Label>("Label14", PreviewCroppedVideo).MouseUp, [this, first = true](
                                                                   const MouseEvent&) mutable {
      if (!std::exchange(first, false)) return;
      GetParam().order(PreviewCommandLine(
          folder_, video_.toStdString(), CropFilterText(CropWidth, CropHeight, CropLeft, CropTop)));
    });
    Give(PreviewCroppedVideo);
    EXPECT_TRUE(AllocationHasFailed());
    EXPECT_EQ(answers.seen(),
              Texts{"Kelvane | An Error Occurred trying to create Video preview. | no icon | OK"});
  }
  EXPECT_EQ(tools_.Runs().size(), runs);

  Give(PreviewCroppedVideo);
  EXPECT_EQ(tools_.Runs().size(), runs + 1);
}

INSTANTIATE_TEST_SUITE_P(Trap, TrapPlaces,
                         ::testing::Values(PlaceOfError{"WhileTheLineIsBuilt", FailNextLine},
                                           PlaceOfError{"InsideTheRun", FailNextRun}),
                         [](const auto& place) { return place.param.name; });

}  // namespace
}  // namespace kelvane::testing
