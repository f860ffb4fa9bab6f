// On dense screens the windows and the video stay the same pixel for pixel. Menus and dialogs grow
// with the letters.
#include <array>
#include <functional>
#include <utility>

#include "desktop/DesktopTest.h"
#include "desktop/driver/JoinerWindow.h"
#include "desktop/driver/SectionWindow.h"

namespace kelvane::desktop {
namespace {

constexpr int kUsual = 96;  // dots per inch

// How a desktop tells its programs the density of the screen.
enum class Source { kXResources, kFontVariable, kScaleVariables };

struct Density {
  const char* name;
  int dotsPerInch;
  Source source;
};

void PrintTo(const Density& density, std::ostream* out) { *out << density.name; }

constexpr std::array kDensities = {Density{"144InXResources", 144, Source::kXResources},
                                   Density{"192InXResources", 192, Source::kXResources},
                                   Density{"192InAFontVariable", 192, Source::kFontVariable},
                                   Density{"192InScaleVariables", 192, Source::kScaleVariables}};

class Dense : public DesktopTest {
 protected:
  void TearDown() override {
    screen.SetResources({});
    DesktopTest::TearDown();
  }

  void StartAt(Density density, Program& started) {
    const QString dots = QString::number(density.dotsPerInch);
    const QString factor = QString::number(density.dotsPerInch / double{kUsual});
    screen.SetResources({});
    if (density.source == Source::kXResources) {
      screen.SetResources("Xft.dpi:\t" + dots.toLatin1() + '\n');
    } else if (density.source == Source::kFontVariable) {
      started.SetVariable("QT_FONT_DPI", dots);
    } else {
      started.SetVariable("QT_SCALE_FACTOR", factor);
      started.SetVariable("QT_SCREEN_SCALE_FACTORS", factor);
      started.SetVariable("QT_ENABLE_HIGHDPI_SCALING", "1");
      started.SetVariable("GDK_SCALE", "2");
    }
    started.Start();
  }

  // Gives a window's content area that size, and returns its picture once it no longer changes.
  QImage PictureOf(WindowId id, const std::function<QRect()>& area, QSize size) {
    const int menus = area().top() - screen.Place(id).top();
    screen.Resize(id, size + QSize(0, menus));
    screen.MovePointer(screen.Place(id).bottomRight() + QPoint(20, 20));
    QImage picture;
    EXPECT_TRUE(WaitFor([&] {
      picture = screen.Picture(area());
      return picture.size() == size &&
             HoldsFor([&] { return screen.Picture(area()) == picture; }, 400ms);
    }));
    return picture;
  }

  QImage MainPicture(Density density) {
    Program opened(KELVANE_PROGRAM_FOLDER, TheDisplay());
    StartAt(density, opened);
    MainWindow shown(screen);
    EXPECT_TRUE(shown.Await());
    EXPECT_TRUE(shown.AwaitTimesWithoutVideo());
    return PictureOf(
        shown.Id(), [&] { return shown.Area(); }, QSize(1289, 700));
  }

  QImage SectionsPicture(Density density) {
    Program opened(KELVANE_PROGRAM_FOLDER, TheDisplay(), "kelvane-sections");
    StartAt(density, opened);
    SectionWindow shown(screen);
    EXPECT_TRUE(shown.Await());
    return PictureOf(
        shown.Id(), [&] { return screen.Place(shown.Id()); }, QSize(974, 797));
  }

  // The joiner with a section that is selected.
  QImage JoinerPicture(Density density) {
    const QString clip = program.PathOf("clip.mp4");
    WriteFile(clip, "no video");
    Program opened(KELVANE_PROGRAM_FOLDER, TheDisplay(), "kelvane-joiner");
    opened.ReplaceTool("ffprobe", "echo '  Duration: 00:10:10.90, start: 0.000000' >&2");
    StartAt(density, opened);
    JoinerWindow shown(screen);
    EXPECT_TRUE(shown.Await());
    EXPECT_TRUE(shown.ChooseFile(JoinerButton::kAddSection, clip));
    EXPECT_TRUE(shown.AwaitSections(1));
    shown.PointAtSection(0);
    EXPECT_TRUE(WaitFor([&] { return shown.LineSelected(0) && shown.RowSelected(0); }));
    return PictureOf(
        shown.Id(), [&] { return shown.Area(); }, QSize(1519, 845));
  }
};

class DenseScreen : public Dense {
 protected:
  void ExpectTheSameAtEachDensity(const std::function<QImage(Density)>& pictureOf) {
    const QImage usual = pictureOf({"usual", kUsual, Source::kXResources});
    EXPECT_GT(Colours(usual), 10);
    for (const Density density : kDensities) {
      SCOPED_TRACE(density.name);
      const QRect difference = Difference(usual, pictureOf(density));
      EXPECT_TRUE(difference.isEmpty())
          << "from " << difference.left() << ", " << difference.top() << " to "
          << difference.right() << ", " << difference.bottom();
    }
  }
};

TEST_F(DenseScreen, ShowsTheMainWindowPixelForPixel) {
  ExpectTheSameAtEachDensity([this](Density density) { return MainPicture(density); });
}

TEST_F(DenseScreen, ShowsTheSectionWindowPixelForPixel) {
  ExpectTheSameAtEachDensity([this](Density density) { return SectionsPicture(density); });
}

TEST_F(DenseScreen, ShowsTheJoinerPixelForPixel) {
  ExpectTheSameAtEachDensity([this](Density density) { return JoinerPicture(density); });
}

class VideoOnDenseScreen : public Dense, public ::testing::WithParamInterface<Density> {};

TEST_P(VideoOnDenseScreen, IsUnscaled) {
  constexpr QSize kClip(320, 180);
  video = program.PathOf("chequers.mkv");
  ASSERT_TRUE(MakeChequers(video, kClip, 60));
  StartAt(GetParam(), program);
  ASSERT_TRUE(window.Await());
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, video));
  EXPECT_TRUE(window.AwaitVideo(kClip));
  EXPECT_TRUE(window.AwaitBarsAround(kClip));
  window.Click(kRunVideo);
  EXPECT_TRUE(WaitFor([&] { return ShowsChequers(window.Inside(kClip)); }, 5s));
}

INSTANTIATE_TEST_SUITE_P(Densities, VideoOnDenseScreen, ::testing::ValuesIn(kDensities),
                         [](const auto& tested) { return tested.param.name; });

class DenseDialogs : public Dense {
 protected:
  // The height of the letters in the menu bar, and the size of the dialog that loads a video.
  std::pair<int, QSize> Measure(int dotsPerInch) {
    Program opened(KELVANE_PROGRAM_FOLDER, TheDisplay());
    StartAt({"", dotsPerInch, Source::kXResources}, opened);
    MainWindow shown(screen);
    EXPECT_TRUE(shown.Await());
    QRect letters;
    EXPECT_TRUE(WaitFor([&] {
      const QImage menus = screen.Picture(shown.Menus());
      letters = Extent(menus, menus.rect(), kBlack);
      return letters.height() > 8;
    })) << "no letters are drawn";
    shown.Click(kLoadVideo);
    const WindowId dialog = screen.AwaitNew({shown.Id()});
    EXPECT_TRUE(WaitFor([&] { return screen.Active(dialog); }));
    return {letters.height(), screen.Place(dialog).size()};
  }
};

TEST_F(DenseDialogs, GrowWithTheLettersAsMenusDo) {
  const auto [usualLetters, usualDialog] = Measure(kUsual);
  const auto [letters, dialog] = Measure(2 * kUsual);
  EXPECT_NEAR(letters, 2 * usualLetters, usualLetters / 2);
  EXPECT_NEAR(dialog.width(), 2 * usualDialog.width(), usualDialog.width() / 10);
  EXPECT_NEAR(dialog.height(), 2 * usualDialog.height(), usualDialog.height() / 10);
}

}  // namespace
}  // namespace kelvane::desktop
