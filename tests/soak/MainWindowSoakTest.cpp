// One life of the main window, as long as no user's.
#include <array>

#include "shared/SharedValues.h"
#include "soak/Soak.h"
#include "support/PlayerWatch.h"
#include "support/Videos.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class MainWindowSoak : public MainWindowTest {
 protected:
  // Every text that a tool has printed stays in the window's store.
  std::size_t StoreBytes() const {
    return static_cast<std::size_t>(Store().capacity()) * sizeof(QChar);
  }
};

TEST_F(MainWindowSoak, AThousandLoadsAndCrops) {
  struct Video {
    QString file;
    int width;
    const char* title;
  };
  const std::array videos{Video{tools_.File("a.mp4"), 640, "0,640"},
                          Video{tools_.File("with a blank.mp4"), 1280, "1,280"}};
  const auto round = [&](int number) {
    const Video& video = videos.at(static_cast<std::size_t>(number) % videos.size());
    Pick(video.file, SizeText(video.width, 360), DurationText("00:00:10.00"));
    EXPECT_EQ(Number(SourceWidth), video.title);
    EXPECT_EQ(VideoDuration.toStdString(), "00:00:10");
    Tick(Get<Timer>("Timer2"));

    tools_.CropDoes(Print("frame=1 time=00:00:05.00 bitrate=1\n"));
    CropTo(tools_.Path() + QLatin1String("/out.mp4"));
    Form2* const job = JobWindow();
    ASSERT_NE(job, nullptr);
    RunJob(*job);
    EXPECT_EQ(Get<ProgressBar>("pbar").Value(), 5);
    Release(job->Find<Label>("Label2"));
    PumpOnce();
    EXPECT_EQ(JobWindow(), nullptr);
  };
  ExpectFlat({.warmUp = 200, .rounds = 800, .round = round, .keptOnPurpose = [this] {
                return StoreBytes();
              }});
  EXPECT_EQ(tools_.Runs().size(), std::size_t{1000 * 3});
}

TEST_F(MainWindowSoak, TwoHundredStartsOfThePlayer) {
  const PlayerWatch watch(Get<WindowsMediaPlayer>("wmp"));
  const QString red = tools_.Path() + QLatin1String("/red.mp4");
  ASSERT_TRUE(MakePlainVideo(red, QStringLiteral("red"), 2));
  Pick(red, SizeText(320, 180), DurationText("00:00:02.00"));
  const auto round = [&](int) {
    Give(RunVideo);
    ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
    Give(StopVideo);
    ASSERT_TRUE(watch.AwaitColour(kNothingPlayed));
  };
  ExpectFlat({.warmUp = 50, .rounds = 150, .round = round});
}

}  // namespace
}  // namespace kelvane::testing
