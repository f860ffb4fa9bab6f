// Screens on which the user has asked for larger letters: the windows and the video stay as they
// are, pixel for pixel; menus, dialogs and tips follow the wish.
#include <array>
#include <functional>
#include <string>
#include <utility>

#include "desktop/DesktopTest.h"
#include "desktop/driver/JoinerWindow.h"
#include "desktop/driver/SectionWindow.h"

namespace kelvane::desktop {
namespace {

constexpr int kUsual = 96;

// How a desktop tells its programs of the density: in the display's resources, or in the
// environment.
enum class Told { kInResources, kForLetters, kAsFactors };

struct Density {
  int dotsPerInch;
  Told told;
};

constexpr std::array kDensities = {Density{144, Told::kInResources},
                                   Density{192, Told::kInResources},
                                   Density{192, Told::kForLetters}, Density{192, Told::kAsFactors}};

std::string NameOf(Density density) {
  const char* way = density.told == Told::kInResources  ? "InResources"
                    : density.told == Told::kForLetters ? "ForLetters"
                                                        : "AsFactors";
  return std::to_string(density.dotsPerInch) + way;
}

class Dense : public DesktopTest {
 protected:
  void TearDown() override {
    screen.SetResources({});
    DesktopTest::TearDown();
  }

  // To be called before the start.
  void Tell(Program& told, Density density) {
    const QString dots = QString::number(density.dotsPerInch);
    const QString factor = QString::number(density.dotsPerInch / double{kUsual});
    screen.SetResources({});
    if (density.told == Told::kInResources) {
      screen.SetResources("Xft.dpi:\t" + dots.toLatin1() + '\n');
    } else if (density.told == Told::kForLetters) {
      told.SetVariable(QStringLiteral("QT_FONT_DPI"), dots);
    } else {
      told.SetVariable(QStringLiteral("QT_SCALE_FACTOR"), factor);
      told.SetVariable(QStringLiteral("QT_SCREEN_SCALE_FACTORS"), factor);
      told.SetVariable(QStringLiteral("QT_ENABLE_HIGHDPI_SCALING"), QStringLiteral("1"));
      told.SetVariable(QStringLiteral("GDK_SCALE"), QStringLiteral("2"));
    }
  }

  // What the window shows under its menus, once that stays the same and the area has this size.
  QImage AreaOf(WindowId id, const std::function<QRect()>& area, QSize size) {
    const int menus = area().top() - screen.Place(id).top();
    screen.Resize(id, size + QSize(0, menus));
    EXPECT_TRUE(WaitFor([&] { return screen.Place(id).height() == size.height() + menus; }));
    screen.MovePointer(screen.Place(id).bottomRight() + QPoint(20, 20));
    QImage picture;
    EXPECT_TRUE(WaitFor(
        [&] {
          picture = screen.Picture(area());
          return picture.size() == size &&
                 HoldsFor([&] { return screen.Picture(area()) == picture; }, 400ms);
        },
        10s));
    return picture;
  }

  QImage MainPicture(Density density) {
    Program opened(QStringLiteral(KELVANE_PROGRAM_FOLDER), TheDisplay());
    Tell(opened, density);
    opened.Start();
    MainWindow shown(screen);
    EXPECT_TRUE(shown.Await());
    // The read-outs of an empty player, as its first tick leaves them.
    EXPECT_TRUE(shown.AwaitCaption("Label12", "0:00:00"));
    EXPECT_TRUE(shown.AwaitCaption("Label13", "00:00"));
    return AreaOf(
        shown.Id(), [&] { return shown.Area(); }, QSize(1289, 700));
  }

  QImage SectionsPicture(Density density) {
    Program opened(QStringLiteral(KELVANE_PROGRAM_FOLDER), TheDisplay(),
                   QStringLiteral("kelvane-sections"));
    Tell(opened, density);
    opened.Start();
    SectionWindow shown(screen);
    EXPECT_TRUE(shown.Await());
    return AreaOf(
        shown.Id(), [&] { return screen.Place(shown.Id()); }, QSize(974, 797));
  }

  // With a section in its chart, its table and its list.
  QImage JoinerPicture(Density density) {
    const QString clip = program.PathOf(QStringLiteral("clip.mp4"));
    WriteFile(clip, "  Duration: 00:10:10.90, start: 0.000000\n");
    Program opened(QStringLiteral(KELVANE_PROGRAM_FOLDER), TheDisplay(),
                   QStringLiteral("kelvane-joiner"));
    opened.ReplaceTool(QStringLiteral("ffprobe"),
                       QStringLiteral("for file; do :; done\ncat \"$file\" >&2"));
    Tell(opened, density);
    opened.Start();
    JoinerWindow shown(screen);
    EXPECT_TRUE(shown.Await());
    EXPECT_TRUE(shown.ChooseFile(JoinerButton::kAddSection, clip));
    EXPECT_TRUE(shown.AwaitSections(1));
    shown.PointAtSection(0);
    EXPECT_TRUE(WaitFor([&] { return shown.LineChosen(0) && shown.RowChosen(0); }));
    return AreaOf(
        shown.Id(), [&] { return shown.Area(); }, QSize(1519, 845));
  }
};

class DenseScreen : public Dense {
 protected:
  void ExpectTheSameEverywhere(const std::function<QImage(Density)>& pictureOf) {
    const QImage usual = pictureOf({kUsual, Told::kInResources});
    EXPECT_GT(Colours(usual), 10);
    for (const Density density : kDensities) {
      SCOPED_TRACE(NameOf(density));
      const QRect difference = Difference(usual, pictureOf(density));
      EXPECT_TRUE(difference.isEmpty())
          << "from " << difference.left() << ", " << difference.top() << " to "
          << difference.right() << ", " << difference.bottom();
    }
  }
};

TEST_F(DenseScreen, ShowsTheMainWindowPixelForPixel) {
  ExpectTheSameEverywhere([this](Density density) { return MainPicture(density); });
}

TEST_F(DenseScreen, ShowsTheSectionWindowPixelForPixel) {
  ExpectTheSameEverywhere([this](Density density) { return SectionsPicture(density); });
}

TEST_F(DenseScreen, ShowsTheJoinerPixelForPixel) {
  ExpectTheSameEverywhere([this](Density density) { return JoinerPicture(density); });
}

class VideoOnDenseScreen : public Dense, public ::testing::WithParamInterface<Density> {};

TEST_P(VideoOnDenseScreen, HasEachOfItsPixelsOnOneOfTheScreen) {
  constexpr QSize kClip(320, 180);
  video = program.PathOf(QStringLiteral("chequers.mkv"));
  ASSERT_TRUE(MakeChequers(video, kClip, 60));
  Tell(program, GetParam());
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, video));
  EXPECT_TRUE(window.AwaitVideo(kClip));
  EXPECT_TRUE(window.AwaitBarsAround(kClip));
  window.Click(kRunVideo);
  EXPECT_TRUE(WaitFor([&] { return ShowsChequers(window.Inside(kClip)); }, 5s));
}

INSTANTIATE_TEST_SUITE_P(Densities, VideoOnDenseScreen, ::testing::ValuesIn(kDensities),
                         [](const auto& tested) { return NameOf(tested.param); });

class DenseDialogs : public Dense {
 protected:
  // The height of the titles' letters, and the open dialog's size.
  std::pair<int, QSize> Measure(int dotsPerInch) {
    Program opened(QStringLiteral(KELVANE_PROGRAM_FOLDER), TheDisplay());
    Tell(opened, {dotsPerInch, Told::kInResources});
    opened.Start();
    MainWindow shown(screen);
    EXPECT_TRUE(shown.Await());
    const QImage menus = screen.Picture(shown.Menus());
    const QRect letters = Extent(menus, menus.rect(), kBlack);
    const QList<WindowId> known = screen.Windows();
    shown.Click(kLoadVideo);
    const WindowId dialog = screen.AwaitNew(known);
    EXPECT_NE(dialog, 0U);
    EXPECT_TRUE(WaitFor([&] { return screen.Active(dialog); }));
    return {letters.height(), screen.Place(dialog).size()};
  }
};

TEST_F(DenseDialogs, GrowWithTheLettersAndSoDoTheMenus) {
  const auto [usualLetters, usualDialog] = Measure(kUsual);
  const auto [letters, dialog] = Measure(2 * kUsual);
  EXPECT_GT(usualLetters, 8);
  EXPECT_NEAR(letters, 2 * usualLetters, usualLetters / 2);
  EXPECT_NEAR(dialog.width(), 2 * usualDialog.width(), usualDialog.width() / 10);
  EXPECT_NEAR(dialog.height(), 2 * usualDialog.height(), usualDialog.height() / 10);
}

}  // namespace
}  // namespace kelvane::desktop
