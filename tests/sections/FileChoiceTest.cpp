// The choice of a video: the dialog, the path that is shown, and the short path.
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QtTest/QTest>

#include "platform/WindowsMediaPlayer.h"
#include "sections/SectionWindowTest.h"
#include "support/FileDrag.h"
#include "support/TabOrder.h"

namespace kelvane::testing {
namespace {

class FileChoice : public SectionWindowTest {
 protected:
  void Ask() const { Release(Get<Label>("Label6", 0)); }
  void Choose(const QString& file) const {
    const DialogAnswers answers({TypeFile(file)});
    Ask();
  }
  QString Shown() const { return Get<TextBox>("Text1").Text(); }
};

TEST_F(FileChoice, ShowsThePathInFullAndKeepsAShortOne) {
  const QString video = tools_.MakeFile("my holiday clip.mp4");
  Choose(video);
  EXPECT_EQ(Shown(), video);
  EXPECT_FALSE(SectionSourceShortPath.contains(' '));
  EXPECT_EQ(QFileInfo(SectionSourceShortPath).symLinkTarget(), video);
  const QString other = tools_.MakeFile("notes.txt");
  Choose(other);
  EXPECT_EQ(Shown(), other);
  EXPECT_EQ(SectionSourceShortPath, other);
  EXPECT_EQ(Get<WindowsMediaPlayer>("wmp").URL(), "");
  EXPECT_EQ(Get<Label>("Label16", 0).Caption(), "Video Duration hh:mm:ss: 00:00:00");
}

TEST_F(FileChoice, ShowsANameWithoutTheBlanksAroundIt) {
  const QString video = tools_.MakeFile("trailing.mp4  ");
  Choose(video);
  EXPECT_EQ(Shown(), video.trimmed());
  EXPECT_EQ(QFileInfo(SectionSourceShortPath).symLinkTarget(), video);
}

TEST_F(FileChoice, IsReachedByTabBeforeTheArrowsAndOpensItsDialogBySpace) {
  EXPECT_EQ(TabOrder(*form_), "Label6(0)\nLabel7(0)\nLabel7(1)");
  const DialogAnswers answers({CancelDialog()});
  QTest::keyClick(&Get<Label>("Label6", 0), Qt::Key_Space);
  EXPECT_EQ(answers.seen().size(), 1U);
}

TEST_F(FileChoice, OpensItsDialogAtTheReleaseOfAnyButtonOverTheCaption) {
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
    const DialogAnswers answers({CancelDialog()});
    Press(Get<Label>("Label6", 0), button);
    Click(Get<Label>("Label6", 1), button);  // the frame of the caption
    ServePendingEvents();
    EXPECT_EQ(answers.seen(), Texts{});
    Release(Get<Label>("Label6", 0), button);
    EXPECT_EQ(answers.seen(), Texts{"Extract Section From Video"});
  }
}

TEST_F(FileChoice, OffersThreeKindsOfExistingFiles) {
  const DialogAnswers answers({[](QDialog& dialog) {
    auto& files = dynamic_cast<QFileDialog&>(dialog);
    EXPECT_EQ(files.nameFilters().join(';'),
              QString("MP4 Files (*.mp4) (*.mp4);AVI Files (*.avi) (*.avi);All Files (*.*) (*)"));
    EXPECT_EQ(dialog.findChild<QComboBox*>("fileTypeCombo")->currentText(), "MP4 Files (*.mp4)");
    EXPECT_EQ(files.acceptMode(), QFileDialog::AcceptOpen);
    dialog.reject();
  }});
  Ask();
}

TEST_F(FileChoice, ChangesNothingIfTheDialogIsCancelled) {
  Choose(tools_.MakeFile("a.mp4"));
  Get<TextBox>("Text1").setText("typed by the user");
  SectionSourceShortPath = "/tmp/other.mp4";
  const DialogAnswers answers({CancelDialog()});
  Ask();
  EXPECT_EQ(Shown(), QString("typed by the user"));
  EXPECT_EQ(SectionSourceShortPath, QString("/tmp/other.mp4"));
}

TEST_F(FileChoice, LeavesNoShortPathToAFileThatVanishesAfterTheDialog) {
  SectionSourceShortPath = "/tmp/former.mp4";
  const QString video = tools_.MakeFile("gone.mp4");
  const DialogAnswers answers({[&](QDialog& dialog) {
    QObject::connect(&dialog, &QDialog::finished, [&] { QFile::remove(video); });
    TypeFile(video)(dialog);
  }});
  Ask();
  EXPECT_EQ(Shown(), video);
  EXPECT_EQ(SectionSourceShortPath, QString());
}

TEST_F(FileChoice, ReportsThatNoShortPathCanBeMadeAndKeepsNone) {
  Choose(tools_.MakeFile("one more clip.mp4"));
  const QString taken = QFileInfo(SectionSourceShortPath).dir().filePath("another_clip.mov");
  ASSERT_TRUE(QFile::link("nowhere", taken));
  const QString video = tools_.MakeFile("another clip.mov");
  const DialogAnswers answers({TypeFile(video), PressButton(QMessageBox::Ok)});
  Ask();
  QFile::remove(taken);
  EXPECT_EQ(answers.seen(),
            (Texts{"Extract Section From Video",
                   "Error | An error occurred while obtaining the file path.\n\n"
                   "The error number was:\t17\nThe error description:\tFile exists | exclamation | "
                   "OK"}));
  EXPECT_EQ(Shown(), video);
  EXPECT_EQ(SectionSourceShortPath, QString());
}

TEST_F(FileChoice, IsNotMadeByADrop) {
  EXPECT_FALSE(FileDrag(QStringList{tools_.MakeFile("a.mp4")}).Enter(*form_));
}

}  // namespace
}  // namespace kelvane::testing
