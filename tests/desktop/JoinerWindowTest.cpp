// The joiner window with a real pointer: sections, lists, scroll bars, joins, and what only the
// screen or the tools can show.
#include "desktop/JoinerTest.h"
#include "desktop/driver/Windows.h"

namespace kelvane::desktop {
namespace {

using Runs = QList<QStringList>;

class Joiner : public JoinerTest {
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
  QImage PictureOf(const char* control) const { return screen.Picture(joiner.Place(control)); }
  QString Output() const { return program.PathOf("all.mp4"); }
};

TEST_F(Joiner, OpensAloneAndShowsEachSectionInChartTableAndList) {
  EXPECT_EQ(screen.Windows(), QList<WindowId>{joiner.Id()});
  EXPECT_EQ(joiner.Area().size(), QSize(1519, 845));
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

TEST_F(Joiner, TheStripUnderThePointerIsFramedToldAndChosen) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  screen.MovePointer(OnStrip(1));
  EXPECT_TRUE(joiner.AwaitDetails("   Video Index: 02 Title: b.mp4   "));
  EXPECT_TRUE(AwaitChosen(1, 0));
  const QRect frame(joiner.OnChart({20, 20}), QSize(63, 19));
  EXPECT_TRUE(WaitFor([&] { return Framed(frame, kText); }));

  screen.MovePointer(OnStrip(2));
  EXPECT_TRUE(joiner.AwaitDetails("   Video Index: 03 Title: c.mp4   "));
  EXPECT_TRUE(AwaitChosen(2, 1));
  EXPECT_TRUE(WaitFor([&] { return !Framed(frame, kText); }));

  screen.MovePointer(joiner.BareChart());
  EXPECT_TRUE(joiner.AwaitDetails({}));
  EXPECT_TRUE(WaitFor([&] { return !joiner.LineChosen(2); }));
  EXPECT_TRUE(joiner.RowChosen(2)) << "the table's row stays";
  const QRect last(joiner.OnChart({81, 40}), QSize(32, 19));
  EXPECT_TRUE(WaitFor([&] { return !Framed(last, kText); }));
}

TEST_F(Joiner, TheTipOfAStripIsItsDetails) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  EXPECT_TRUE(AwaitTip(OnStrip(1), "   Video Index: 02 Title: b.mp4   "));
}

TEST_F(Joiner, RemovesASectionByItsMenu) {
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

TEST_F(Joiner, HasHeadersThatNeitherLightUpNorSink) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  screen.MovePointer(joiner.BareChart());
  const QRect headers = joiner.Headers();
  const QImage table = PictureOf("ListView1");
  for (const int column : {0, 1, 2}) {
    const QPoint middle(headers.left() + 96 * column + 40, headers.center().y());
    screen.MovePointer(middle);
    EXPECT_TRUE(HoldsFor([&] { return PictureOf("ListView1") == table; }, 200ms)) << column;
    screen.Press(kLeftButton);
    EXPECT_TRUE(HoldsFor([&] { return PictureOf("ListView1") == table; }, 200ms)) << column;
    screen.Release(kLeftButton);
    EXPECT_TRUE(HoldsFor([&] { return PictureOf("ListView1") == table; }, 200ms)) << column;
  }
}

TEST_F(Joiner, ScrollsChartAndRulerTogether) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  screen.MovePointer(joiner.BareChart());
  const QRect bar = joiner.Place("HScroll1");
  const QImage ruler = PictureOf("Picture5");
  const auto movedBy = [&](int pixels) {
    const QImage now = PictureOf("Picture5");
    return now.copy(0, 0, now.width() - pixels, now.height()) ==
           ruler.copy(pixels, 0, ruler.width() - pixels, ruler.height());
  };
  const QPoint rightArrow(bar.right() - 8, bar.center().y());
  screen.Click(rightArrow);
  EXPECT_TRUE(WaitFor([&] { return joiner.Strip(1) == QRect(19, 21, 61, 17); }, 5s));
  EXPECT_TRUE(movedBy(2));
  screen.Click({bar.right() - 100, bar.center().y()});
  EXPECT_TRUE(WaitFor([&] { return joiner.Strip(2).right() == 111 - 102; }, 5s));
  EXPECT_TRUE(movedBy(102));
}

TEST_F(Joiner, SavesItsListOverAnOlderOne) {
  const QString list = program.PathOf("list.txt");
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  ASSERT_TRUE(joiner.RemoveSection(1));
  const WindowId dialog = joiner.OpenDialog(JoinerButton::kSaveList);
  ASSERT_NE(dialog, 0U);
  EXPECT_EQ(screen.Title(dialog), "Save Video File List");
  screen.Close(dialog);
  ASSERT_TRUE(WaitFor([&] { return !screen.Exists(dialog); }));
  EXPECT_FALSE(QFile::exists(list));
  ASSERT_NO_FATAL_FAILURE(WriteFile(list, "an older and very much longer list\n\n\n\n"));
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kSaveList, list));
  const QString expected = added[0] + "\r\n Deleted Section \r\n" + added[2] + "\r\n";
  EXPECT_TRUE(WaitFor([&] { return ContentOf(list) == expected.toUtf8(); }, 5s))
      << ContentOf(list).toStdString();
}

TEST_F(Joiner, JoinsClipsByTheRealTools) {
  for (const auto& [name, seconds] : {std::pair("a b.mp4", 2), {"b.mp4", 3}, {"ü動.mp4", 4}}) {
    const QString clip = program.PathOf(QString::fromUtf8(name));
    ASSERT_TRUE(MakePlainVideo(clip, "teal", seconds));
    ASSERT_NO_FATAL_FAILURE(Add(clip));
  }
  EXPECT_TRUE(joiner.AwaitTotals(3, "00,009", "00:00:09"));
  EXPECT_TRUE(joiner.AwaitRow(1, "2", "b.mp4", "0"));
  ASSERT_NO_FATAL_FAILURE(WriteFile(Output(), "somebody's work, which gives way"));
  const WindowId dialog = joiner.OpenDialog(JoinerButton::kJoinSections);
  ASSERT_NE(dialog, 0U);
  EXPECT_EQ(screen.Title(dialog), "Save Video As");
  EXPECT_TRUE(joiner.AwaitProcess("Process: Creating List Index"));
  ASSERT_TRUE(TypeFileName(screen, dialog, Output()));
  ASSERT_TRUE(ConfirmJoin(screen, 60s)) << "the box at the end doesn't come";
  EXPECT_TRUE(joiner.AwaitProcess("Process: Video Created."));
  EXPECT_NEAR(VideoSeconds(Output()), 9, 1.0 / 25);
  EXPECT_EQ(Pictures(Output()), 9 * 25);
  CloseJoinerAndExpectEnd();
}

TEST_F(Joiner, ReplacesAnExistingFileEvenByAJoinThatFailsOnItsWay) {
  for (const char* name : {"a.mp4", "b.mp4"}) {
    ASSERT_TRUE(MakePlainVideo(program.PathOf(name), "teal", 2));
    ASSERT_NO_FATAL_FAILURE(Add(program.PathOf(name)));
  }
  const QByteArray first = ContentOf(added[0]);
  ASSERT_TRUE(QFile::remove(added[1]));
  ASSERT_NO_FATAL_FAILURE(WriteFile(Output(), "somebody's work"));
  ASSERT_NO_FATAL_FAILURE(JoinTo(Output()));
  EXPECT_EQ(Pictures(Output()), 2 * 25) << "the tool came that far";
  EXPECT_EQ(ContentOf(added[0]), first);
}

// The box at the end comes before the window looks at the wish to close it, and stands in its way.
TEST_F(Joiner, LivesOnWhereItIsClosedWhileTheToolRuns) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  program.ReplaceTool("ffmpeg", program.Gate("join"));
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kJoinSections, Output()));
  ASSERT_TRUE(WaitFor([&] { return !program.RunsOf("ffmpeg").isEmpty(); }));
  screen.Close(joiner.Id());
  ASSERT_TRUE(program.Open("join"));
  ASSERT_TRUE(ConfirmJoin(screen));
  EXPECT_TRUE(joiner.AwaitProcess("Process: Video Created."));
  EXPECT_TRUE(HoldsFor([&] { return program.Running(); }, 300ms));
  CloseJoinerAndExpectEnd();
}

TEST_F(Joiner, JoinsWhereItIsClosedDuringTheWaitBeforehand) {
  program.ReplaceTool("ffmpeg", "exit 0");
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kJoinSections, Output()));
  screen.Close(joiner.Id());
  ASSERT_TRUE(ConfirmJoin(screen));
  EXPECT_EQ(program.RunsOf("ffmpeg"), Runs{CopyRun({Output()})});
  EXPECT_EQ(program.AwaitExit(), 0);
}

TEST_F(Joiner, WrapsEachSectionInTheOtherModeAndTellsWhichItIsAt) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  program.ReplaceTool("ffmpeg", "case \"$*\" in\n*intermediate01*) " + program.Gate("first") +
                                    ";;\n*) " + program.Gate("last") + ";;\nesac");
  ASSERT_TRUE(joiner.RemoveSection(1));
  joiner.Choose(JoinerMode::kTransportStreams);
  screen.Click(joiner.ButtonCentre(JoinerButton::kJoinSections));
  EXPECT_TRUE(joiner.AwaitProcess("Process: Transcoding Video 00"));
  ASSERT_TRUE(program.Open("first"));
  EXPECT_TRUE(joiner.AwaitProcess("Process: Transcoding Video 02"));
  ASSERT_TRUE(program.Open("last"));
  ASSERT_TRUE(ConfirmJoin(screen));
  EXPECT_TRUE(joiner.AwaitProcess("Process: Video Created."));
  EXPECT_EQ(program.RunsOf("ffmpeg"),
            (Runs{WrapRun(added[0], "intermediate01.ts"), WrapRun(added[2], "intermediate03.ts")}));
}

class JoinerLayout : public JoinerTest {
 protected:
  void ResizeTo(QSize size) {
    screen.Resize(joiner.Id(), size);
    ASSERT_TRUE(WaitFor([&] { return screen.Place(joiner.Id()).size() == size; }));
  }
  // The first part of the window that isn't where it belongs; empty if none.
  QString Flaw() const {
    const QImage picture = screen.Picture();
    for (const char* frame : {"Shape2", "Shape7"}) {
      const QRect place = joiner.Place(frame);
      if (!AllOf(picture, QRect(place.bottomLeft(), QSize(place.width(), 1)), kLit)) return frame;
      if (picture.pixel(place.topLeft()) != kLit) return frame;
    }
    for (const char* list : {"ListView1", "List1"}) {
      const QRect place = joiner.Place(list);
      const auto drawn = [&](QPoint corner) {
        return picture.pixel(corner) != JoinerWindow::kGround;
      };
      if (!drawn(place.topLeft()) || !drawn(place.bottomRight())) return list;
    }
    for (const char* bar : {"HScroll1", "VScroll1"}) {
      if (CountOf(picture, joiner.Place(bar).adjusted(1, 1, -1, -1), JoinerWindow::kGround) > 0) {
        return bar;
      }
    }
    // The ruler's line goes to the viewport's edge.
    const QRect ruler = joiner.Ruler();
    if (!AllOf(picture, QRect(ruler.left(), ruler.top() + 20, ruler.width(), 1), kText)) {
      return "Picture5";
    }
    if (!joiner.ShowsProcess("Process: Compiling Video List")) return "Label3(6)";
    return {};
  }
};

TEST_F(JoinerLayout, HoldsAtEverySize) {
  for (const QSize size :
       {QSize(1519, 865), QSize(1700, 1000), QSize(1400, 600), QSize(1519, 700)}) {
    ASSERT_NO_FATAL_FAILURE(ResizeTo(size));
    EXPECT_TRUE(WaitFor([&] { return Flaw().isEmpty(); }, 5s))
        << size.width() << " by " << size.height() << ": " << Flaw().toStdString();
  }
}

}  // namespace
}  // namespace kelvane::desktop
