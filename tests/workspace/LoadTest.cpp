// Load Video: the dialog, the path, and what stands after each way out of it.
#include <sys/stat.h>

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>

#include "shared/SharedValues.h"
#include "support/AllocationFailure.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class Load : public MainWindowTest {};

TEST_F(Load, APickedFileIsPutOnShowAndProbedForSizeAndThenDuration) {
  const QString video = LoadVideoOf(640, 360);
  EXPECT_EQ(Path().Text(), video);
  EXPECT_EQ(VideoPath, video);
  EXPECT_EQ(tools_.Runs(), (Texts{SizeRun(video), DurationRun(video)}));
  EXPECT_TRUE(Canvas().isVisible());
  EXPECT_TRUE(ProbeDimensionsDone);
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:10");
}

TEST_F(Load, TheMenuItemDoesTheSame) {
  const QString video = tools_.File(QStringLiteral("a.mp4"));
  const DialogAnswers answers({TypeFile(video)});
  for (QAction* action : form_->findChildren<QAction*>()) {
    if (action->text() == QLatin1String("Load Video to Crop")) action->trigger();
  }
  EXPECT_EQ(Path().Text(), video);
}

TEST_F(Load, TheDialogComesWithTheTimerOnAndTheSizeUnknown) {
  ProbeDimensionsDone = true;
  Texts seen;
  const DialogAnswers answers({[&](QDialog& dialog) {
    seen.emplace_back(Get<Timer>("Timer2").Enabled() ? "timer on" : "timer off");
    seen.emplace_back(ProbeDimensionsDone ? "size known" : "size unknown");
    dialog.reject();
  }});
  Give(LoadVideo);
  EXPECT_EQ(seen, (Texts{"timer on", "size unknown"}));
}

TEST_F(Load, TheDialogHasQtsTitleAndTakesEveryFile) {
  Texts seen;
  const DialogAnswers answers({[&](QDialog& dialog) {
    const auto& files = dynamic_cast<QFileDialog&>(dialog);
    seen.push_back(files.windowTitle().toStdString());
    seen.emplace_back(files.acceptMode() == QFileDialog::AcceptOpen ? "opens" : "saves");
    seen.push_back(files.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"))
                       ->currentText()
                       .trimmed()
                       .toStdString());
    seen.push_back(
        files.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text().toStdString());
    dialog.reject();
  }});
  const QString plainTitle = [] {
    const QFileDialog plain;
    return plain.windowTitle();
  }();
  Give(LoadVideo);
  ASSERT_EQ(seen.size(), 4U);
  EXPECT_EQ(seen[0], plainTitle.toStdString());
  EXPECT_EQ(seen[1], "opens");
  EXPECT_EQ(seen[2], "*.*");
  EXPECT_EQ(seen[3], "");
}

TEST_F(Load, TheDialogListsFilesWithoutAnExtensionAsWell) {
  bool listed = false;
  const DialogAnswers answers({[&](QDialog& dialog) {
    dynamic_cast<QFileDialog&>(dialog).setDirectory(tools_.Path());
    const auto* list = dialog.findChild<QListView*>(QStringLiteral("listView"));
    listed = WaitFor([&] {
      const QModelIndex folder = list->rootIndex();
      return !list->model()
                  ->match(list->model()->index(0, 0, folder), Qt::DisplayRole,
                          QStringLiteral("ffprobe"), 1, Qt::MatchExactly)
                  .isEmpty();
    });
    dialog.reject();
  }});
  Give(LoadVideo);
  EXPECT_TRUE(listed);
}

TEST_F(Load, TheDialogKeepsQtsTitleAfterASaveDialogWithItsOwn) {
  const DialogAnswers answers({CancelDialog(), CancelDialog()});
  Give(CropVideo);
  Give(LoadVideo);
  ASSERT_EQ(answers.seen().size(), 2U);
  EXPECT_EQ(answers.seen()[0], "Save Cropped Video As");
  EXPECT_EQ(answers.seen()[1], QFileDialog().windowTitle().toStdString());
}

TEST_F(Load, TheDialogTakesEveryFileAfterASaveDialogAsWell) {
  Texts kinds;
  const DialogAnswers answers({CancelDialog(), [&](QDialog& dialog) {
                                 const auto* box =
                                     dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
                                 for (int kind = 0; kind < box->count(); ++kind) {
                                   kinds.push_back(box->itemText(kind).trimmed().toStdString());
                                 }
                                 dialog.reject();
                               }});
  Give(CropVideo);
  Give(LoadVideo);
  EXPECT_EQ(kinds, Texts{"*.*"});
}

TEST_F(Load, TheDialogBeginsOnTheDesktop) {
  const QByteArray former = qgetenv("XDG_CONFIG_HOME");
  const QTemporaryDir home;
  ASSERT_TRUE(QDir(home.path()).mkdir(QStringLiteral("Desk")));
  QFile settings(home.path() + QLatin1String("/user-dirs.dirs"));
  ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
  settings.write("XDG_DESKTOP_DIR=\"" + home.path().toUtf8() + "/Desk\"\n");
  settings.close();
  qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
  QString folder;
  {
    const DialogAnswers answers({[&](QDialog& dialog) {
      folder = dynamic_cast<QFileDialog&>(dialog).directory().path();
      dialog.reject();
    }});
    Give(LoadVideo);
  }
  if (former.isNull()) {
    qunsetenv("XDG_CONFIG_HOME");
  } else {
    qputenv("XDG_CONFIG_HOME", former);
  }
  EXPECT_EQ(folder, home.path() + QLatin1String("/Desk"));
}

TEST_F(Load, CancellingTheFirstDialogLeavesTheTimerOnAndNothingElse) {
  const DialogAnswers answers({CancelDialog()});
  Give(LoadVideo);
  EXPECT_TRUE(Get<Timer>("Timer2").Enabled());
  EXPECT_FALSE(ProbeDimensionsDone);
  EXPECT_FALSE(Canvas().Visible());
  EXPECT_EQ(Path().Text().toStdString(), "");
  EXPECT_TRUE(tools_.Runs().empty());
}

TEST_F(Load, CancellingASecondDialogKeepsTheVideo) {
  const QString video = LoadVideoOf(640, 360);
  Bar(LeftBar).setLeft(20);
  const DialogAnswers answers({CancelDialog()});
  Give(LoadVideo);
  EXPECT_EQ(Path().Text(), video);
  EXPECT_EQ(VideoPath, video);
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:10");
  EXPECT_EQ(Number(SourceWidth), "0,640");
  EXPECT_EQ(Bar(LeftBar).Left(), 20);
  EXPECT_TRUE(Canvas().Visible());
  EXPECT_FALSE(ProbeDimensionsDone);
  EXPECT_TRUE(Get<Timer>("Timer2").Enabled());
  EXPECT_EQ(tools_.Runs().size(), 2U);
}

TEST_F(Load, PickingTheSameFileAgainRunsNoProbe) {
  const QString video = LoadVideoOf(640, 360);
  Pick(video);
  EXPECT_EQ(tools_.Runs().size(), 2U);
  EXPECT_EQ(Path().Text(), video);
  EXPECT_FALSE(ProbeDimensionsDone);
}

TEST_F(Load, AFileThatVanishesAfterTheDialogIsAnEmptyPathAndIsProbedAsSuch) {
  LoadVideoOf(640, 360);
  const QString video = tools_.File(QStringLiteral("gone.mp4"));
  tools_.SizeProbeDoes(QString());
  tools_.DurationProbeDoes(QString());
  const DialogAnswers answers({[&](QDialog& dialog) {
    QObject::connect(&dialog, &QDialog::finished, [&] { QFile::remove(video); });
    TypeFile(video)(dialog);
  }});
  Give(LoadVideo);
  EXPECT_EQ(Path().Text().toStdString(), "");
  EXPECT_EQ(VideoPath.toStdString(), "");
  const Texts runs = tools_.Runs();
  EXPECT_EQ(Texts(runs.begin() + 2, runs.end()),
            (Texts{SizeRun(QString()), DurationRun(QString())}));
  EXPECT_TRUE(Canvas().Visible());
  EXPECT_EQ(Number(SourceWidth), "0,640");
}

TEST_F(Load, AFirstFileThatVanishesAfterTheDialogShowsTheCanvasAndProbesNothing) {
  const QString video = tools_.File(QStringLiteral("gone.mp4"));
  const DialogAnswers answers({[&](QDialog& dialog) {
    QObject::connect(&dialog, &QDialog::finished, [&] { QFile::remove(video); });
    TypeFile(video)(dialog);
  }});
  Give(LoadVideo);
  EXPECT_TRUE(tools_.Runs().empty());
  EXPECT_TRUE(Canvas().Visible());
}

TEST_F(Load, AFileWithABlankInItsNameGoesInUnderAShortPathOfItsOwn) {
  const QString video = tools_.File(QStringLiteral("my holiday clip.mp4"));
  Pick(video, SizeText(640, 360), DurationText("00:00:10.00"));
  const QString path = Path().Text();
  EXPECT_FALSE(path.contains(QLatin1Char(' '))) << path.toStdString();
  EXPECT_TRUE(path.endsWith(QLatin1String(".mp4"))) << path.toStdString();
  EXPECT_EQ(QFileInfo(path).canonicalFilePath(), QFileInfo(video).canonicalFilePath());
  EXPECT_EQ(tools_.Runs(), (Texts{SizeRun(path), DurationRun(path)}));
}

TEST_F(Load, WhereNoShortPathCanBeMadeAMessageSaysWhyAndThePathIsEmpty) {
  Pick(tools_.File(QStringLiteral("one more clip.mp4")));
  const QString folder = QFileInfo(Path().Text()).path();
  // What the next ones would be called is taken.
  QStringList taken;
  for (int number = 1; number < 20; ++number) {
    const QString name = QStringLiteral("%1/%2.mov").arg(folder).arg(number);
    QFile file(name);
    if (!file.exists() && file.open(QIODevice::WriteOnly)) taken << name;
  }
  const DialogAnswers answers(
      {TypeFile(tools_.File(QStringLiteral("another clip.mov"))), PressButton(QMessageBox::Ok)});
  Give(LoadVideo);
  for (const QString& name : taken) QFile::remove(name);
  ASSERT_EQ(answers.seen().size(), 2U);
  EXPECT_EQ(answers.seen()[1],
            "Error | An error occurred while obtaining the file path.\n\n"
            "The error number was:\t17\nThe error description:\tFile exists | exclamation | OK");
  EXPECT_EQ(Path().Text().toStdString(), "");
  EXPECT_TRUE(Canvas().Visible());
}

// Errors of the run itself.
class Trap : public MainWindowTest {
 protected:
  // Of the object that runs a tool, alone or together with its owners' count.
  static void FailNextRunner() {
    FailNextAllocation(sizeof(DOSOutputs), sizeof(DOSOutputs) + 4 * sizeof(void*));
  }
};

TEST_F(Trap, ALoadThatCannotMakeItsRunnerSaysSoAndProbesNothing) {
  Before(Path().Change, [](int) { FailNextRunner(); });
  const QString video = tools_.File(QStringLiteral("a.mp4"));
  const DialogAnswers answers({TypeFile(video), PressButton(QMessageBox::Ok)});
  Give(LoadVideo);
  EXPECT_TRUE(AllocationHasFailed());
  ASSERT_EQ(answers.seen().size(), 2U);
  EXPECT_EQ(answers.seen()[1],
            "Kelvane | An Error Occurred trying to get Video Dimensions. | no icon | OK");
  EXPECT_TRUE(tools_.Runs().empty());
  EXPECT_EQ(VideoPath, video);
  EXPECT_FALSE(ProbeDimensionsDone);
  EXPECT_TRUE(Canvas().Visible());
}

TEST_F(Trap, AnErrorWhileABlockIsTakenIsSkippedAndTheToolRunsToItsEnd) {
  const Gate gate(tools_.PathOf("gate"));
  const QString whole = tools_.Path() + QLatin1String("/whole");
  tools_.SizeProbeDoes(Print(SizeText(1920, 1080)));
  tools_.DurationProbeDoes(Print(BlockEndingIn(QStringLiteral("one\n"))) + Wait(gate) +
                           Print(QStringLiteral("Duration: 00:00:05.00\n")) +
                           QStringLiteral("echo whole > '%1'\n").arg(whole));
  bool failed = false;
  Get<TextBox>("Text2").Change = [&, first = true](int) mutable {
    if (std::exchange(first, false)) {
      FailNextAllocation(257, 700);  // of the text in which the duration is looked for
      gate.Open();
    } else if (!failed) {
      failed = AllocationHasFailed();
    }
  };
  Pick(tools_.File(QStringLiteral("a.mp4")));
  EXPECT_TRUE(failed);
  EXPECT_TRUE(QFile::exists(whole));
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:05");
  EXPECT_TRUE(Store().endsWith(QLatin1String("one\nDuration: 00:00:05.00\n")));
}

TEST_F(Trap, AShortPathForWhichMemoryIsShortIsAMessageAndThePathIsEmpty) {
  // A path of so many folders is the only thing of its size when it is taken to pieces.
  QString folder = tools_.Path();
  for (int depth = 0; depth < 100; ++depth) folder += QLatin1String("/d");
  ASSERT_TRUE(QDir().mkpath(folder));
  const QString video = folder + QLatin1String("/my clip.mp4");
  QFile file(video);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();
  const DialogAnswers answers({[&](QDialog& dialog) {
                                 QObject::connect(&dialog, &QObject::destroyed,
                                                  [] { FailNextAllocation(3000, 20000); });
                                 TypeFile(video)(dialog);
                               },
                               PressButton(QMessageBox::Ok)});
  Give(LoadVideo);
  EXPECT_TRUE(AllocationHasFailed());
  ASSERT_EQ(answers.seen().size(), 2U);
  EXPECT_EQ(answers.seen()[1],
            "Error | An error occurred while obtaining the file path.\n\n"
            "The error number was:\t12\nThe error description:\tstd::bad_alloc | exclamation | OK");
  EXPECT_EQ(Path().Text().toStdString(), "");
  EXPECT_TRUE(tools_.Runs().empty());
  EXPECT_TRUE(Canvas().Visible());
}

TEST_F(Trap, AfterSuchALoadTheNextOneRuns) {
  {
    Before(Path().Change, [first = true](int) mutable {
      if (std::exchange(first, false)) FailNextRunner();
    });
    const DialogAnswers answers(
        {TypeFile(tools_.File(QStringLiteral("a.mp4"))), PressButton(QMessageBox::Ok)});
    Give(LoadVideo);
  }
  EXPECT_TRUE(AllocationHasFailed());
  LoadVideoOf(640, 360);
  EXPECT_EQ(Number(SourceWidth), "0,640");
}

TEST_F(Trap, APreviewThatCannotMakeItsRunnerSaysSoAndPlaysNothing) {
  LoadVideoOf(640, 360);
  const DialogAnswers answers({PressButton(QMessageBox::Ok)});
  Before(Get<Label>("Label14", PreviewCroppedVideo).MouseUp,
         [](const MouseEvent&) { FailNextRunner(); });
  Give(PreviewCroppedVideo);
  EXPECT_TRUE(AllocationHasFailed());
  EXPECT_EQ(answers.seen(),
            Texts{"Kelvane | An Error Occurred trying to create Video preview. | no icon | OK"});
  EXPECT_EQ(tools_.Runs().size(), 2U);
}

}  // namespace
}  // namespace kelvane::testing
