// Sections of the joiner window with a real pointer: strips, hover, tips and the context menu.
#include "desktop/JoinerTest.h"
#include "desktop/driver/Windows.h"

namespace kelvane::desktop {
namespace {

constexpr QRgb kHoverFrame = kText;

class JoinerSections : public JoinerTest {
 protected:
  // The screen's part in which a tip for the pointer at `place` comes up.
  static QRect TipAt(QPoint place) { return {place + QPoint(0, 6), QSize(460, 60)}; }
  bool AwaitTip(QPoint place, const QString& text) {
    screen.MovePointer(place - QPoint(1, 0));
    screen.MovePointer(place);
    return WaitFor([&] { return ShowsTip(screen.Picture(TipAt(place)), text); }, 5s);
  }
  QPoint OnStrip(int section) const { return joiner.OnChart(joiner.Strip(section).center()); }
  bool Framed(const QRect& place, QRgb color) const {
    const QImage picture = screen.Picture(place);
    return AllOf(picture, QRect(0, 0, place.width(), 1), color) &&
           AllOf(picture, QRect(0, 0, 1, place.height()), color) &&
           AllOf(picture, QRect(0, place.height() - 1, place.width(), 1), color) &&
           AllOf(picture, QRect(place.width() - 1, 0, 1, place.height()), color);
  }
  // Waits until the row and the line of `section` are chosen, and those of `other` aren't.
  bool AwaitChosen(int section, int other) const {
    return WaitFor([&] {
      return joiner.RowChosen(section) && joiner.LineChosen(section) && !joiner.RowChosen(other) &&
             !joiner.LineChosen(other);
    });
  }
};

TEST_F(JoinerSections, OpensAsTheOnlyWindowWithoutAnySection) {
  EXPECT_EQ(screen.Windows(), QList<WindowId>{joiner.Id()});
  EXPECT_EQ(joiner.Area().size(), QSize(1519, 845));
  EXPECT_TRUE(joiner.AwaitTotals(0, "00,000", "00:00:00"));
  EXPECT_TRUE(ShowsCaption(screen.Picture(joiner.Place("Label3(8)")),
                           "Video Details:", JoinerWindow::kGround, Justify::kLeft));
  EXPECT_TRUE(AllOf(screen.Picture(joiner.Chart()), QRect(QPoint(), joiner.Chart().size()),
                    JoinerWindow::kGround));
  CloseJoinerAndExpectEnd();
}

TEST_F(JoinerSections, ARealClipBecomesAStripARowAndALine) {
  const QString clip = program.PathOf("clip.mp4");
  ASSERT_TRUE(MakePlainVideo(clip, "red", 83));
  ASSERT_NO_FATAL_FAILURE(Add(clip));
  EXPECT_TRUE(joiner.AwaitTotals(1, "00,083", "00:01:23"));
  EXPECT_EQ(joiner.Strip(0), QRect(1, 1, 8, 17));
  EXPECT_TRUE(joiner.AwaitRow(0, "1", "clip.mp4", "80"));
  EXPECT_TRUE(joiner.AwaitLine(0, clip));
}

TEST_F(JoinerSections, StripsAreAStaircaseWithARuleUnderEach) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  EXPECT_EQ(joiner.Strip(0), QRect(1, 1, 20, 17));
  EXPECT_EQ(joiner.Strip(1), QRect(21, 21, 61, 17));
  EXPECT_EQ(joiner.Strip(2), QRect(82, 41, 30, 17));
  const QImage chart = screen.Still(joiner.Chart());
  for (const int y : {19, 39, 59}) {
    EXPECT_TRUE(AllOf(chart, QRect(0, y, chart.width(), 1), JoinerWindow::kRule)) << y;
  }
  EXPECT_TRUE(
      AllOf(chart, QRect(0, 60, chart.width(), chart.height() - 60), JoinerWindow::kGround));
  for (const auto& [row, title, seconds] :
       {std::tuple(0, "a.mp4", "200"), {1, "b.mp4", "610"}, {2, "c.mp4", "300"}}) {
    EXPECT_TRUE(joiner.AwaitRow(row, QString::number(row + 1), title, seconds)) << row;
    EXPECT_TRUE(joiner.AwaitLine(row, added[row])) << row;
  }
}

TEST_F(JoinerSections, EveryMouseButtonAddsASection) {
  PretendProbing();
  const QString file = Pretended("a.mp4", "00:03:20.00");
  int count = 0;
  for (const PointerButton button : {kRightButton, kMiddleButton}) {
    const WindowId dialog = joiner.OpenDialog(JoinerButton::kAddSection, button);
    ASSERT_NE(dialog, 0U);
    EXPECT_EQ(screen.Title(dialog), "Add Video");
    ASSERT_TRUE(TypeFileName(screen, dialog, file));
    EXPECT_TRUE(joiner.AwaitSections(++count));
  }
}

TEST_F(JoinerSections, ACancelledDialogAddsNothing) {
  PretendProbing();
  ASSERT_TRUE(joiner.CancelFile(JoinerButton::kAddSection));
  EXPECT_TRUE(HoldsFor([&] { return joiner.AwaitSections(0); }, 300ms));
  EXPECT_TRUE(program.RunsOf("ffprobe").isEmpty());
}

TEST_F(JoinerSections, AMissingProbeToolLeavesAPathWithoutStripOrRow) {
  program.RemoveTool("ffprobe");
  const QString file = Pretended("a.mp4", "00:03:20.00");
  ASSERT_NO_FATAL_FAILURE(Add(file));
  EXPECT_TRUE(joiner.AwaitTotals(1, "00,000", "00:00:00"));
  ExpectPathWithoutStripOrRow(0);
  CloseJoinerAndExpectEnd();
}

TEST_F(JoinerSections, TheProbeIsToldAShortPathForANameWithABlank) {
  PretendProbing();
  const QString file = Pretended(QString::fromUtf8("it's my ü.mp4"), "00:03:20.00");
  ASSERT_NO_FATAL_FAILURE(Add(file));
  EXPECT_TRUE(WaitFor([&] { return joiner.Strip(0).width() == 20; }, 5s));
  ASSERT_EQ(program.RunsOf("ffprobe").size(), 1);
  const QStringList arguments = program.RunsOf("ffprobe").first();
  EXPECT_EQ(arguments.mid(0, 3), (QStringList{"-hide_banner", "-stats", "-i"}));
  EXPECT_EQ(arguments.size(), 4);
  EXPECT_FALSE(arguments.last().contains(' '));
  EXPECT_TRUE(joiner.AwaitRow(0, "1", QString::fromUtf8("it's my ü.mp4"), "200"));
  EXPECT_TRUE(joiner.AwaitLine(0, file));
}

TEST_F(JoinerSections, TheStripUnderThePointerIsFramedToldAndChosen) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  screen.MovePointer(OnStrip(1));
  EXPECT_TRUE(joiner.AwaitDetails("   Video Index: 02 Title: b.mp4   "));
  EXPECT_TRUE(AwaitChosen(1, 0));
  const QRect frame(joiner.OnChart({20, 20}), QSize(63, 19));
  EXPECT_TRUE(WaitFor([&] { return Framed(frame, kHoverFrame); }));

  screen.MovePointer(OnStrip(2));
  EXPECT_TRUE(joiner.AwaitDetails("   Video Index: 03 Title: c.mp4   "));
  EXPECT_TRUE(AwaitChosen(2, 1));
  EXPECT_TRUE(WaitFor([&] { return !Framed(frame, kHoverFrame); }));

  screen.MovePointer(joiner.BareChart());
  EXPECT_TRUE(joiner.AwaitDetails({}));
  EXPECT_TRUE(WaitFor([&] { return !joiner.LineChosen(2); }));
  EXPECT_TRUE(joiner.RowChosen(2)) << "the table's row stays";
  const QRect last(joiner.OnChart({81, 40}), QSize(32, 19));
  EXPECT_TRUE(WaitFor([&] { return !Framed(last, kHoverFrame); }));
}

TEST_F(JoinerSections, TheCommandUnderThePointerIsFramed) {
  const auto frame = [&](int command) {
    return joiner.Place(QStringLiteral("Label1(%1)").arg(command)).adjusted(-2, -2, 2, 2);
  };
  for (int command = 0; command < 3; ++command) {
    EXPECT_FALSE(Framed(frame(command), kText));
    screen.MovePointer(frame(command).center());
    EXPECT_TRUE(WaitFor([&] { return Framed(frame(command), kText); }, 5s)) << command;
  }
  screen.MovePointer(joiner.Place("Picture3").topLeft() + QPoint(200, 10));
  EXPECT_TRUE(WaitFor([&] { return !Framed(frame(2), kText); }, 5s));
}

TEST_F(JoinerSections, TheTipOfAStripIsItsDetails) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  EXPECT_TRUE(AwaitTip(OnStrip(1), "   Video Index: 02 Title: b.mp4   "));
}

TEST_F(JoinerSections, TheTipOfTheRulerIsTheTimeUnderThePointer) {
  EXPECT_TRUE(AwaitTip(joiner.Ruler().topLeft() + QPoint(754, 12), "02:05:40"));
}

TEST_F(JoinerSections, TheTipOfTheFirstModeTellsItsUse) {
  EXPECT_TRUE(AwaitTip(joiner.ModeCentre(JoinerMode::kCopy),
                       " Used when all video sections have the same properties / codecs "));
}

TEST_F(JoinerSections, TheTipOfTheSecondModeTellsItsUse) {
  EXPECT_TRUE(AwaitTip(joiner.ModeCentre(JoinerMode::kTransportStreams),
                       " Used when video sections have different properties / codecs "));
}

TEST_F(JoinerSections, TheMenuMakesATombstoneOfTheStrip) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  ASSERT_TRUE(joiner.RemoveSection(1));
  screen.MovePointer(joiner.BareChart());
  ASSERT_TRUE(joiner.AwaitDetails({}));
  EXPECT_TRUE(AllOf(screen.Still(joiner.Chart()), QRect(21, 21, 61, 17), JoinerWindow::kRemoved))
      << "without its number";
  EXPECT_TRUE(joiner.AwaitLine(1, " Deleted Section "));
  EXPECT_EQ(joiner.Strip(0), QRect(1, 1, 20, 17));
  EXPECT_EQ(joiner.Strip(2), QRect(82, 41, 30, 17)) << "the later ones stay where they are";
  EXPECT_TRUE(joiner.AwaitTotals(3, "01,113", "00:18:33"));
  EXPECT_TRUE(AwaitTip(joiner.OnChart({50, 30}), " Deleted Section "));
  EXPECT_TRUE(WaitFor([&] { return joiner.LineChosen(1); }));
}

TEST_F(JoinerSections, TheTablesMenuRemovesTheStripLastRightClicked) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  ASSERT_FALSE(joiner.OpenMenuAt(OnStrip(2)).isNull());
  screen.Strike(kEscape);
  const QPoint entry = joiner.OpenMenuAt(joiner.Row(0).center());
  ASSERT_FALSE(entry.isNull());
  screen.Click(entry);
  screen.MovePointer(joiner.BareChart());
  EXPECT_TRUE(joiner.AwaitLine(2, " Deleted Section "));
  EXPECT_TRUE(joiner.AwaitLine(0, added[0]));
  EXPECT_EQ(joiner.Strip(0).width(), 20);
}

TEST_F(JoinerSections, TheMenuBarsEntryRemovesNothingBeforeARightClick) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  const QPoint title = joiner.Menus().topLeft() + QPoint(30, joiner.Menus().height() / 2);
  const QPoint entry(title.x(), joiner.Menus().bottom() + 12);
  const auto choose = [&] {
    const QRgb before = screen.Still({entry, QSize(1, 1)}).pixel(0, 0);
    screen.Click(title);
    ASSERT_TRUE(WaitFor([&] { return screen.Pixel(entry) != before; }, 5s));
    screen.Click(entry);
  };
  ASSERT_NO_FATAL_FAILURE(choose());
  EXPECT_TRUE(HoldsFor([&] { return joiner.AwaitLine(0, added[0]); }, 300ms));
  ASSERT_FALSE(joiner.OpenMenuAt(OnStrip(0)).isNull());
  screen.Strike(kEscape);
  ASSERT_NO_FATAL_FAILURE(choose());
  screen.MovePointer(joiner.BareChart());
  EXPECT_TRUE(joiner.AwaitLine(0, " Deleted Section "));
}

}  // namespace
}  // namespace kelvane::desktop
