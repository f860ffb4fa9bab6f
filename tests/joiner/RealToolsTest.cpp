// Clips joined and wrapped by the real tools.
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "joiner/JoinTest.h"
#include "platform/App.h"
#include "support/Videos.h"

namespace kelvane::testing {
namespace {

class RealJoin : public JoinTest {
 protected:
  RealJoin() { UseRealToolsIn(tools_.Path()); }

  // The list file is written there, too.
  static void UseRealToolsIn(const QString& folder) {
    for (const char* tool : {"ffmpeg", "ffprobe"}) {
      const QString link = folder + QLatin1Char('/') + QLatin1String(tool);
      QFile::remove(link);
      EXPECT_TRUE(QFile::link(QStandardPaths::findExecutable(tool), link));
    }
    App::setPath(folder.toStdString());
  }

  // A clip with picture and sound; all of one encoding but for their length.
  QString MakeClip(const QString& name, int seconds) const {
    QString file = InFolder(name);
    EXPECT_TRUE(MakeVideo(file, QSize(320, 240), seconds));
    return file;
  }

  static constexpr double kFrame = 1.0 / 25;
};

TEST_F(RealJoin, ThreeClipsOfOneEncodingBecomeOneFileOfTheirLengthsSum) {
  for (const int seconds : {2, 3, 4}) {
    Add(MakeClip(QStringLiteral("clip%1.mp4").arg(seconds), seconds));
  }
  EXPECT_EQ(Rows(), (Texts{"1 | clip2.mp4 | 0", "2 | clip3.mp4 | 0", "3 | clip4.mp4 | 0"}));
  EXPECT_EQ(Shown(TotalDurationSeconds), "00,009");
  const QString output = InFolder("all.mp4");
  JoinTo(output);
  EXPECT_NEAR(VideoSeconds(output), 9, kFrame * 1.5);
  EXPECT_EQ(Pictures(output), 9 * 25);
}

TEST_F(RealJoin, NamesWithLettersOfAnyAlphabetAreJoined) {
  Add(MakeClip(QString::fromUtf8("Füße.mp4"), 2));
  Add(MakeClip(QString::fromUtf8("動画.mp4"), 2));
  const QString output = InFolder(QString::fromUtf8("größer.mp4"));
  JoinTo(output);
  EXPECT_EQ(Pictures(output), 4 * 25);
}

TEST_F(RealJoin, ABlankInASourcesPathDoesNotMatter) {
  Add(MakeClip("my clip.mp4", 2));
  Add(MakeClip("my other clip.mp4", 2));
  EXPECT_EQ(Rows().size(), 2U);
  const QString output = InFolder("all.mp4");
  JoinTo(output);
  EXPECT_EQ(DecodedPictures(output), 4 * 25);
}

TEST_F(RealJoin, EachSectionBecomesATransportStreamThatPlays) {
  Add(MakeClip("a.mp4", 2));
  Add(MakeClip(QString::fromUtf8("ü.mp4"), 3));
  TranscodeAll();
  for (const auto& [name, pictures] : std::vector<std::pair<const char*, int>>{
           {"intermediate01.ts", 50}, {"intermediate02.ts", 75}}) {
    EXPECT_EQ(Pictures(InFolder(name)), pictures) << name;
  }
}

// The tool's own word for the list that it reads.
TEST_F(RealJoin, AJoinMakesASectionOfItsOwnWords) {
  const QString clip = MakeClip("a.mp4", 20);
  Add(clip);
  JoinTo(InFolder("all.mp4"));
  EXPECT_EQ(Rows(), (Texts{"1 | a.mp4 | 20", "2 | a.mp4 | 0"}));
  EXPECT_EQ(Shown(TotalDurationSeconds), "00,022");
}

TEST_F(RealJoin, AnApostropheOrARemovedSectionSpoilsTheJoinAndNoFileIsTouched) {
  const QString first = MakeClip("a.mp4", 1);
  const QString second = MakeClip("it's.mp4", 1);
  const std::string before = ContentOf(first) + ContentOf(second);
  Add(first);
  Add(second);
  Add(first);
  JoinTo(InFolder("all.mp4"));
  EXPECT_EQ(DecodedPictures(InFolder("all.mp4")), 25) << "up to the apostrophe";
  EXPECT_EQ(ContentOf(first) + ContentOf(second), before);
  Remove(2);
  JoinTo(InFolder("none.mp4"));
  EXPECT_EQ(ContentOf(first) + ContentOf(second), before);
  EXPECT_FALSE(QFile::exists(InFolder("none.mp4")));
}

TEST_F(RealJoin, ANameWithAnApostropheMeansTheFileThatBearsItWithoutOne) {
  Add(MakeClip("it's.mp4", 1));
  MakeClip("its.mp4", 2);
  Add(MakeClip("b.mp4", 3));
  JoinTo(InFolder("all.mp4"));
  EXPECT_EQ(DecodedPictures(InFolder("all.mp4")), (2 + 3) * 25);
}

// What the joiner's own command lines can cost.
class CostOfAJoin : public RealJoin {
 protected:
  // Files that a command line names without a folder lie there as well.
  CostOfAJoin() { QDir::setCurrent(tools_.Path()); }
  ~CostOfAJoin() override { QDir::setCurrent(former_); }

  void WriteFile(const QString& name, const char* content) const {
    QFile file(InFolder(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

 private:
  const QString former_ = QDir::currentPath();
};

TEST_F(CostOfAJoin, AnOutputWhoseNameBeginsWithASectionsAndABlankEmptiesThatSection) {
  const QString first = MakeClip("a.mp4", 1);
  const QString second = MakeClip("b.mp4", 1);
  const std::string before = ContentOf(second);
  Add(first);
  Add(second);
  JoinTo(InFolder("a.mp4 + b.mp4"));
  EXPECT_EQ(ContentOf(first), "");
  EXPECT_EQ(ContentOf(second), before);
  EXPECT_FALSE(QFile::exists(InFolder("a.mp4 + b.mp4")));
}

TEST_F(CostOfAJoin, AnOutputWithABlankReplacesTheFileThatBearsThePartBeforeIt) {
  Add(MakeClip("a.mp4", 1));
  Add(MakeClip("b.mp4", 2));
  WriteFile("old.mp4", "no section");
  JoinTo(InFolder("old.mp4 holiday.mp4"));
  EXPECT_EQ(DecodedPictures(InFolder("old.mp4")), 3 * 25);
}

TEST_F(CostOfAJoin, AnOutputWithABlankReplacesTheFileInTheCurrentFolderThatALaterPartNames) {
  Add(MakeClip("a.mp4", 1));
  Add(MakeClip("b.mp4", 2));
  ASSERT_TRUE(QDir::current().mkdir("current"));
  WriteFile("current/holiday.mp4", "no section");
  QDir::setCurrent(InFolder("current"));
  JoinTo(InFolder("new.mp4 holiday.mp4"));
  EXPECT_NEAR(VideoSeconds(InFolder("current/holiday.mp4")), 3, 0.1) << "encoded anew";
}

TEST_F(CostOfAJoin, ABlankInTheOutputsFolderCanReplaceAFileAnywhere) {
  const QTemporaryDir elsewhere;
  const QString precious = elsewhere.filePath("precious.mp4");
  ASSERT_TRUE(QFile::copy(MakeClip("a.mp4", 1), precious));
  ASSERT_TRUE(QDir(tools_.Path()).mkpath("new.mp4 " + elsewhere.path()));
  Add(MakeClip("b.mp4", 2));
  JoinTo(InFolder("new.mp4 " + precious));
  EXPECT_NEAR(VideoSeconds(precious), 2, 0.1);
}

TEST_F(CostOfAJoin, ASectionThatIsChosenAsTheOutputIsLost) {
  const QString first = MakeClip("a.mp4", 1);
  const QString second = MakeClip("b.mp4", 2);
  Add(first);
  Add(second);
  JoinTo(second);
  EXPECT_EQ(DecodedPictures(second), 25) << "the first section's alone";
  JoinTo(first);
  EXPECT_LT(DecodedPictures(first), 25);
}

TEST_F(CostOfAJoin, AnApostropheAndALineBreakInANameAddALineToTheList) {
  MakeClip("a.mp4", 1);
  MakeClip("b.mp4", 2);
  const QString crafted = InFolder("a.mp4'\nfile 'b.mp4");
  WriteFile("a.mp4'\nfile 'b.mp4", "not a video");
  const DialogAnswers answers({[&](QDialog& dialog) {
    auto* files = qobject_cast<QFileDialog*>(&dialog);
    ASSERT_NE(files, nullptr);
    files->selectFile(crafted);
    dialog.accept();
  }});
  Give(AddVideoSection);
  ASSERT_EQ(PathsListed(), Texts{crafted.toStdString()});
  const QString output = InFolder("all.mp4");
  JoinTo(output);
  EXPECT_EQ(DecodedPictures(output), 3 * 25) << "of two files that nobody added";
}

TEST_F(CostOfAJoin, ABlankInASectionsNameCanMakeTranscodingReplaceAnotherFile) {
  MakeClip("clip.mp4", 1);
  WriteFile("precious.mp4", "somebody's work");
  WriteFile("clip.mp4 precious.mp4", "not a video");
  Add(InFolder("clip.mp4 precious.mp4"));
  TranscodeAll();
  EXPECT_EQ(DecodedPictures(InFolder("precious.mp4")), 25);
}

TEST_F(CostOfAJoin, ABlankInAFoldersNameCanMakeTranscodingReplaceAFileAnywhere) {
  MakeClip("clip.mp4", 1);
  QTemporaryDir elsewhere;
  const QString precious = elsewhere.filePath("precious.mp4");
  QFile file(precious);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();
  const QString crafted = "clip.mp4 " + precious;
  ASSERT_TRUE(QDir(tools_.Path()).mkpath("clip.mp4 " + elsewhere.path()));
  WriteFile(crafted, "not a video");
  Add(InFolder(crafted));
  TranscodeAll();
  EXPECT_EQ(DecodedPictures(precious), 25);
}

TEST_F(CostOfAJoin, AFileNamedAsATransportStreamGivesWayToIt) {
  Add(MakeClip("a.mp4", 1));
  WriteFile("intermediate01.ts", "of an earlier time");
  TranscodeAll();
  EXPECT_EQ(DecodedPictures(InFolder("intermediate01.ts")), 25);
}

TEST_F(CostOfAJoin, ASectionNamedAsATransportStreamIsReplacedBeforeItIsRead) {
  Add(MakeClip("a.mp4", 1));
  Add(MakeClip("intermediate01.ts", 2));
  TranscodeAll();
  EXPECT_EQ(DecodedPictures(InFolder("intermediate01.ts")), 25) << "of the first section";
  EXPECT_EQ(DecodedPictures(InFolder("intermediate02.ts")), 25) << "the same once more";
}

TEST_F(CostOfAJoin, AFileOfTheListsNameInTheProgramsFolderIsLost) {
  WriteFile("files.txt", "somebody's notes");
  Add(MakeClip("a.mp4", 1));
  JoinTo(InFolder("all.mp4"));
  EXPECT_EQ(ListFile(), "file '" + Path("a.mp4") + "'\r\n");
}

TEST_F(CostOfAJoin, ASecondWindowsListReplacesTheFirstOnesDuringTheWait) {
  Add(MakeClip("a.mp4", 1));
  const QString other = MakeClip("b.mp4", 2);
  Form4 second;
  second.Load();
  second.Show();
  {
    const DialogAnswers answers({TypeFile(other)});
    Release(second.Find<Label>(Member("Label1", AddVideoSection)), Qt::LeftButton);
  }
  DuringTheWait([&] {
    const DialogAnswers answers({TypeFile(InFolder("second.mp4")), PressButton(QMessageBox::Ok)});
    Release(second.Find<Label>(Member("Label1", JoinAllSections)), Qt::LeftButton);
  });
  JoinTo(InFolder("first.mp4"));
  EXPECT_EQ(DecodedPictures(InFolder("second.mp4")), 2 * 25);
  EXPECT_EQ(DecodedPictures(InFolder("first.mp4")), 2 * 25) << "the second window's section";
}

// As docs/faults.md tells the user to.
TEST_F(CostOfAJoin, AFalseSuccessIsExplainedByTheSameLineRunByHand) {
  Add(MakeClip("it's.mp4", 1));
  JoinTo(InFolder("all.mp4"));
  EXPECT_EQ(Shown(ProcessLine), "Process: Video Created.");
  QString printed;
  EXPECT_FALSE(RunTool("ffmpeg",
                       {"-f", "concat", "-safe", "0", "-i", InFolder("files.txt"), "-c", "copy",
                        "-y", InFolder("all.mp4")},
                       &printed));
  EXPECT_TRUE(printed.contains("Impossible to open")) << printed.toStdString();
}

}  // namespace
}  // namespace kelvane::testing
