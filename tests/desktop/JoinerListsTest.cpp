// The joiner window's lists, scroll bars, saved list and layout with a real pointer.
#include <QDir>

#include "desktop/JoinerTest.h"

namespace kelvane::desktop {
namespace {

class JoinerLists : public JoinerTest {
 protected:
  QImage PictureOf(const char* control) const { return screen.Picture(joiner.Place(control)); }
  QString SavedList() const { return program.PathOf("list.txt"); }
};

TEST_F(JoinerLists, TheHeadersShowNoHoverAndNoPressAndCannotBeClicked) {
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

// 900 pixels, of which the list shows 311.
TEST_F(JoinerLists, TheListScrollsSidewaysOverItsExtentWhateverItHolds) {
  PretendProbing();
  ASSERT_NO_FATAL_FAILURE(Add(Pretended("a.mp4", "00:03:20.00")));
  screen.MovePointer(joiner.BareChart());
  const QRect list = joiner.Place("List1");
  const QPoint bar(list.center().x(), list.bottom() - 8);
  ASSERT_TRUE(joiner.AwaitLine(0, added[0]));
  screen.Click({list.right() - 30, bar.y()});
  screen.Click({list.right() - 30, bar.y()});
  EXPECT_TRUE(WaitFor(
      [&] {
        const QImage line = screen.Picture(joiner.Line(0));
        return AllOf(line, line.rect(), JoinerWindow::kGround);
      },
      5s))
      << "nothing stands at its end";
  for (int page = 0; page < 3; ++page) screen.Click({list.left() + 30, bar.y()});
  EXPECT_TRUE(joiner.AwaitLine(0, added[0]));
}

TEST_F(JoinerLists, TheLowerBarMovesChartAndRulerTogether) {
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

TEST_F(JoinerLists, TheLowerBarsEndLeavesNothingOfTheChartInSight) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  const QRect bar = joiner.Place("HScroll1");
  // The range becomes the chart's at the first move.
  screen.Click({bar.right() - 8, bar.center().y()});
  ASSERT_TRUE(WaitFor([&] { return joiner.Strip(1).left() == 19; }, 5s));
  screen.Drag({bar.left() + 25, bar.center().y()}, {bar.width(), 0});
  EXPECT_TRUE(WaitFor(
      [&] {
        const QImage chart = screen.Picture(joiner.Chart());
        return AllOf(chart, chart.rect(), 0xff808080);
      },
      5s));
  const QImage ruler = PictureOf("Picture5");
  EXPECT_TRUE(AllOf(ruler, ruler.rect(), 0xff808080));
}

TEST_F(JoinerLists, TheUprightBarMovesNothing) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  screen.MovePointer(joiner.BareChart());
  ASSERT_TRUE(joiner.AwaitDetails({}));
  const QImage chart = screen.Still(joiner.Chart());
  const QImage ruler = PictureOf("Picture5");
  const QRect bar = joiner.Place("VScroll1");
  const QImage before = PictureOf("VScroll1");
  screen.Drag({bar.center().x(), bar.top() + 25}, {0, 200});
  EXPECT_TRUE(WaitFor([&] { return PictureOf("VScroll1") != before; }, 5s)) << "the bar moves";
  EXPECT_TRUE(HoldsFor(
      [&] { return screen.Picture(joiner.Chart()) == chart && PictureOf("Picture5") == ruler; },
      300ms));
}

TEST_F(JoinerLists, ASavedListHasALineForEachSectionAndTheTombstoneWithItsBlanks) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  ASSERT_TRUE(joiner.RemoveSection(1));
  const WindowId dialog = joiner.OpenDialog(JoinerButton::kSaveList);
  ASSERT_NE(dialog, 0U);
  EXPECT_EQ(screen.Title(dialog), "Save Video File List");
  screen.Close(dialog);
  ASSERT_TRUE(WaitFor([&] { return !screen.Exists(dialog); }));
  EXPECT_FALSE(QFile::exists(SavedList()));
  ASSERT_NO_FATAL_FAILURE(WriteFile(SavedList(), "an older and very much longer list\n\n\n\n"));
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kSaveList, SavedList()));
  const QString expected = added[0] + "\r\n Deleted Section \r\n" + added[2] + "\r\n";
  EXPECT_TRUE(WaitFor([&] { return ContentOf(SavedList()) == expected.toUtf8(); }, 5s))
      << ContentOf(SavedList()).toStdString();
}

TEST_F(JoinerLists, AnEmptyListIsSavedAsAnEmptyFile) {
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kSaveList, SavedList()));
  EXPECT_TRUE(WaitFor([&] { return QFile::exists(SavedList()); }, 5s));
  EXPECT_EQ(ContentOf(SavedList()), "");
}

TEST_F(JoinerLists, ACancelledSaveWritesNothing) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  const QStringList before = QDir(program.Folder()).entryList();
  ASSERT_TRUE(joiner.CancelFile(JoinerButton::kSaveList));
  EXPECT_TRUE(HoldsFor([&] { return QDir(program.Folder()).entryList() == before; }, 300ms));
}

TEST_F(JoinerLists, ANameThatCannotBeWrittenIsPassedOverInSilence) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  const QString unwritable = program.PathOf("unwritable.txt");
  ASSERT_TRUE(QFile::link("/nowhere/list.txt", unwritable));
  const QHash<QString, QByteArray> before = Files();
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kSaveList, unwritable));
  EXPECT_TRUE(HoldsFor([&] { return screen.Windows() == QList{joiner.Id()}; }, 300ms));
  EXPECT_EQ(Files(), before);
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kSaveList, SavedList()));
  EXPECT_TRUE(WaitFor([&] { return ContentOf(SavedList()).count("\r\n") == 3; }, 5s));
}

class JoinerLayout : public JoinerLists {
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

// At once from its first size: the chart would have to be narrower than nothing, and stays as wide
// as it was.
TEST_F(JoinerLayout, ASizeThatWouldBeNegativeIsRefused) {
  ASSERT_NO_FATAL_FAILURE(ResizeTo({340, 700}));
  const QPoint besideTheLists = joiner.Area().topLeft() + QPoint(330, 40 + 20);
  EXPECT_TRUE(WaitFor([&] { return screen.Pixel(besideTheLists) == kText; }, 5s))
      << "the ruler's line goes on behind the lists";
}

TEST_F(JoinerLayout, ComesBackWholeFromSizesThatAreTooSmall) {
  ASSERT_NO_FATAL_FAILURE(AddThreePretended());
  screen.MovePointer(joiner.BareChart());
  ASSERT_TRUE(joiner.AwaitDetails({}));
  const QSize first = screen.Place(joiner.Id()).size();
  const QImage before = screen.Still(joiner.Area());
  for (const QSize size : {QSize(340, 700), QSize(200, 120), QSize(900, 100), QSize(60, 60)}) {
    ASSERT_NO_FATAL_FAILURE(ResizeTo(size));
  }
  screen.MovePointer(QPoint(1900, 1190));
  ASSERT_NO_FATAL_FAILURE(ResizeTo(first));
  EXPECT_TRUE(WaitFor([&] { return screen.Picture(joiner.Area()) == before; }, 5s));
  CloseJoinerAndExpectEnd();
}

}  // namespace
}  // namespace kelvane::desktop
