// The list of a join where its place is full, or somebody else is quick.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QFileInfo>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <utility>

#include "joiner/JoinTest.h"
#include "media/Module1.h"
#include "platform/App.h"

namespace kelvane::testing {
namespace {

// How many lists are still to fail.
std::atomic<int> failuresLeft = 0;

extern "C" void LiftLimitAfterTheLast(int /*number*/) {
  if (--failuresLeft > 0) return;
  rlimit limit{};
  ::getrlimit(RLIMIT_FSIZE, &limit);
  limit.rlim_cur = limit.rlim_max;
  ::setrlimit(RLIMIT_FSIZE, &limit);
}

// Lets no file grow beyond a few bytes until that many writes have met the limit.
void CutWritesShort(int count) {
  constexpr rlim_t kFew = 10;
  failuresLeft = count;
  std::signal(SIGXFSZ, LiftLimitAfterTheLast);
  rlimit limit{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
  limit.rlim_cur = kFew;
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
}

bool closesFail = false;

void FailCloses(int count) {
  failuresLeft = count;
  closesFail = true;
}

// Whether the open file is a list.
bool IsList(int number) {
  const std::string entry = "/proc/self/fd/" + std::to_string(number);
  return QFileInfo(QString::fromStdString(entry)).symLinkTarget().endsWith("/files.txt");
}

// What is done as soon as a list has been removed.
std::function<void()> afterRemoval;

}  // namespace
}  // namespace kelvane::testing

// The system's own, for the libraries as well.

extern "C" int close(int number) {
  using namespace kelvane::testing;
  const bool fails = closesFail && IsList(number);
  const int result = static_cast<int>(::syscall(SYS_close, number));
  if (!fails) return result;
  closesFail = --failuresLeft > 0;
  errno = EDQUOT;
  return -1;
}

extern "C" int unlink(const char* path) noexcept {
  using namespace kelvane::testing;
  const auto result = static_cast<int>(::syscall(SYS_unlinkat, AT_FDCWD, path, 0));
  const int error = errno;
  if (afterRemoval && std::string_view(path).ends_with("/files.txt")) {
    std::exchange(afterRemoval, nullptr)();
  }
  errno = error;
  return result;
}

namespace kelvane::testing {
namespace {

struct WayToFail {
  const char* name;
  void (*fail)(int count);
};

void PrintTo(const WayToFail& way, std::ostream* out) { *out << way.name; }

class ListFileThat : public JoinTest, public ::testing::WithParamInterface<WayToFail> {
 protected:
  // The join of three sections, where several lists fail one after the other.
  void JoinFailing(int lists) {
    AddThree();
    JoinTo("/tmp/earlier.mp4");
    whole_ = ListFile();
    Get<Label>("Label3", ProcessLine).Change = [this, lists](int) {
      if (Shown(ProcessLine) == "Process: Joining Your Videos...") GetParam().fail(lists);
    };
    EXPECT_EQ(JoinTo("/tmp/all.mp4"), (Texts{"Save Video As", kSuccess}));
    EXPECT_EQ(failuresLeft, 0);
  }
  static QString PrivateList() { return QString::fromStdString(PrivateListFile()); }

  std::string whole_;
};

TEST_P(ListFileThat, CannotBeWrittenWholeIsRemovedAndThePrivatePlaceTaken) {
  JoinFailing(1);
  EXPECT_EQ(ListFile(), "(not there)");
  EXPECT_EQ(ContentOf(PrivateList()), whole_);
  EXPECT_EQ(RunsOf("ffmpeg").back(), "ffmpeg | -f | concat | -safe | 0 | -i | " +
                                         PrivateListFile() + " | -c | copy | -y | /tmp/all.mp4");
}

TEST_P(ListFileThat, CannotBeWrittenWholeInEitherPlaceIsInNeither) {
  JoinFailing(2);
  EXPECT_EQ(ListFile(), "(not there)");
  EXPECT_EQ(ContentOf(PrivateList()), "(not there)");
  EXPECT_EQ(RunsOf("ffmpeg").back(), CopyRun("/tmp/all.mp4"));
}

INSTANTIATE_TEST_SUITE_P(Joining, ListFileThat,
                         ::testing::Values(WayToFail{"WhenWritten", CutWritesShort},
                                           WayToFail{"WhenClosed", FailCloses}),
                         [](const auto& way) { return way.param.name; });

using ListFileTest = JoinTest;

TEST_F(ListFileTest, IsNotWrittenThroughALinkThatComesIntoItsPlaceMeanwhile) {
  const QString victim = tools_.File("victim.txt");
  AddThree();
  afterRemoval = [&] { EXPECT_TRUE(QFile::link(victim, InFolder("files.txt"))); };
  JoinTo("/tmp/all.mp4");
  EXPECT_FALSE(afterRemoval);
  EXPECT_EQ(ContentOf(victim), "contents");
  EXPECT_NE(RunsOf("ffmpeg"), Texts{CopyRun("/tmp/all.mp4")});
}

}  // namespace
}  // namespace kelvane::testing
