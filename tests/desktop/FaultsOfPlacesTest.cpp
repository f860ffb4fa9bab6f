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
constexpr QSize kLaterSize(400, 300);

class FaultsOfPlaces : public DesktopTest {
 protected:
  // A name with a blank takes a link in the temporary place.
  QString blank = program.PathOf("a clip.mp4");
};

struct Shortage {
  const char* name;
  Attempt attempt;
  int error;
  const char* reason;
};

void PrintTo(const Shortage& shortage, std::ostream* stream) { *stream << shortage.name; }

// The program's private folder can be made in the place, and nothing in that folder.
constexpr Shortage kFilled{"FullOnceTheFolderStands", Attempt::kFillFolder, ENOSPC,
                           "No space left on device"};
const auto kShortages = ::testing::Values(
    Shortage{"Missing", Attempt::kUseTemporary, ENOENT, "No such file or directory"},
    Shortage{"Full", Attempt::kUseTemporary, ENOSPC, "No space left on device"},
    Shortage{"ReadOnly", Attempt::kUseTemporary, EROFS, "Read-only file system"}, kFilled);
constexpr auto kNameOfShortage = [](const auto& place) { return place.param.name; };

class APrivateFolder : public FaultsOfPlaces {
 protected:
  APrivateFolder() { program.SetVariable("DBUS_SESSION_BUS_ADDRESS", reader.Address()); }

  // Chooses a file whose name needs a link, and expects the box that tells why there is none, and
  // under it an empty path and the video of that size.
  void ExpectToldAndOldVideo(const QString& path, const Shortage& shortage, QSize size) {
    const int failed = faults.Failed(shortage.attempt);
    ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, path));
    const WindowId message = screen.Await("Error");
    ASSERT_NE(message, 0U);
    const QString text = QStringLiteral(
                             "An error occurred while obtaining the file path.\n\n"
                             "The error number was:\t%1\nThe error description:\t%2")
                             .arg(shortage.error)
                             .arg(shortage.reason);
    const SpokenNode spoken = reader.AwaitWindow("Error");
    EXPECT_EQ(ScreenReader::Find(spoken, "label", text).Name(), text)
        << ScreenReader::HeardIn(spoken).toStdString();
    // Not by a key: Qt loses a little memory with a key that closes what it tells of.
    ASSERT_TRUE(ScreenReader::Find(spoken, "push button", "OK").Do("Press"));
    EXPECT_TRUE(WaitFor([&] { return screen.Windows().size() == 1; }));
    EXPECT_TRUE(WaitFor([&] { return AllOf(screen.Picture(), window.Place("Text1(1)"), kDark); }))
        << "no path";
    EXPECT_TRUE(window.AwaitVideo(size));
    EXPECT_GT(faults.Failed(shortage.attempt), failed);
  }

  ScreenReader reader{program.PathOf("runtime")};
  Faults faults{program};
};

class ATemporaryPlace : public APrivateFolder, public ::testing::WithParamInterface<Shortage> {};

INSTANTIATE_TEST_SUITE_P(FaultsOfPlaces, ATemporaryPlace, kShortages, kNameOfShortage);

TEST_P(ATemporaryPlace, ThatTakesNoLinkIsToldAndAnyOtherNameStillLoads) {
  faults.FailAll(GetParam().attempt, GetParam().error);
  ASSERT_TRUE(MakeVideo(blank, kNewSize, 1));
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kOldSize, 1));
  ASSERT_NO_FATAL_FAILURE(ExpectToldAndOldVideo(blank, GetParam(), kOldSize));

  faults.Heal(GetParam().attempt);
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, blank));
  EXPECT_TRUE(window.AwaitVideo(kNewSize));
  CloseAndExpectEnd();
}

TEST_F(APrivateFolder, ThatFillsUpTakesNoNewLinkAndKeepsThoseThatItHas) {
  const QString later = program.PathOf("a later clip.mp4");
  ASSERT_TRUE(MakeVideo(blank, kNewSize, 1));
  ASSERT_TRUE(MakeVideo(later, kLaterSize, 1));
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kOldSize, 1));
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, blank));
  ASSERT_TRUE(window.AwaitVideo(kNewSize));

  faults.FailAll(kFilled.attempt, kFilled.error);
  ASSERT_NO_FATAL_FAILURE(ExpectToldAndOldVideo(later, kFilled, kNewSize));
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, video));
  EXPECT_TRUE(window.AwaitVideo(kOldSize));
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, blank));
  EXPECT_TRUE(window.AwaitVideo(kNewSize)) << "by the link that stands";

  faults.Heal(kFilled.attempt);
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, later));
  EXPECT_TRUE(window.AwaitVideo(kLaterSize));
  CloseAndExpectEnd();
}

class JoinersPrivateFolder : public JoinerTest {
 protected:
  JoinersPrivateFolder() : faults(program) {}
  Faults faults;
};

class JoinersTemporaryPlace : public JoinersPrivateFolder,
                              public ::testing::WithParamInterface<Shortage> {};

INSTANTIATE_TEST_SUITE_P(FaultsOfPlaces, JoinersTemporaryPlace, kShortages, kNameOfShortage);

TEST_P(JoinersTemporaryPlace, ThatTakesNoLinkIsNotToldAndTheSectionIsJoinedAllTheSame) {
  const QString clip = program.PathOf("a clip.mp4");
  const QString output = program.PathOf("joined.mp4");
  ASSERT_TRUE(MakeVideo(clip, kNewSize, 2));
  faults.FailAll(GetParam().attempt, GetParam().error);
  ASSERT_NO_FATAL_FAILURE(Add(clip));
  EXPECT_TRUE(joiner.AwaitTotals(1, "00,000", "00:00:00"));
  ExpectPathWithoutStripOrRow(0);
  EXPECT_EQ(screen.Windows().size(), 1) << "no message";
  EXPECT_GT(faults.Failed(GetParam().attempt), 0);
  ASSERT_NO_FATAL_FAILURE(JoinTo(output));
  EXPECT_EQ(VideoSize(output), kNewSize);
  EXPECT_EQ(Pictures(output), Pictures(clip));
  CloseJoinerAndExpectEnd();
}

TEST_F(JoinersPrivateFolder, ThatFillsUpGivesALaterSectionTheLengthOfTheFileBeforeAndJoinsBoth) {
  const QString former = program.PathOf("a former clip.mp4");
  const QString clip = program.PathOf("a clip.mp4");
  const QString output = program.PathOf("joined.mp4");
  ASSERT_TRUE(MakeVideo(former, kNewSize, 10));
  ASSERT_TRUE(MakeVideo(clip, kNewSize, 30));
  const QByteArray content = ContentOf(clip);
  ASSERT_NO_FATAL_FAILURE(Add(former));
  ASSERT_TRUE(joiner.AwaitTotals(1, "00,010", "00:00:10"));
  faults.FailAll(kFilled.attempt, kFilled.error);
  ASSERT_NO_FATAL_FAILURE(Add(clip));
  EXPECT_TRUE(joiner.AwaitTotals(2, "00,020", "00:00:20"));
  EXPECT_TRUE(joiner.AwaitRow(1, "2", "a clip.mp4", "10"));
  EXPECT_EQ(joiner.Strip(1).width(), joiner.Strip(0).width());
  EXPECT_EQ(screen.Windows().size(), 1) << "no message";
  EXPECT_EQ(faults.Failed(kFilled.attempt), 1);
  ASSERT_NO_FATAL_FAILURE(JoinTo(output));
  EXPECT_EQ(Pictures(output), Pictures(former) + Pictures(clip));
  EXPECT_EQ(ContentOf(clip), content);
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

// Where the private place fails as well, on the way to it or in it.
class JoinersTwoPlaces : public JoinersProgramFolder,
                         public ::testing::WithParamInterface<Attempt> {
 protected:
  JoinersTwoPlaces() : faults(program) {}
  Faults faults;
};

INSTANTIATE_TEST_SUITE_P(FaultsOfPlaces, JoinersTwoPlaces,
                         ::testing::Values(Attempt::kUseTemporary, Attempt::kFillFolder),
                         [](const auto& place) {
                           return place.param == Attempt::kUseTemporary ? "WithoutAFolder"
                                                                        : "WithAFolderThatIsFull";
                         });

TEST_P(JoinersTwoPlaces, ThatTakeNoListLeaveTheJoinToTheEarlierOne) {
  const QString clip = program.PathOf("clip.mp4");
  const QString output = program.PathOf("joined.mp4");
  ASSERT_TRUE(MakeVideo(clip, kNewSize, 2));
  const QByteArray content = ContentOf(clip);
  ASSERT_NO_FATAL_FAILURE(Add(clip));
  ASSERT_TRUE(joiner.AwaitTotals(1, "00,002", "00:00:02"));
  faults.FailAll(GetParam(), ENOSPC);
  ASSERT_NO_FATAL_FAILURE(JoinTo(output));
  EXPECT_EQ(faults.Failed(GetParam()), 1);
  EXPECT_EQ(program.RunsOf("ffmpeg"), QList<QStringList>{CopyRun({output})}) << "it lies there";
  EXPECT_EQ(ContentOf(ListFile()), QByteArray(kEarlier));
  EXPECT_EQ(ContentOf(output), "(not there)") << "what it names isn't";
  EXPECT_EQ(ContentOf(clip), content);
  CloseJoinerAndExpectEnd();
}

}  // namespace
}  // namespace kelvane::desktop
