// The commands of the joiner window, and the dialogs that they open.
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QtTest/QTest>

#include "joiner/JoinerWindowTest.h"
#include "support/FileDrag.h"
#include "support/Snapshot.h"
#include "support/TabOrder.h"

namespace kelvane::testing {
namespace {

using JoinerCommands = JoinerWindowTest;

TEST_F(JoinerCommands, AskForAFileWithATitleAndAFilterOfTheirOwn) {
  Texts seen;
  const Answer read = [&seen](QDialog& dialog) {
    auto& files = dynamic_cast<QFileDialog&>(dialog);
    const QString mode = files.acceptMode() == QFileDialog::AcceptOpen ? "open" : "save";
    const QString name = files.findChild<QLineEdit*>("fileNameEdit")->text();
    const QStringList parts = {mode, files.windowTitle(), files.nameFilters().join(';'), name};
    seen.push_back(parts.join(" | ").toStdString());
    dialog.reject();
  };
  const DialogAnswers answers({read, read, PressButton(QMessageBox::Ok), read});
  for (const auto command : {AddVideoSection, JoinAllSections, SaveVideoFileList}) Give(command);
  EXPECT_EQ(seen, (Texts{"open | Add Video | *.* (*) | ",
                         "save | Save Video As | MP4 File (*.mp4) (*.mp4) | ",
                         "save | Save Video File List | Text File (*.txt) (*.txt) | "}));
}

TEST_F(JoinerCommands, AreReachedByTabBehindTheListsAndTheChosenOption) {
  AddThree();
  EXPECT_EQ(TabOrder(*form_), "ListView1\nList1\nOption1(0)\nLabel1(0)\nLabel1(1)\nLabel1(2)");
}

TEST_F(JoinerCommands, StartBySpaceAndEnterButAddNothingAfterATranscode) {
  const auto press = [this](JoinerCommand command, Qt::Key key) {
    QTest::keyClick(&Get<Label>("Label1", command), key);
  };
  for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) {
    const DialogAnswers answers({CancelDialog(), CancelDialog()});
    press(AddVideoSection, key);
    press(SaveVideoFileList, key);
    EXPECT_EQ(answers.seen().size(), 2U) << key;
  }
  TranscodeAll();
  const DialogAnswers answers({});
  press(AddVideoSection, Qt::Key_Space);
  EXPECT_EQ(answers.seen(), Texts{});
}

TEST_F(JoinerCommands, StartAtTheReleaseOfAnyButton) {
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton, Qt::RightButton}) {
    const DialogAnswers answers(
        {CancelDialog(), CancelDialog(), PressButton(QMessageBox::Ok), CancelDialog()});
    for (const auto command : {AddVideoSection, JoinAllSections, SaveVideoFileList}) {
      const std::size_t before = answers.seen().size();
      Press(Get<Label>("Label1", command), button);
      EXPECT_EQ(answers.seen().size(), before) << command;
      Give(command, button);
      EXPECT_GT(answers.seen().size(), before) << command;
    }
  }
}

using AddSection = JoinerWindowTest;

TEST_F(AddSection, ChangesNothingIfTheDialogIsCancelled) {
  AddSectionOf("a.mp4");
  const Texts runs = tools_.Runs();
  const DialogAnswers answers({CancelDialog()});
  Give(AddVideoSection);
  EXPECT_EQ(Paths().ListCount(), 1);
  EXPECT_EQ(tools_.Runs(), runs);
}

TEST_F(AddSection, UpdatesListAndCountBeforeTheProbeAndTheTotalsAfterAllElse) {
  Get<Label>("Label3", TotalSections).Change = [this](int) {
    EXPECT_EQ(Paths().ListCount(), 1);
    EXPECT_EQ(tools_.Runs(), Texts{});
  };
  Get<Label>("Label3", TotalDurationSeconds).Change = [this](int) {
    EXPECT_EQ(Strips().size(), 1U);
    EXPECT_EQ(Rows().size(), 1U);
  };
  AddSectionOf("a.mp4");
  EXPECT_EQ(Shown(TotalSections), "Total Sections: 01");
  EXPECT_EQ(Shown(TotalDurationSeconds), "00,600");
}

TEST_F(AddSection, TrimsTheNameAndProbesThePreviousFileAgainIfThereIsNoneOfThatName) {
  const QString trailing = tools_.MakeFile("b.mp4 ");
  Add(trailing);
  const std::string a = AddSectionOf("a.mp4").toStdString();
  Add(trailing);
  EXPECT_EQ(PathsListed(), (Texts{Path("b.mp4"), a, Path("b.mp4")}));
  const std::string probe = "ffprobe | -hide_banner | -stats | -i";
  EXPECT_EQ(tools_.Runs(), (Texts{probe, probe + " | " + a, probe + " | " + a}));
  EXPECT_EQ(Rows(), (Texts{"1 | a.mp4 | 600", "2 | a.mp4 | 600"}));
}

class SaveList : public JoinerWindowTest {
 protected:
  void SaveTo(const QString& file) const {
    const DialogAnswers answers({TypeFile(file)});
    Give(SaveVideoFileList);
  }
};

TEST_F(SaveList, WritesEveryPathAsItIsListedWithCarriageReturnAndLineFeed) {
  for (const char* name : {"a b.mp4", "b.mp4", "ü.mp4"}) AddSectionOf(name);
  Remove(3);
  SaveTo(InFolder("list.txt"));
  EXPECT_EQ(ContentOf(InFolder("list.txt")),
            Path("a b.mp4") + "\r\n Deleted Section \r\n" + Path("ü.mp4") + "\r\n");
}

TEST_F(SaveList, ReplacesAnExistingFileWithoutAQuestion) {
  const QString existing = tools_.MakeFile("existing.txt");
  SaveTo(existing);
  EXPECT_EQ(ContentOf(existing), "") << "a list without sections isn't empty";
}

TEST_F(SaveList, SaysWhatBecomesOfTheFileWhileItsNameIsTyped) {
  tools_.MakeFile("old list");
  const QString replaced = "This file exists: it will be replaced.";
  const QString noFolder = "No file can be written in this folder.";
  for (const auto& [name, expected, changed] : {std::tuple("my list", QString(), Texts{"my list"}),
                                                {"old list", replaced, {"old list"}},
                                                {"missing/list.txt", noFolder, {}}}) {
    const Snapshot before(tools_.Path());
    QString remark;
    const DialogAnswers answers({TypeNameInFolder(InFolder(name), remark)});
    Give(SaveVideoFileList);
    EXPECT_EQ(remark, expected);
    EXPECT_EQ(before.Changed(), changed);
  }
}

TEST_F(SaveList, ShowsNoMessageIfTheFileCannotBeWritten) {
  SaveTo(InFolder("no/such/folder/list.txt"));
  EXPECT_FALSE(QDir(InFolder("no")).exists());
  SaveTo(QStringLiteral("/proc/version"));
}

TEST_F(SaveList, WritesNothingIfTheDialogIsCancelled) {
  const QString video = AddSectionOf("a.mp4");
  const QDir folder(tools_.Path());
  const QStringList before = folder.entryList(QDir::Files);
  const DialogAnswers answers({CancelDialog()});
  Give(SaveVideoFileList);
  EXPECT_EQ(folder.entryList(QDir::Files), before);
  EXPECT_EQ(ContentOf(video), "contents") << "the file chosen last has been overwritten";
}

using DroppedSections = JoinerWindowTest;

TEST_F(DroppedSections, AreAddedInTheOrderOfTheDropEachAsIfChosenInTheDialog) {
  tools_.DurationProbeDoes(PrintCommands("  Duration: 00:10:00.00, start: 0.000000\n"));
  const QString b = tools_.MakeFile("b.mp4");
  const QString a = tools_.MakeFile("a.mp4");
  EXPECT_TRUE(DropFiles(TimeChart(), {b, a, b}));
  EXPECT_TRUE(tools_.Runs().empty()) << "a probe has begun before the drop was answered";
  EXPECT_TRUE(WaitFor([&] { return Paths().ListCount() == 3; }));
  EXPECT_EQ(PathsListed(), (Texts{Path("b.mp4"), Path("a.mp4"), Path("b.mp4")}));
  EXPECT_EQ(Rows(), (Texts{"1 | b.mp4 | 600", "2 | a.mp4 | 600", "3 | b.mp4 | 600"}));
  EXPECT_EQ(Shown(TotalSections), "Total Sections: 03");
  EXPECT_EQ(tools_.Runs().size(), 3U);
}

TEST_F(DroppedSections, OfASecondDropComeAfterThoseOfTheFirst) {
  const QString a = tools_.MakeFile("a.mp4");
  const QString b = tools_.MakeFile("b.mp4");
  // The second drop arrives while the first section is added.
  Get<Label>("Label3", TotalSections).Change = [&](int) {
    Get<Label>("Label3", TotalSections).Change = nullptr;
    EXPECT_TRUE(DropFiles(TimeChart(), {b, b}));
  };
  EXPECT_TRUE(DropFiles(TimeChart(), {a, a}));
  EXPECT_TRUE(WaitFor([&] { return Paths().ListCount() == 4; }));
  EXPECT_EQ(PathsListed(), (Texts{Path("a.mp4"), Path("a.mp4"), Path("b.mp4"), Path("b.mp4")}));
}

TEST_F(DroppedSections, AreRefusedAfterATranscode) {
  const QString a = AddSectionOf("a.mp4");
  EXPECT_TRUE(FileDrag(QStringList{a}).Enter(*form_));
  TranscodeAll();
  EXPECT_FALSE(FileDrag(QStringList{a}).Enter(*form_));
}

}  // namespace
}  // namespace kelvane::testing
