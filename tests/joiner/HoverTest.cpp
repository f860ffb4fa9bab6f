// What the pointer brings up: frames, details, selection, tool tips and the menu.
#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTreeView>
#include <QtMath>

#include "joiner/JoinerWindowTest.h"

namespace kelvane::testing {
namespace {

class JoinerHover : public JoinerWindowTest {
 protected:
  // "hidden", or its place.
  std::string Frame(const char* shape) const {
    const auto& frame = Get<Shape>(shape);
    return frame.Visible() ? PlaceText(frame) : "hidden";
  }
  void MoveOverStrip(int index) const { MovePointerOver(Strip(index)); }
  void MoveOverChart() const { MovePointerOver(Get<PictureBox>("Picture1", Chart)); }
  int SelectedRow() const {
    for (int number = 1; number <= Table().ListItems.Count(); ++number) {
      if (Table().ListItems(number).Selected()) return number;
    }
    return 0;
  }
  void MoveOver(QWidget& widget, QPointF place) const {
    QMouseEvent event(QEvent::MouseMove, place, widget.mapToGlobal(place), Qt::NoButton,
                      Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
  }
};

TEST_F(JoinerHover, ACommandGetsAFrameTwoPixelsOutside) {
  const std::vector<const char*> frames = {"6,46 117x21", "302,46 165x21", "486,46 117x21"};
  for (const int command : {AddVideoSection, JoinAllSections, SaveVideoFileList}) {
    MovePointerOver(Get<Label>("Label1", command));
    EXPECT_EQ(Frame("Shape1"), frames[static_cast<std::size_t>(command)]);
  }
}

TEST_F(JoinerHover, TheCommandBarAndTheChartPutTheCommandsFrameOut) {
  for (const char* name : {"Picture3", "Picture1(2)"}) {
    MovePointerOver(Get<Label>("Label1", JoinAllSections));
    ASSERT_NE(Frame("Shape1"), "hidden");
    MovePointerOver(Get<PictureBox>(name));
    EXPECT_EQ(Frame("Shape1"), "hidden") << name;
  }
}

TEST_F(JoinerHover, NothingElsePutsTheCommandsFrameOut) {
  AddThree();
  int tried = 0;
  for (Control* control : form_->findChildren<Control*>()) {
    const QString name = control->objectName();
    if (name.isEmpty() || name == "Picture3" || name == "Picture1(2)" ||
        name.startsWith("Label1(")) {
      continue;
    }
    MovePointerOver(Get<Label>("Label1", JoinAllSections));
    MovePointerOver(*control);
    EXPECT_EQ(Frame("Shape1"), "302,46 165x21") << name.toStdString();
    ++tried;
  }
  EXPECT_EQ(tried, 40 + 9 - 5);
}

TEST_F(JoinerHover, AStripShowsItsDetailsAndItsFrameAndSelectsItsEntries) {
  AddThree();
  MoveOverStrip(3);
  const std::string details = "   Video Index: 02 Title: b.mp4   ";
  EXPECT_EQ(Strip(3).ToolTipText().toStdString(), details);
  EXPECT_EQ(SelectedRow(), 2);
  EXPECT_EQ(Paths().ListIndex(), 1);
  EXPECT_EQ(Shown(VideoDetails), "Video Details: " + details);
  EXPECT_EQ(Frame("Shape3"), "60,20 62x19");
  const auto& label = Get<Label>("Label3", VideoDetails);
  EXPECT_EQ(label.width(), qCeil(QFontMetricsF(label.font()).horizontalAdvance(label.Caption())));
  EXPECT_EQ(Get<Shape>("Shape8").Width(), label.Width() + 5);
  MoveOverStrip(2);
  EXPECT_EQ(SelectedRow(), 1);
  EXPECT_EQ(Paths().ListIndex(), 0);
  EXPECT_EQ(Frame("Shape3"), "0,0 62x19");
}

TEST_F(JoinerHover, AStripGivesTheTableTheFocusAndTheChartTakesIt) {
  AddThree();
  form_->activateWindow();
  ASSERT_TRUE(WaitFor([&] { return form_->isActiveWindow(); }));
  MoveOverStrip(3);
  EXPECT_TRUE(Table().isAncestorOf(QApplication::focusWidget()));
  MoveOverChart();
  EXPECT_EQ(QApplication::focusWidget(), &Get<PictureBox>("Picture1", Chart));
}

TEST_F(JoinerHover, TheStepsOfAStripComeInTheirOrder) {
  AddThree();
  Texts order;
  Get<Label>("Label3", VideoDetails).Change = [&](int) {
    order.push_back("row " + std::to_string(SelectedRow()) + ", path " +
                    std::to_string(Paths().ListIndex()) + ", tip " +
                    Strip(4).ToolTipText().toStdString() + ", frame " + Frame("Shape3"));
  };
  MoveOverStrip(4);
  EXPECT_EQ(order, Texts{"row 3, path 2, tip    Video Index: 03 Title: c.mp4   , frame hidden"});
}

TEST_F(JoinerHover, OfAStripMovesTheFocusBeforeItSaysWhatItIs) {
  AddThree();
  form_->activateWindow();
  ASSERT_TRUE(WaitFor([&] { return form_->isActiveWindow(); }));
  MoveOverChart();
  const float width = Get<Shape>("Shape8").Width();
  int told = 0;
  Get<Label>("Label3", VideoDetails).Change = [&](int) {
    ++told;
    EXPECT_TRUE(Table().isAncestorOf(QApplication::focusWidget()));
    EXPECT_EQ(Get<Shape>("Shape8").Width(), width);
  };
  MoveOverStrip(3);
  EXPECT_EQ(told, 1);
}

TEST_F(JoinerHover, OfTheChartHidesTheFramesAndTakesTheFocusBeforeItClearsTheDetails) {
  AddThree();
  form_->activateWindow();
  ASSERT_TRUE(WaitFor([&] { return form_->isActiveWindow(); }));
  MovePointerOver(Get<Label>("Label1", JoinAllSections));
  MoveOverStrip(3);
  const float width = Get<Shape>("Shape8").Width();
  int told = 0;
  Get<Label>("Label3", VideoDetails).Change = [&](int) {
    ++told;
    EXPECT_EQ(Frame("Shape1"), "hidden");
    EXPECT_EQ(Frame("Shape3"), "hidden");
    EXPECT_EQ(QApplication::focusWidget(), &Get<PictureBox>("Picture1", Chart));
    EXPECT_EQ(Get<Shape>("Shape8").Width(), width);
    EXPECT_EQ(Paths().ListIndex(), 1);
  };
  MoveOverChart();
  EXPECT_EQ(told, 1);
}

TEST_F(JoinerHover, TheChartClearsItAllButTheTablesSelection) {
  AddThree();
  MoveOverStrip(3);
  MoveOverChart();
  EXPECT_EQ(Shown(VideoDetails), "Video Details: ");
  EXPECT_EQ(Get<Shape>("Shape8").Width(), Get<Shape>("Shape7").Width());
  EXPECT_EQ(Get<Shape>("Shape8").Width(), 393);
  EXPECT_EQ(Frame("Shape3"), "hidden");
  EXPECT_EQ(Paths().ListIndex(), -1);
  EXPECT_EQ(SelectedRow(), 2);
}

TEST_F(JoinerHover, WhatIsNeitherAStripNorTheChartLeavesTheDetailsOnShow) {
  AddThree();
  MoveOverStrip(3);
  const std::string details = Shown(VideoDetails);
  const float width = Get<Shape>("Shape8").Width();
  for (const char* name :
       {"Picture1(0)", "Picture1(1)", "Picture3", "Picture5", "ListView1", "List1", "Label1(0)",
        "Label1(1)", "Label1(2)", "Option1(0)", "Option1(1)"}) {
    MovePointerOver(Get<Control>(name));
    EXPECT_EQ(Frame("Shape3"), "60,20 62x19") << name;
    EXPECT_EQ(Paths().ListIndex(), 1) << name;
    EXPECT_EQ(SelectedRow(), 2) << name;
    EXPECT_EQ(Shown(VideoDetails), details) << name;
    EXPECT_EQ(Get<Shape>("Shape8").Width(), width) << name;
  }
}

TEST_F(JoinerHover, ARemovedSectionSaysSo) {
  AddThree();
  Remove(3);
  MoveOverStrip(3);
  EXPECT_EQ(Shown(VideoDetails), "Video Details:  Deleted Section ");
  EXPECT_EQ(Strip(3).ToolTipText(), QString(" Deleted Section "));
  EXPECT_EQ(SelectedRow(), 2);
}

TEST_F(JoinerHover, AStripWhoseEntriesAreNotThereSkipsTheirSelection) {
  tools_.DurationProbeDoes("for i in 1 2; do printf '%-256s' 'Duration: 00:10:00.00, st'; done\n");
  Add(tools_.File("a.mp4"));
  MoveOverStrip(2);
  MoveOverStrip(3);
  EXPECT_EQ(SelectedRow(), 2);
  EXPECT_EQ(Paths().ListIndex(), 0) << "there is no second path";
  EXPECT_EQ(Frame("Shape3"), "60,20 62x19");
}

TEST_F(JoinerHover, AfterAFileWithoutADurationTheWrongPathIsSelected) {
  AddPrinting("none.txt", "no video\n");
  AddSectionOf("a.mp4", "00:10:00.00");
  MoveOverStrip(2);
  EXPECT_EQ(Paths().ListIndex(), 0) << "that of the other file";
  EXPECT_EQ(SelectedRow(), 1);
}

TEST_F(JoinerHover, NothingReactsToASelectionInTheLists) {
  AddThree();
  const Texts before = {Shown(VideoDetails), Frame("Shape3")};
  Table().ListItems(2).Select();
  Paths().setListIndex(0);
  EXPECT_EQ(SelectedRow(), 2);
  EXPECT_EQ((Texts{Shown(VideoDetails), Frame("Shape3")}), before);
}

TEST_F(JoinerHover, TheOptionsTellWhatTheyAreForAtEachMove) {
  auto& first = Get<OptionButton>("Option1", NoTranscode);
  auto& second = Get<OptionButton>("Option1", TranscodeAllSections);
  EXPECT_EQ(first.ToolTipText(), QString());
  MovePointerOver(first);
  MovePointerOver(second);
  EXPECT_EQ(first.ToolTipText(),
            QString(" Used when all video sections have the same properties / codecs "));
  EXPECT_EQ(second.ToolTipText(),
            QString(" Used when video sections have different properties / codecs "));
  first.setToolTipText("?");
  MovePointerOver(first);
  EXPECT_NE(first.ToolTipText(), QString("?"));
}

TEST_F(JoinerHover, TheRulerTellsTheTimeUnderThePointerOverItsWholeWidth) {
  auto& ruler = Get<PictureBox>("Picture5");
  for (const auto& [x, time] : std::vector<std::pair<int, const char*>>{{0, "00:00:00"},
                                                                        {8, "00:01:20"},
                                                                        {360, "01:00:00"},
                                                                        {3300, "09:10:00"},
                                                                        {6999, "19:26:30"}}) {
    MoveOver(ruler, QPointF(x, 10));
    EXPECT_EQ(ruler.ToolTipText(), QString(time)) << x;
  }
}

TEST_F(JoinerHover, OfAScrolledChartGoesByTheRulersAndTheChartsOwnPlaces) {
  AddThree();
  Get<HScrollBar>("HScroll1").setValue(30);
  auto& ruler = Get<PictureBox>("Picture5");
  ASSERT_EQ(ruler.Left(), -30);
  MoveOver(ruler, QPointF(100, 10));
  EXPECT_EQ(ruler.ToolTipText(), QString("00:16:40"));
  MoveOverStrip(3);
  EXPECT_EQ(Frame("Shape3"), "60,20 62x19");
}

class JoinerMenu : public JoinerHover {
 protected:
  QMenu& MenuOnShow() const { return *form_->findChild<QMenu*>(); }
  bool Opens(QWidget& widget, Qt::MouseButton button) const {
    Release(widget, button);
    const bool open = MenuOnShow().isVisible();
    MenuOnShow().close();
    return open;
  }
};

TEST_F(JoinerMenu, OpensOnAStripAndOnTheTableByTheRightButtonAlone) {
  AddThree();
  QWidget& rows = *Table().findChild<QTreeView*>()->viewport();
  for (QWidget* widget :
       {static_cast<QWidget*>(&Strip(3)), static_cast<QWidget*>(&Table()), &rows}) {
    EXPECT_TRUE(Opens(*widget, Qt::RightButton));
    EXPECT_FALSE(Opens(*widget, Qt::LeftButton));
    EXPECT_FALSE(Opens(*widget, Qt::MiddleButton));
  }
}

TEST_F(JoinerMenu, OpensNowhereElse) {
  AddThree();
  for (const char* name : {"Picture1(0)", "Picture1(1)", "Picture1(2)", "Picture3", "Picture5",
                           "Label3(8)", "List1"}) {
    EXPECT_FALSE(Opens(Get<Control>(name), Qt::RightButton)) << name;
  }
}

}  // namespace
}  // namespace kelvane::testing
