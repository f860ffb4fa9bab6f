// Desktops of dark and of light colours: the windows keep their own, and what the desktop colours,
// menus, dialogs, tips and what is chosen in lists, can be read.
#include <QColor>
#include <QDir>
#include <QHash>
#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "desktop/DesktopTest.h"
#include "desktop/driver/JoinerWindow.h"

namespace kelvane::desktop {
namespace {

struct Theme {
  const char* name;
  QRgb window;
  QRgb windowText;
  QRgb view;
  QRgb viewText;
  QRgb chosen;
  QRgb chosenText;
};

constexpr std::array kThemes = {
    Theme{"Dark", 0xff31363b, 0xffeff0f1, 0xff1b1e20, 0xfffcfcfc, 0xff1d5f86, 0xffffffff},
    Theme{"Light", 0xffeff0f1, 0xff232629, 0xfffcfcfc, 0xff232629, 0xff1d5f86, 0xffffffff},
    // White letters were white on white here if the program brought only a part of a pair.
    Theme{"Inverse", 0xffffffff, 0xff000000, 0xff000000, 0xffffffff, 0xffffff00, 0xff000000}};

double Luminance(QRgb color) {
  const auto linear = [](int part) {
    constexpr double kGamma = 2.2;
    return std::pow(part / 255.0, kGamma);
  };
  return 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) +
         0.0722 * linear(qBlue(color));
}

QRgb Ground(const QImage& picture) {
  QHash<QRgb, int> counts;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) ++counts[picture.pixel(x, y)];
  }
  return std::max_element(counts.keyValueBegin(), counts.keyValueEnd(),
                          [](auto one, auto other) { return one.second < other.second; })
      ->first;
}

// How far the letters stand out from their ground, from 1 to 21; 4.5 is what readers need.
double Contrast(const QImage& picture) {
  constexpr double kGlare = 0.05;
  const double ground = Luminance(Ground(picture));
  double most = 1;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const double letter = Luminance(picture.pixel(x, y));
      most =
          std::max(most, (std::max(letter, ground) + kGlare) / (std::min(letter, ground) + kGlare));
    }
  }
  return most;
}

constexpr double kLegible = 4.5;

// The desktop's colours, as the program finds them in its user's home.
class Themed : public ::testing::WithParamInterface<Theme> {
 protected:
  static void Dress(Program& program) {
    const auto entry = [](const char* key, QRgb color) {
      return QStringLiteral("%1=%2,%3,%4\n")
          .arg(QLatin1String(key))
          .arg(qRed(color))
          .arg(qGreen(color))
          .arg(qBlue(color));
    };
    const auto colours = [&](const char* of, QRgb ground, QRgb text) {
      return QStringLiteral("[Colors:%1]\n").arg(QLatin1String(of)) +
             entry("BackgroundNormal", ground) + entry("BackgroundAlternate", ground) +
             entry("ForegroundNormal", text) + entry("ForegroundLink", text) +
             entry("ForegroundVisited", text);
    };
    const Theme& theme = GetParam();
    const QString settings = colours("Window", theme.window, theme.windowText) +
                             colours("Button", theme.window, theme.windowText) +
                             colours("Tooltip", theme.view, theme.viewText) +
                             colours("View", theme.view, theme.viewText) +
                             colours("Selection", theme.chosen, theme.chosenText);
    const QDir home(program.PathOf(QStringLiteral("home")));
    ASSERT_TRUE(home.mkpath(QStringLiteral(".config")));
    QFile file(home.filePath(QStringLiteral(".config/kdeglobals")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_GT(file.write(settings.toUtf8()), 0);
    program.SetVariable(QStringLiteral("XDG_CURRENT_DESKTOP"), QStringLiteral("KDE"));
    program.SetVariable(QStringLiteral("KDE_FULL_SESSION"), QStringLiteral("true"));
    program.SetVariable(QStringLiteral("KDE_SESSION_VERSION"), QStringLiteral("5"));
  }
};

std::string NameOf(const ::testing::TestParamInfo<Theme>& tested) { return tested.param.name; }

// What has changed on the screen since, once it stays the same.
QRect ChangedSince(const QImage& before) {
  QRect changed;
  WaitFor([&] {
    changed = Difference(before, TheScreen().Picture());
    return !changed.isEmpty() &&
           HoldsFor([&] { return Difference(before, TheScreen().Picture()) == changed; }, 300ms);
  });
  return changed;
}

class MainInColours : public DesktopTest, public Themed {
 protected:
  void SetUp() override {
    ASSERT_NO_FATAL_FAILURE(Dress(program));
    ASSERT_NO_FATAL_FAILURE(OpenWindow());
    ASSERT_TRUE(window.AwaitTimesOfNothing());
  }
};

TEST_P(MainInColours, KeepsItsOwn) {
  const QImage picture = screen.Still();
  EXPECT_TRUE(AllOf(picture, window.Place("Picture1(1)").adjusted(0, 0, 0, -4), kDark));
  EXPECT_TRUE(AllOf(picture, window.Place("Text1(1)"), kDark));
  EXPECT_TRUE(AllOf(picture, window.Place("pbar"), kProgressBack));
  for (const char* control : {"Label14(0)", "Label1(0)", "Label1(1)", "Label10"}) {
    EXPECT_TRUE(window.ShowsAsDrawn(control)) << control;
  }
}

TEST_P(MainInColours, HasMenusToRead) {
  const QImage closed = screen.Still();
  const QRect menus = window.Menus();
  EXPECT_EQ(Ground(closed.copy(menus)), GetParam().window);
  EXPECT_GE(Contrast(closed.copy(menus)), kLegible);
  constexpr int kOnTheFirst = 20;
  screen.Click(QPoint(menus.left() + kOnTheFirst, menus.center().y()));
  QRect opened = ChangedSince(closed);
  opened.setTop(menus.bottom() + 1);
  EXPECT_GE(Contrast(screen.Picture(opened)), kLegible);
  const QImage before = screen.Still();
  screen.MovePointer(opened.center());
  EXPECT_GE(Contrast(screen.Picture(ChangedSince(before))), kLegible) << "the chosen item";
}

TEST_P(MainInColours, HasAFileDialogToRead) {
  window.Click(kLoadVideo);
  const WindowId dialog = screen.AwaitNew({window.Id()});
  ASSERT_TRUE(dialog != 0 && WaitFor([&] { return screen.Active(dialog); }));
  // Long enough to be met below in every font.
  screen.Type(QStringLiteral("a name of some length"));
  const QRect place = screen.Place(dialog);
  // The captions at the foot and the names of places stand at the left, what was typed beside them.
  const QRect foot(place.left() + 8, place.bottom() - 70, 100, 60);
  const QRect typed(place.left() + 130, place.bottom() - 70, 120, 30);
  EXPECT_TRUE(WaitFor([&] { return Contrast(screen.Picture(typed)) >= kLegible; }, 5s));
  EXPECT_EQ(Ground(screen.Picture(typed)), GetParam().view);
  EXPECT_EQ(Ground(screen.Picture(foot)), GetParam().window);
  EXPECT_GE(Contrast(screen.Picture(foot)), kLegible);
}

class JoinerInColours : public DesktopTest, public Themed {
 protected:
  JoinerInColours() : DesktopTest(QStringLiteral("kelvane-joiner")) {}

  void SetUp() override {
    ASSERT_NO_FATAL_FAILURE(Dress(program));
    program.ReplaceTool(QStringLiteral("ffprobe"),
                        QStringLiteral("echo '  Duration: 00:10:00.00, start: 0.0' >&2"));
    program.ReplaceTool(QStringLiteral("ffmpeg"), QStringLiteral("exit 0"));
    program.Start();
    ASSERT_TRUE(joiner.Await());
    int added = 0;
    for (const char* name : {"a.mp4", "b.mp4"}) {
      const QString clip = program.PathOf(QLatin1String(name));
      WriteFile(clip, "no video");
      ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kAddSection, clip));
      ASSERT_TRUE(joiner.AwaitSections(++added));
    }
  }

  JoinerWindow joiner{screen};
};

TEST_P(JoinerInColours, HasListsToReadAndWhatIsChosenInThem) {
  joiner.PointAtSection(0);
  ASSERT_TRUE(WaitFor([&] { return joiner.LineChosen(0) && joiner.RowChosen(0); }));
  EXPECT_TRUE(joiner.AwaitLine(1, program.PathOf(QStringLiteral("b.mp4"))));
  EXPECT_TRUE(joiner.AwaitRow(1, "2", "b.mp4", "600"));
  for (const QRect& chosen : {joiner.Line(0), joiner.Row(0)}) {
    const QImage picture = screen.Picture(chosen.adjusted(0, 1, -60, -1));
    EXPECT_NE(Ground(picture), JoinerWindow::kGround);
    EXPECT_GE(Contrast(picture), kLegible);
  }
}

TEST_P(JoinerInColours, HasTipsToRead) {
  // The button that was clicked last is lit until then.
  const QImage lit = screen.Still();
  screen.MovePointer(joiner.BareChart());
  ASSERT_FALSE(ChangedSince(lit).isEmpty());
  const QImage before = screen.Still();
  screen.MovePointer(joiner.Ruler().center());
  screen.MovePointer(joiner.Ruler().center() + QPoint(1, 0));
  const QImage tip = screen.Picture(ChangedSince(before));
  EXPECT_EQ(Ground(tip), GetParam().view);
  EXPECT_GE(Contrast(tip), kLegible);
}

TEST_P(JoinerInColours, HasBoxesToRead) {
  ASSERT_TRUE(
      joiner.ChooseFile(JoinerButton::kJoinSections, program.PathOf(QStringLiteral("all.mp4"))));
  const WindowId box = screen.Await(QStringLiteral("Kelvane"));
  ASSERT_TRUE(box != 0 && WaitFor([&] { return screen.Active(box); }));
  EXPECT_TRUE(WaitFor(
      [&] {
        const QRect place = screen.Place(box);
        // Right of the icon, and above the buttons.
        const QImage text = screen.Picture(place.adjusted(60, 2, -4, -place.height() / 2));
        return Ground(text) == GetParam().window && Contrast(text) >= kLegible;
      },
      5s));
}

INSTANTIATE_TEST_SUITE_P(Themes, MainInColours, ::testing::ValuesIn(kThemes), NameOf);
INSTANTIATE_TEST_SUITE_P(Themes, JoinerInColours, ::testing::ValuesIn(kThemes), NameOf);

}  // namespace
}  // namespace kelvane::desktop
