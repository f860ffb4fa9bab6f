// The commands in their order: adding a section, the list of intermediates, the saved list.
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>

#include "joiner/JoinerWindowTest.h"

namespace kelvane::testing {
namespace {

// Title, filters and the name that stands there of a dialog for that purpose.
Answer ReadAndCancel(Texts& seen, QFileDialog::AcceptMode purpose) {
  return [&seen, purpose](QDialog& dialog) {
    auto& files = dynamic_cast<QFileDialog&>(dialog);
    seen = {files.windowTitle().toStdString(),
            files.nameFilters().join(QLatin1Char(';')).toStdString(),
            files.findChild<QLineEdit*>("fileNameEdit")->text().toStdString()};
    EXPECT_EQ(files.acceptMode(), purpose);
    dialog.reject();
  };
}

class Adding : public JoinerWindowTest {};

TEST_F(Adding, AsksForAFileUnderItsTitleWithAFilterForEveryFile) {
  Texts seen;
  const DialogAnswers answers({ReadAndCancel(seen, QFileDialog::AcceptOpen)});
  Give(AddVideoSection);
  EXPECT_EQ(seen, (Texts{"Add Video", "*.* (*)", ""}));
}

TEST_F(Adding, IsFiredByTheReleaseOfAnyButton) {
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton, Qt::RightButton}) {
    const DialogAnswers answers({CancelDialog()});
    Press(Get<Label>("Label1", AddVideoSection), button);
    EXPECT_TRUE(answers.seen().empty());
    Give(AddVideoSection, button);
    EXPECT_EQ(answers.seen(), Texts{"Add Video"});
  }
}

TEST_F(Adding, JoiningAndSavingAreFiredLikewise) {
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton, Qt::RightButton}) {
    const DialogAnswers answers({CancelDialog(), PressButton(QMessageBox::Ok), CancelDialog()});
    for (const JoinerCommand command : {JoinAllSections, SaveVideoFileList}) {
      const std::size_t before = answers.seen().size();
      Press(Get<Label>("Label1", command), button);
      EXPECT_EQ(answers.seen().size(), before) << command;
      Give(command, button);
      EXPECT_GT(answers.seen().size(), before) << command;
    }
  }
}

TEST_F(Adding, ACancelledDialogAddsNothing) {
  AddSectionOf("a.mp4", "00:10:00.00");
  const Texts runs = tools_.Runs();
  const DialogAnswers answers({CancelDialog()});
  Give(AddVideoSection);
  EXPECT_EQ(Paths().ListCount(), 1);
  EXPECT_EQ(Rows().size(), 1U);
  EXPECT_EQ(tools_.Runs(), runs);
}

TEST_F(Adding, ThePathComesBeforeTheCountTheCountBeforeTheRunAndTheRunBeforeTheStrip) {
  Texts order;
  const auto state = [&](const char* what) {
    order.push_back(std::string(what) + ": " + std::to_string(Paths().ListCount()) + " paths, " +
                    Shown(TotalSections) + ", " + std::to_string(tools_.Runs().size()) + " runs, " +
                    std::to_string(Strips().size()) + " strips, " + std::to_string(Rows().size()) +
                    " rows");
  };
  Get<Label>("Label3", TotalSections).Change = [&](int) { state("count"); };
  Get<TextBox>("Text1").Change = [&](int) {
    if (!Get<TextBox>("Text1").Text().isEmpty()) state("block");
  };
  Get<Label>("Label3", TotalDurationSeconds).Change = [&](int) { state("total"); };
  AddSectionOf("a.mp4", "00:10:00.00");
  EXPECT_EQ(order, (Texts{"count: 1 paths, Total Sections: 01, 0 runs, 0 strips, 0 rows",
                          "block: 1 paths, Total Sections: 01, 1 runs, 0 strips, 0 rows",
                          "total: 1 paths, Total Sections: 01, 1 runs, 1 strips, 1 rows"}));
}

TEST_F(Adding, TheCountIsThatOfAllPathsEverAdded) {
  for (int i = 1; i <= 3; ++i) AddSectionOf("a.mp4", "00:10:00.00");
  EXPECT_EQ(Shown(TotalSections), "Total Sections: 03");
  Remove(2);
  AddPrinting("none.txt", "no video\n");
  EXPECT_EQ(Shown(TotalSections), "Total Sections: 04");
}

TEST_F(Adding, ANameWithBlanksRoundItIsTrimmedAndWhereThatIsNoFileTheLastOnesProbeRunsAgain) {
  const QString first = AddSectionOf("a.mp4", "00:10:00.00");
  const QString second = tools_.File("b.mp4 ");
  Add(second);
  EXPECT_EQ(PathsListed(), (Texts{first.toStdString(), InFolder("b.mp4").toStdString()}));
  EXPECT_EQ(tools_.Runs(),
            (Texts(2, "ffprobe | -hide_banner | -stats | -i | " + first.toStdString())));
  EXPECT_EQ(Rows(), (Texts{"1 | a.mp4 | 600", "2 | a.mp4 | 600"}));
}

TEST_F(Adding, AFileThatIsNoneAsTheFirstRunsTheToolWithoutAPath) {
  Add(tools_.File("b.mp4 "));
  EXPECT_EQ(tools_.Runs(), Texts{"ffprobe | -hide_banner | -stats | -i"});
}

TEST_F(Adding, NamesWithLettersOfAnyAlphabetAreTakenWhole) {
  const QString file = AddSectionOf(QString::fromUtf8("Füße 動画.mp4"), "00:10:00.00");
  EXPECT_EQ(PathsListed(), Texts{file.toStdString()});
  EXPECT_EQ(Rows(), Texts{"1 | Füße 動画.mp4 | 600"});
  EXPECT_EQ(Details(2), "   Video Index: 01 Title: Füße 動画.mp4   ");
}

TEST_F(Adding, DoesNothingOnceSectionsHaveBeenTranscoded) {
  TranscodeAll();
  const DialogAnswers none({});
  Give(AddVideoSection);
  EXPECT_TRUE(none.seen().empty());
  EXPECT_EQ(Paths().ListCount(), 0);
}

class Intermediates : public JoinerWindowTest {
 protected:
  Texts Listed() const { return LinesOf(Get<ListBox>("List2")); }
};

TEST_F(Intermediates, AreNumberedByTheLiveSectionsAndLieInTheirSourcesFolder) {
  AddThree();
  Remove(3);
  Join(CancelDialog());
  EXPECT_EQ(Listed(), (Texts{Path("intermediate01.ts"), Path("intermediate02.ts")}));
}

TEST_F(Intermediates, AreListedAgainByEachJoin) {
  AddSectionOf("a.mp4", "00:10:00.00");
  Join(CancelDialog());
  Join(CancelDialog());
  EXPECT_EQ(Listed(), (Texts{Path("intermediate01.ts"), Path("intermediate01.ts")}));
}

TEST_F(Intermediates, CountAPathWithoutAFolderAndListItNot) {
  AddSectionOf("a.mp4", "00:10:00.00");
  AddSectionOf("b.mp4", "00:10:00.00");
  Paths().setList(0, "bare.mp4");
  Join(CancelDialog());
  EXPECT_EQ(Listed(), Texts{Path("intermediate02.ts")});
}

TEST_F(Intermediates, AreListedBeforeTheJoinBegins) {
  AddSectionOf("a.mp4", "00:10:00.00");
  Texts atStart;
  Get<Label>("Label3", ProcessLine).Change = [&](int) {
    if (atStart.empty()) {
      atStart = Listed();
      atStart.push_back(Shown(ProcessLine));
    }
  };
  Join(CancelDialog());
  EXPECT_EQ(atStart, (Texts{Path("intermediate01.ts"), "Process: Creating List Index"}));
}

class SavingTheList : public JoinerWindowTest {
 protected:
  void SaveTo(const QString& file) const {
    const DialogAnswers answers({TypeFile(file)});
    Give(SaveVideoFileList);
  }
  QString list = InFolder("list.txt");
};

TEST_F(SavingTheList, AsksUnderItsTitleWithAFilterForTextFiles) {
  Texts seen;
  const DialogAnswers answers({ReadAndCancel(seen, QFileDialog::AcceptSave)});
  Give(SaveVideoFileList);
  EXPECT_EQ(seen, (Texts{"Save Video File List", "Text File (*.txt) (*.txt)", ""}));
}

TEST_F(SavingTheList, WritesALineForEachPathWithCarriageReturnAndLineFeed) {
  const QString a = AddSectionOf("a.mp4", "00:10:00.00");
  const QString b = AddSectionOf(QString::fromUtf8("b ü.mp4"), "00:10:00.00");
  SaveTo(list);
  EXPECT_EQ(ContentOf(list), a.toStdString() + "\r\n" + b.toStdString() + "\r\n");
}

TEST_F(SavingTheList, WritesARemovedSectionWithItsBlanks) {
  AddThree();
  Remove(3);
  SaveTo(list);
  EXPECT_EQ(ContentOf(list), InFolder("a.mp4").toStdString() + "\r\n Deleted Section \r\n" +
                                 InFolder("c.mp4").toStdString() + "\r\n");
}

TEST_F(SavingTheList, OfNoSectionMakesAnEmptyFile) {
  SaveTo(list);
  EXPECT_EQ(ContentOf(list), "");
}

TEST_F(SavingTheList, ReplacesAnExistingFileWithoutAQuestion) {
  const QString existing = tools_.File("existing.txt");
  SaveTo(existing);
  EXPECT_EQ(ContentOf(existing), "");
}

TEST_F(SavingTheList, UnderANameThatCannotBeWrittenSaysNothing) {
  AddSectionOf("a.mp4", "00:10:00.00");
  SaveTo(InFolder("no/such/folder/list.txt"));
  EXPECT_FALSE(QDir(InFolder("no")).exists());
  SaveTo(QStringLiteral("/proc/version"));
  EXPECT_EQ(Paths().ListCount(), 1);
}

TEST_F(SavingTheList, DoesNothingWhereTheDialogIsCancelled) {
  const QString video = AddSectionOf("a.mp4", "00:10:00.00");
  const std::string content = ContentOf(video);
  const QDir folder(tools_.Path());
  const QStringList before = folder.entryList(QDir::Files);
  const DialogAnswers answers({CancelDialog()});
  Give(SaveVideoFileList);
  EXPECT_EQ(folder.entryList(QDir::Files), before);
  EXPECT_EQ(ContentOf(video), content) << "the file last chosen is not the list's";
}

TEST_F(SavingTheList, StillWorksOnceSectionsHaveBeenTranscoded) {
  const QString a = AddSectionOf("a.mp4", "00:10:00.00");
  TranscodeAll();
  SaveTo(list);
  EXPECT_EQ(ContentOf(list), a.toStdString() + "\r\n");
}

}  // namespace
}  // namespace kelvane::testing
