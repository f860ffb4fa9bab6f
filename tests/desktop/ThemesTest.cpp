// Desktops with dark and with light colours: the windows keep their own. Menus, dialogs, tips and
// selections have the desktop's colours, and their text is readable.
#include <QColor>
#include <QDir>
#include <QHash>
#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "desktop/JoinerTest.h"

namespace kelvane::desktop {
namespace {

struct Theme {
  const char* name;
  QRgb window;
  QRgb windowText;
  QRgb view;
  QRgb viewText;
  QRgb selection;
  QRgb selectionText;
};

constexpr std::array kThemes = {
    Theme{"Dark", 0xff31363b, 0xffeff0f1, 0xff1b1e20, 0xfffcfcfc, 0xff1d5f86, 0xffffffff},
    Theme{"Light", 0xffeff0f1, 0xff232629, 0xfffcfcfc, 0xff232629, 0xff1d5f86, 0xffffffff},
    // If the program replaced one colour of a pair alone, text would be white on white here.
    Theme{"Inverse", 0xffffffff, 0xff000000, 0xff000000, 0xffffffff, 0xffffff00, 0xff000000}};

double Luminance(QRgb color) {
  const auto linear = [](int part) {
    constexpr double kGamma = 2.2;
    return std::pow(part / 255.0, kGamma);
  };
  return 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) +
         0.0722 * linear(qBlue(color));
}

// The most frequent colour.
QRgb Background(const QImage& picture) {
  QHash<QRgb, int> counts;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) ++counts[picture.pixel(x, y)];
  }
  return std::max_element(counts.keyValueBegin(), counts.keyValueEnd(),
                          [](auto one, auto other) { return one.second < other.second; })
      ->first;
}

// The greatest contrast between the background and any other colour, from 1 to 21.
double Contrast(const QImage& picture) {
  constexpr double kGlare = 0.05;
  const double ground = Luminance(Background(picture));
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

// Sets the desktop's colours by a configuration file in the user's home folder.
class Themed : public ::testing::WithParamInterface<Theme> {
 protected:
  static void SetTheme(Program& program) {
    const auto entry = [](const char* key, QRgb color) {
      return QString("%1=%2,%3,%4\n")
          .arg(key)
          .arg(qRed(color))
          .arg(qGreen(color))
          .arg(qBlue(color));
    };
    const auto colours = [&](const char* of, QRgb ground, QRgb text) {
      return QString("[Colors:%1]\n").arg(of) + entry("BackgroundNormal", ground) +
             entry("BackgroundAlternate", ground) + entry("ForegroundNormal", text) +
             entry("ForegroundLink", text) + entry("ForegroundVisited", text);
    };
    const Theme& theme = GetParam();
    const QString settings = colours("Window", theme.window, theme.windowText) +
                             colours("Button", theme.window, theme.windowText) +
                             colours("Tooltip", theme.view, theme.viewText) +
                             colours("View", theme.view, theme.viewText) +
                             colours("Selection", theme.selection, theme.selectionText);
    const QDir home(program.PathOf("home"));
    ASSERT_TRUE(home.mkpath(".config"));
    QFile file(home.filePath(".config/kdeglobals"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_GT(file.write(settings.toUtf8()), 0);
    program.SetVariable("XDG_CURRENT_DESKTOP", "KDE");
    program.SetVariable("KDE_FULL_SESSION", "true");
    program.SetVariable("KDE_SESSION_VERSION", "5");
  }
};

std::string NameOf(const ::testing::TestParamInfo<Theme>& tested) { return tested.param.name; }

// Waits until the screen has changed and no longer changes. Returns the part that is different.
QRect ChangedSince(const QImage& before) {
  QRect changed;
  WaitFor([&] {
    changed = Difference(before, TheScreen().Picture());
    return !changed.isEmpty() &&
           HoldsFor([&] { return Difference(before, TheScreen().Picture()) == changed; }, 300ms);
  });
  return changed;
}

class MainWindowInTheme : public DesktopTest, public Themed {
 protected:
  void SetUp() override {
    ASSERT_NO_FATAL_FAILURE(SetTheme(program));
    ASSERT_NO_FATAL_FAILURE(OpenWindow());
    ASSERT_TRUE(window.AwaitTimesWithoutVideo());
  }
};

TEST_P(MainWindowInTheme, KeepsItsOwnColours) {
  EXPECT_TRUE(WaitFor([&] { return window.IsLaidOut(); }));
}

TEST_P(MainWindowInTheme, HasReadableMenus) {
  const QImage closed = screen.Still();
  const QRect menus = window.Menus();
  EXPECT_EQ(Background(closed.copy(menus)), GetParam().window);
  EXPECT_GE(Contrast(closed.copy(menus)), kLegible);
  constexpr int kFirstMenu = 20;
  screen.Click(QPoint(menus.left() + kFirstMenu, menus.center().y()));
  QRect opened = ChangedSince(closed);
  opened.setTop(menus.bottom() + 1);
  EXPECT_GE(Contrast(screen.Picture(opened)), kLegible);
  const QImage before = screen.Still();
  screen.MovePointer(opened.center());
  EXPECT_GE(Contrast(screen.Picture(ChangedSince(before))), kLegible)
      << "the item under the pointer is unreadable";
}

TEST_P(MainWindowInTheme, HasAReadableFileDialog) {
  window.Click(kLoadVideo);
  const WindowId dialog = screen.AwaitNew({window.Id()});
  ASSERT_TRUE(dialog != 0 && WaitFor([&] { return screen.Active(dialog); }));
  // Long enough to reach `typed` in every font.
  screen.Type("a name of some length");
  const QRect place = screen.Place(dialog);
  const QRect captions(place.left() + 8, place.bottom() - 70, 100, 60);
  const QRect typed(place.left() + 130, place.bottom() - 70, 120, 30);
  EXPECT_TRUE(WaitFor([&] { return Contrast(screen.Picture(typed)) >= kLegible; }, 5s));
  EXPECT_EQ(Background(screen.Picture(typed)), GetParam().view);
  EXPECT_EQ(Background(screen.Picture(captions)), GetParam().window);
  EXPECT_GE(Contrast(screen.Picture(captions)), kLegible);
}

TEST_P(MainWindowInTheme, HasAReadableRemarkInItsSaveDialog) {
  window.Click(kCropVideo);
  const WindowId dialog = screen.Await("Save Cropped Video As");
  ASSERT_TRUE(dialog != 0 && WaitFor([&] { return screen.Active(dialog); }));
  const QRect place = screen.Place(dialog);
  // Between the box of the name and that of the file types.
  const QRect line(place.left() + 100, place.bottom() - 63, 400, 20);
  const QImage before = screen.Still().copy(line);
  EXPECT_EQ(Background(before), GetParam().window);
  EXPECT_LT(Contrast(before), kLegible) << "the line isn't empty";
  screen.Type("my holiday");
  EXPECT_TRUE(WaitFor([&] { return Contrast(screen.Picture(line)) >= kLegible; }, 5s));
  EXPECT_EQ(Background(screen.Picture(line)), GetParam().window);
}

class JoinerInTheme : public JoinerTest, public Themed {
 protected:
  void SetUp() override {
    ASSERT_NO_FATAL_FAILURE(SetTheme(program));
    program.ReplaceTool("ffprobe", "echo '  Duration: 00:10:00.00, start: 0.0' >&2");
    program.ReplaceTool("ffmpeg", "exit 0");
    ASSERT_NO_FATAL_FAILURE(JoinerTest::SetUp());
    for (const char* name : {"a.mp4", "b.mp4"}) {
      WriteFile(program.PathOf(name), "no video");
      ASSERT_NO_FATAL_FAILURE(Add(program.PathOf(name)));
    }
  }
};

TEST_P(JoinerInTheme, HasReadableListsAndSelections) {
  joiner.PointAtSection(0);
  ASSERT_TRUE(WaitFor([&] { return joiner.LineSelected(0) && joiner.RowSelected(0); }));
  EXPECT_TRUE(joiner.AwaitLine(1, program.PathOf("b.mp4")));
  EXPECT_TRUE(joiner.AwaitRow(1, "2", "b.mp4", "600"));
  for (const QRect& selected : {joiner.Line(0), joiner.Row(0)}) {
    const QImage picture = screen.Picture(selected.adjusted(0, 1, -60, -1));
    EXPECT_NE(Background(picture), JoinerWindow::kGround);
    EXPECT_GE(Contrast(picture), kLegible);
  }
}

TEST_P(JoinerInTheme, HasReadableTips) {
  // This clears the highlight of the button that was clicked last.
  const QImage lit = screen.Still();
  screen.MovePointer(joiner.EmptyChartPosition());
  ASSERT_FALSE(ChangedSince(lit).isEmpty());
  const QImage before = screen.Still();
  screen.MovePointer(joiner.Ruler().center());
  screen.MovePointer(joiner.Ruler().center() + QPoint(1, 0));
  const QImage tip = screen.Picture(ChangedSince(before));
  EXPECT_EQ(Background(tip), GetParam().view);
  EXPECT_GE(Contrast(tip), kLegible);
}

TEST_P(JoinerInTheme, HasReadableMessageBoxes) {
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kJoinSections, program.PathOf("all.mp4")));
  const WindowId box = screen.Await("Kelvane");
  ASSERT_TRUE(box != 0 && WaitFor([&] { return screen.Active(box); }));
  EXPECT_TRUE(WaitFor(
      [&] {
        const QRect place = screen.Place(box);
        // Without the icon and the buttons.
        const QImage text = screen.Picture(place.adjusted(60, 2, -4, -place.height() / 2));
        return Background(text) == GetParam().window && Contrast(text) >= kLegible;
      },
      5s));
}

INSTANTIATE_TEST_SUITE_P(Themes, MainWindowInTheme, ::testing::ValuesIn(kThemes), NameOf);
INSTANTIATE_TEST_SUITE_P(Themes, JoinerInTheme, ::testing::ValuesIn(kThemes), NameOf);

}  // namespace
}  // namespace kelvane::desktop
