// These tests give the command Load Video and end its dialog in different ways.
#include <dlfcn.h>

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>

#include "shared/SharedValues.h"
#include "support/FileDrag.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class Load : public MainWindowTest {
 protected:
  // Loads a file that is deleted as soon as the dialog of Load Video has closed.
  void PickAndDelete(const QString& file) const {
    const DialogAnswers answers({[&](QDialog& dialog) {
      QObject::connect(&dialog, &QDialog::finished, [&] { QFile::remove(file); });
      TypeFile(file)(dialog);
    }});
    Give(LoadVideo);
  }
};

TEST_F(Load, ShowsThePathAndTheCanvasAndProbesSizeAndThenDuration) {
  const QString video = LoadVideoOf(640, 360);
  EXPECT_EQ(Path().Text(), video);
  EXPECT_EQ(VideoPath, video);
  EXPECT_EQ(tools_.Runs(), (Texts{SizeRun(video), DurationRun(video)}));
  EXPECT_TRUE(Canvas().isVisible());
  EXPECT_TRUE(ProbeDimensionsDone);
  EXPECT_EQ(VideoDuration, "00:00:10");
}

TEST_F(Load, StartsFromTheMenuAsWell) {
  const QString video = tools_.MakeFile("a.mp4");
  const DialogAnswers answers({TypeFile(video)});
  ChooseMenuItem("Load Video to Crop");
  EXPECT_EQ(Path().Text(), video);
}

TEST_F(Load, ShowsADialogForAllFilesWithQtsOwnTitle) {
  Cancel(CropVideo);
  Texts seen;
  const DialogAnswers answers({[&](QDialog& dialog) {
    const auto& files = dynamic_cast<QFileDialog&>(dialog);
    seen.push_back(files.windowTitle().toStdString());
    seen.emplace_back(files.acceptMode() == QFileDialog::AcceptOpen ? "opens" : "saves");
    seen.push_back(files.nameFilters().join(", ").toStdString());
    seen.push_back("name: " + files.findChild<QLineEdit*>("fileNameEdit")->text().toStdString());
    dialog.reject();
  }});
  Give(LoadVideo);
  const std::string title = QFileDialog().windowTitle().toStdString();
  EXPECT_EQ(seen, (Texts{title, "opens", "*.* (*)", "name: "}));
}

TEST_F(Load, BeginsInTheDesktopFolder) {
  const QByteArray former = qgetenv("XDG_CONFIG_HOME");
  const QTemporaryDir home;
  const QString desk = home.filePath("Desk");
  ASSERT_TRUE(QDir().mkdir(desk));
  QFile settings(home.filePath("user-dirs.dirs"));
  ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
  settings.write("XDG_DESKTOP_DIR=\"" + desk.toUtf8() + "\"\n");
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
  former.isNull() ? qunsetenv("XDG_CONFIG_HOME") : qputenv("XDG_CONFIG_HOME", former);
  EXPECT_EQ(folder, desk);
}

TEST_F(Load, TurnsTheTimerOnAndAwaitsASizeEvenIfTheDialogIsCancelled) {
  ProbeDimensionsDone = true;
  const DialogAnswers answers({[&](QDialog& dialog) {
    EXPECT_TRUE(Get<Timer>("Timer2").Enabled());
    EXPECT_FALSE(ProbeDimensionsDone);
    dialog.reject();
  }});
  Give(LoadVideo);
  EXPECT_TRUE(Get<Timer>("Timer2").Enabled());
  EXPECT_FALSE(ProbeDimensionsDone);
  EXPECT_FALSE(Canvas().Visible());
  EXPECT_EQ(Path().Text(), "");
  EXPECT_TRUE(tools_.Runs().empty());
}

TEST_F(Load, LoadsThePlayersLibraryWhileTheDialogIsOpen) {
  const auto isLoaded = [] { return ::dlopen("libmpv.so.2", RTLD_LAZY | RTLD_NOLOAD) != nullptr; };
  const DialogAnswers answers({[&](QDialog& dialog) {
    EXPECT_TRUE(WaitFor(isLoaded));
    dialog.reject();
  }});
  Give(LoadVideo);
}

TEST_F(Load, TakesNoFileOfAnEarlierCropIfTheDialogIsCancelled) {
  CropTo(tools_.MakeFile("there.mp4"));
  Cancel(LoadVideo);
  EXPECT_EQ(Path().Text(), "");
  EXPECT_FALSE(Canvas().Visible());
}

TEST_F(Load, KeepsTheOldVideoIfTheDialogIsCancelled) {
  const QString video = LoadVideoOf(640, 360);
  Bar(LeftBar).setLeft(20);
  CropTo(tools_.MakeFile("there.mp4"));
  Cancel(LoadVideo);
  EXPECT_EQ(Path().Text(), video);
  EXPECT_EQ(VideoPath, video);
  EXPECT_EQ(VideoDuration, "00:00:10");
  EXPECT_EQ(Number(SourceWidth), "0,640");
  EXPECT_EQ(Bar(LeftBar).Left(), 20);
  EXPECT_TRUE(Canvas().Visible());
  EXPECT_FALSE(ProbeDimensionsDone);
  EXPECT_EQ(tools_.Runs().size(), 2U);
}

TEST_F(Load, OfTheSameFileRunsNoProbe) {
  const QString video = LoadVideoOf(640, 360);
  Pick(video);
  EXPECT_EQ(tools_.Runs().size(), 2U);
  EXPECT_EQ(Path().Text(), video);
  EXPECT_FALSE(ProbeDimensionsDone);
}

TEST_F(Load, OfAFirstFileThatWasDeletedShowsTheCanvasAndRunsNoProbe) {
  PickAndDelete(tools_.MakeFile("gone.mp4"));
  EXPECT_TRUE(tools_.Runs().empty());
  EXPECT_TRUE(Canvas().Visible());
}

TEST_F(Load, OfALaterFileThatWasDeletedProbesAnEmptyPathAndKeepsTheSize) {
  LoadVideoOf(640, 360);
  const Texts former = tools_.Runs();
  tools_.StreamProbeDoes({});
  tools_.DurationProbeDoes({});
  PickAndDelete(tools_.MakeFile("gone.mp4"));
  EXPECT_EQ(Path().Text(), "");
  EXPECT_EQ(VideoPath, "");
  EXPECT_EQ(tools_.Runs(), (Texts{former[0], former[1], SizeRun({}), DurationRun({})}));
  EXPECT_TRUE(Canvas().Visible());
  EXPECT_EQ(Number(SourceWidth), "0,640");
}

TEST_F(Load, OfANameWithABlankShowsAndProbesAReadableShortPath) {
  const QString video = tools_.MakeFile("my holiday clip.mp4");
  Pick(video, SizeText(640, 360), DurationText("00:00:10.00"));
  const QString path = Path().Text();
  EXPECT_EQ(QFileInfo(path).fileName(), "my_holiday_clip.mp4");
  EXPECT_EQ(QFileInfo(path).canonicalFilePath(), QFileInfo(video).canonicalFilePath());
  EXPECT_EQ(tools_.Runs(), (Texts{SizeRun(path), DurationRun(path)}));
}

using DroppedFile = Load;

TEST_F(DroppedFile, IsLoadedAsIfItHadBeenChosenAndTheOthersAreIgnored) {
  const QString first = tools_.MakeFile("first.mp4");
  ProbeDimensionsDone = true;
  tools_.StreamProbeDoes(PrintCommands(SizeText(640, 360)));
  tools_.DurationProbeDoes(PrintCommands(DurationText("00:00:10.00")));
  EXPECT_TRUE(DropFiles(*form_, {first, tools_.MakeFile("second.mp4")}));
  EXPECT_TRUE(tools_.Runs().empty()) << "the load began before the drop was answered";
  EXPECT_TRUE(WaitFor([&] { return Canvas().Visible(); }));
  EXPECT_EQ(Path().Text(), first);
  EXPECT_EQ(VideoPath, first);
  EXPECT_EQ(tools_.Runs(), (Texts{SizeRun(first), DurationRun(first)}));
  EXPECT_TRUE(Get<Timer>("Timer2").Enabled());
  EXPECT_EQ(Number(SourceWidth), "0,640");
  EXPECT_EQ(VideoDuration, "00:00:10");
}

TEST_F(DroppedFile, ThatIsNoVideoKeepsTheOldSizeAsAChosenOneDoes) {
  LoadVideoOf(640, 360);
  tools_.StreamProbeDoes("echo 'Invalid data found' >&2; exit 1");
  tools_.DurationProbeDoes("exit 1");
  const QString text = tools_.MakeFile("letter.txt");
  EXPECT_TRUE(DropFiles(Canvas(), {text}));
  EXPECT_TRUE(WaitFor([&] { return VideoPath == text; }));
  EXPECT_EQ(Number(SourceWidth), "0,640");
  EXPECT_EQ(VideoDuration, "00:00:10");
}

}  // namespace
}  // namespace kelvane::testing
