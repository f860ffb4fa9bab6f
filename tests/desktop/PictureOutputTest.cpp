// The way of a playing picture to the screen, past the window's own painting: whatever comes over
// it, and goes again, the screen shows what the window would paint.
#include <QFile>
#include <QWidget>
#include <cerrno>
#include <vector>

#include "desktop/PlayingTest.h"
#include "desktop/driver/PrivateDisplay.h"
#include "desktop/faults/Faults.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kVideo(640, 360);

class APlayedPicture : public Playing {
 protected:
  using Playing::Playing;

  void Play() {
    const QString clip = program.PathOf("clip.mp4");
    ASSERT_TRUE(MakeVideo(clip, kVideo, 60));
    ASSERT_NO_FATAL_FAILURE(OpenWindow());
    ASSERT_NO_FATAL_FAILURE(LoadAndRun(clip, kVideo));
    ASSERT_TRUE(AwaitMoving(kVideo));
  }

  // Whether the program's memory has pictures that the display server reads as well.
  bool IsShared() const {
    QFile memory(QStringLiteral("/proc/%1/maps").arg(program.Id()));
    return memory.open(QIODevice::ReadOnly) && memory.readAll().contains("memfd:picture");
  }

  // Another program's window over the whole canvas, which then goes.
  void CoverForAMoment() {
    QWidget cover(nullptr, Qt::X11BypassWindowManagerHint);
    cover.setStyleSheet(QStringLiteral("background: #123456"));
    cover.setGeometry(QRect(window.OnCanvas({}), kVideo));
    cover.show();
    ASSERT_TRUE(WaitFor([&] {
      return screen.Pixel(window.OnCanvas({320, 180})) == 0xff123456 &&
             screen.Pixel(window.OnCanvas({2, 180})) == 0xff123456;
    }));
  }
};

TEST_F(APlayedPicture, IsReadByTheServerFromTheProgramsMemory) {
  ASSERT_NO_FATAL_FAILURE(Play());
  EXPECT_TRUE(IsShared());
  EXPECT_TRUE(BarsLieOver(kVideo));
}

TEST_F(APlayedPicture, IsPaintedByTheWindowWhereNoMemoryCanBeShared) {
  Faults faults(program);
  faults.FailAll(Attempt::kSharePicture, ENOSYS);
  ASSERT_NO_FATAL_FAILURE(Play());
  EXPECT_GT(faults.Failed(Attempt::kSharePicture), 0);
  EXPECT_FALSE(IsShared());
  EXPECT_TRUE(BarsLieOver(kVideo));
  window.Click(kStopVideo);
  EXPECT_TRUE(AwaitBlack(kVideo));
  CloseAndExpectEnd();
  EXPECT_EQ(program.Printed(), "");
}

TEST_F(APlayedPicture, GoesOnOnceWhatCoveredItIsGone) {
  ASSERT_NO_FATAL_FAILURE(Play());
  ASSERT_NO_FATAL_FAILURE(CoverForAMoment());
  EXPECT_TRUE(AwaitMoving(kVideo));
  EXPECT_TRUE(BarsLieOver(kVideo));
}

TEST_F(APlayedPicture, IsThereAgainOnceWhatCoveredItIsGoneThoughThePlayerIsPaused) {
  ASSERT_NO_FATAL_FAILURE(Play());
  window.Click(kPauseVideo);
  ASSERT_TRUE(AwaitStill(kVideo));
  const QImage paused = window.Inside(kVideo);
  ASSERT_NO_FATAL_FAILURE(CoverForAMoment());
  EXPECT_TRUE(WaitFor([&] { return window.Inside(kVideo) == paused; }));
  EXPECT_TRUE(BarsLieOver(kVideo));
}

TEST_F(APlayedPicture, IsThereAgainInAWindowThatWasMinimised) {
  ASSERT_NO_FATAL_FAILURE(Play());
  window.Click(kPauseVideo);
  ASSERT_TRUE(AwaitStill(kVideo));
  const QImage paused = window.Inside(kVideo);
  screen.Minimise(window.Id());
  ASSERT_TRUE(WaitFor([&] { return screen.Minimised(window.Id()); }));
  ASSERT_FALSE(window.Inside(kVideo) == paused);
  screen.Activate(window.Id());
  EXPECT_TRUE(WaitFor([&] { return window.Inside(kVideo) == paused; }));
  EXPECT_TRUE(BarsLieOver(kVideo));
  CloseAndExpectEnd();
}

TEST_F(APlayedPicture, StaysInItsPlaceHoweverTheWindowIsResized) {
  ASSERT_NO_FATAL_FAILURE(Play());
  const QSize whole = screen.Place(window.Id()).size();
  const QRect across = window.Place("HScroll1");
  const QRect down = window.Place("VScroll1");
  const QImage acrossBefore = screen.Still(across);
  const QImage downBefore = screen.Still(down);
  for (int round = 0; round < 6; ++round) {
    for (const int less : {60, 30, 90, 0}) {
      screen.Resize(window.Id(), whole - QSize(less, less));
      ASSERT_TRUE(
          WaitFor([&] { return screen.Place(window.Id()).size() == whole - QSize(less, less); }));
    }
    const auto isAsBefore = [&] {
      return screen.Picture(across) == acrossBefore && screen.Picture(down) == downBefore &&
             window.Shows("Label14(5)", "Crop Video");
    };
    ASSERT_TRUE(WaitFor(isAsBefore, 5s));
    EXPECT_TRUE(HoldsFor(isAsBefore, 200ms));
  }
  EXPECT_TRUE(BarsLieOver(kVideo));
  EXPECT_TRUE(AwaitMoving(kVideo));
  CloseAndExpectEnd();
}

TEST_F(APlayedPicture, LeavesNoDescriptorOpen) {
  ASSERT_NO_FATAL_FAILURE(Play());
  const int before = program.OpenDescriptors();
  for (int run = 0; run < 3; ++run) {
    window.Click(kStopVideo);
    ASSERT_TRUE(AwaitBlack(kVideo));
    window.Click(kRunVideo);
    ASSERT_TRUE(AwaitMoving(kVideo));
  }
  EXPECT_LE(program.OpenDescriptors(), before);
}

// What keeps a server from reading a program's memory.
struct Obstacle {
  const char* name;
  std::vector<std::string> serverOptions;
  const char* host;
};

void PrintTo(const Obstacle& obstacle, std::ostream* stream) { *stream << obstacle.name; }

const std::vector<Obstacle> kObstacles = {
    {"WhichHasNoExtensionForIt", {"-extension", "MIT-SHM"}, ""},
    {"ReachedOverANetwork", {"-listen", "tcp"}, "localhost"},
};

// Its display is there before the fixture that looks at it.
class OtherDisplay {
 protected:
  explicit OtherDisplay(const Obstacle& obstacle)
      : server(home.path().toStdString(), obstacle.serverOptions),
        eyes(server.Name()),
        name(QLatin1String(obstacle.host) + QString::fromStdString(server.Name())) {}

  ~OtherDisplay() = default;

  QTemporaryDir home;
  PrivateDisplay server;
  Screen eyes;
  QString name;
};

class OnAServerThatReadsNoMemory : private OtherDisplay,
                                   public APlayedPicture,
                                   public testing::WithParamInterface<Obstacle> {
 protected:
  OnAServerThatReadsNoMemory() : OtherDisplay(GetParam()), APlayedPicture(eyes, name) {}
};

TEST_P(OnAServerThatReadsNoMemory, PicturesArePaintedByTheWindow) {
  ASSERT_NO_FATAL_FAILURE(Play());
  EXPECT_FALSE(IsShared());
  EXPECT_TRUE(BarsLieOver(kVideo));
  CloseAndExpectEnd();
  EXPECT_EQ(program.Printed(), "");
}

INSTANTIATE_TEST_SUITE_P(Each, OnAServerThatReadsNoMemory, testing::ValuesIn(kObstacles),
                         [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace kelvane::desktop
