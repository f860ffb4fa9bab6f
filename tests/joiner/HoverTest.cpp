// What the pointer brings up: frames, details, selections, tool tips and the context menu.
#include <QApplication>
#include <QMenu>
#include <QTreeView>
#include <QtMath>

#include "joiner/JoinerWindowTest.h"

namespace kelvane::testing {
namespace {

class JoinerHover : public JoinerWindowTest {
 protected:
  // Returns "hidden", or the frame's place.
  std::string Frame(const char* shape) const {
    const auto& frame = Get<Shape>(shape);
    return frame.Visible() ? PlaceText(frame) : "hidden";
  }
  void MoveOverStrip(int index) const { MovePointerOver(Strip(index)); }
  void MoveOverJoin() const { MovePointerOver(Get<Label>("Label1", JoinAllSections)); }
  // The number of the selected row of the table; 0 if there is none.
  int SelectedRow() const {
    for (int number = 1; number <= Table().ListItems.Count(); ++number) {
      if (Table().ListItems(number).Selected()) return number;
    }
    return 0;
  }
  std::string State() const {
    return "row " + std::to_string(SelectedRow()) + ", path " +
           std::to_string(Paths().ListIndex()) + ", frame " + Frame("Shape3") +
           ", details' width " + std::to_string(qRound(Get<Shape>("Shape8").Width()));
  }
};

TEST_F(JoinerHover, FramesACommandTwoPixelsOutside) {
  for (const auto& [command, frame] : {std::pair(AddVideoSection, "6,46 117x21"),
                                       {JoinAllSections, "302,46 165x21"},
                                       {SaveVideoFileList, "486,46 117x21"}}) {
    MovePointerOver(Get<Label>("Label1", command));
    EXPECT_EQ(Frame("Shape1"), frame);
  }
}

TEST_F(JoinerHover, FramesAStripAndShowsItsDetailsAndSelectsItsEntries) {
  AddThree();
  MoveOverStrip(3);
  const std::string details = "   Video Index: 02 Title: b.mp4   ";
  EXPECT_EQ(Strip(3).ToolTipText().toStdString(), details);
  EXPECT_EQ(Shown(VideoDetails), "Video Details: " + details);
  EXPECT_EQ(SelectedRow(), 2);
  EXPECT_EQ(Paths().ListIndex(), 1);
  EXPECT_EQ(Frame("Shape3"), "60,20 62x19");
  const auto& label = Get<Label>("Label3", VideoDetails);
  EXPECT_EQ(label.width(), qCeil(QFontMetricsF(label.font()).horizontalAdvance(label.Caption())));
  EXPECT_EQ(Get<Shape>("Shape8").Width(), label.Width() + 5);
}

TEST_F(JoinerHover, OverTheChartClearsAllButTheSelectedRow) {
  AddThree();
  MoveOverStrip(3);
  MoveOverJoin();
  MovePointerOver(TimeChart());
  EXPECT_EQ(Frame("Shape1"), "hidden");
  EXPECT_EQ(State(), "row 2, path -1, frame hidden, details' width 393");
  EXPECT_EQ(Shown(VideoDetails), "Video Details: ");
  // A selection in the table or in the list changes nothing else.
  Table().ListItems(1).Select();
  Paths().setListIndex(0);
  EXPECT_EQ(State(), "row 1, path 0, frame hidden, details' width 393");
  EXPECT_EQ(Shown(VideoDetails), "Video Details: ");
}

// The command bar, Picture3, hides the frame of a command, as the chart does.
TEST_F(JoinerHover, KeepsTheDetailsOfAStripOverAllControlsButTheChart) {
  AddThree();
  for (Control* control : form_->findChildren<Control*>()) {
    const QString name = control->objectName();
    if (name == "Picture1(2)" || name.startsWith("Picture2(")) continue;
    if (name.startsWith("Label1(")) continue;
    MoveOverStrip(3);
    MoveOverJoin();
    const Texts before = {State(), Shown(VideoDetails)};
    MovePointerOver(*control);
    EXPECT_EQ((Texts{State(), Shown(VideoDetails)}), before) << name.toStdString();
    EXPECT_EQ(Frame("Shape1"), name == "Picture3" ? "hidden" : "302,46 165x21")
        << name.toStdString();
  }
}

TEST_F(JoinerHover, MovesTheFocusToTheTableOrTheChartBeforeItChangesTheDetails) {
  AddThree();
  form_->activateWindow();
  ASSERT_TRUE(WaitFor([&] { return form_->isActiveWindow(); }));
  Texts states;
  Get<Label>("Label3", VideoDetails).Change = [&](int) {
    const QWidget* focus = QApplication::focusWidget();
    const bool chart = focus == &TimeChart();
    EXPECT_TRUE(chart || Table().isAncestorOf(focus));
    states.push_back((chart ? "chart, " : "table, ") + State());
  };
  MoveOverStrip(3);
  const int width = qRound(Get<Shape>("Shape8").Width());
  MovePointerOver(TimeChart());
  EXPECT_EQ(states,
            (Texts{"table, row 2, path 1, frame hidden, details' width 393",
                   "chart, row 2, path 1, frame hidden, details' width " + std::to_string(width)}));
}

// A file without a duration has a path, but neither a row nor a strip.
TEST_F(JoinerHover, AfterAFileWithoutADurationAStripStandsForThePathBeforeItsOwn) {
  AddPrinting("none.txt", "no video\n");
  AddSectionOf("a.mp4");
  MoveOverStrip(2);
  EXPECT_EQ(SelectedRow(), 1);
  EXPECT_EQ(Paths().ListIndex(), 0);
  Remove(2);
  EXPECT_EQ(PathsListed(), (Texts{" Deleted Section ", Path("a.mp4")}));
}

TEST_F(JoinerHover, SetsTheToolTipOfAnOptionAtEachMove) {
  for (const auto& [mode, text] :
       {std::pair(NoTranscode, " Used when all video sections have the same properties / codecs "),
        {TranscodeAllSections, " Used when video sections have different properties / codecs "}}) {
    auto& option = Get<OptionButton>("Option1", mode);
    for (const char* before : {"", "another"}) {
      option.setToolTipText(before);
      MovePointerOver(option);
      EXPECT_EQ(option.ToolTipText(), QString(text));
    }
  }
}

TEST_F(JoinerHover, SetsTheToolTipOfTheRulerToTheTimeUnderThePointer) {
  AddThree();
  auto& ruler = Get<PictureBox>("Picture5");
  for (const std::int16_t scrolled : {std::int16_t{0}, std::int16_t{30}}) {
    Get<HScrollBar>("HScroll1").setValue(scrolled);
    for (const auto& [x, time] : {std::pair(0.F, "00:00:00"),
                                  {8.F, "00:01:20"},
                                  {360.F, "01:00:00"},
                                  {6999.F, "19:26:30"}}) {
      ruler.MouseMove({.Index = 0, .Button = kNoButton, .Shift = 0, .X = x, .Y = 10});
      EXPECT_EQ(ruler.ToolTipText(), QString(time)) << x;
    }
    MoveOverStrip(3);
    EXPECT_EQ(Frame("Shape3"), "60,20 62x19");
  }
}

using JoinerMenu = JoinerWindowTest;

TEST_F(JoinerMenu, OpensOnAStripAndOnTheTableByTheRightButtonAlone) {
  AddThree();
  QMenu& menu = *form_->findChild<QMenu*>();
  const auto opens = [&menu](QWidget& widget, Qt::MouseButton button) {
    Release(widget, button);
    const bool open = menu.isVisible();
    menu.close();
    return open;
  };
  for (QWidget* widget : std::initializer_list<QWidget*>{
           &Strip(3), &Table(), Table().findChild<QTreeView*>()->viewport()}) {
    EXPECT_TRUE(opens(*widget, Qt::RightButton));
    EXPECT_FALSE(opens(*widget, Qt::LeftButton));
    EXPECT_FALSE(opens(*widget, Qt::MiddleButton));
  }
  for (const char* name : {"Picture1(0)", "Picture1(1)", "Picture1(2)", "Picture3", "Picture5",
                           "Label3(8)", "List1"}) {
    EXPECT_FALSE(opens(Get<Control>(name), Qt::RightButton)) << name;
  }
}

}  // namespace
}  // namespace kelvane::testing
