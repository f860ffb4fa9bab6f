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

TEST_F(JoinerReading, TellsTheSectionsOfTheChartTheTableAndTheList) {
  const QString first = AddSectionOf("first.mp4", "00:03:20.00");
  AddSectionOf("second.mp4", "00:01:00.00");
  Remove(3);
  QApplication::activePopupWidget()->close();
  const std::string told = HeardIn(*form_);
  for (const std::string& lines : {std::string(R"tree(
    List "Video sections on the time chart"
      ListItem "Video Index: 01 Title: first.mp4"
      ListItem "Deleted Section"
    ScrollBar)tree"),
                                   std::string(R"tree(
    ColumnHeader "Duration (seconds)"
    TreeItem "1"
    TreeItem "first.mp4"
    TreeItem "200"
    TreeItem "2"
    TreeItem "second.mp4"
    TreeItem "60"
  List "Paths of the video sections"
    ListItem ")tree") + first.toStdString() +
                                       R"tree("
    ListItem " Deleted Section "
  StaticText "Video Details:"
  StaticText "Total Sections: 02"
)tree"}) {
    EXPECT_NE(told.find(lines), std::string::npos) << lines << "\nin" << told;
  }
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
