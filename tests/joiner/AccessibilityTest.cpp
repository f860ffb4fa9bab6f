// The joiner window as a screen reader finds it.
#include "joiner/JoinerWindowTest.h"
#include "support/ScreenReader.h"

namespace kelvane::testing {
namespace {

class JoinerReading : public JoinerWindowTest {
 protected:
  static void Do(QObject& object, const QString& action) {
    NodeOf(object).actionInterface()->doAction(action);
  }
};

TEST_F(JoinerReading, TellsEverythingThatShowsAndNothingElse) {
  EXPECT_EQ(HeardIn(*form_), R"tree(
Window "Video Joiner"
  MenuBar ""
    MenuItem "ContextMenu"
  Grouping "Time chart"
    List "Video sections on the time chart"
    ScrollBar "Upright bar of the time chart" = 0
    ScrollBar "Scroll the time chart sideways" = 0
  Tree "Video sections"
    ColumnHeader "Index"
    ColumnHeader "Title"
    ColumnHeader "Duration (seconds)"
  List "Paths of the video sections"
  StaticText "Video Details:"
  StaticText "Total Sections: 00"
  Grouping "How to join"
    RadioButton "No Transcode"
    RadioButton "Transcode All sections"
  StaticText "Total Combined Video Duration"
  StaticText "seconds"
  StaticText "00,000" (Total Combined Video Duration in seconds)
  Button "Add Video Section"
  Button "Join All Sections"
  Button "Save Video File List"
  StaticText "Total Combined Video Runtime"
  StaticText "hours: minutes: seconds"
  StaticText "00:00:00" (Total Combined Video Runtime in hours: minutes: seconds)
  StaticText "Process: Compiling Video List"
)tree");
}

TEST_F(JoinerReading, TellsTheSectionsOfTheChartTheTableAndTheList) {
  const QString first = AddSectionOf("first.mp4", "00:03:20.00");
  AddSectionOf("second.mp4", "00:01:00.00");
  Remove(3);
  QApplication::activePopupWidget()->close();
  EXPECT_EQ(HeardIn(*form_), R"tree(
Window "Video Joiner"
  MenuBar ""
    MenuItem "ContextMenu"
  Grouping "Time chart"
    List "Video sections on the time chart"
      ListItem "Video Index: 01 Title: first.mp4"
      ListItem "Deleted Section"
    ScrollBar "Upright bar of the time chart" = 0
    ScrollBar "Scroll the time chart sideways" = 0
  Tree "Video sections"
    ColumnHeader "Index"
    ColumnHeader "Title"
    ColumnHeader "Duration (seconds)"
    TreeItem "1"
    TreeItem "first.mp4"
    TreeItem "200"
    TreeItem "2"
    TreeItem "second.mp4"
    TreeItem "60"
  List "Paths of the video sections"
    ListItem ")tree" + first.toStdString() +
                                 R"tree("
    ListItem " Deleted Section "
  StaticText "Video Details:"
  StaticText "Total Sections: 02"
  Grouping "How to join"
    RadioButton "No Transcode"
    RadioButton "Transcode All sections"
  StaticText "Total Combined Video Duration"
  StaticText "seconds"
  StaticText "00,260" (Total Combined Video Duration in seconds)
  Button "Add Video Section"
  Button "Join All Sections"
  Button "Save Video File List"
  StaticText "Total Combined Video Runtime"
  StaticText "hours: minutes: seconds"
  StaticText "00:04:20" (Total Combined Video Runtime in hours: minutes: seconds)
  StaticText "Process: Compiling Video List"
)tree");
}

TEST_F(JoinerReading, OpensASectionsMenu) {
  AddSectionOf("first.mp4", "00:03:20.00");
  AddSectionOf("second.mp4", "00:01:00.00");
  Do(Strip(3), QAccessibleActionInterface::showMenuAction());
  EXPECT_TRUE(WaitFor([] { return QApplication::activePopupWidget() != nullptr; }));
  QApplication::activePopupWidget()->close();
  ChooseRemove();
  EXPECT_EQ(PathsListed().at(1), " Deleted Section ");
}

TEST_F(JoinerReading, AddsASectionByThePressOfItsCommand) {
  tools_.DurationProbeDoes(Print(DurationText("00:03:20.00")));
  const DialogAnswers answers({TypeFile(tools_.File("first.mp4"))});
  Do(Get<Label>("Label1", AddVideoSection), QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(WaitFor([this] { return Paths().ListCount() == 1; }));
}

}  // namespace
}  // namespace kelvane::testing
