// The choice of a video: the dialog, the shown name and the short path.
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>

#include "sections/SectionWindowTest.h"

namespace kelvane::testing {
namespace {

class FileChoice : public SectionWindowTest {
 protected:
  void Ask(Qt::MouseButton button = Qt::LeftButton) const {
    Release(Get<Label>("Label6", 0), button);
  }
  std::string Shown() const { return Get<TextBox>("Text1").Text().toStdString(); }
};

TEST_F(FileChoice, ShowsTheFileAndKeepsItsShortPath) {
  const QString video = tools_.File(QStringLiteral("a.mp4"));
  const DialogAnswers answers({TypeFile(video)});
  Ask();
  EXPECT_EQ(Shown(), video.toStdString());
  EXPECT_EQ(SectionSourceShortPath, video);
  EXPECT_EQ(answers.seen(), std::vector<std::string>{"Extract Section From Video"});
}

TEST_F(FileChoice, IsOfferedByEveryButton) {
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
    const DialogAnswers answers({CancelDialog()});
    Ask(button);
    EXPECT_TRUE(answers.AllGiven());
  }
}

TEST_F(FileChoice, OffersThreeKindsOfFilesTheFirstOfThemChosen) {
  const DialogAnswers answers({[](QDialog& dialog) {
    auto& files = dynamic_cast<QFileDialog&>(dialog);
    const auto& kinds = *files.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
    Texts offered;
    for (int kind = 0; kind < kinds.count(); ++kind) {
      offered.push_back(kinds.itemText(kind).toStdString());
    }
    EXPECT_EQ(offered, (Texts{"MP4 Files (*.mp4)", "AVI Files (*.avi)", "All Files (*.*)"}));
    EXPECT_EQ(kinds.currentText().toStdString(), "MP4 Files (*.mp4)");
    EXPECT_EQ(files.acceptMode(), QFileDialog::AcceptOpen);
    dialog.reject();
  }});
  Ask();
}

TEST_F(FileChoice, CancelledLeavesWhatWasThere) {
  const QString video = tools_.File(QStringLiteral("a.mp4"));
  const DialogAnswers answers({CancelDialog(), TypeFile(video), CancelDialog()});
  Ask();
  EXPECT_EQ(Shown(), "");
  EXPECT_EQ(SectionSourceShortPath.toStdString(), "");
  Ask();
  EXPECT_EQ(Shown(), video.toStdString());
  // Something else than the dialog's last file.
  Get<TextBox>("Text1").setText(QStringLiteral("typed by the user"));
  SectionSourceShortPath = QStringLiteral("/tmp/other.mp4");
  Ask();
  EXPECT_EQ(Shown(), "typed by the user");
  EXPECT_EQ(SectionSourceShortPath.toStdString(), "/tmp/other.mp4");
  EXPECT_TRUE(answers.AllGiven());
}

TEST_F(FileChoice, TwiceReplacesTheFirstAndLeavesTheTimeLine) {
  // What the labels would follow, were they drawn again.
  Get<TextBox>("Text4").setText(QStringLiteral("300"));
  const QImage before = Picture(Frame());
  const DialogAnswers answers({TypeFile(tools_.File(QStringLiteral("a.mp4"))),
                               TypeFile(tools_.File(QStringLiteral("b.avi")))});
  Ask();
  Ask();
  EXPECT_TRUE(QString::fromStdString(Shown()).endsWith("b.avi")) << Shown();
  EXPECT_TRUE(SectionSourceShortPath.endsWith("b.avi"));
  EXPECT_EQ(Picture(Frame()), before);
  EXPECT_EQ(Caption("Label16", 2), "1825");
  EXPECT_EQ(Caption("Label16", 0), "Video Duration hh:mm:ss: 00:00:00");
}

TEST_F(FileChoice, IsNotOfferedByTheRimOfTheButton) {
  const DialogAnswers none({});
  Click(Get<Label>("Label6", 1));
  PumpOnce();
  EXPECT_EQ(Shown(), "");
}

TEST_F(FileChoice, IsNotOfferedByThePressAlone) {
  const DialogAnswers none({});
  Press(Get<Label>("Label6", 0));
  PumpOnce();
  EXPECT_EQ(Shown(), "");
}

TEST_F(FileChoice, WithABlankInItsNameIsShownInFullAndKeptUnderAShortOne) {
  const QString video = tools_.File(QStringLiteral("my holiday clip.mp4"));
  const DialogAnswers answers({TypeFile(video)});
  Ask();
  EXPECT_EQ(Shown(), video.toStdString());
  EXPECT_FALSE(SectionSourceShortPath.contains(QLatin1Char(' ')));
  EXPECT_EQ(QFileInfo(SectionSourceShortPath).canonicalFilePath(),
            QFileInfo(video).canonicalFilePath());
}

TEST_F(FileChoice, ThatIsNoVideoIsTakenAsWell) {
  const QString text = tools_.File(QStringLiteral("notes.txt"));
  const DialogAnswers answers({TypeFile(text)});
  Ask();
  EXPECT_EQ(Shown(), text.toStdString());
  EXPECT_EQ(SectionSourceShortPath, text);
}

TEST_F(FileChoice, ThatVanishesAfterTheDialogIsShownAndHasNoShortPath) {
  const QString video = tools_.File(QStringLiteral("gone.mp4"));
  SectionSourceShortPath = QStringLiteral("/tmp/former.mp4");
  const DialogAnswers answers({[&](QDialog& dialog) {
    QObject::connect(&dialog, &QDialog::finished, [&] { QFile::remove(video); });
    TypeFile(video)(dialog);
  }});
  Ask();
  EXPECT_EQ(Shown(), video.toStdString());
  EXPECT_EQ(SectionSourceShortPath.toStdString(), "");
}

TEST_F(FileChoice, WithBlanksRoundItsNameIsShownWithoutThem) {
  const QString video = tools_.File(QStringLiteral("trailing.mp4  "));
  const DialogAnswers answers({TypeFile(video)});
  Ask();
  EXPECT_EQ(Shown(), video.trimmed().toStdString());
  EXPECT_EQ(QFileInfo(SectionSourceShortPath).canonicalFilePath(),
            QFileInfo(video).canonicalFilePath());
}

TEST_F(FileChoice, ForWhichNoShortPathCanBeMadeIsAMessageAndHasNone) {
  {
    const DialogAnswers first({TypeFile(tools_.File(QStringLiteral("one more clip.mp4")))});
    Ask();
  }
  const QString folder = QFileInfo(SectionSourceShortPath).path();
  // What the next ones would be called is taken.
  QStringList taken;
  for (int number = 1; number < 40; ++number) {
    const QString name = QStringLiteral("%1/%2.mov").arg(folder).arg(number);
    QFile file(name);
    if (!file.exists() && file.open(QIODevice::WriteOnly)) taken << name;
  }
  const QString video = tools_.File(QStringLiteral("another clip.mov"));
  const DialogAnswers answers({TypeFile(video), PressButton(QMessageBox::Ok)});
  Ask();
  for (const QString& name : taken) QFile::remove(name);
  ASSERT_EQ(answers.seen().size(), 2U);
  EXPECT_EQ(answers.seen()[1],
            "Error | An error occurred while obtaining the file path.\n\n"
            "The error number was:\t17\nThe error description:\tFile exists | exclamation | OK");
  EXPECT_EQ(Shown(), video.toStdString());
  EXPECT_EQ(SectionSourceShortPath.toStdString(), "");
}

}  // namespace
}  // namespace kelvane::testing
