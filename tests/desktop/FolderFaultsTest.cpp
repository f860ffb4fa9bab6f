// A program's folder that is read-only, and a private folder in which the name of a link or a list
// is taken.
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <optional>

#include "desktop/JoinerTest.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kSize(320, 240);

// Makes a folder read-only for its owner, but not for root, for as long as the object lives.
class ReadOnlyFolder {
 public:
  explicit ReadOnlyFolder(const QString& path) : path_(QFile::encodeName(path)) {
    EXPECT_EQ(chmod(path_.constData(), 0555), 0);
  }
  ReadOnlyFolder(const ReadOnlyFolder&) = delete;
  ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;
  ~ReadOnlyFolder() { chmod(path_.constData(), 0755); }

 private:
  QByteArray path_;
};

using FolderFaults = DesktopTest;

TEST_F(FolderFaults, AReadOnlyProgramFolderDoesNotAffectACrop) {
  program.RunAsOrdinaryUser();
  const ReadOnlyFolder readOnly(program.ProgramFolder());
  const QStringList before = QDir(program.ProgramFolder()).entryList();
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 1));
  const QString output = program.PathOf("cropped.mp4");
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  ExpectEndAndCloseJob();
  EXPECT_EQ(VideoSize(output), QSize(314, 234));
  EXPECT_EQ(QDir(program.ProgramFolder()).entryList(), before);
  CloseAndExpectEnd();
}

using TemporaryFolders = DesktopTest;

TEST_F(TemporaryFolders, OfAProgramThatCrashedAreRemovedAtTheNextStart) {
  QStringList folders;
  for (const char* parent : {"/tmp", "/var/tmp"}) {
    QTemporaryDir folder(QString("%1/kelvane-%2-XXXXXX").arg(parent).arg(geteuid()));
    ASSERT_TRUE(QFile::link("/usr", folder.filePath("a_link")));
    folder.setAutoRemove(false);
    folders << folder.path();
  }
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  for (const QString& folder : folders) EXPECT_FALSE(QDir(folder).exists()) << folder.toStdString();
  CloseAndExpectEnd();
}

using JoinersFolderFaults = JoinerTest;

// A file whose name has a blank needs a link in the private folder; another file with the link's
// name prevents that.
TEST_F(JoinersFolderFaults, ASectionWithoutALinkHasTheLengthOfTheOneBeforeAndIsJoined) {
  program.ReplaceTool("ffprobe", R"(exec "$real" "$@")");
  const QString former = program.PathOf("a former clip.mp4");
  const QString clip = program.PathOf("a clip.mp4");
  const QString output = program.PathOf("joined.mp4");
  ASSERT_TRUE(MakeVideo(former, kSize, 10));
  ASSERT_TRUE(MakeVideo(clip, kSize, 30));
  ASSERT_NO_FATAL_FAILURE(Add(former));
  ASSERT_TRUE(joiner.AwaitTotals(1, "00,010", "00:00:10"));
  const QFileInfo link(program.RunsOf("ffprobe").value(0).last());
  ASSERT_EQ(link.fileName(), "a_former_clip.mp4");
  QFile nextLink(link.path() + "/a_clip.mp4");
  ASSERT_TRUE(nextLink.open(QIODevice::WriteOnly));
  ASSERT_NO_FATAL_FAILURE(Add(clip));
  EXPECT_TRUE(nextLink.remove());
  EXPECT_TRUE(joiner.AwaitTotals(2, "00,020", "00:00:20"));
  EXPECT_TRUE(joiner.AwaitRow(1, "2", "a clip.mp4", "10"));
  EXPECT_EQ(screen.Windows().size(), 1) << "a message box is open";
  ASSERT_NO_FATAL_FAILURE(JoinTo(output));
  EXPECT_EQ(PicturesWithoutComplaint(output),
            PicturesWithoutComplaint(former) + PicturesWithoutComplaint(clip));
  CloseJoinerAndExpectEnd();
}

// The program's folder already has the list of an earlier join when it becomes read-only.
class JoinerInAReadOnlyFolder : public JoinerTest {
 protected:
  JoinerInAReadOnlyFolder() {
    program.RunAsOrdinaryUser();
    program.ReplaceTool("ffmpeg", R"(exec "$real" "$@")");
    WriteFile(earlierList, kEarlier);
    QFile::setPermissions(earlierList, QFile::ReadOwner);
    readOnly.emplace(program.ProgramFolder());
  }
  // The list that the last run of the tool was told to read.
  QString ListOfLastJoin() const {
    const QStringList arguments = program.RunsOf("ffmpeg").last();
    return arguments.value(arguments.indexOf("-i") + 1);
  }
  static constexpr const char* kEarlier = "file 'of-an-earlier-join.mp4'\n";
  QString earlierList = program.ProgramFolder() + "/files.txt";
  std::optional<ReadOnlyFolder> readOnly;
};

TEST_F(JoinerInAReadOnlyFolder, JoinsFromAPrivateListOrElseFromTheEarlierOne) {
  const QString clip = program.PathOf("clip.mp4");
  const QString output = program.PathOf("joined.mp4");
  ASSERT_TRUE(MakeVideo(clip, kSize, 2));
  ASSERT_NO_FATAL_FAILURE(Add(clip));
  ASSERT_NO_FATAL_FAILURE(JoinTo(output));
  EXPECT_EQ(PicturesWithoutComplaint(output), PicturesWithoutComplaint(clip));
  const QString list = ListOfLastJoin();
  EXPECT_TRUE(QRegularExpression("^/tmp/kelvane-\\d+-\\w{6}/files\\.txt$").match(list).hasMatch())
      << list.toStdString();
  EXPECT_EQ(ContentOf(list), "file '" + clip.toUtf8() + "'\r\n");

  // A folder takes the place of the private list.
  ASSERT_TRUE(QFile::remove(list));
  ASSERT_TRUE(QDir().mkdir(list));
  const QString noOutput = program.PathOf("none.mp4");
  ASSERT_NO_FATAL_FAILURE(JoinTo(noOutput));
  EXPECT_EQ(ListOfLastJoin(), earlierList);
  EXPECT_EQ(ContentOf(earlierList), kEarlier);
  EXPECT_EQ(ContentOf(noOutput), "(not there)");
  ASSERT_TRUE(QDir().rmdir(list));
  CloseJoinerAndExpectEnd();
  EXPECT_FALSE(QFileInfo::exists(QFileInfo(list).path())) << "the private folder stays";
}

}  // namespace
}  // namespace kelvane::desktop
