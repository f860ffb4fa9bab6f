// Places that are missing, full or not to be written to: where temporary names are made, and the
// program's own folder.
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <cerrno>
#include <optional>

#include "desktop/JoinerTest.h"
#include "desktop/driver/ScreenReader.h"
#include "desktop/faults/Faults.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kOldSize(640, 360);
constexpr QSize kNewSize(320, 240);

class FaultsOfPlaces : public DesktopTest {
 protected:
  // A name with a blank takes a link in the temporary place.
  QString blank = program.PathOf("a clip.mp4");
};

struct Shortage {
  const char* name;
  int error;
  const char* reason;
};

void PrintTo(const Shortage& shortage, std::ostream* stream) { *stream << shortage.name; }

class ATemporaryPlace : public FaultsOfPlaces, public testing::WithParamInterface<Shortage> {
 protected:
  ATemporaryPlace() { program.SetVariable("DBUS_SESSION_BUS_ADDRESS", reader.Address()); }
  ScreenReader reader{program.PathOf("runtime")};
};

INSTANTIATE_TEST_SUITE_P(FaultsOfPlaces, ATemporaryPlace,
                         testing::Values(Shortage{"Missing", ENOENT, "No such file or directory"},
                                         Shortage{"Full", ENOSPC, "No space left on device"},
                                         Shortage{"ReadOnly", EROFS, "Read-only file system"}),
                         [](const auto& place) { return place.param.name; });

TEST_P(ATemporaryPlace, ThatTakesNoLinkIsToldAndAnyOtherNameStillLoads) {
  Faults faults(program);
  faults.FailAll(Attempt::kUseTemporary, GetParam().error);
  ASSERT_TRUE(MakeVideo(blank, kNewSize, 1));
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kOldSize, 1));
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, blank));
  const WindowId message = screen.Await("Error");
  ASSERT_NE(message, 0U);
  const QString text = QStringLiteral(
                           "An error occurred while obtaining the file path.\n\n"
                           "The error number was:\t%1\nThe error description:\t%2")
                           .arg(GetParam().error)
                           .arg(GetParam().reason);
  const SpokenNode spoken = reader.AwaitWindow("Error");
  EXPECT_EQ(ScreenReader::Find(spoken, "label", text).Name(), text)
      << ScreenReader::HeardIn(spoken).toStdString();
  // Not by a key: the toolkit loses a little memory with a key that closes what it tells of.
  ASSERT_TRUE(ScreenReader::Find(spoken, "push button", "OK").Do("Press"));
  EXPECT_TRUE(WaitFor([&] { return screen.Windows().size() == 1; }));
  EXPECT_TRUE(WaitFor([&] { return AllOf(screen.Picture(), window.Place("Text1(1)"), kDark); }))
      << "no path";
  EXPECT_TRUE(window.AwaitVideo(kOldSize));
  EXPECT_GT(faults.Failed(Attempt::kUseTemporary), 1);

  faults.Heal(Attempt::kUseTemporary);
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, blank));
  EXPECT_TRUE(window.AwaitVideo(kNewSize));
  CloseAndExpectEnd();
}

class JoinersTemporaryPlace : public JoinerTest {
 protected:
  JoinersTemporaryPlace() : faults(program) {}
  Faults faults;
};

TEST_F(JoinersTemporaryPlace, ThatTakesNoLinkIsNotToldAndTheSectionIsJoinedAllTheSame) {
  const QString clip = program.PathOf("a clip.mp4");
  const QString output = program.PathOf("joined.mp4");
  ASSERT_TRUE(MakeVideo(clip, kNewSize, 20));
  faults.FailAll(Attempt::kUseTemporary, ENOSPC);
  ASSERT_NO_FATAL_FAILURE(Add(clip));
  EXPECT_TRUE(joiner.AwaitTotals(1, "00,000", "00:00:00"));
  ExpectPathWithoutStripOrRow(0);
  EXPECT_EQ(screen.Windows().size(), 1) << "no message";
  EXPECT_GT(faults.Failed(Attempt::kUseTemporary), 0);
  ASSERT_NO_FATAL_FAILURE(JoinTo(output));
  EXPECT_EQ(VideoSize(output), kNewSize);
  CloseJoinerAndExpectEnd();
}

TEST_F(JoinersTemporaryPlace, ThatTakesNoLinkGivesALaterSectionTheLengthOfTheFileBefore) {
  const QString former = program.PathOf("former.mp4");
  const QString clip = program.PathOf("a clip.mp4");
  ASSERT_TRUE(MakeVideo(former, kNewSize, 20));
  ASSERT_TRUE(MakeVideo(clip, kNewSize, 50));
  ASSERT_NO_FATAL_FAILURE(Add(former));
  ASSERT_TRUE(joiner.AwaitTotals(1, "00,020", "00:00:20"));
  faults.FailAll(Attempt::kUseTemporary, ENOSPC);
  ASSERT_NO_FATAL_FAILURE(Add(clip));
  EXPECT_TRUE(joiner.AwaitTotals(2, "00,040", "00:00:40"));
  EXPECT_TRUE(WaitFor([&] { return joiner.RowShows(1, "2", "a clip.mp4", "20"); }, 5s));
  EXPECT_EQ(joiner.Strip(1).width(), joiner.Strip(0).width());
  EXPECT_EQ(screen.Windows().size(), 1) << "no message";
  EXPECT_GT(faults.Failed(Attempt::kUseTemporary), 0);
  CloseJoinerAndExpectEnd();
}

// Nothing can be made or removed in the folder for as long as this lives.
class LockedFolder {
 public:
  explicit LockedFolder(const QString& path) : path_(QFile::encodeName(path)) {
    EXPECT_EQ(chmod(path_.constData(), 0555), 0);
  }
  LockedFolder(const LockedFolder&) = delete;
  LockedFolder& operator=(const LockedFolder&) = delete;
  ~LockedFolder() { chmod(path_.constData(), 0755); }

 private:
  QByteArray path_;
};

TEST_F(FaultsOfPlaces, AProgramFolderThatCannotBeWrittenToDisturbsNoCrop) {
  program.RunAsOrdinaryUser();
  const LockedFolder locked(program.ProgramFolder());
  const QStringList before = QDir(program.ProgramFolder()).entryList();
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kOldSize, 1));
  const QString output = program.PathOf("cropped.mp4");
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  EXPECT_TRUE(job.AwaitSuccess());
  EXPECT_EQ(VideoSize(output), QSize(634, 354));
  EXPECT_EQ(QDir(program.ProgramFolder()).entryList(), before);
  job.Cancel();
  EXPECT_TRUE(WaitFor([&] { return !job.Open(); }));
  CloseAndExpectEnd();
}

class JoinersProgramFolder : public JoinerTest {
 protected:
  JoinersProgramFolder() {
    program.RunAsOrdinaryUser();
    WriteFile(ListFile(), kEarlier);
    QFile::setPermissions(ListFile(), QFile::ReadOwner);
    program.ReplaceTool("ffmpeg", "exec \"$real\" \"$@\"");
    locked.emplace(program.ProgramFolder());
  }
  std::optional<LockedFolder> locked;
  static constexpr const char* kEarlier = "file 'of-an-earlier-join.mp4'\n";
};

// Where the list is that the last run of the joining tool, which notes its arguments, was given.
QString ListOfLastJoin(const Program& program) {
  const QStringList arguments = program.RunsOf("ffmpeg").value(0);
  return arguments.value(arguments.indexOf("-i") + 1);
}

TEST_F(JoinersProgramFolder, ThatCannotBeWrittenToLeavesTheEarlierListAndJoinsByAPrivateOne) {
  const QString clip = program.PathOf("clip.mp4");
  const QString output = program.PathOf("joined.mp4");
  ASSERT_TRUE(MakeVideo(clip, kNewSize, 20));
  const QByteArray content = ContentOf(clip);
  ASSERT_NO_FATAL_FAILURE(Add(clip));
  EXPECT_TRUE(joiner.AwaitTotals(1, "00,020", "00:00:20"));
  ASSERT_NO_FATAL_FAILURE(JoinTo(output));
  EXPECT_EQ(ContentOf(ListFile()), QByteArray(kEarlier)) << "what can't be removed is left whole";
  EXPECT_EQ(VideoSize(output), kNewSize);
  EXPECT_EQ(ContentOf(clip), content);

  const QString list = ListOfLastJoin(program);
  EXPECT_TRUE(QRegularExpression("^/tmp/kelvane-\\d+-\\w{6}/files\\.txt$").match(list).hasMatch())
      << list.toStdString();
  EXPECT_EQ(ContentOf(list), "file '" + clip.toUtf8() + "'\r\n");
  CloseJoinerAndExpectEnd();
  EXPECT_FALSE(QFileInfo::exists(QFileInfo(list).path())) << "goes when the program ends";
}

}  // namespace
}  // namespace kelvane::desktop
