// The commands of the joiner window, and the dialogs that they open.
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>

#include "joiner/JoinerWindowTest.h"

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

TEST_F(AddSection, UpdatesListAndCountBeforeTheProbeRunsAndTheTotalsLast) {
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

TEST_F(AddSection, TrimsTheNameAndProbesThePreviousFileAgainIfThatIsNoFile) {
  const QString trailing = tools_.File("b.mp4 ");
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
  const QString existing = tools_.File("existing.txt");
  SaveTo(existing);
  EXPECT_EQ(ContentOf(existing), "") << "there is no section";
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
  EXPECT_EQ(ContentOf(video), "contents") << "the file that a dialog chose last";
}

}  // namespace
}  // namespace kelvane::testing
