// The dialog for a crop's output, and what a cancelled dialog leaves as it was.
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>

#include "workspace/CommandsTest.h"

namespace kelvane::testing {
namespace {

TEST_F(Commands, ANameWithoutAnExtensionStaysSo) {
  CropTo(tools_.Path() + QLatin1String("/plain"));
  EXPECT_EQ(OutputPath, tools_.Path() + QLatin1String("/plain"));
}

TEST_F(Commands, AnExistingOutputIsTakenWithoutAQuestion) {
  const QString output = tools_.File(QStringLiteral("there.mp4"));
  CropTo(output);
  EXPECT_EQ(OutputPath, output);
  EXPECT_NE(JobWindow(), nullptr);
}

TEST_F(Commands, TheSaveDialogOffersThreeKindsOfFilesAndBeginsWithTheFirst) {
  OutputPath = QStringLiteral("/tmp/earlier.mp4");
  Texts seen;
  const DialogAnswers answers({[&](QDialog& dialog) {
    const auto& files = dynamic_cast<QFileDialog&>(dialog);
    const auto* kinds = files.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
    for (int kind = 0; kind < kinds->count(); ++kind) {
      seen.push_back(kinds->itemText(kind).trimmed().toStdString());
    }
    seen.push_back("chosen: " + kinds->currentText().trimmed().toStdString());
    seen.push_back(
        "name: " +
        files.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text().toStdString());
    seen.push_back("title: " + files.windowTitle().toStdString());
    seen.emplace_back(files.acceptMode() == QFileDialog::AcceptSave ? "saves" : "opens");
    seen.push_back("extension: " + files.defaultSuffix().toStdString());
    dialog.reject();
  }});
  Give(CropVideo);
  EXPECT_EQ(seen, (Texts{"MP4 Files (*.mp4)", "AVI Files (*.avi)", "All Files (*.*)",
                         "chosen: MP4 Files (*.mp4)", "name: ", "title: Save Cropped Video As",
                         "saves", "extension: "}));
}

TEST_F(Commands, ACancelledSaveDialogStartsNothingAndKeepsTheOutputAndTheFilter) {
  OutputPath = QStringLiteral("/tmp/earlier.mp4");
  CropFilter = QStringLiteral("1:2:3:4");
  SetRegion(9, 9, 9, 9);
  const DialogAnswers answers({CancelDialog()});
  Give(CropVideo);
  EXPECT_EQ(OutputPath.toStdString(), "/tmp/earlier.mp4");
  EXPECT_EQ(CropFilter.toStdString(), "1:2:3:4");
  EXPECT_EQ(JobWindow(), nullptr);
}

TEST_F(Commands, TheSaveDialogBeginsWithTheFirstKindOfFilesAgainAfterAnotherWasChosen) {
  Texts chosen;
  const auto kinds = [](QDialog& dialog) {
    return dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
  };
  const auto choose = [&](QDialog& dialog) {
    auto& files = dynamic_cast<QFileDialog&>(dialog);
    files.selectNameFilter(files.nameFilters().at(1));
    chosen.push_back(kinds(dialog)->currentText().trimmed().toStdString());
  };
  const auto read = [&](QDialog& dialog) {
    chosen.push_back(kinds(dialog)->currentText().trimmed().toStdString());
    dialog.reject();
  };
  const DialogAnswers answers({[&](QDialog& dialog) {
                                 choose(dialog);
                                 dialog.reject();
                               },
                               read,
                               [&](QDialog& dialog) {
                                 choose(dialog);
                                 TypeFile(QStringLiteral("/tmp/out.avi"))(dialog);
                               },
                               read});
  for (int times = 0; times < 4; ++times) Give(CropVideo);
  EXPECT_EQ(chosen, (Texts{"AVI Files (*.avi)", "MP4 Files (*.mp4)", "AVI Files (*.avi)",
                           "MP4 Files (*.mp4)"}));
}

TEST_F(Commands, ACancelledSaveDialogDoesNotTakeTheFileOfAnEarlierDialog) {
  LoadVideoOf(640, 360);
  CropFilter = QStringLiteral("1:2:3:4");
  const DialogAnswers answers({CancelDialog()});
  Give(CropVideo);
  EXPECT_EQ(OutputPath.toStdString(), "");
  EXPECT_EQ(CropFilter.toStdString(), "1:2:3:4");
  EXPECT_EQ(JobWindow(), nullptr);
}

TEST_F(Commands, ACancelledSaveDialogDoesNotTakeTheFileOfAnEarlierCrop) {
  SetRegion(1, 2, 3, 4);
  CropTo(QStringLiteral("/tmp/first.mp4"));
  ASSERT_NE(JobWindow(), nullptr);
  JobWindow()->close();
  ASSERT_EQ(JobWindow(), nullptr);
  SetRegion(9, 9, 9, 9);
  const DialogAnswers answers({CancelDialog()});
  Give(CropVideo);
  EXPECT_EQ(JobWindow(), nullptr);
  EXPECT_EQ(OutputPath.toStdString(), "/tmp/first.mp4");
  EXPECT_EQ(CropFilter.toStdString(), "1:2:3:4");
}

TEST_F(Commands, ACancelledOpenDialogAfterACropKeepsTheVideo) {
  const QString video = LoadVideoOf(640, 360);
  CropTo(tools_.File(QStringLiteral("there.mp4")));
  const DialogAnswers answers({CancelDialog()});
  Give(LoadVideo);
  EXPECT_EQ(Path().Text(), video);
  EXPECT_EQ(VideoPath, video);
  EXPECT_EQ(tools_.Runs().size(), 2U);
}

TEST_F(Commands, ACancelledOpenDialogDoesNotTakeTheFileOfAnEarlierDialog) {
  CropTo(tools_.File(QStringLiteral("there.mp4")));
  const DialogAnswers answers({CancelDialog()});
  Give(LoadVideo);
  EXPECT_EQ(Path().Text().toStdString(), "");
  EXPECT_TRUE(tools_.Runs().empty());
  EXPECT_FALSE(Canvas().Visible());
}

}  // namespace
}  // namespace kelvane::testing
