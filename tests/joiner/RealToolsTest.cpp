// Joins by the real tools.
#include <QFileDialog>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "joiner/JoinerWindowTest.h"
#include "support/Snapshot.h"
#include "support/Videos.h"

namespace kelvane::testing {
namespace {

// The tools' folder is the current one, in which the tools look for names without a folder.
class RealJoin : public JoinerWindowTest {
 protected:
  RealJoin() {
    for (const char* tool : {"ffmpeg", "ffprobe"}) {
      tools_.Remove(tool);
      EXPECT_TRUE(QFile::link(QStandardPaths::findExecutable(tool), InFolder(tool)));
    }
    QDir::setCurrent(tools_.Path());
  }
  ~RealJoin() override { QDir::setCurrent(former_); }

  // Makes a clip; all clips have one encoding. Returns its path.
  QString MakeClip(const QString& name, int seconds) const {
    QString file = InFolder(name);
    EXPECT_TRUE(MakeVideo(file, QSize(320, 240), seconds));
    return file;
  }
  QString AddClip(const QString& name, int seconds) const {
    QString file = MakeClip(name, seconds);
    Add(file);
    return file;
  }
  static constexpr int kFrames = 25;  // in a second

 private:
  const QString former_ = QDir::currentPath();
};

TEST_F(RealJoin, MakesOneFileOfClipsWhoseNamesHaveBlanksAndAnyLetters) {
  AddClip("my clip.mp4", 2);
  AddClip("Füße.mp4", 3);
  AddClip("動画.mp4", 4);
  EXPECT_EQ(Rows(), (Texts{"1 | my clip.mp4 | 0", "2 | Füße.mp4 | 0", "3 | 動画.mp4 | 0"}));
  EXPECT_EQ(Shown(TotalDurationSeconds), "00,009");
  const QString output = InFolder("größer.mp4");
  JoinTo(output);
  EXPECT_NEAR(VideoSeconds(output), 9, 1.5 / kFrames);
  EXPECT_EQ(DecodedPictures(output), 9 * kFrames);
}

TEST_F(RealJoin, AddsASectionForTheDurationThatItsToolPrints) {
  AddClip("a.mp4", 20);
  JoinTo(InFolder("all.mp4"));
  EXPECT_EQ(Rows(), (Texts{"1 | a.mp4 | 20", "2 | a.mp4 | 0"}));
  EXPECT_EQ(Shown(TotalDurationSeconds), "00,022");
}

TEST_F(RealJoin, MakesNoFileIfItsFirstSectionIsRemoved) {
  const QString first = AddClip("a.mp4", 1);
  const std::string before = ContentOf(first);
  Add(first);
  Remove(2);
  JoinTo(InFolder("all.mp4"));
  EXPECT_FALSE(QFile::exists(InFolder("all.mp4")));
  EXPECT_EQ(ContentOf(first), before);
}

TEST_F(RealJoin, ReadsANameWithoutItsApostropheAndEndsTheOutputThereIfThatFileIsMissing) {
  const QString clip = AddClip("a.mp4", 1);
  const QString quoted = AddClip("it's.mp4", 1);
  Add(clip);
  const std::string before = ContentOf(clip) + ContentOf(quoted);
  const QString output = InFolder("all.mp4");
  JoinTo(output);
  EXPECT_EQ(DecodedPictures(output), kFrames);
  EXPECT_EQ(ContentOf(clip) + ContentOf(quoted), before);

  MakeClip("its.mp4", 2);
  JoinTo(output);
  EXPECT_EQ(DecodedPictures(output), (1 + 2 + 1) * kFrames);
}

TEST_F(RealJoin, JoinsTheFilesThatASectionNamesIfItIsAList) {
  AddClip("a.mp4", 1);
  MakeClip("b.mp4", 2);
  QFile list(InFolder("list.mp4"));
  ASSERT_TRUE(list.open(QIODevice::WriteOnly));
  list.write("ffconcat version 1.0\nfile b.mp4\n");
  list.close();
  Add(list.fileName());
  JoinTo(InFolder("all.mp4"));
  EXPECT_EQ(DecodedPictures(InFolder("all.mp4")), (1 + 2) * kFrames);
}

// docs/faults.md tells the user to run this line.
TEST_F(RealJoin, PrintsWhyItFailsIfItsLineIsRunByHand) {
  AddClip("it's.mp4", 1);
  EXPECT_EQ(JoinTo(InFolder("all.mp4")), (Texts{"Save Video As", kSuccess}));
  QString printed;
  EXPECT_FALSE(RunTool("ffmpeg",
                       {"-f", "concat", "-safe", "0", "-i", InFolder("files.txt"), "-c", "copy",
                        "-y", InFolder("all.mp4")},
                       &printed));
  EXPECT_TRUE(printed.contains("Impossible to open")) << printed.toStdString();
}

TEST_F(RealJoin, InTheOtherModeMakesTransportStreamsThatPlayAndReplaceFilesOfTheirNames) {
  AddClip("a.mp4", 2);
  AddClip("ü.mp4", 3);
  tools_.MakeFile("intermediate01.ts");
  TranscodeAll();
  EXPECT_EQ(PicturesWithoutComplaint(InFolder("intermediate01.ts")), 2 * kFrames);
  EXPECT_EQ(PicturesWithoutComplaint(InFolder("intermediate02.ts")), 3 * kFrames);
}

class JoinRemarks : public RealJoin, public ::testing::WithParamInterface<NewName> {};

// The second section is removed.
TEST_P(JoinRemarks, SayWhatTheToolDoes) {
  AddClip("a.mp4", 1);
  AddClip("b.mp4", 1);
  AddClip("c.mp4", 1);
  Remove(3);
  ASSERT_TRUE(QFile::link(InFolder("c.mp4"), InFolder("link.mp4")));
  ASSERT_TRUE(QDir(tools_.Path()).mkdir("folder.mp4"));
  for (const char* old : {"old.mp4", "old"}) tools_.MakeFile(old);
  tools_.MakeFile("files.txt");
  const Snapshot before(tools_.Path());
  QString remark;
  Join(TypeNameInFolder(InFolder(GetParam().typed), remark));
  EXPECT_EQ(remark, QString(GetParam().remark).replace("FOLDER", tools_.Path()));
  Texts changed = before.Changed();
  std::erase(changed, "files.txt");
  EXPECT_EQ(changed, GetParam().changed);
}

const QString kReplaced = "This file exists: it will be replaced.";
const QString kKept = "This file exists: it will be kept, and nothing written.";
const QString kNoFormat = "Without an extension the tool knows no format.";

QString Section(int number) {
  return QStringLiteral("This is section %1 of the list: the join would destroy it.").arg(number);
}
QString Cut(const QString& name) {
  return "The blank ends the name: FOLDER/" + name + ". The rest is taken for further files.";
}

INSTANTIATE_TEST_SUITE_P(
    RealTools, JoinRemarks,
    ::testing::Values(
        NewName{"New", "new.mp4", "", {"new.mp4"}},
        NewName{"Existing", "old.mp4", kReplaced, {"old.mp4"}},
        NewName{"ARemovedSection", "b.mp4", kReplaced, {"b.mp4"}},
        NewName{"Section", "a.mp4", Section(1), {"a.mp4"}},
        NewName{"LinkToASection", "link.mp4", Section(3), {"c.mp4", "link.mp4"}},
        NewName{"SectionBeforeABlank",
                "c.mp4 new.mp4",
                Section(3) + ' ' + Cut("c.mp4"),
                {"c.mp4", "link.mp4", "new.mp4"}},
        NewName{"ExistingBeforeABlank",
                "old.mp4 new.mp4",
                kReplaced + ' ' + Cut("old.mp4"),
                {"new.mp4", "old.mp4"}},
        NewName{"AFolderBeforeABlank", "folder.mp4 new.mp4", Cut("folder.mp4") + ' ' + kKept, {}},
        NewName{"ExistingWithoutAnExtension", "old", kKept + ' ' + kNoFormat, {}},
        NewName{"NoFolder", "missing/new.mp4", "No file can be written in this folder.", {}}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(RealJoin, WithoutAFirstSectionKeepsWhatExistsAsTheDialogSays) {
  const QString old = tools_.MakeFile("old.mp4");
  QString remark;
  Join(TypeNameInFolder(old, remark));
  EXPECT_EQ(remark, kKept);
  EXPECT_EQ(ContentOf(old), "contents");
}

TEST_F(RealJoin, OpensAFirstSectionByItsNameWithoutTheApostropheAsTheDialogSays) {
  // Behind the apostrophe, a backslash keeps the blank from ending the name.
  AddClip("it's\\ one.mp4", 1);
  const QString old = tools_.MakeFile("old.mp4");
  QString remark;
  Join(TypeNameInFolder(old, remark));
  EXPECT_EQ(remark, kKept);
  EXPECT_EQ(ContentOf(old), "contents");
  MakeClip("its one.mp4", 1);
  Join(TypeNameInFolder(old, remark));
  EXPECT_EQ(remark, kReplaced);
  EXPECT_NE(ContentOf(old), "contents");
}

// The backslash escapes the apostrophe with which the list's line ends.
TEST_F(RealJoin, OpensAFirstSectionThatEndsInABackslashByAnotherNameAsTheDialogSays) {
  const QString clip = MakeClip("clip.mp4", 1);
  ASSERT_TRUE(QFile::copy(clip, InFolder("it's\\")));
  Add(InFolder("it's\\"));
  const QString old = tools_.MakeFile("old.mp4");
  QString remark;
  Join(TypeNameInFolder(old, remark));
  EXPECT_EQ(remark, kKept);
  EXPECT_EQ(ContentOf(old), "contents");
  ASSERT_TRUE(QFile::copy(clip, InFolder("its'")));
  Join(TypeNameInFolder(old, remark));
  EXPECT_EQ(remark, kReplaced);
  EXPECT_NE(ContentOf(old), "contents");
}

// The files that the joiner's command lines can cost the user.
using CostOfAJoin = RealJoin;

TEST_F(CostOfAJoin, AnOutputWithASectionsNameBeforeABlankEmptiesThatSection) {
  const QString first = AddClip("a.mp4", 1);
  const QString second = AddClip("b.mp4", 1);
  const std::string before = ContentOf(second);
  JoinTo(InFolder("a.mp4 + b.mp4"));
  EXPECT_EQ(ContentOf(first), "");
  EXPECT_EQ(ContentOf(second), before);
  EXPECT_FALSE(QFile::exists(InFolder("a.mp4 + b.mp4")));
}

TEST_F(CostOfAJoin, AnOutputWithABlankReplacesTheFileOfEachPart) {
  AddClip("a.mp4", 1);
  AddClip("b.mp4", 2);
  tools_.MakeFile("old.mp4");
  ASSERT_TRUE(QDir::current().mkdir("current"));
  tools_.MakeFile("current/holiday.mp4");
  QDir::setCurrent(InFolder("current"));
  JoinTo(InFolder("old.mp4 holiday.mp4"));
  EXPECT_EQ(DecodedPictures(InFolder("old.mp4")), 3 * kFrames);
  EXPECT_NEAR(VideoSeconds(InFolder("current/holiday.mp4")), 3, 0.1) << "this file is re-encoded";
}

TEST_F(CostOfAJoin, ABlankInTheOutputsFolderCanReplaceAFileAnywhere) {
  const QTemporaryDir elsewhere;
  const QString precious = elsewhere.filePath("precious.mp4");
  ASSERT_TRUE(QFile::copy(MakeClip("a.mp4", 1), precious));
  ASSERT_TRUE(QDir::current().mkpath("new.mp4 " + elsewhere.path()));
  AddClip("b.mp4", 2);
  JoinTo(InFolder("new.mp4 " + precious));
  EXPECT_NEAR(VideoSeconds(precious), 2, 0.1);
}

TEST_F(CostOfAJoin, ASectionThatIsChosenAsTheOutputIsLost) {
  const QString first = AddClip("a.mp4", 1);
  const QString second = AddClip("b.mp4", 2);
  JoinTo(second);
  EXPECT_EQ(DecodedPictures(second), kFrames)
      << "the pictures must be those of the first section alone";
  JoinTo(first);
  EXPECT_LT(DecodedPictures(first), kFrames);
}

TEST_F(CostOfAJoin, AnOutputThatIsAListReplacesTheFilesOfItsPiecesEvenASection) {
  const QString section = AddClip("all0.ts", 2);
  const std::string before = ContentOf(section);
  tools_.MakeFile("all.m3u8");
  JoinTo(InFolder("all.m3u8"));
  EXPECT_NE(ContentOf(section), before);
  EXPECT_EQ(ContentOf(InFolder("all.m3u8")).substr(0, 7), "#EXTM3U");
}

TEST_F(CostOfAJoin, AnApostropheAndALineBreakInANameAddALineToTheList) {
  MakeClip("a.mp4", 1);
  MakeClip("b.mp4", 2);
  const QString crafted = tools_.MakeFile("a.mp4'\nfile 'b.mp4");
  const DialogAnswers answers({[&](QDialog& dialog) {
    dynamic_cast<QFileDialog&>(dialog).selectFile(crafted);
    dialog.accept();
  }});
  Give(AddVideoSection);
  ASSERT_EQ(PathsListed(), Texts{crafted.toStdString()});
  JoinTo(InFolder("all.mp4"));
  EXPECT_EQ(DecodedPictures(InFolder("all.mp4")), 3 * kFrames) << "of two files never added";
}

TEST_F(CostOfAJoin, ABlankInASectionsNameCanMakeTranscodingReplaceAnotherFile) {
  MakeClip("clip.mp4", 1);
  tools_.MakeFile("precious.mp4");
  Add(tools_.MakeFile("clip.mp4 precious.mp4"));
  TranscodeAll();
  EXPECT_EQ(DecodedPictures(InFolder("precious.mp4")), kFrames);
}

TEST_F(CostOfAJoin, ABlankInAFoldersNameCanMakeTranscodingReplaceAFileAnywhere) {
  MakeClip("clip.mp4", 1);
  const QTemporaryDir elsewhere;
  const QString precious = elsewhere.filePath("precious.mp4");
  ASSERT_TRUE(QFile::copy(InFolder("clip.mp4"), precious));
  ASSERT_TRUE(QFile::resize(precious, 0));
  ASSERT_TRUE(QDir::current().mkpath("clip.mp4 " + elsewhere.path()));
  Add(tools_.MakeFile("clip.mp4 " + precious));
  TranscodeAll();
  EXPECT_EQ(DecodedPictures(precious), kFrames);
}

TEST_F(CostOfAJoin, ASectionNamedAsATransportStreamIsReplacedBeforeItIsRead) {
  AddClip("a.mp4", 1);
  AddClip("intermediate01.ts", 2);
  TranscodeAll();
  EXPECT_EQ(DecodedPictures(InFolder("intermediate01.ts")), kFrames) << "of the first section";
  EXPECT_EQ(DecodedPictures(InFolder("intermediate02.ts")), kFrames) << "the same once more";
}

TEST_F(CostOfAJoin, AFileOfTheListsNameInTheProgramsFolderIsLost) {
  QFile notes(InFolder("files.txt"));
  ASSERT_TRUE(notes.open(QIODevice::WriteOnly));
  notes.write(QByteArray(1000, '.'));
  notes.close();
  AddClip("a.mp4", 1);
  JoinTo(InFolder("all.mp4"));
  EXPECT_EQ(ListFile(), ListLine("a.mp4"));
}

TEST_F(CostOfAJoin, ASecondWindowsListReplacesTheFirstOnesDuringTheWait) {
  AddClip("a.mp4", 1);
  const QString other = MakeClip("b.mp4", 2);
  Form4 second;
  second.Load();
  second.Show();
  const auto give = [&second](JoinerCommand command) {
    Release(second.Find<Label>(Member("Label1", command)));
  };
  {
    const DialogAnswers answers({TypeFile(other)});
    give(AddVideoSection);
  }
  DuringTheWait([&] {
    const DialogAnswers answers({TypeFile(InFolder("second.mp4")), PressButton(QMessageBox::Ok)});
    give(JoinAllSections);
  });
  JoinTo(InFolder("first.mp4"));
  EXPECT_EQ(DecodedPictures(InFolder("second.mp4")), 2 * kFrames);
  EXPECT_EQ(DecodedPictures(InFolder("first.mp4")), 2 * kFrames) << "the second window's section";
}

}  // namespace
}  // namespace kelvane::testing
