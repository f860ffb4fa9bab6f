// The hidden item of the menu that opens the joiner window.
#include <QTreeView>
#include <QWindow>

#include "joiner/Form4.h"
#include "platform/Menu.h"
#include "sections/Form3.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class JoinMenu : public MainWindowTest {
 protected:
  void Choose() const { Get<Menu>("mnu_JoinMultiple").Click(); }
  static Form4& Joiner() { return *Loaded<Form4>().at(0); }
  static Label& InJoiner(const char* array, int index) {
    return Joiner().Find<Label>(Member(array, index));
  }
  static ListView& Table() { return Joiner().Find<ListView>("ListView1"); }
  static ListBox& Paths() { return Joiner().Find<ListBox>("List1"); }

  // The user adds a video of ten seconds to the joiner.
  void AddSection() const {
    tools_.DurationProbeDoes(Print(DurationText("00:00:10.00")));
    const DialogAnswers answers({TypeFile(tools_.File(QStringLiteral("clip.mp4")))});
    Release(InJoiner("Label1", AddVideoSection));
    EXPECT_TRUE(answers.AllGiven());
  }
  // The join to transport streams, after which the window takes no section any more.
  static void LockJoiner() {
    Joiner().Find<OptionButton>("Option1(1)").Choose();
    const DialogAnswers answers({PressButton(QMessageBox::Ok)});
    Release(InJoiner("Label1", JoinAllSections));
    EXPECT_TRUE(answers.AllGiven());
  }
  static void CloseJoiner() {
    Joiner().close();
    PumpOnce();
    EXPECT_TRUE(Loaded<Form4>().empty());
  }
};

TEST_F(JoinMenu, StaysHidden) {
  EXPECT_FALSE(Get<Menu>("mnu_JoinMultiple").Visible());
  Choose();
  EXPECT_FALSE(Get<Menu>("mnu_JoinMultiple").Visible());
}

TEST_F(JoinMenu, LoadsNothingBeforeItIsChosen) { EXPECT_TRUE(Loaded<Form4>().empty()); }

TEST_F(JoinMenu, OpensTheJoinerAloneWithoutOwnerAndNotModal) {
  Choose();
  ASSERT_EQ(Loaded<Form4>().size(), 1U);
  EXPECT_TRUE(Loaded<Form3>().empty());
  EXPECT_EQ(Joiner().Caption().toStdString(), "Video Joiner");
  ASSERT_TRUE(Joiner().isVisible());
  EXPECT_FALSE(Joiner().isModal());
  EXPECT_EQ(Joiner().windowHandle()->transientParent(), nullptr);
  EXPECT_TRUE(tools_.Runs().empty());
}

TEST_F(JoinMenu, GivesItTheMainWindowsIcon) {
  QPixmap picture(16, 16);
  picture.fill(Qt::red);
  form_->setWindowIcon(QIcon(picture));
  Choose();
  EXPECT_EQ(Joiner().windowIcon().pixmap(16).toImage().pixelColor(8, 8), QColor(Qt::red));
}

TEST_F(JoinMenu, ChosenAgainKeepsTheWindowAsItIs) {
  Choose();
  Form4* const joiner = &Joiner();
  AddSection();
  joiner->hide();
  Choose();
  ASSERT_EQ(Loaded<Form4>(), std::vector<Form4*>{joiner});
  EXPECT_TRUE(joiner->isVisible());
  EXPECT_EQ(Paths().ListCount(), 1);
  EXPECT_EQ(Table().ListItems.Count(), 1);
}

TEST_F(JoinMenu, ChosenAfterTheWindowWasClosedOpensAFreshOne) {
  Choose();
  AddSection();
  ASSERT_EQ(InJoiner("Label3", TotalRuntime).Caption().toStdString(), "00:00:10");
  CloseJoiner();
  Choose();
  ASSERT_EQ(Loaded<Form4>().size(), 1U);
  const auto* table = Table().findChild<QTreeView*>();
  Texts headings;
  for (int column = 0; column < table->model()->columnCount(); ++column) {
    headings.push_back(table->model()->headerData(column, Qt::Horizontal).toString().toStdString());
  }
  EXPECT_EQ(headings, (Texts{"Index", "Title", "Duration (seconds)"}));
  EXPECT_FALSE(Table().HeaderButtons());
  EXPECT_EQ(Table().ListItems.Count(), 0);
  EXPECT_EQ(Paths().ListCount(), 0);
  EXPECT_EQ(InJoiner("Label3", TotalSections).Caption().toStdString(), "Total Sections: 00");
  EXPECT_EQ(InJoiner("Label3", TotalDurationSeconds).Caption().toStdString(), "00,000");
  EXPECT_EQ(InJoiner("Label3", TotalRuntime).Caption().toStdString(), "00:00:00");
}

TEST_F(JoinMenu, ChosenAfterTheWindowWasLockedAndClosedOpensOneThatTakesSections) {
  Choose();
  LockJoiner();
  {
    const DialogAnswers none({});
    Release(InJoiner("Label1", AddVideoSection));
    ASSERT_EQ(Paths().ListCount(), 0) << "locked";
  }
  CloseJoiner();
  Choose();
  AddSection();
  EXPECT_EQ(Paths().ListCount(), 1);
  EXPECT_EQ(InJoiner("Label3", TotalDurationSeconds).Caption().toStdString(), "00,010");
}

TEST_F(JoinMenu, ClosingTheMainWindowLeavesTheJoiner) {
  Choose();
  form_->close();
  ASSERT_EQ(Loaded<Form4>().size(), 1U);
  EXPECT_TRUE(Joiner().isVisible());
  Joiner().Unload();
}

}  // namespace
}  // namespace kelvane::testing
